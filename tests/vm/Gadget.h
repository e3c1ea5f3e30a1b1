// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A USB device that the kernel emulates on a device controller, configured through configfs.
///
/// Needs root and the modules libcomposite, usb_f_hid and usb_f_acm. Failures abort the program
/// with a message.
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

    /// Creates a device without functions, not attached. Removes an older one of that \a name
    /// first, which a killed program may have left behind.
    Gadget(const QString &name, const Identity &identity);

    /// Removes the device.
    ~Gadget();

    Gadget(const Gadget &) = delete;
    Gadget &operator=(const Gadget &) = delete;

    /// Adds a HID interface with reports of at most \a reportSize bytes, including their id.
    /// Returns the node on the device's side, such as "/dev/hidg0". It exists while the device is
    /// attached.
    QString addHid(const QString &name, const QByteArray &reportDescriptor, int reportSize);

    /// Adds a serial port. Returns the node on the device's side, such as "/dev/ttyGS0".
    QString addSerialPort();

    /// Plugs the device into the machine's \a controller, or unplugs it.
    void attach(const QString &controller);
    void detach();

private:
    void addToConfiguration(const QString &function);
    void remove();

    const QString m_path;
};
