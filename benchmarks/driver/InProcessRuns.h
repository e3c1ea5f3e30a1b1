// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Row.h"

/// What Google Benchmark finds out about the program's parts.
class InProcessRuns
{
public:
    /// Runs the program at \a path, in the world of \a variables; exits the process when that
    /// fails.
    static Rows run(const QString &path, const Program::Variables &variables, int rounds);
};
