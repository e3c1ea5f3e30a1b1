// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <QVector>

/// Replaces what the window uses outside itself: child processes, serial ports, HID devices, the
/// time and the log. A program that links it starts no process, never waits and sees no real
/// device, so that an upgrade takes microseconds. Only one may exist at a time.
class MachineDouble
{
public:
    MachineDouble();
    /// Deletes the processes and timers that the window has not.
    ~MachineDouble();
    MachineDouble(const MachineDouble &) = delete;
    MachineDouble &operator=(const MachineDouble &) = delete;

    /// Whether the bootloader's port exists, at first and after the wait for the device.
    bool hasPort = false;
    bool hasPortAfterWait = false;

    /// How often the window has asked devices to restart into their bootloader.
    int triggers = 0;
    /// The number of debug lines so far. Nothing prints them.
    int logLines = 0;
    /// The tool of each upgrade and its timer, oldest first; null once deleted.
    QVector<QPointer<QProcess>> tools;
    QVector<QPointer<QTimer>> timers;

    /// The newest tool, which must exist, writes a chunk. The window is told at once if \a noticed.
    void say(const QByteArray &chunk, bool noticed = true);
    void complain(const QByteArray &chunk);
    /// Lets the timer of an upgrade tick, unless it is stopped or deleted before.
    void tick(int index, int times = 1);
};
