// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

class Spectator;

/// Starts the program and the floors in turn and compares their costs at the first paint and two
/// seconds later.
class StartRuns
{
public:
    /// The paths of the programs, and the display for them.
    struct Programs
    {
        QString ours;
        QString emptyWindow;
        QString plainWindow;
        QByteArray display;
    };

    static Rows run(Spectator &spectator, const Programs &programs, int rounds);
};
