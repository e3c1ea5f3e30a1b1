// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/CrowdRuns.h"

#include "benchmarks/driver/InProcess.h"
#include "simulator/testbed/Testbed.h"

#include <QStringList>

namespace {

/// Devices of one kind, in growing numbers, and what takes longer with them.
struct Crowd
{
    QString devices;
    QList<int> counts;
    void (*add)(Testbed &testbed, int number);
    QMap<QString, QString> subjects; ///< the benchmarks and what they measure
};

void addPort(Testbed &testbed, int number)
{
    const QString device = testbed.addUsbDevice({1, 1, "Adapter", QString::number(number)});
    testbed.addSerialPort(device, QString("/dev/ttyUSB%1").arg(number));
}

void addHid(Testbed &testbed, int number)
{
    const QString device = testbed.addUsbDevice({1, 1, "Keyboard", QString::number(number)});
    testbed.addHidInterface(device, {1, 6, {}, {}});
}

InProcess::Results measure(const Crowd &crowd, int count, const QString &path,
                           Program::Variables variables, int rounds)
{
    Testbed testbed;
    for (int number = 0; number < count; ++number) {
        crowd.add(testbed, number);
    }
    testbed.addSerialPort(testbed.addUsbDevice({0x7F3C, 0x0C52, "Bootloader", "1"}),
                          "/dev/cu.usbmodem14201");
    const Program::Variables devices = testbed.childEnvironment();
    for (auto variable = devices.begin(); variable != devices.end(); ++variable) {
        variables.insert(variable.key(), variable.value());
    }
    const QString names = QStringList(crowd.subjects.keys()).join('|');
    return InProcess::measure(path, variables, "^(" + names + ")/", rounds);
}

/// One row for each number of devices. The smallest one, scaled, is the floor of the others.
Rows rowsOf(const Crowd &crowd, const QString &what, const QList<Series> &times)
{
    constexpr double kTarget = 1.15;
    Rows rows;
    for (int i = 0; i < times.size(); ++i) {
        const int factor = crowd.counts.at(i) / crowd.counts.first();
        Row row = {QString("%1, %2 %3").arg(what).arg(crowd.counts.at(i)).arg(crowd.devices),
                   "ms",
                   "",
                   times.at(i),
                   {}};
        if (factor > 1) {
            row.floorName = QString("%1 × %2").arg(factor).arg(crowd.counts.first());
            row.floor = times.first().times(factor);
            row.kind = Row::Drifting;
            row.target = kTarget;
        }
        rows += row;
    }
    return rows;
}

} // namespace

Rows CrowdRuns::run(const QString &path, const Program::Variables &variables, int rounds)
{
    const QList<Crowd> crowds = {
        {"serial ports", {50, 100, 200}, addPort, {{"click/ours", "Click to the tool's output"}}},
        {"HID interfaces",
         {125, 250, 500},
         addHid,
         {{"request/ours", "Request to restart"}, {"watch/ours", "Start of the watch"}}},
    };
    Rows rows;
    for (const Crowd &crowd : crowds) {
        QMap<QString, QList<Series>> times;
        for (const int count : crowd.counts) {
            const InProcess::Results results = measure(crowd, count, path, variables, rounds);
            for (auto subject = crowd.subjects.begin(); subject != crowd.subjects.end();
                 ++subject) {
                times[subject.value()].append(results.at(subject.key()).times(0.001));
            }
        }
        for (auto entry = times.begin(); entry != times.end(); ++entry) {
            rows += rowsOf(crowd, entry.key(), entry.value());
        }
    }
    return rows;
}
