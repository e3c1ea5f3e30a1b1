// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "simulator/testbed/Testbed.h"
#include "tests/device/StdoutCapture.h"

#include <QtTest>

#include <functional>
#include <type_traits>

static_assert(std::is_empty_v<DeviceComm> && !std::is_polymorphic_v<DeviceComm>,
              "all of its state is the library's");

namespace {

constexpr int kVendor = 0x7F3C;
constexpr int kProduct = 0x0C51;
constexpr int kUsagePage = 0xFF31;
constexpr int kUsage = 0x74;

const Testbed::UsbDevice kTarget = {kVendor, kProduct, "Target", "0001"};
const Testbed::HidInterface kTrigger = {kUsagePage, kUsage, {}, {}};

QList<QByteArray> oneReport()
{
    return {QByteArray("\xAA\xBB") + QByteArray(62, '\0')};
}

/// An interface, and whether its ids and usages are those of the target.
struct Interface
{
    int vendorId;
    int productId;
    int usagePage;
    int usage;
};

QByteArray logged; // global, since message handlers have no user data

void keepMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &text)
{
    logged += text.toUtf8() + '\n';
}

/// The standard output of an action, followed by its log.
QByteArray outputOf(const std::function<void()> &action)
{
    StdoutCapture capture;
    logged.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepMessage);
    action();
    qInstallMessageHandler(previous);
    return capture.text() + logged;
}

} // namespace

Q_DECLARE_METATYPE(Interface)

class tst_DeviceComm : public QObject
{
    Q_OBJECT

private slots:
    void oneInterface_data();
    void oneInterface();
    void stringsDoNotMatter_data();
    void stringsDoNotMatter();
    void noDeviceAtAll();
    void otherInterfacesOfTheDeviceGetNothing();
    void interfacesAllGetTheReport_data();
    void interfacesAllGetTheReport();
    void openFailsOrWorks_data();
    void openFailsOrWorks();
    void writeFailureIsNotNoticed();
    void eachCallSendsAgain();
    void idsAreNotCutTo16Bits_data();
    void idsAreNotCutTo16Bits();
};

void tst_DeviceComm::oneInterface_data()
{
    QTest::addColumn<Interface>("interface");
    QTest::addColumn<bool>("matches");
    QTest::newRow("the target") << Interface{kVendor, kProduct, kUsagePage, kUsage} << true;
    QTest::newRow("other vendor") << Interface{0x7F3D, kProduct, kUsagePage, kUsage} << false;
    QTest::newRow("other product") << Interface{kVendor, 0x0C52, kUsagePage, kUsage} << false;
    QTest::newRow("other usage page") << Interface{kVendor, kProduct, 0xFF30, kUsage} << false;
    QTest::newRow("other usage") << Interface{kVendor, kProduct, kUsagePage, 0x75} << false;
    QTest::newRow("ids exchanged") << Interface{kProduct, kVendor, kUsagePage, kUsage} << false;
}

void tst_DeviceComm::oneInterface()
{
    QFETCH(const Interface, interface);
    QFETCH(const bool, matches);
    Testbed testbed;
    const QString device
        = testbed.addUsbDevice({interface.vendorId, interface.productId, "Device", "0001"});
    const QString node
        = testbed.addHidInterface(device, {interface.usagePage, interface.usage, {}, {}});

    QCOMPARE(DeviceComm::GetInst().startUpdate(kVendor, kProduct), matches);

    QCOMPARE(testbed.reports(node), matches ? oneReport() : QList<QByteArray>());
    QCOMPARE(testbed.handlesSoFar(node), matches ? 1 : 0);
    QCOMPARE(testbed.openHandles(node), 0);
}

void tst_DeviceComm::stringsDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("none") << QByteArray("");
    QTest::newRow("several scripts") << QByteArray("Gerät デバイス جهاز 設備 \xF0\x9F\x94\x8C");
    QTest::newRow("255 characters") << QByteArray("漢").repeated(255);
    QTest::newRow("invalid UTF-8") << QByteArray("a\xFF\xC3");
    QTest::newRow("two lines") << QByteArray("one\ntwo");
    QTest::newRow("an assignment") << QByteArray("HID_ID=0003:00000001:00000001");
}

/// The target and the device before it have the same strings.
void tst_DeviceComm::stringsDoNotMatter()
{
    QFETCH(const QByteArray, text);
    const Testbed::Values attributes
        = {{"manufacturer", text}, {"product", text}, {"serial", text}};
    // The kernel cuts both, even within a character.
    const Testbed::Values properties = {{"HID_NAME", text.left(127)}, {"HID_UNIQ", text.left(63)}};
    Testbed testbed;
    const QString other = testbed.addUsbDevice({1, 1, "", "", {}, attributes});
    testbed.addHidInterface(other, {1, 6, {}, properties});
    const QString target = testbed.addUsbDevice({kVendor, kProduct, "", "", {}, attributes});
    const QString node = testbed.addHidInterface(target, {kUsagePage, kUsage, {}, properties});

    QVERIFY(DeviceComm::GetInst().startUpdate(kVendor, kProduct));

    QCOMPARE(testbed.reports(node), oneReport());
}

