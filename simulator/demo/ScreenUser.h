// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>

// Xlib's own name.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

/// A simulated user of an X screen, who looks at one window and uses the mouse.
///
/// Works with any program's window, through the X server. This process must be a client of the same
/// server (Qt's "xcb" platform). Positions are relative to the top left corner of the window.
class ScreenUser
{
public:
    /// Whether there is an X server.
    static bool canSee();

    /// Uses the window with this title, once it exists.
    explicit ScreenUser(QString title);
    ~ScreenUser();

    ScreenUser(const ScreenUser &) = delete;
    ScreenUser &operator=(const ScreenUser &) = delete;

    /// Whether the window is visible.
    bool seesWindow();

    /// The geometry of the window on the screen; empty if it is not visible.
    QRect windowGeometry();

    /// A screenshot of the window; null if it is not visible.
    QImage look();

    void movePointer(const QPoint &position);
    void movePointerOnScreen(const QPoint &position);
    void press();
    void release();
    void click(const QPoint &position);

    /// Presses the button at \a from and moves to \a to in steps, without releasing it. Both are
    /// relative to the window's position at the press.
    void drag(const QPoint &from, const QPoint &to);

    /// Waits until \a condition is true, at most \a milliseconds. Returns whether it is true.
    static bool waitUntil(const std::function<bool()> &condition, int milliseconds);

private:
    unsigned long find() const;

    const QString m_title;
    _XDisplay *const m_display;
};
