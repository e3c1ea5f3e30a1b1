// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/StartRuns.h"

#include "benchmarks/driver/Program.h"
#include "benchmarks/driver/Spectator.h"

#include <QThread>

namespace {

struct Start
{
    QString path;
    Program::Variables variables;
    Series milliseconds = {};
    Series cpu = {};
    Series faults = {};
    Series resident = {};
    Series libraries = {};
    Series residentLater = {};
    Series cpuLater = {};
    Series faultsLater = {};
};

void once(Spectator &spectator, Start &start)
{
    Program program(start.path, start.variables);
    const Program::Costs first = spectator.waitForContent(program);
    QThread::sleep(2);
    const Program::Costs later = program.costs();
    start.milliseconds.add(first.milliseconds);
    start.cpu.add(first.cpuMilliseconds);
    start.faults.add(first.pageFaults);
    start.resident.add(first.residentKilobytes / 1024);
    start.libraries.add(later.libraries);
    start.residentLater.add(later.residentKilobytes / 1024);
    start.cpuLater.add(later.cpuMilliseconds);
    start.faultsLater.add(later.pageFaults);
}

} // namespace

Rows StartRuns::run(Spectator &spectator, const Programs &programs, int rounds)
{
    const Program::Variables stock = {{"DISPLAY", programs.display}};
    Program::Variables raster = stock;
    raster.insert("QT_XCB_GL_INTEGRATION", "none");

    Start ours = {programs.ours, stock};
    Start a = {programs.emptyWindow, stock};
    Start b = {programs.plainWindow, stock};
    Start c = {programs.plainWindow, raster};
    // The first start of each only fills the system's file cache.
    for (const Start *start : {&a, &b, &c, &ours}) {
        Start warmUp = *start;
        once(spectator, warmUp);
    }
    for (int round = 0; round < rounds; ++round) {
        for (Start *start : {&a, &ours, &b, &ours, &c, &ours}) {
            once(spectator, *start);
        }
    }
    return {
        {"Page faults to first paint", "", "c", ours.faults, c.faults, Row::Gate, 1.10},
        {"Resident memory at first paint", "MB", "c", ours.resident, c.resident, Row::Gate, 1.05},
        {"Resident memory two seconds later", "MB", "c", ours.residentLater, c.residentLater,
         Row::Gate, 1.05},
        {"Mapped libraries", "", "c", ours.libraries, c.libraries, Row::Gate, 1.05},
        {"CPU to first paint", "ms", "b", ours.cpu, b.cpu, Row::Drifting, 0.65},
        {"CPU to first paint", "ms", "c", ours.cpu, c.cpu, Row::Information, 0},
        {"Start to first paint", "ms", "b", ours.milliseconds, b.milliseconds, Row::Information, 0},
        {"Start to first paint", "ms", "c", ours.milliseconds, c.milliseconds, Row::Information, 0},
        {"Page faults to first paint", "", "b", ours.faults, b.faults, Row::Information, 0},
        {"Page faults to first paint", "", "a", ours.faults, a.faults, Row::Information, 0},
        {"Resident memory two seconds later", "MB", "b", ours.residentLater, b.residentLater,
         Row::Information, 0},
        {"Resident memory two seconds later", "MB", "a", ours.residentLater, a.residentLater,
         Row::Information, 0},
        {"Page faults, two seconds later", "", "c", ours.faultsLater, c.faultsLater,
         Row::Information, 0},
        {"CPU, two seconds later", "ms", "c", ours.cpuLater, c.cpuLater, Row::Information, 0},
    };
}
