// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>

// Xlib's own name.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

/// A simulated user of an X screen, who looks at one window and uses the mouse.
///
/// Works with any program's window, through the X server. This process must be a client of the same
/// server (Qt's "xcb" platform). Positions are relative to the top left corner of the window, in
/// the window's own pixels; on a dense screen each covers several pixels of the screen.
class ScreenUser
{
public:
    /// Whether there is an X server.
    static bool canSee();

    /// Uses the window with this title, once it exists.
    explicit ScreenUser(QString title);

    /// Uses the window with this background colour on a Wayland desktop that fills the X screen.
    /// The X server does not know the window; nothing else on the screen may have that colour.
    static ScreenUser onWayland(const QColor &colour, int scale);

    ~ScreenUser();

    ScreenUser(const ScreenUser &) = delete;
    ScreenUser &operator=(const ScreenUser &) = delete;

    /// Whether the window is visible.
    bool seesWindow();

    /// The geometry of the window on the screen, in the screen's pixels; empty if it is not
    /// visible.
    QRect windowGeometry();

    /// The window's instance name and class, by which an X desktop finds its icon; empty on a
    /// Wayland desktop, whose windows have an application id instead.
    QStringList windowClass() const;

    /// A screenshot of the window; null if it is not visible.
    QImage look();

    /// On a Wayland desktop, do not move the pointer before the window is visible.
    void movePointer(const QPoint &position);
    void movePointerOnScreen(const QPoint &position); ///< In the screen's pixels.
    void press(Qt::MouseButton button = Qt::LeftButton);
    void release(Qt::MouseButton button = Qt::LeftButton);
    void click(const QPoint &position);

    /// Presses the button at \a from and moves to \a to in steps, without releasing it. Both are
    /// relative to the window's position at the press.
    void drag(const QPoint &from, const QPoint &to, Qt::MouseButton button = Qt::LeftButton);

    /// Waits until \a condition is true, at most \a milliseconds. Returns whether it is true.
    static bool waitUntil(const std::function<bool()> &condition, int milliseconds);

private:
    ScreenUser(QString title, QColor colour, int scale);

    QRect geometryByTitle() const;
    QRect geometryByColour() const;
    void enterDesktop();

    const QString m_title; ///< Empty on a Wayland desktop.
    const QColor m_colour;
    const int m_scale;
    _XDisplay *const m_display;
    bool m_isInside = false; ///< Whether the Wayland desktop knows where the pointer is.
};
