// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"

#include <QPoint>
#include <QRect>
#include <QRegion>

// The library's own name.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

/// Watches a program's window through the X server, and clicks in it.
class Spectator
{
public:
    /// Exits the process if it cannot connect to the server \a display.
    explicit Spectator(const QByteArray &display);
    ~Spectator();

    Spectator(const Spectator &) = delete;
    Spectator &operator=(const Spectator &) = delete;

    /// Waits until a window of \a program is mapped and completely painted, and returns the costs
    /// until then. \a program must have been started since the last call. Exits the process if the
    /// window does not appear within 30 seconds.
    Program::Costs waitForContent(Program &program);

    /// The geometry of the window that waitForContent() found.
    QRect window() const { return m_window; }

    /// The region painted since the last call, in the window's coordinates.
    QRegion takeDamage();

    /// Clicks with the left button at \a point in the window. The pointer stays there.
    void click(const QPoint &point);

private:
    bool waitForEvent(int milliseconds);
    void handleNextEvent();
    bool isPainted() const;

    _XDisplay *const m_display;
    int m_damageEvent = 0;
    QRect m_window;
    QRegion m_damage;
};
