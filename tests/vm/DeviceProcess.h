// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QStringList>

/// A device played by the program gadget-device, for a test that looks at it from outside.
class DeviceProcess
{
public:
    /// Starts it unplugged, with the program's own arguments.
    explicit DeviceProcess(const QStringList &arguments = {});

    /// Unplugs it.
    ~DeviceProcess();

    DeviceProcess(const DeviceProcess &) = delete;
    DeviceProcess &operator=(const DeviceProcess &) = delete;

    /// Gives it a command and waits until it and the machine are done with it.
    void plugInApplication();
    void plugInBootloader();
    void pull();

    /// Its cable will be pulled as soon as a program opens a HID node.
    void pullWhenOpened();

    /// Its cable will be pulled whenever so many bytes of an image have arrived; -1 for never.
    void pullAfter(int bytes);

    /// How many HID interfaces and bootloader ports the machine has now.
    static int hidNodes();
    static int ports();

    /// Puts the udev rules that ship with the program in force for devices to come, or takes them
    /// back.
    static void setRules(bool areThere);

    /// How often this has happened so far, in the device's own words.
    int count(const QByteArray &event);

    /// Each report that it has received.
    QList<QByteArray> reports();

    /// The SHA-256 of each image that it has received and accepted, as hexadecimal digits.
    QList<QByteArray> images();

    /// How long it was away at each restart, in milliseconds.
    QList<int> timesAway();

    /// Everything it has said.
    QByteArray log();

private:
    void command(const QByteArray &line);
    void await(const QByteArray &event, int times);
    QList<QByteArray> valuesOf(const QByteArray &event);

    QProcess m_process;
    QByteArray m_output;
};
