// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <QVector>

/// Stands in for all that the window meets outside itself: child processes, serial ports, HID
/// devices, the time and the log. A program that links it starts nothing, waits for nothing and
/// sees no device of the machine, so that an upgrade takes microseconds. One at a time.
class MachineDouble
{
public:
    MachineDouble();
    /// Deletes what the window has left behind.
    ~MachineDouble();
    MachineDouble(const MachineDouble &) = delete;
    MachineDouble &operator=(const MachineDouble &) = delete;

    /// Whether the bootloader's port is there, now and once the window has waited for it.
    bool hasPort = false;
    bool hasPortAfterWait = false;

    /// How often devices were looked for to be asked into their bootloader.
    int triggers = 0;
    /// Debug lines so far. They go nowhere.
    int logLines = 0;
    /// The tool of each upgrade and its timer, oldest first; null once deleted.
    QVector<QPointer<QProcess>> tools;
    QVector<QPointer<QTimer>> timers;

    /// A chunk of the newest tool, which must live; \a noticed when the window is told at once.
    void say(const QByteArray &chunk, bool noticed = true);
    void complain(const QByteArray &chunk);
    /// Lets the timer of that upgrade tick as often, unless it stops or goes before.
    void tick(int index, int times = 1);
};
