// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/Testbed_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <umockdev.h>

namespace {

QByteArray hex(int value, int width)
{
    return QByteArray::number(value, 16).rightJustified(width, '0').toUpper();
}

QString rootOf(UMockdevTestbed *testbed)
{
    gchar *const path = umockdev_testbed_get_root_dir(testbed);
    QString result = QFile::decodeName(path);
    g_free(path);
    return result;
}

} // namespace

Testbed::Values overridden(Testbed::Values values, const Testbed::Values &overrides)
{
    for (auto entry = overrides.begin(); entry != overrides.end(); ++entry) {
        if (entry.value().isNull()) {
            values.remove(entry.key());
        } else {
            values.insert(entry.key(), entry.value());
        }
    }
    return values;
}

Testbed::Private::Private()
    : testbed(umockdev_testbed_new())
    , root(rootOf(testbed))
    , sysfs(root)
    , events(root)
{
    QDir().mkpath(root + "/dev/.node");
}

Testbed::Private::~Private()
{
    while (!nodes.empty()) {
        const QString node = nodes.begin()->first;
        dropNode(node);
    }
    g_object_unref(testbed);
}

void Testbed::Private::add(const Sysfs::Device &device)
{
    sysfs.add(device);
    announce(device, "add");
}

void Testbed::Private::addNode(const QString &sysPath, const QByteArray &subsystem,
                               const QString &node, const QByteArray &major, int minor,
                               const Values &properties)
{
    const QByteArray number = major + ':' + QByteArray::number(minor);
    QFile::link(QString::fromLatin1(number), numberFileOf(node));
    nodes[node].sysPath = sysPath;

    Sysfs::Device device;
    device.path = sysPath;
    device.subsystem = subsystem;
    device.inClass = true;
    device.parentLink = "../../../" + sysPath.section('/', -3, -3);
    device.properties = properties;
    device.properties["DEVNAME"] = QString(node).remove(0, 5).toUtf8(); // without "/dev/"
    device.properties["MAJOR"] = major;
    device.properties["MINOR"] = QByteArray::number(minor);
    device.attributes = {{"dev", number}};
    add(device);
}

QString Testbed::Private::addUsbInterface(const QString &usbPath)
{
    const int index = interfaceCounts[usbPath]++;
    const UsbDevice &usb = usbDevices.at(usbPath);
    Sysfs::Device interface;
    interface.path = QString("%1/%2:1.%3").arg(usbPath, QFileInfo(usbPath).fileName()).arg(index);
    interface.subsystem = "usb";
    interface.properties = {{"DEVTYPE", "usb_interface"},
                            {"PRODUCT",
                             (QByteArray::number(usb.vendorId, 16) + '/'
                              + QByteArray::number(usb.productId, 16) + "/100")}};
    interface.attributes = {{"bInterfaceNumber", hex(index, 2)}};
    sysfs.setAttribute(usbPath, "bNumInterfaces", QByteArray::number(index + 1));
    add(interface);
    return interface.path;
}

QString Testbed::Private::addHid(const QString &usbPath, const HidInterface &interface, int number)
{
    const UsbDevice &usb = usbDevices.at(usbPath);
    Sysfs::Device hid;
    hid.path = addUsbInterface(usbPath)
        + QString("/0003:%1:%2.%3")
              .arg(QString(hex(usb.vendorId, 4)), QString(hex(usb.productId, 4)),
                   QString(hex(number, 4)));
    hid.subsystem = "hid";
    hid.properties
        = overridden({{"DRIVER", "hid-generic"},
                      {"HID_ID", ("0003:" + hex(usb.vendorId, 8) + ':' + hex(usb.productId, 8))},
                      {"HID_NAME", usb.name.toUtf8()},
                      {"HID_PHYS", "usb-simulated/input" + QByteArray::number(number)},
                      {"HID_UNIQ", usb.serialNumber.toUtf8()}},
                     interface.properties);
    hid.attributes
        = overridden({{"report_descriptor", interface.reportDescriptor}}, interface.attributes);
    add(hid);
    return hid.path;
}

void Testbed::Private::announce(const Sysfs::Device &device, const QByteArray &action)
{
    Values properties = device.properties;
    if (properties.contains("DEVNAME")) {
        properties["DEVNAME"].prepend("/dev/");
    }
    properties.insert("ACTION", action);
    properties.insert("DEVPATH", device.path.toUtf8());
    properties.insert("SUBSYSTEM", device.subsystem);
    properties.insert("SEQNUM", QByteArray::number(m_sequence++));
    QByteArray text;
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        text += property.key() + '=' + property.value() + '\0';
    }
    events.send(device.subsystem, device.properties.value("DEVTYPE"), text);
}

void Testbed::Private::remove(const QString &sysPath)
{
    const QList<Sysfs::Device> devices = sysfs.devicesFrom(sysPath);
    for (const Sysfs::Device &device : devices) {
        if (device.inClass) {
            dropNode("/dev/" + QString::fromUtf8(device.properties.value("DEVNAME")));
        }
    }
    sysfs.remove(sysPath);
    // Children are removed first, as when a cable is pulled.
    for (auto device = devices.rbegin(); device != devices.rend(); ++device) {
        announce(*device, "remove");
    }
}

void Testbed::Private::serveHid(const QString &node, const UsbDevice &usb,
                                const QByteArray &descriptor)
{
    QFile file(fileOf(node));
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("cannot create %s", qPrintable(file.fileName()));
    }
    const HidNode::Identity identity
        = {usb.vendorId, usb.productId, usb.name.toUtf8(), usb.serialNumber.toUtf8(), descriptor};
    const auto onWrite = [this, node](const QByteArray &bytes, bool failed) {
        if (reportHandler) {
            reportHandler({node, bytes, failed});
        }
    };
    nodes[node].hid = std::make_unique<HidNode>(identity, onWrite);
    umockdev_testbed_attach_ioctl(testbed, qPrintable(node), nodes[node].hid->handler(), nullptr);
}

void Testbed::Private::serveLine(const QString &node)
{
    nodes[node].line = std::make_unique<PseudoTerminal>();
    QFileInfo(fileOf(node)).dir().mkpath(".");
    QFile::link(QFile::decodeName(nodes[node].line->path()), fileOf(node));
}

void Testbed::Private::dropNode(const QString &node)
{
    const auto entry = nodes.find(node);
    if (entry == nodes.end()) {
        return;
    }
    if (entry->second.hid) {
        umockdev_testbed_detach_ioctl(testbed, qPrintable(node), nullptr);
    }
    QFile::remove(numberFileOf(node));
    QDir().rmdir(fileOf(node)); // a directory if opening fails
    QFile::remove(fileOf(node));
    nodes.erase(entry);
}

QString Testbed::Private::numberFileOf(const QString &node) const
{
    return root + "/dev/.node/" + QString(node).remove(0, 5).replace('/', '_');
}
