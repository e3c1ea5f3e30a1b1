// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

class Spectator;

/// Opens the program and the floors in turn and compares what each has cost when its window shows
/// its first content, and two seconds later.
class StartRuns
{
public:
    /// The paths of what is started; \a display is where.
    struct Programs
    {
        QString ours;
        QString emptyWindow;
        QString plainWindow;
        QByteArray display;
    };

    static Rows run(Spectator &spectator, const Programs &programs, int rounds);
};
