// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// A testbed's device tree, with the layout of /sys.
class Sysfs
{
public:
    using Values = QMap<QByteArray, QByteArray>;

    struct Device
    {
        QString path; ///< Below /sys, such as "/devices/usb1/1-1". Add its parents first.
        QByteArray subsystem;
        bool inClass = false; ///< Listed under /sys/class, otherwise under /sys/bus.
        QString parentLink; ///< Target of the link "device", relative to the path; may be empty.
        Values properties; ///< The contents of the file "uevent".
        Values attributes; ///< One file each, by name.
    };

    /// Creates the tree in the folder "sys" of \a root, the testbed's root.
    explicit Sysfs(const QString &root);

    void add(const Device &device);

    /// Sets an attribute of the device at \a path.
    void setAttribute(const QString &path, const QByteArray &name, const QByteArray &value);

    /// Removes the device at \a path and everything below it.
    void remove(const QString &path);

    /// The devices at and below \a path, parents first.
    QList<Device> devicesFrom(const QString &path) const;

private:
    QString linkFor(const Device &device) const;
    QString numberLinkFor(const Device &device) const;

    const QString m_directory;
    QMap<QString, Device> m_devices;
};
