// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Row.h"

/// Measures how the times grow with the number of attached devices.
class CrowdRuns
{
public:
    /// Runs the benchmarks in the file \a path, with \a variables in the environment.
    static Rows run(const QString &path, const Program::Variables &variables, int rounds);
};
