// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/Testbed.h"

#include "simulator/HidNode.h"
#include "simulator/SerialLine.h"
#include "simulator/Sysfs.h"
#include "simulator/UeventSender.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <umockdev.h>

#include <algorithm>
#include <map>

namespace {

QByteArray hex(int value, int width)
{
    return QByteArray::number(value, 16).rightJustified(width, '0').toUpper();
}

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

} // namespace

class Testbed::Private
{
public:
    struct Node
    {
        QString sysPath;
        std::unique_ptr<HidNode> hid;
        std::unique_ptr<SerialLine> line;
    };

    Private()
        : testbed(umockdev_testbed_new())
        , root(takeString(umockdev_testbed_get_root_dir(testbed)))
        , sysfs(root)
        , events(root)
    {
        QDir().mkpath(root + "/dev/.node");
    }

    ~Private()
    {
        while (!nodes.empty()) {
            dropNode(nodes.begin()->first);
        }
        g_object_unref(testbed);
    }

    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    static QString takeString(gchar *text)
    {
        const QString result = QFile::decodeName(text);
        g_free(text);
        return result;
    }

    QString fileOf(const QString &node) const { return root + node; }
    const UsbDevice &usbDevice(const QString &path) { return usbDevices[path]; }

    void add(const Sysfs::Device &device);
    void announce(const Sysfs::Device &device, const QByteArray &action);
    void remove(const QString &sysPath);
    QString addUsbInterface(const QString &usbPath);
    void makeNodeFile(const QString &node, const QByteArray &number);
    void dropNode(const QString &node);

    UMockdevTestbed *const testbed;
    const QString root;
    Sysfs sysfs;
    UeventSender events;
    std::map<QString, Node> nodes;
    std::map<QString, UsbDevice> usbDevices;
    std::map<QString, int> interfaceCounts;
    ReportHandler reportHandler;
    int nextUsb = 1;
    int nextHid = 0;
    int nextPort = 0;
    int sequence = 1;
};

void Testbed::Private::add(const Sysfs::Device &device)
{
    sysfs.add(device);
    announce(device, "add");
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
    properties.insert("SEQNUM", QByteArray::number(sequence++));
    QByteArray text;
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        text += property.key() + '=' + property.value() + '\0';
    }
    events.send(device.subsystem, device.properties.value("DEVTYPE"), text);
}

void Testbed::Private::remove(const QString &sysPath)
{
    QList<QString> gone;
    for (const auto &[node, details] : nodes) {
        if (details.sysPath == sysPath || details.sysPath.startsWith(sysPath + '/')) {
            gone.append(node);
        }
    }
    for (const QString &node : gone) {
        dropNode(node);
    }
    const QList<Sysfs::Device> devices = sysfs.devicesFrom(sysPath);
    sysfs.remove(sysPath);
    // The innermost goes first, as when a cable is pulled.
    for (auto device = devices.rbegin(); device != devices.rend(); ++device) {
        announce(*device, "remove");
    }
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
    add(interface);
    return interface.path;
}

void Testbed::Private::makeNodeFile(const QString &node, const QByteArray &number)
{
    const QString name = QString(node).remove(0, 5); // without "/dev/"
    QFile::link(QString::fromLatin1(number),
                root + "/dev/.node/" + QString(name).replace('/', '_'));
    QFile file(fileOf(node));
    QFileInfo(file).dir().mkpath(".");
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("cannot make %s", qPrintable(file.fileName()));
    }
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
    QFile::remove(root + "/dev/.node/" + QString(node).remove(0, 5).replace('/', '_'));
    QDir().rmdir(fileOf(node)); // when opening was to fail
    QFile::remove(fileOf(node));
    nodes.erase(entry);
}

Testbed::Testbed()
    : d(std::make_unique<Private>())
{ }

Testbed::~Testbed() = default;

