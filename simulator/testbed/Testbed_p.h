// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/HidNode.h"
#include "simulator/testbed/PseudoTerminal.h"
#include "simulator/testbed/Sysfs.h"
#include "simulator/testbed/Testbed.h"
#include "simulator/testbed/UeventSender.h"

#include <map>
#include <memory>

struct _UMockdevTestbed; // NOLINT(bugprone-reserved-identifier): a name of the umockdev library

/// The values with their overrides, without null values.
Testbed::Values overridden(Testbed::Values values, const Testbed::Values &overrides);

class Testbed::Private
{
public:
    struct Node
    {
        QString sysPath;
        std::unique_ptr<HidNode> hid;
        std::unique_ptr<PseudoTerminal> line;
    };

    Private();
    ~Private();

    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    QString fileOf(const QString &node) const { return root + node; }

    /// These add devices to /sys and send events. For interfaces, they return the path in /sys.
    void add(const Sysfs::Device &device);
    void addNode(const QString &sysPath, const QByteArray &subsystem, const QString &node,
                 const QByteArray &major, int minor, const Values &properties = {});
    QString addUsbInterface(const QString &usbPath);
    QString addHid(const QString &usbPath, const HidInterface &interface, int number);

    void announce(const Sysfs::Device &device, const QByteArray &action);
    void remove(const QString &sysPath);

    void serveHid(const QString &node, const UsbDevice &usb, const QByteArray &descriptor);
    void serveLine(const QString &node);
    void dropNode(const QString &node);

    _UMockdevTestbed *const testbed;
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

private:
    QString numberFileOf(const QString &node) const;

    int m_sequence = 1;
};
