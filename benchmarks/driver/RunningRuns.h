// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Row.h"

class Installation;
class Spectator;

/// Measures the program for ten seconds before an upgrade, during it and after its success. The
/// floor for the upgrade is a window that animates a bar at the same rate.
class RunningRuns
{
public:
    /// The \a variables set the display and a testbed with the device in its bootloader.
    static Rows run(Spectator &spectator, Installation &installation, const QString &animatedWindow,
                    const Program::Variables &variables, int rounds);
};
