// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"

#include <QPoint>
#include <QRect>
#include <QRegion>

struct _XDisplay;

/// Sees what a program shows, as the X server sees it, and lends it a hand with the mouse.
class Spectator
{
public:
    /// Exits the process when it cannot connect to the server \a display.
    explicit Spectator(const QByteArray &display);
    ~Spectator();

    Spectator(const Spectator &) = delete;
    Spectator &operator=(const Spectator &) = delete;

    /// Waits until a window of \a program is mapped, something is drawn into it and no point of it
    /// still shows what was there before; returns what that has cost. \a program must have been
    /// started since the last call. Exits the process when nothing shows within 30 seconds.
    Program::Costs waitForContent(Program &program);

    /// Where the window is that waitForContent() has seen.
    QRect window() const { return m_window; }

    /// What was drawn since the last call, in the window's coordinates.
    QRegion takeDamage();

    /// Left click at a \a point of the window. The pointer stays there.
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
