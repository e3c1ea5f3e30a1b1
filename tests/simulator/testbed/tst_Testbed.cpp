// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/Testbed.h"

#include <QProcess>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QtTest>

#include <libudev.h>

#include <unistd.h>

#include <memory>

namespace {

const Testbed::UsbDevice kDevice = {0x7F3C, 0x0C51, "Device", "0001"};
const QString kNode = "/dev/cu.usbmodem14201";

/// A udev monitor, as in a program with a hot-plug watch.
class Listener
{
public:
    Listener()
        : m_udev(udev_new())
        , m_monitor(udev_monitor_new_from_netlink(m_udev, "udev"))
    { }

    ~Listener()
    {
        udev_monitor_unref(m_monitor);
        udev_unref(m_udev);
    }

    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    void listenFor(const char *subsystem)
    {
        udev_monitor_filter_add_match_subsystem_devtype(m_monitor, subsystem, nullptr);
        udev_monitor_enable_receiving(m_monitor);
    }

    /// Receives pending events. Returns all events so far, each as "action subsystem node".
    const QList<QByteArray> &events()
    {
        using Device = std::unique_ptr<udev_device, udev_device *(*)(udev_device *)>;
        while (const Device device
               = Device(udev_monitor_receive_device(m_monitor), udev_device_unref)) {
            m_events.append(QByteArray(udev_device_get_action(device.get())) + ' '
                            + udev_device_get_subsystem(device.get()) + ' '
                            + udev_device_get_devnode(device.get()));
        }
        return m_events;
    }

private:
    udev *const m_udev;
    udev_monitor *const m_monitor;
    QList<QByteArray> m_events;
};

QStringList portLocations()
{
    QStringList result;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports) {
        result.append(port.systemLocation());
    }
    return result;
}

} // namespace

class tst_Testbed : public QObject
{
    Q_OBJECT

private slots:
    void eventsReachAListener_data();
    void eventsReachAListener();
    void aSlowListenerLosesNothing();
    void portsCarryBytesBothWays_data();
    void portsCarryBytesBothWays();
    void aPortComesBackUnderItsName();
    void aDeviceCountsItsInterfaces();
    void oneNodeGoesAlone();
    void childrenSeeTheDevices();
    void outsideNothingIsLeftBehind();
};

void tst_Testbed::eventsReachAListener_data()
{
    QTest::addColumn<QByteArray>("subsystem");
    QTest::addColumn<QList<QByteArray>>("events");
    QTest::newRow("of a HID interface")
        << QByteArray("hidraw")
        << QList<QByteArray>{"add hidraw /dev/hidraw0", "remove hidraw /dev/hidraw0"};
    QTest::newRow("of a serial port")
        << QByteArray("tty")
        << QList<QByteArray>{"add tty /dev/cu.usbmodem14201", "remove tty /dev/cu.usbmodem14201"};
}

void tst_Testbed::eventsReachAListener()
{
    QFETCH(const QByteArray, subsystem);
    QFETCH(const QList<QByteArray>, events);
    Testbed testbed;
    Listener listener;
    listener.listenFor(subsystem.constData());

    const QString device = testbed.addUsbDevice(kDevice);
    testbed.addHidInterface(device, {0xFF31, 0x74, {}, {}});
    testbed.addSerialPort(device, kNode);
    testbed.removeUsbDevice(device);

    QTRY_COMPARE(listener.events(), events);
}

void tst_Testbed::aSlowListenerLosesNothing()
{
    constexpr int kEvents = 200;
    Testbed testbed;
    Listener listener;
    listener.listenFor("hidraw");
    const QString device = testbed.addUsbDevice(kDevice);
    const QString node = testbed.addHidInterface(device, {0xFF31, 0x74, {}, {}});
    QList<QByteArray> expected = {"add hidraw /dev/hidraw0"};
    for (int i = 1; i < kEvents; ++i) {
        const QByteArray action = i % 2 == 0 ? "add" : "change";
        testbed.announce(node, action);
        expected.append(action + " hidraw /dev/hidraw0");
    }

    QTRY_COMPARE(listener.events(), expected);
}

