// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/Sysfs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>

namespace {

void write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

void link(const QString &target, const QString &path)
{
    const QDir directory = QFileInfo(path).dir();
    directory.mkpath(".");
    QFile::link(directory.relativeFilePath(target), path);
}

} // namespace

Sysfs::Sysfs(const QString &root)
    : m_directory(root + "/sys")
{ }

void Sysfs::add(const Device &device)
{
    const QString directory = m_directory + device.path;
    QDir().mkpath(directory);
    QByteArray uevent;
    for (auto property = device.properties.begin(); property != device.properties.end();
         ++property) {
        uevent += property.key() + '=' + property.value() + '\n';
    }
    write(directory + "/uevent", uevent);
    for (auto attribute = device.attributes.begin(); attribute != device.attributes.end();
         ++attribute) {
        write(directory + '/' + attribute.key(), attribute.value());
    }

    const QString subsystem = m_directory + (device.inClass ? "/class/" : "/bus/")
        + QString::fromLatin1(device.subsystem);
    QDir().mkpath(subsystem);
    link(subsystem, directory + "/subsystem");
    link(directory, linkFor(device));
    if (device.properties.contains("MAJOR")) {
        link(directory, numberLinkFor(device));
    }
    if (!device.parentLink.isEmpty()) {
        QFile::link(device.parentLink, directory + "/device");
    }
    m_devices.insert(device.path, device);
}

void Sysfs::setAttribute(const QString &path, const QByteArray &name, const QByteArray &value)
{
    write(m_directory + path + '/' + name, value);
    m_devices[path].attributes[name] = value;
}

void Sysfs::remove(const QString &path)
{
    const QList<Device> devices = devicesFrom(path);
    for (const Device &device : devices) {
        QFile::remove(linkFor(device));
        QFile::remove(numberLinkFor(device));
        m_devices.remove(device.path);
    }
    QDir(m_directory + path).removeRecursively();
}

QList<Sysfs::Device> Sysfs::devicesFrom(const QString &path) const
{
    QList<Device> result;
    for (const Device &device : m_devices) {
        if (device.path == path || device.path.startsWith(path + '/')) {
            result.append(device);
        }
    }
    return result;
}

QString Sysfs::linkFor(const Device &device) const
{
    const QString subsystem = QString::fromLatin1(device.subsystem);
    const QString name = QFileInfo(device.path).fileName();
    return m_directory
        + (device.inClass ? "/class/" + subsystem + '/' : "/bus/" + subsystem + "/devices/") + name;
}

QString Sysfs::numberLinkFor(const Device &device) const
{
    return m_directory + "/dev/char/" + QString::fromLatin1(device.properties.value("MAJOR")) + ':'
        + QString::fromLatin1(device.properties.value("MINOR"));
}
