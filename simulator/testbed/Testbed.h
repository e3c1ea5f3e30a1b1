// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>

/// A world of simulated devices, which the programs inside it see instead of the machine's own.
///
/// A program is inside when it runs with umockdev's library preloaded: either the program that
/// made the testbed (it must have been started so), or its children that are given
/// childEnvironment(). Each thing that is added or removed is announced to who listens, as the
/// kernel does. Use it from one thread; the callbacks come on another one.
class Testbed
{
public:
    /// Values of a device by name, which go before those made here; a null value leaves one out.
    using Values = QMap<QByteArray, QByteArray>;

    struct UsbDevice
    {
        int vendorId = 0;
        int productId = 0;
        QString name;
        QString serialNumber;
        Values properties = {}; ///< Overrides DEVNAME and its like.
        Values attributes = {}; ///< Overrides idVendor, product and their like.
    };

    struct HidInterface
    {
        int usagePage = 0;
        int usage = 0;
        QByteArray reportDescriptor; ///< Empty for HidDescriptor::output().
        Values properties; ///< Overrides HID_ID, HID_NAME, HID_UNIQ and their like.
        Values attributes = {}; ///< Overrides report_descriptor.
    };

    /// Receives each write to a HID node: the node and the bytes, first of them the report's id.
    /// Called on the testbed's thread before the writer goes on; it must not call the testbed.
    using ReportHandler = std::function<void(const QString &node, const QByteArray &bytes)>;

    Testbed();
    ~Testbed();

    Testbed(const Testbed &) = delete;
    Testbed &operator=(const Testbed &) = delete;

    /// The environment variables that put a child process inside, by name.
    Values childEnvironment() const;

    /// Adds a device without interfaces; returns its path below /sys.
    QString addUsbDevice(const UsbDevice &device);

    /// Adds an interface to the device at \a usbPath; returns its node, such as "/dev/hidraw0".
    QString addHidInterface(const QString &usbPath, const HidInterface &interface);

    /// Adds a serial port to the device at \a usbPath, with any \a node below /dev. A pseudo
    /// terminal in raw mode stands behind it. A node that was removed can come back.
    void addSerialPort(const QString &usbPath, const QString &node);

    /// The device's end of a port, for reading and writing without blocking; it stays the
    /// testbed's own. -1 when there is no such port.
    int portDescriptor(const QString &node) const;

    /// Whether a program has read everything that was written to the device's end of a port.
    bool isHeard(const QString &node) const;

    /// Unplugs the device at \a usbPath with all its interfaces, ports and nodes.
    void removeUsbDevice(const QString &usbPath);

    /// Takes one interface or port away and leaves its device in place.
    void removeNode(const QString &node);

    /// Sends an event of the given kind ("add", "remove", "change", …) for \a node once more.
    void announce(const QString &node, const QByteArray &action);

    /// From now on opening \a node fails, also for root, or works again.
    void setOpenFails(const QString &node, bool fails);

    /// From now on each write to a HID \a node fails, or works again. Failed ones are not recorded.
    void setWriteFails(const QString &node, bool fails);

    void setReportHandler(const ReportHandler &handler);

    /// Everything that was written to a HID \a node so far, one entry for each write.
    QList<QByteArray> reports(const QString &node) const;

    /// How many handles of a HID \a node programs have open now, and how many they have opened.
    int openHandles(const QString &node) const;
    int handlesSoFar(const QString &node) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
