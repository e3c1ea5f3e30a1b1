// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>

/// Simulated devices, which programs see instead of the machine's own.
///
/// A program sees them if it runs with umockdev's library preloaded: this process, if it was
/// started with the library, or child processes with childEnvironment(). Adding or removing a
/// device sends the same events as the kernel. Use a testbed in one thread; it calls callbacks in
/// another one.
class Testbed
{
public:
    /// Values of a device by name. They override generated values; a null value removes one.
    using Values = QMap<QByteArray, QByteArray>;

    struct UsbDevice
    {
        int vendorId = 0;
        int productId = 0;
        QString name;
        QString serialNumber;
        Values properties = {}; ///< Overrides DEVNAME and others.
        Values attributes = {}; ///< Overrides idVendor, product and others.
    };

    struct HidInterface
    {
        int usagePage = 0;
        int usage = 0;
        QByteArray reportDescriptor; ///< By default HidDescriptor::output().
        Values properties; ///< Overrides HID_ID, HID_NAME, HID_UNIQ and others.
        Values attributes = {}; ///< Overrides report_descriptor.
    };

    /// A write to a HID node.
    struct Report
    {
        QString node;
        QByteArray bytes; ///< All bytes, including the report id.
        bool failed = false;
    };

    /// Called for each write to a HID node. Runs in the testbed's thread before the write returns.
    /// It must not call the testbed.
    using ReportHandler = std::function<void(const Report &report)>;

    /// Whether programs can be started in a testbed. Without the library, they would use the
    /// machine's own devices.
    static bool isAvailable();

    Testbed();
    ~Testbed();

    Testbed(const Testbed &) = delete;
    Testbed &operator=(const Testbed &) = delete;

    /// The environment variables for a child process that uses the testbed.
    Values childEnvironment() const;

    /// Adds a device without interfaces; returns its path below /sys.
    QString addUsbDevice(const UsbDevice &device);

    /// Adds an interface to the device at \a usbPath; returns its node, such as "/dev/hidraw0".
    QString addHidInterface(const QString &usbPath, const HidInterface &interface);

    /// Adds a serial port to the device at \a usbPath, with any \a node below /dev, which may have
    /// been used before. The port is a pseudo terminal in raw mode.
    void addSerialPort(const QString &usbPath, const QString &node);

    /// The device's end of a port, for non-blocking reading and writing, owned by the testbed. -1
    /// if there is no such port.
    int portDescriptor(const QString &node) const;

    /// Whether programs have read everything that was written to the device's end of a port.
    bool isHeard(const QString &node) const;

    /// Unplugs the device at \a usbPath with all its interfaces, ports and nodes.
    void removeUsbDevice(const QString &usbPath);

    /// Removes an interface or a port, but not its device.
    void removeNode(const QString &node);

    /// Sends another event for \a node, such as "add", "remove" or "change".
    void announce(const QString &node, const QByteArray &action);

    /// Sets whether opening \a node fails, even for root.
    void setOpenFails(const QString &node, bool fails);

    /// Sets whether writing to a HID \a node fails.
    void setWriteFails(const QString &node, bool fails);

    void setReportHandler(const ReportHandler &handler);

    /// All writes to a HID \a node so far that succeeded, and all that failed.
    QList<QByteArray> reports(const QString &node) const;
    QList<QByteArray> failedReports(const QString &node) const;

    /// The number of open handles of a HID \a node, and of all handles so far.
    int openHandles(const QString &node) const;
    int handlesSoFar(const QString &node) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
