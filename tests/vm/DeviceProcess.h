// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QStringList>

/// Controls the program gadget-device, which simulates the device.
class DeviceProcess
{
public:
    /// Starts the program with its \a arguments. The device is not plugged in.
    explicit DeviceProcess(const QStringList &arguments = {});

    /// Unplugs the device.
    ~DeviceProcess();

    DeviceProcess(const DeviceProcess &) = delete;
    DeviceProcess &operator=(const DeviceProcess &) = delete;

    /// Plugs the device in or pulls the cable, and waits until the machine has noticed.
    void plugInApplication();
    void plugInBootloader();
    void pull();

    /// Pulls the cable as soon as a program opens a HID node.
    void pullWhenOpened();

    /// Pulls the cable whenever this number of bytes of an image has arrived; never if -1.
    void pullAfter(int bytes);

    /// The current number of HID interfaces and bootloader ports in the machine.
    static int hidNodes();
    static int ports();

    /// Installs the program's udev rules for devices that are plugged in later, or removes them.
    static void setRules(bool areThere);

    /// How often the device has reported this event.
    int count(const QByteArray &event);

    /// All reports that the device has received.
    QList<QByteArray> reports();

    /// The SHA-256 of each image that the device has accepted, as hexadecimal digits.
    QList<QByteArray> images();

    /// The durations of all restarts, in milliseconds.
    QList<int> timesAway();

    /// The output of the program.
    QByteArray log();

private:
    void command(const QByteArray &line);
    void await(const QByteArray &event, int times);
    QList<QByteArray> valuesOf(const QByteArray &event);

    QProcess m_process;
    QByteArray m_output;
};
