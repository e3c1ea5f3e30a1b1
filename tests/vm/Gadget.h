// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A USB device that the kernel plays on one of its device controllers, made through configfs.
///
/// Needs root and the modules libcomposite, usb_f_hid and usb_f_acm. What cannot be made ends the
/// program with a message, since nothing can be tested then.
class Gadget
{
public:
    struct Identity
    {
        int vendorId = 0;
        int productId = 0;
        QString name;
        QString serialNumber;
    };

    /// Makes a device without functions that nobody sees yet. An older one of that \a name, left by
    /// a program that was killed, goes first.
    Gadget(const QString &name, const Identity &identity);

    /// Takes the device away.
    ~Gadget();

    Gadget(const Gadget &) = delete;
    Gadget &operator=(const Gadget &) = delete;

    /// Adds a HID interface whose reports have at most \a reportSize bytes, their id included.
    /// Returns its node at the device's end, such as "/dev/hidg0"; it exists while attached.
    QString addHid(const QString &name, const QByteArray &reportDescriptor, int reportSize);

    /// Adds a serial port. Returns its node at the device's end, such as "/dev/ttyGS0".
    QString addSerialPort();

    /// Plugs it into the machine's controller of the given name, or unplugs it.
    void attach(const QString &controller);
    void detach();

private:
    void addToConfiguration(const QString &function);
    void remove();

    const QString m_path;
};
