// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/Testbed.h"

#include "simulator/testbed/HidDescriptor.h"
#include "simulator/testbed/Testbed_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

#include <algorithm>

namespace {

constexpr auto kPreloaded = "libumockdev-preload.so.0";

/// What udev adds to the ports of \a device, by which programs recognise them.
Testbed::Values udevProperties(const Testbed::UsbDevice &device)
{
    const auto id = [](int number) {
        return QByteArray::number(number, 16).rightJustified(4, '0');
    };
    const auto text = [](const QString &name) {
        return name.toUtf8().replace(' ', '_');
    };
    return {{"ID_BUS", "usb"},
            {"ID_VENDOR_ID", id(device.vendorId)},
            {"ID_MODEL_ID", id(device.productId)},
            {"ID_VENDOR", "FW_Update"},
            {"ID_MODEL", text(device.name)},
            {"ID_SERIAL_SHORT", text(device.serialNumber)}};
}

} // namespace

bool Testbed::isAvailable()
{
    void *const library = dlopen(kPreloaded, RTLD_LAZY | RTLD_LOCAL);
    if (library != nullptr) {
        dlclose(library);
    }
    return library != nullptr;
}

Testbed::Testbed()
    : d(std::make_unique<Private>())
{ }

Testbed::~Testbed() = default;

Testbed::Values Testbed::childEnvironment() const
{
    return {{"UMOCKDEV_DIR", QFile::encodeName(d->root)}, {"LD_PRELOAD", kPreloaded}};
}

QString Testbed::addUsbDevice(const UsbDevice &device)
{
    const int number = d->nextUsb++;
    const QByteArray vendorId = QByteArray::number(device.vendorId, 16);
    const QByteArray productId = QByteArray::number(device.productId, 16);
    Sysfs::Device usb;
    usb.path = QString("/devices/usb1/1-%1").arg(number);
    usb.subsystem = "usb";
    const QByteArray deviceNumber = QByteArray::number(number).rightJustified(3, '0');
    usb.properties = overridden({{"DEVTYPE", "usb_device"},
                                 {"DEVNAME", "bus/usb/001/" + deviceNumber},
                                 {"MAJOR", "189"},
                                 {"MINOR", QByteArray::number(number - 1)},
                                 {"DRIVER", "usb"},
                                 {"BUSNUM", "001"},
                                 {"DEVNUM", deviceNumber},
                                 {"PRODUCT", (vendorId + '/' + productId + "/100")}},
                                device.properties);
    usb.attributes = overridden({{"busnum", "1"},
                                 {"devnum", QByteArray::number(number)},
                                 {"idVendor", vendorId.rightJustified(4, '0')},
                                 {"idProduct", productId.rightJustified(4, '0')},
                                 {"bcdDevice", "0100"},
                                 {"manufacturer", "FW Update"},
                                 {"product", device.name.toUtf8()},
                                 {"serial", device.serialNumber.toUtf8()}},
                                device.attributes);
    d->usbDevices[usb.path] = device;
    d->add(usb);
    return usb.path;
}

QString Testbed::addHidInterface(const QString &usbPath, const HidInterface &interface)
{
    const int number = d->nextHid++;
    const QString name = QString("hidraw%1").arg(number);
    QString node = "/dev/" + name;
    HidInterface complete = interface;
    if (complete.reportDescriptor.isEmpty()) {
        complete.reportDescriptor = HidDescriptor::output(interface.usagePage, interface.usage);
    }
    const QString hidPath = d->addHid(usbPath, complete, number);
    d->serveHid(node, d->usbDevices.at(usbPath), complete.reportDescriptor);
    d->addNode(hidPath + "/hidraw/" + name, "hidraw", node, "241", number);
    return node;
}

void Testbed::addSerialPort(const QString &usbPath, const QString &node)
{
    const QString name = QFileInfo(node).fileName();
    const QString interfacePath = d->addUsbInterface(usbPath);
    d->serveLine(node);
    d->addNode(interfacePath + "/tty/" + name, "tty", node, "166", d->nextPort++,
               udevProperties(d->usbDevices.at(usbPath)));
}

int Testbed::portDescriptor(const QString &node) const
{
    const auto entry = d->nodes.find(node);
    return entry != d->nodes.end() && entry->second.line ? entry->second.line->deviceDescriptor()
                                                         : -1;
}

bool Testbed::isHeard(const QString &node) const
{
    const auto entry = d->nodes.find(node);
    return entry == d->nodes.end() || !entry->second.line || entry->second.line->isHeard();
}

void Testbed::removeUsbDevice(const QString &usbPath)
{
    d->remove(usbPath);
    d->usbDevices.erase(usbPath);
}

void Testbed::removeNode(const QString &node)
{
    const QString path = d->nodes.at(node).sysPath; // copied, since the node is deleted
    d->remove(path);
}

void Testbed::announce(const QString &node, const QByteArray &action)
{
    d->announce(d->sysfs.devicesFrom(d->nodes.at(node).sysPath).constFirst(), action);
}

void Testbed::setOpenFails(const QString &node, bool fails)
{
    // A directory cannot be opened for writing, not even by root, who ignores permissions.
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

QList<QByteArray> Testbed::failedReports(const QString &node) const
{
    return d->nodes.at(node).hid->failedReports();
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