QByteArray Testbed::outputDescriptor(int usagePage, int usage)
{
    const auto low = [](int value) {
        return static_cast<char>(value & 0xFF);
    };
    QByteArray descriptor;
    descriptor.append("\x06").append(low(usagePage)).append(low(usagePage >> 8));
    descriptor.append("\x09").append(low(usage));
    descriptor.append("\xA1\x01"); // a collection, of the application kind
    descriptor.append("\x85\xAA"); // report id
    descriptor.append("\x09").append(low(usage));
    descriptor.append("\x15\x00", 2).append("\x26\xFF\x00", 3); // values from 0 to 255
    descriptor.append("\x75\x08\x95\x3F\x91\x02"); // 63 output fields of 8 bits
    descriptor.append("\xC0"); // end of the collection
    return descriptor;
}

Testbed::Values Testbed::childEnvironment() const
{
    return {{"UMOCKDEV_DIR", QFile::encodeName(d->root)},
            {"LD_PRELOAD", "libumockdev-preload.so.0"}};
}

QString Testbed::addUsbDevice(const UsbDevice &device)
{
    const int number = d->nextUsb++;
    Sysfs::Device usb;
    usb.path = QString("/devices/usb1/1-%1").arg(number);
    usb.subsystem = "usb";
    usb.properties = {{"DEVTYPE", "usb_device"},
                      {"DRIVER", "usb"},
                      {"BUSNUM", "001"},
                      {"DEVNUM", QByteArray::number(number).rightJustified(3, '0')},
                      {"MAJOR", "189"},
                      {"MINOR", QByteArray::number(number - 1)},
                      {"PRODUCT",
                       (QByteArray::number(device.vendorId, 16) + '/'
                        + QByteArray::number(device.productId, 16) + "/100")}};
    usb.attributes = {{"busnum", "1"},
                      {"devnum", QByteArray::number(number)},
                      {"idVendor", hex(device.vendorId, 4).toLower()},
                      {"idProduct", hex(device.productId, 4).toLower()},
                      {"bcdDevice", "0100"},
                      {"manufacturer", "FW Update"},
                      {"product", device.name.toUtf8()},
                      {"serial", device.serialNumber.toUtf8()}};
    d->usbDevices[usb.path] = device;
    d->add(usb);
    return usb.path;
}

QString Testbed::addHidInterface(const QString &usbPath, const HidInterface &interface)
{
    const UsbDevice usb = d->usbDevices.at(usbPath);
    const int number = d->nextHid++;
    const QByteArray descriptor = interface.reportDescriptor.isEmpty()
        ? outputDescriptor(interface.usagePage, interface.usage)
        : interface.reportDescriptor;

    Sysfs::Device hid;
    hid.path = QString("%1/0003:%2:%3.%4")
                   .arg(d->addUsbInterface(usbPath), QString(hex(usb.vendorId, 4)),
                        QString(hex(usb.productId, 4)), QString(hex(number, 4)));
    hid.subsystem = "hid";
    hid.properties
        = overridden({{"DRIVER", "hid-generic"},
                      {"HID_ID", ("0003:" + hex(usb.vendorId, 8) + ':' + hex(usb.productId, 8))},
                      {"HID_NAME", usb.name.toUtf8()},
                      {"HID_PHYS", "usb-simulated/input" + QByteArray::number(number)},
                      {"HID_UNIQ", usb.serialNumber.toUtf8()}},
                     interface.properties);
    hid.attributes = {{"report_descriptor", descriptor}};
    d->add(hid);

    const QString name = QString("hidraw%1").arg(number);
    const QString node = "/dev/" + name;
    d->makeNodeFile(node, "241:" + QByteArray::number(number));
    Private::Node &entry = d->nodes[node];
    entry.hid = std::make_unique<HidNode>(HidNode::Identity{usb.vendorId, usb.productId,
                                                            usb.name.toUtf8(),
                                                            usb.serialNumber.toUtf8(), descriptor},
                                          [this, node](const QByteArray &bytes) {
                                              if (d->reportHandler) {
                                                  d->reportHandler(node, bytes);
                                              }
                                          });
    entry.sysPath = hid.path + "/hidraw/" + name;
    umockdev_testbed_attach_ioctl(d->testbed, qPrintable(node), entry.hid->handler(), nullptr);

    Sysfs::Device raw;
    raw.path = entry.sysPath;
    raw.subsystem = "hidraw";
    raw.inClass = true;
    raw.parentLink = "../../../" + QFileInfo(hid.path).fileName();
    raw.properties
        = {{"DEVNAME", name.toUtf8()}, {"MAJOR", "241"}, {"MINOR", QByteArray::number(number)}};
    raw.attributes = {{"dev", "241:" + QByteArray::number(number)}};
    d->add(raw);
    return node;
}

