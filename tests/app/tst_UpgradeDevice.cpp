// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceIdentity.h"
#include "tests/app/fixtures/UpgradeStage.h"
#include "tests/device/PlugRecorder.h"

#include <QSerialPortInfo>
#include <QtTest>

namespace {

const char *const kPort = UpgradeStage::kPort;

const DeviceIdentity kDevice;
const int kVendor = kDevice.vendorId;
const int kProduct = kDevice.applicationId;
const int kPage = kDevice.usagePage;
const int kUsage = kDevice.usage;

const Testbed::UsbDevice kTarget = {kVendor, kProduct, "Target", "2"};
const Testbed::HidInterface kTrigger = {kPage, kUsage, {}, {}};
const Testbed::HidInterface kKeyboard = {0x01, 0x06, {}, {}};
const QByteArray kReport = QByteArray("\xAA\xBB") + QByteArray(62, '\0');

/// Attaches a device and returns its HID nodes.
using Setting = std::function<QStringList(Testbed &)>;

Setting attached(const Testbed::UsbDevice &device, const QVector<Testbed::HidInterface> &interfaces)
{
    return [=](Testbed &testbed) {
        const QString usb = testbed.addUsbDevice(device);
        QStringList nodes;
        for (const Testbed::HidInterface &interface : interfaces) {
            nodes.append(testbed.addHidInterface(usb, interface));
        }
        return nodes;
    };
}

/// The target with two interfaces, of which one or both cannot be opened.
Setting openFails(bool first, bool second)
{
    return [=](Testbed &testbed) {
        QStringList nodes = attached(kTarget, {kTrigger, kTrigger})(testbed);
        testbed.setOpenFails(nodes.at(0), first);
        testbed.setOpenFails(nodes.at(1), second);
        return nodes;
    };
}

QStringList writeFails(Testbed &testbed)
{
    QStringList nodes = attached(kTarget, {kTrigger})(testbed);
    testbed.setWriteFails(nodes.first(), true);
    return nodes;
}

QStringList goesBeforeItIsOpened(Testbed &testbed)
{
    const QString usb = testbed.addUsbDevice(kTarget);
    testbed.addHidInterface(usb, kTrigger);
    LibraryHooks::current.beforeHidOpen = [&testbed, usb] {
        testbed.removeUsbDevice(usb);
    };
    return {};
}

} // namespace

Q_DECLARE_METATYPE(Setting)

/// What a click does, depending on the devices and ports that are attached, until it returns.
class tst_UpgradeDevice : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_stage = std::make_unique<UpgradeStage>(); }
    void cleanup() { m_stage.reset(); }

    void deviceLayerIsMadeOnDemand();
    void port_data();
    void port();
    void portOfTheFirstDevice();
    void order_data();
    void order();
    void trigger_data();
    void trigger();

private:
    QString chosenPort() const;

    std::unique_ptr<UpgradeStage> m_stage;
};

/// The port that the tool was given; empty if no tool was started.
QString tst_UpgradeDevice::chosenPort() const
{
    return m_stage->tools.isEmpty() ? QString() : m_stage->tools.first()->arguments().last();
}

/// Comes first, since the device layer lives until the process ends.
void tst_UpgradeDevice::deviceLayerIsMadeOnDemand()
{
    const PlugRecorder recorder; // is told of attached devices once the device layer exists
    attached(kTarget, {kTrigger})(m_stage->testbed);
    m_stage->addPort();
    m_stage->click();
    QCoreApplication::processEvents();
    QCOMPARE(recorder.plugs.size(), 0);

    m_stage->complain("trouble");
    m_stage->unplug();
    m_stage->click();
    QVERIFY(UpgradeStage::waitFor([&] { return recorder.plugs.size() == 1; }));
}

void tst_UpgradeDevice::port_data()
{
    QTest::addColumn<QStringList>("atOnce");
    QTest::addColumn<QStringList>("whileAsleep");
    QTest::addColumn<QString>("chosen");

    const QStringList none;
    const auto early = [&](const char *name, const QStringList &ports, const QString &chosen) {
        QTest::newRow(name) << ports << none << chosen;
    };
    early("none", {}, "");
    early("the only one", {kPort}, kPort);
    early("mark alone", {"/dev/cu.usbmodem"}, "/dev/cu.usbmodem");
    early("mark in the middle", {"/dev/far/dev/cu.usbmodem1"}, "/dev/far/dev/cu.usbmodem1");
    early("first of two", {"/dev/cu.usbmodem1", "/dev/cu.usbmodem2"}, "/dev/cu.usbmodem1");
    early("behind others", {"/dev/cu.Bluetooth", "/dev/ttyACM0", kPort}, kPort);
    early("not quite the mark", {"/dev/cu.usbserial-1420"}, "");
    early("in upper case", {"/dev/CU.USBMODEM14201"}, "");
    early("the other half of the pair", {"/dev/tty.usbmodem14201"}, "");
    QTest::newRow("late, without having been asked") << none << QStringList(kPort) << kPort;
    QTest::newRow("late, behind an early one of another kind")
        << QStringList("/dev/cu.Bluetooth") << QStringList(kPort) << kPort;
    QTest::newRow("late, of another kind") << none << QStringList("/dev/ttyACM0") << "";
}

