// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Row.h"

/// Measures parts of the program inside one process, with Google Benchmark.
class InProcessRuns
{
public:
    /// Runs the program at \a path with \a variables in its environment; exits the process if it
    /// fails.
    static Rows run(const QString &path, const Program::Variables &variables, int rounds);
};
