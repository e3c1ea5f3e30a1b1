// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// The tree of devices of a testbed, laid out as the kernel lays out /sys.
class Sysfs
{
public:
    using Values = QMap<QByteArray, QByteArray>;

    struct Device
    {
        QString path; ///< Below /sys, such as "/devices/usb1/1-1"; its parents are added before it.
        QByteArray subsystem;
        bool inClass = false; ///< Listed under /sys/class, otherwise under /sys/bus.
        QString parentLink; ///< Target of the link "device", relative to the path; empty for none.
        Values properties; ///< What the file "uevent" holds.
        Values attributes; ///< One file each, by name.
    };

    /// \a root is the testbed's root; the tree is made below its "sys".
    explicit Sysfs(const QString &root);

    void add(const Device &device);

    /// Removes the device at \a path and everything below it.
    void remove(const QString &path);

    /// The devices at and below \a path, a device before what lies below it.
    QList<Device> devicesFrom(const QString &path) const;

private:
    QString linkFor(const Device &device) const;
    QString numberLinkFor(const Device &device) const;

    const QString m_directory;
    QMap<QString, Device> m_devices;
};