void tst_Testbed::portsCarryBytesBothWays_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << QByteArray("hello");
    QTest::newRow("bytes that a terminal in cooked mode would change")
        << QByteArray("\x00\x03\x04\x0A\x0D\x11\x13\x7F\xC0\xFF", 10);
}

void tst_Testbed::portsCarryBytesBothWays()
{
    QFETCH(const QByteArray, bytes);
    Testbed testbed;
    testbed.addSerialPort(testbed.addUsbDevice(kDevice), kNode);
    const int descriptor = testbed.portDescriptor(kNode);
    QSerialPort port(kNode);
    QVERIFY2(port.open(QIODevice::ReadWrite), qPrintable(port.errorString()));

    port.write(bytes);
    QVERIFY(port.waitForBytesWritten());
    QByteArray received(64, '\0');
    received.truncate(static_cast<int>(::read(descriptor, received.data(), 64)));
    QCOMPARE(received, bytes);

    QCOMPARE(::write(descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size())),
             static_cast<ssize_t>(bytes.size()));
    QTRY_COMPARE(port.bytesAvailable(), static_cast<qint64>(bytes.size()));
    QCOMPARE(port.readAll(), bytes);
}

void tst_Testbed::aPortComesBackUnderItsName()
{
    Testbed testbed;
    for (int i = 0; i < 3; ++i) {
        const QString device = testbed.addUsbDevice(kDevice);
        testbed.addSerialPort(device, kNode);
        QCOMPARE(portLocations(), QStringList{kNode});
        QSerialPort port(kNode);
        QVERIFY2(port.open(QIODevice::ReadWrite), qPrintable(port.errorString()));
        port.close();

        testbed.removeUsbDevice(device);
        QCOMPARE(portLocations(), QStringList());
        QVERIFY(!port.open(QIODevice::ReadWrite));
        QCOMPARE(testbed.portDescriptor(kNode), -1);
    }
}

void tst_Testbed::aDeviceCountsItsInterfaces()
{
    Testbed testbed;
    const QString device = testbed.addUsbDevice(kDevice);
    QFile count("/sys" + device + "/bNumInterfaces");

    testbed.addHidInterface(device, {0xFF31, 0x74, {}, {}});
    testbed.addSerialPort(device, kNode);

    QVERIFY(count.open(QIODevice::ReadOnly));
    QCOMPARE(count.readAll(), QByteArray("2"));
}

void tst_Testbed::oneNodeGoesAlone()
{
    Testbed testbed;
    const QString device = testbed.addUsbDevice({0x1234, 0x5678, "Device", "1"});
    testbed.addSerialPort(device, "/dev/cu.usbmodem1");
    testbed.addSerialPort(device, "/dev/cu.usbmodem2");
    testbed.removeNode("/dev/cu.usbmodem1");
    QCOMPARE(portLocations(), QStringList("/dev/cu.usbmodem2"));
    QVERIFY(!QFile::exists("/dev/cu.usbmodem1"));
    testbed.removeNode("/dev/cu.usbmodem2");
    QCOMPARE(portLocations(), QStringList());
}

void tst_Testbed::childrenSeeTheDevices()
{
    Testbed testbed;
    testbed.addHidInterface(testbed.addUsbDevice(kDevice), {0xFF31, 0x74, {}, {}});
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const Testbed::Values variables = testbed.childEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
        environment.insert(variable.key(), variable.value());
    }
    child.setProcessEnvironment(environment);

    child.start("cat", {"/sys/class/hidraw/hidraw0/device/uevent"});
    QVERIFY(child.waitForFinished());
    QVERIFY(child.readAllStandardOutput().contains("HID_ID=0003:00007F3C:00000C51\n"));
}

void tst_Testbed::outsideNothingIsLeftBehind()
{
    QByteArray root;
    {
        Testbed testbed;
        root = testbed.childEnvironment().value("UMOCKDEV_DIR");
        const QString device = testbed.addUsbDevice(kDevice);
        testbed.setOpenFails(testbed.addHidInterface(device, {0xFF31, 0x74, {}, {}}), true);
        testbed.addSerialPort(device, kNode);
        QVERIFY(QFileInfo::exists(root));
    }
    QVERIFY(!QFileInfo::exists(root));
}

QTEST_GUILESS_MAIN(tst_Testbed)
#include "tst_Testbed.moc"
