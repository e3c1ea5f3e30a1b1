// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Series.h"

#include <QString>

#include <map>

/// The program with the benchmarks of Google Benchmark.
class InProcess
{
public:
    /// The microseconds of all repetitions, by name, such as "bar/ours".
    using Results = std::map<QString, Series>;

    /// Runs the benchmarks in the file \a path whose names match \a filter, with \a variables in
    /// the environment; exits this process if they fail.
    static Results measure(const QString &path, const Program::Variables &variables,
                           const QString &filter, int rounds);
};
