// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>

// The library's own name.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

/// A user in front of an X screen, who looks at one window and handles the mouse.
///
/// Works on any program's window through the X server alone. The own program must be a client of
/// the same server (Qt's "xcb" platform). Positions are relative to the window's top left corner.
class ScreenUser
{
public:
    /// Whether there is an X server to look at.
    static bool canSee();

    /// Looks at the window with this title, once it is there.
    explicit ScreenUser(QString title);
    ~ScreenUser();

    ScreenUser(const ScreenUser &) = delete;
    ScreenUser &operator=(const ScreenUser &) = delete;

    /// Whether the window is on the screen now.
    bool seesWindow();

    /// Where on the screen it is; empty when it is not.
    QRect windowGeometry();

    /// What the screen shows at its place; null when it is not there.
    QImage look();

    void movePointer(const QPoint &position);
    void movePointerOnScreen(const QPoint &position);
    void press();
    void release();
    void click(const QPoint &position);

    /// Presses at \a from and moves to \a to in steps, without releasing. Both are relative to
    /// where the window is at the press.
    void drag(const QPoint &from, const QPoint &to);

    /// Waits until \a condition holds, at most \a milliseconds; returns whether it came to hold.
    static bool waitUntil(const std::function<bool()> &condition, int milliseconds);

private:
    unsigned long find() const;

    const QString m_title;
    _XDisplay *const m_display;
};
