// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Row.h"

class Installation;
class Spectator;

/// Watches the program for ten seconds each: before an upgrade, during one and after its success.
/// The floor of the second is a window that animates a bar at the same pace.
class RunningRuns
{
public:
    /// \a variables is the display and a world in which the device is in its bootloader.
    static Rows run(Spectator &spectator, Installation &installation, const QString &animatedWindow,
                    const Program::Variables &variables, int rounds);
};