void tst_UpgradeDevice::port()
{
    QFETCH(QStringList, atOnce);
    QFETCH(QStringList, whileAsleep);
    QFETCH(QString, chosen);

    const auto add = [this](const QStringList &ports) {
        for (const QString &node : ports) {
            m_stage->addPort(node);
        }
    };
    add(atOnce);
    m_stage->whileAsleep = [&] {
        add(whileAsleep);
    };
    m_stage->click();
    m_stage->addPort("/dev/cu.usbmodem-late"); // too late for this click
    QCoreApplication::processEvents();
    QCOMPARE(chosenPort(), chosen);
    QCOMPARE(m_stage->slept, atOnce.contains(chosen) ? 0UL : 2UL);
    QCOMPARE(m_stage->outcome(), chosen.isEmpty() ? Outcome::notFound() : Outcome::upgrading());
}

void tst_UpgradeDevice::portOfTheFirstDevice()
{
    const QString other = m_stage->testbed.addUsbDevice({0x1234, 0x5678, "Bootloader", "2"});
    m_stage->testbed.addSerialPort(other, "/dev/cu.usbmodem1");
    m_stage->addPort("/dev/cu.usbmodem2");
    // The list is sorted by device, not by name.
    const QString first = QSerialPortInfo::availablePorts().constFirst().systemLocation();
    QCOMPARE(first, QString("/dev/cu.usbmodem2"));
    m_stage->click();
    QCOMPARE(chosenPort(), first);
}

void tst_UpgradeDevice::order_data()
{
    QTest::addColumn<bool>("atOnce");
    QTest::addColumn<bool>("late");
    QTest::addColumn<QStringList>("rest");

    const QString found = QString("status: ") + StatusText::kFound;
    const QString notFound = QString("status: ") + StatusText::kNotFound;
    const QString upgrading = QString("status: ") + StatusText::kUpgrading;
    QTest::newRow("in its bootloader")
        << true << false << QStringList{found, upgrading, "timers: running"};
    QTest::newRow("back in time") << false << true
                                  << QStringList{notFound, found, upgrading, "timers: running"};
    QTest::newRow("not there") << false << false
                               << QStringList{notFound, notFound, notFound, "button on"};
}

void tst_UpgradeDevice::order()
{
    QFETCH(bool, atOnce);
    QFETCH(bool, late);
    QFETCH(QStringList, rest);

    if (atOnce) {
        m_stage->addPort();
    }
    m_stage->whileAsleep = [&] {
        if (late) {
            m_stage->addPort();
        }
    };
    m_stage->click();
    const QStringList start
        = {"button off", QString("status: ") + StatusText::kStart, "log: Output: \"\"",
           "log: Error: \"\"", QString("status: ") + StatusText::kInitialised};
    QCOMPARE(m_stage->takeJournal(), start + rest);
}

void tst_UpgradeDevice::trigger_data()
{
    QTest::addColumn<Setting>("setting");
    QTest::addColumn<int>("opens");
    QTest::addColumn<QVector<int>>("reports"); // to each interface

    using Reports = QVector<int>;
    const auto one = [](int vendorId, int productId, int usagePage, int usage) {
        return attached({vendorId, productId, "Device", "2"}, {{usagePage, usage, {}, {}}});
    };
    QTest::newRow("target") << one(kVendor, kProduct, kPage, kUsage) << 1 << Reports{1};
    QTest::newRow("wrong vendor") << one(kVendor + 1, kProduct, kPage, kUsage) << 0 << Reports{0};
    QTest::newRow("wrong product") << one(kVendor, kProduct - 1, kPage, kUsage) << 0 << Reports{0};
    QTest::newRow("wrong usage page")
        << one(kVendor, kProduct, kPage + 1, kUsage) << 0 << Reports{0};
    QTest::newRow("wrong usage") << one(kVendor, kProduct, kPage, kUsage - 1) << 0 << Reports{0};
    QTest::newRow("with a keyboard")
        << attached(kTarget, {kKeyboard, kTrigger}) << 1 << Reports{0, 1};
    QTest::newRow("two interfaces") << openFails(false, false) << 2 << Reports{1, 1};
    QTest::newRow("first open fails") << openFails(true, false) << 2 << Reports{0, 1};
    QTest::newRow("second open fails") << openFails(false, true) << 2 << Reports{1, 0};
    QTest::newRow("both opens fail") << openFails(true, true) << 2 << Reports{0, 0};
    QTest::newRow("write fails") << Setting(writeFails) << 1 << Reports{0};
    QTest::newRow("goes before it is opened") << Setting(goesBeforeItIsOpened) << 1 << Reports{};
}

/// A device that gets a report comes back with its port while the window waits.
void tst_UpgradeDevice::trigger()
{
    QFETCH(Setting, setting);
    QFETCH(int, opens);
    QFETCH(QVector<int>, reports);

    const QStringList nodes = setting(m_stage->testbed);
    int opened = 0;
    LibraryHooks::current.beforeHidOpen = [&opened, then = LibraryHooks::current.beforeHidOpen] {
        ++opened;
        if (then) {
            then();
        }
    };
    QVector<int> received;
    m_stage->whileAsleep = [&] {
        for (const QString &node : nodes) {
            const QList<QByteArray> all = m_stage->testbed.reports(node);
            QCOMPARE(all.count(kReport), all.size());
            received.append(int(all.size()));
        }
        if (received.contains(1)) {
            m_stage->addPort();
        }
    };
    m_stage->click();
    QCOMPARE(opened, opens);
    QCOMPARE(received, reports);
    QCOMPARE(m_stage->outcome(), reports.contains(1) ? Outcome::upgrading() : Outcome::notFound());
}

QTEST_MAIN(tst_UpgradeDevice)
#include "tst_UpgradeDevice.moc"
