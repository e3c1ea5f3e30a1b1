// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/RunningRuns.h"

#include "benchmarks/driver/Installation.h"
#include "benchmarks/driver/OneProcessor.h"
#include "benchmarks/driver/Spectator.h"
#include "simulator/demo/WindowLook.h"

#include <QThread>
#include <QtDebug>

namespace {

struct Activity
{
    Series wakeUps;
    Series cpu;
    Series paintedOutside; ///< pixels outside the bar that were painted at least once
    bool animated = false;
};

/// Measures \a program for ten seconds, once pending work is done.
void watch(Spectator &spectator, const Program &program, Activity &activity)
{
    QThread::msleep(1500);
    spectator.takeDamage();
    const Program::Costs before = program.costs();
    QThread::sleep(10);
    const Program::Costs after = program.costs();
    const QRegion painted = spectator.takeDamage();
    int outside = 0;
    for (const QRect &rectangle : painted.subtracted(WindowLook::kProgressArea)) {
        outside += rectangle.width() * rectangle.height();
    }
    activity.wakeUps.add(after.wakeUps - before.wakeUps);
    activity.cpu.add(after.cpuMilliseconds - before.cpuMilliseconds);
    activity.paintedOutside.add(outside);
    activity.animated = !painted.isEmpty();
}

} // namespace

Rows RunningRuns::run(Spectator &spectator, Installation &installation,
                      const QString &animatedWindow, const Program::Variables &variables,
                      int rounds)
{
    Activity before;
    Activity during;
    Activity after;
    Activity floor;
    const OneProcessor processor;
    for (int round = 0; round < rounds; ++round) {
        {
            Program window(animatedWindow, variables);
            spectator.waitForContent(window);
            watch(spectator, window, floor);
        }
        Program program(installation.program(), variables);
        spectator.waitForContent(program);
        watch(spectator, program, before);
        spectator.click(WindowLook::kUpgradeButton);
        watch(spectator, program, during);
        installation.letToolSucceed();
        watch(spectator, program, after);
        if (before.animated || !during.animated || after.animated) {
            qFatal("The upgrade did not start, or did not end");
        }
    }
    return {
        {"Wake-ups in 10 s before an upgrade", "", "", before.wakeUps, {}, Row::Gate, 0},
        {"CPU in 10 s before an upgrade", "ms", "", before.cpu, {}, Row::Gate, 0},
        {"Wake-ups in 10 s after success", "", "", after.wakeUps, {}, Row::Gate, 0},
        {"CPU in 10 s after success", "ms", "", after.cpu, {}, Row::Gate, 0},
        {"Wake-ups in 10 s of an upgrade", "", "bar", during.wakeUps, floor.wakeUps, Row::Gate,
         1.05},
        {"Pixels painted outside the bar", "", "", during.paintedOutside, {}, Row::Gate, 0},
        {"CPU in 10 s of an upgrade", "ms", "bar", during.cpu, floor.cpu, Row::Drifting, 1.25},
    };
}
