// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/Gadget.h"

#include <QDir>
#include <QFile>

namespace {

const QString kConfiguration = "/configs/c.1";
const QString kEnglish = "/strings/0x409";

void make(const QString &path)
{
    if (!QDir().mkpath(path)) {
        qFatal("cannot create %s", qPrintable(path));
    }
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(path));
    }
    return file.readAll().trimmed();
}

bool write(const QString &path, const QByteArray &value)
{
    QFile file(path);
    // The kernel takes each write as a complete value.
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        && file.write(value) == value.size();
}

void set(const QString &path, const QByteArray &value)
{
    if (!write(path, value)) {
        qFatal("cannot set %s", qPrintable(path));
    }
}

void set(const QString &path, int value)
{
    set(path, "0x" + QByteArray::number(value, 16));
}

} // namespace

Gadget::Gadget(const QString &name, const Identity &identity)
    : m_path("/sys/kernel/config/usb_gadget/" + name)
{
    constexpr int kUsb2 = 0x0200;
    remove();
    make(m_path + kEnglish);
    set(m_path + "/bcdUSB", kUsb2);
    set(m_path + "/idVendor", identity.vendorId);
    set(m_path + "/idProduct", identity.productId);
    set(m_path + kEnglish + "/product", identity.name.toUtf8());
    set(m_path + kEnglish + "/serialnumber", identity.serialNumber.toUtf8());
    make(m_path + kConfiguration);
}

Gadget::~Gadget()
{
    remove();
}

QString Gadget::addHid(const QString &name, const QByteArray &reportDescriptor, int reportSize)
{
    const QString function = m_path + "/functions/hid." + name;
    make(function);
    set(function + "/report_length", reportSize);
    set(function + "/report_desc", reportDescriptor);
    addToConfiguration(function);
    return "/dev/hidg" + contents(function + "/dev").split(':').last();
}

QString Gadget::addSerialPort()
{
    const QString function = m_path + "/functions/acm.port";
    make(function);
    addToConfiguration(function);
    return "/dev/ttyGS" + contents(function + "/port_num");
}

void Gadget::attach(const QString &controller)
{
    set(m_path + "/UDC", controller.toUtf8());
}

void Gadget::detach()
{
    // Fails if the device is not attached, which is fine.
    write(m_path + "/UDC", "\n");
}

void Gadget::addToConfiguration(const QString &function)
{
    const QString link = m_path + kConfiguration + '/' + QDir(function).dirName();
    if (!QFile::link(function, link)) {
        qFatal("cannot create %s", qPrintable(link));
    }
}

void Gadget::remove()
{
    if (!QDir(m_path).exists()) {
        return;
    }
    detach();
    const QDir configuration(m_path + kConfiguration);
    const QStringList links = configuration.entryList({"*.*"});
    for (const QString &link : links) {
        QFile::remove(configuration.filePath(link));
    }
    // The kernel removes the entries that it has created in these folders.
    QDir().rmdir(configuration.path());
    const QDir functions(m_path + "/functions");
    const QStringList names = functions.entryList({"*.*"}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        QDir().rmdir(functions.filePath(name));
    }
    QDir().rmdir(m_path + kEnglish);
    if (!QDir().rmdir(m_path)) {
        qFatal("cannot remove %s", qPrintable(m_path));
    }
}