void Testbed::addSerialPort(const QString &usbPath, const QString &node)
{
    const int number = d->nextPort++;
    const QString name = QString(node).remove(0, 5);
    const QString interface = d->addUsbInterface(usbPath);

    Private::Node &entry = d->nodes[node];
    entry.line = std::make_unique<SerialLine>();
    entry.sysPath = interface + "/tty/" + QString(name).replace('/', '!');
    QFileInfo(d->fileOf(node)).dir().mkpath(".");
    QFile::link(QFile::decodeName(entry.line->path()), d->fileOf(node));

    Sysfs::Device tty;
    tty.path = entry.sysPath;
    tty.subsystem = "tty";
    tty.inClass = true;
    tty.parentLink = "../../../" + QFileInfo(interface).fileName();
    tty.properties
        = {{"DEVNAME", name.toUtf8()}, {"MAJOR", "166"}, {"MINOR", QByteArray::number(number)}};
    tty.attributes = {{"dev", "166:" + QByteArray::number(number)}};
    d->add(tty);
}

int Testbed::portDescriptor(const QString &node) const
{
    const auto entry = d->nodes.find(node);
    return entry != d->nodes.end() && entry->second.line ? entry->second.line->deviceDescriptor()
                                                         : -1;
}

void Testbed::removeUsbDevice(const QString &usbPath)
{
    d->remove(usbPath);
    d->usbDevices.erase(usbPath);
}

void Testbed::removeNode(const QString &node)
{
    d->remove(d->nodes.at(node).sysPath);
}

void Testbed::announce(const QString &node, const QByteArray &action)
{
    d->announce(d->sysfs.devicesFrom(d->nodes.at(node).sysPath).first(), action);
}

void Testbed::setOpenFails(const QString &node, bool fails)
{
    // A directory cannot be opened for writing, not even by root, whom no permission stops.
    const QString file = d->fileOf(node);
    if (fails && !QFileInfo(file).isDir()) {
        QFile::rename(file, file + ".aside");
        QDir().mkdir(file);
    } else if (!fails && QFileInfo(file).isDir()) {
        QDir().rmdir(file);
        QFile::rename(file + ".aside", file);
    }
}

void Testbed::setWriteFails(const QString &node, bool fails)
{
    d->nodes.at(node).hid->setWriteFails(fails);
}

void Testbed::setReportHandler(const ReportHandler &handler)
{
    d->reportHandler = handler;
}

QList<QByteArray> Testbed::reports(const QString &node) const
{
    return d->nodes.at(node).hid->reports();
}

int Testbed::openHandles(const QString &node) const
{
    const QString file = d->fileOf(node);
    int count = 0;
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString &process : processes) {
        const QFileInfoList handles
            = QDir("/proc/" + process + "/fd").entryInfoList(QDir::AllEntries | QDir::System);
        count += static_cast<int>(
            std::count_if(handles.begin(), handles.end(), [&file](const QFileInfo &handle) {
                return handle.symLinkTarget() == file;
            }));
    }
    return count;
}

int Testbed::handlesSoFar(const QString &node) const
{
    return d->nodes.at(node).hid->handlesSoFar();
}