void tst_DeviceComm::noDeviceAtAll()
{
    const Testbed testbed;
    bool reached = true;

    const QByteArray output
        = outputOf([&reached] { reached = DeviceComm::GetInst().startUpdate(kVendor, kProduct); });

    QVERIFY(!reached);
    QCOMPARE(output, QByteArray());
}

void tst_DeviceComm::otherInterfacesOfTheDeviceGetNothing()
{
    Testbed testbed;
    const QString device = testbed.addUsbDevice(kTarget);
    const QString keyboard = testbed.addHidInterface(device, {0x01, 0x06, {}, {}});
    const QString trigger = testbed.addHidInterface(device, kTrigger);
    const QString mouse = testbed.addHidInterface(device, {0x01, 0x02, {}, {}});

    QVERIFY(DeviceComm::GetInst().startUpdate(kVendor, kProduct));

    QCOMPARE(testbed.reports(trigger), oneReport());
    QCOMPARE(testbed.handlesSoFar(keyboard), 0);
    QCOMPARE(testbed.handlesSoFar(mouse), 0);
}

void tst_DeviceComm::interfacesAllGetTheReport_data()
{
    QTest::addColumn<bool>("onOneDevice");
    QTest::newRow("two interfaces of one device") << true;
    QTest::newRow("two devices") << false;
}

void tst_DeviceComm::interfacesAllGetTheReport()
{
    QFETCH(const bool, onOneDevice);
    Testbed testbed;
    const QString firstDevice = testbed.addUsbDevice(kTarget);
    const QString secondDevice = onOneDevice ? firstDevice : testbed.addUsbDevice(kTarget);
    const QString first = testbed.addHidInterface(firstDevice, kTrigger);
    const QString second = testbed.addHidInterface(secondDevice, kTrigger);

    QVERIFY(DeviceComm::GetInst().startUpdate(kVendor, kProduct));

    QCOMPARE(testbed.reports(first), oneReport());
    QCOMPARE(testbed.reports(second), oneReport());
}

void tst_DeviceComm::openFailsOrWorks_data()
{
    QTest::addColumn<bool>("firstFails");
    QTest::addColumn<bool>("secondFails");
    QTest::addColumn<bool>("result");
    QTest::newRow("first fails, second works") << true << false << true;
    QTest::newRow("first works, second fails") << false << true << true;
    QTest::newRow("all fail") << true << true << false;
}

void tst_DeviceComm::openFailsOrWorks()
{
    QFETCH(const bool, firstFails);
    QFETCH(const bool, secondFails);
    QFETCH(const bool, result);
    Testbed testbed;
    const QString device = testbed.addUsbDevice(kTarget);
    const QString first = testbed.addHidInterface(device, kTrigger);
    const QString second = testbed.addHidInterface(device, kTrigger);
    testbed.setOpenFails(first, firstFails);
    testbed.setOpenFails(second, secondFails);

    bool reached = !result;
    const QByteArray output
        = outputOf([&reached] { reached = DeviceComm::GetInst().startUpdate(kVendor, kProduct); });

    QCOMPARE(reached, result);
    QCOMPARE(output, QByteArray());
    QCOMPARE(testbed.reports(first), firstFails ? QList<QByteArray>() : oneReport());
    QCOMPARE(testbed.reports(second), secondFails ? QList<QByteArray>() : oneReport());
}

void tst_DeviceComm::writeFailureIsNotNoticed()
{
    Testbed testbed;
    const QString node = testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);
    testbed.setWriteFails(node, true);

    QVERIFY(DeviceComm::GetInst().startUpdate(kVendor, kProduct));

    QVERIFY(testbed.reports(node).isEmpty());
    QCOMPARE(testbed.failedReports(node), oneReport());
    QCOMPARE(testbed.handlesSoFar(node), 1);
    QCOMPARE(testbed.openHandles(node), 0);
}

void tst_DeviceComm::eachCallSendsAgain()
{
    Testbed testbed;
    const QString node = testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);

    QVERIFY(DeviceComm::GetInst().startUpdate(kVendor, kProduct));
    QVERIFY(DeviceComm::GetInst().startUpdate(kVendor, kProduct));

    QCOMPARE(testbed.reports(node), oneReport() + oneReport());
    QCOMPARE(testbed.openHandles(node), 0);
}

void tst_DeviceComm::idsAreNotCutTo16Bits_data()
{
    QTest::addColumn<int>("vendorId");
    QTest::addColumn<int>("productId");
    QTest::newRow("vendor above 65535") << 0x10000 + kVendor << kProduct;
    QTest::newRow("product above 65535") << kVendor << 0x10000 + kProduct;
    QTest::newRow("vendor below 0") << kVendor - 0x10000 << kProduct;
    QTest::newRow("product below 0") << kVendor << kProduct - 0x10000;
}

void tst_DeviceComm::idsAreNotCutTo16Bits()
{
    QFETCH(const int, vendorId);
    QFETCH(const int, productId);
    Testbed testbed;
    const QString node = testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);

    QVERIFY(!DeviceComm::GetInst().startUpdate(vendorId, productId));

    QCOMPARE(testbed.handlesSoFar(node), 0);
}

QTEST_GUILESS_MAIN(tst_DeviceComm)
#include "tst_DeviceComm.moc"
