// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/InProcessRuns.h"

#include "benchmarks/driver/InProcess.h"

#include <QtDebug>

Rows InProcessRuns::run(const QString &path, const Program::Variables &variables, int rounds)
{
    constexpr auto kFilter = "-^(request|watch)/"; // CrowdRuns measures those
    InProcess::Results results = InProcess::measure(path, variables, kFilter, rounds);
    const auto row = [&results](const QString &what, const QString &name, const QString &floor,
                                Row::Kind kind, double target) {
        const Series &ours = results[name + "/ours"];
        const Series &floors = results[name + '/' + floor];
        if (ours.isEmpty() || floors.isEmpty()) {
            qFatal("There is no benchmark %s", qUtf8Printable(name));
        }
        return Row{what, "µs", floor, ours, floors, kind, target};
    };
    return {
        row("Success line to status text", "success", "slot", Row::Drifting, 1.25),
        row("Error line to status text", "error", "slot", Row::Drifting, 1.25),
        row("Error line to status text", "error", "slot and log", Row::Drifting, 1.25),
        row("CPU to read 1 MB of output", "drain", "search", Row::Drifting, 1.15),
        row("CPU to read 1 MB of output", "drain", "search and log", Row::Drifting, 1.15),
        row("Click to the tool's first output", "click", "calls", Row::Drifting, 1.15),
        row("Nine-patch paint", "nine-patch", "flat", Row::Drifting, 1.05),
        row("Bar paint", "bar", "flat", Row::Drifting, 1.05),
    };
}
