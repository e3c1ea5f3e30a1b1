// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Upgrades a USB device that the kernel emulates. Runs as root inside the virtual machine only.

#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"
#include "tests/vm/DeviceProcess.h"
#include "tests/vm/RealStage.h"

#include <QtTest>

namespace {

const QString kUpgrading = StatusText::kUpgrading;
const QString kSuccess = StatusText::kSuccess;
const QString kNoDevice = StatusText::kNotFound;

constexpr int kSoon = 20000;
constexpr int kHidInterfaces = 2; // of one device
constexpr int kTolerance = 80; // additional time of the host for HID, ms
constexpr int kPartOfTheImage = 20000;

const QList<QByteArray> kTheReport = {"aabb" + QByteArray(124, '0')};

} // namespace

class tst_RealDevice : public QObject
{
    Q_OBJECT

private slots:
    void upgrade_data();
    void upgrade();
    void twoUpgradesInOneRun();
    void deviceComesBackTooLate();
    void cablePulledDuringTheSearch_data();
    void cablePulledDuringTheSearch();
    void cablePulledDuringTheFlash();
    void foreignDeviceGetsNothing();
    void twoDevices();
    void ordinaryUser_data();
    void ordinaryUser();
    void hotplugExample();
};

void tst_RealDevice::upgrade_data()
{
    QTest::addColumn<bool>("inBootloader");
    QTest::addColumn<int>("returnAfter");
    QTest::addColumn<QList<QByteArray>>("reports");
    QTest::newRow("from the application") << false << 1000 << kTheReport;
    QTest::newRow("already in the bootloader") << true << 1000 << QList<QByteArray>();
    QTest::newRow("the device returns after 1.9 s") << false << 1900 << kTheReport;
}

void tst_RealDevice::upgrade()
{
    QFETCH(const bool, inBootloader);
    QFETCH(const int, returnAfter);
    QFETCH(const QList<QByteArray>, reports);
    DeviceProcess device({"--return-after", QString::number(returnAfter)});
    RealStage stage;
    inBootloader ? device.plugInBootloader() : device.plugInApplication();
    QVERIFY(stage.open());
    QCOMPARE(stage.status(), QString(""));

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kUpgrading, kSoon);
    QVERIFY(!stage.isUpgradeEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);

    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(stage.progress(), 10000);
    QCOMPARE(device.reports(), reports);
    QCOMPARE(device.images(), QList<QByteArray>{stage.imageHash()});
    QTRY_COMPARE(device.timesAway().size(), inBootloader ? 1 : 2);
    QVERIFY(device.timesAway().constFirst() > returnAfter - kTolerance);
    QVERIFY(stage.close());
}

void tst_RealDevice::twoUpgradesInOneRun()
{
    DeviceProcess device;
    RealStage stage;
    device.plugInApplication();
    QVERIFY(stage.open());

    for (int upgrade = 1; upgrade <= 2; ++upgrade) {
        stage.click(WindowLook::kUpgradeButton);
        QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kUpgrading, kSoon);
        QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);
        QTRY_VERIFY(stage.isUpgradeEnabled());
        QTRY_COMPARE(DeviceProcess::hidNodes(), kHidInterfaces);
    }

    QCOMPARE(device.reports(), kTheReport + kTheReport);
    QCOMPARE(device.images(), (QList<QByteArray>{stage.imageHash(), stage.imageHash()}));
    QVERIFY(stage.close());
}

void tst_RealDevice::deviceComesBackTooLate()
{
    DeviceProcess device({"--return-after", "2500"});
    RealStage stage;
    device.plugInApplication();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kNoDevice, kSoon);
    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(stage.progress(), 0);
    QVERIFY(device.images().isEmpty());

    QTRY_COMPARE(DeviceProcess::ports(), 1);
    QTRY_COMPARE(device.timesAway().size(), 1); // reported shortly after the port appears
    QVERIFY(device.timesAway().constFirst() > 2500 - kTolerance);
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);
    QCOMPARE(device.reports(), kTheReport);
    QCOMPARE(device.images(), QList<QByteArray>{stage.imageHash()});
    QVERIFY(stage.close());
}

void tst_RealDevice::cablePulledDuringTheSearch_data()
{
    QTest::addColumn<bool>("whenOpened");
    QTest::addColumn<QList<QByteArray>>("reports");
    QTest::newRow("as its HID node is opened") << true << QList<QByteArray>();
    QTest::newRow("while it restarts") << false << kTheReport;
}

void tst_RealDevice::cablePulledDuringTheSearch()
{
    QFETCH(const bool, whenOpened);
    QFETCH(const QList<QByteArray>, reports);
    DeviceProcess device;
    RealStage stage;
    device.plugInApplication();
    QVERIFY(stage.open());
    if (whenOpened) {
        device.pullWhenOpened();
    }

    stage.click(WindowLook::kUpgradeButton);
    if (!whenOpened) {
        QTRY_COMPARE(device.count("the device restarts"), 1);
        device.pull();
    }
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kNoDevice, kSoon);

    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(stage.progress(), 0);
    QCOMPARE(device.count("the cable was pulled"), 1);
    QCOMPARE(device.reports(), reports);
    QVERIFY(device.images().isEmpty());
    QVERIFY(stage.close());
}

void tst_RealDevice::cablePulledDuringTheFlash()
{
    DeviceProcess device;
    RealStage stage;
    device.pullAfter(kPartOfTheImage);
    device.plugInApplication();
    QVERIFY(stage.open());

    for (int pulls = 1; pulls <= 2; ++pulls) {
        stage.click(WindowLook::kUpgradeButton);
        QTRY_COMPARE_WITH_TIMEOUT(device.count("the cable was pulled"), pulls, kSoon);
        QTRY_VERIFY_WITH_TIMEOUT(stage.errorText().count("DfuError: The port") == pulls
                                     && stage.errorText().endsWith('\n'),
                                 kSoon);
        QTRY_COMPARE(stage.status(), stage.lastErrorText());
        QVERIFY(stage.isUpgradeEnabled());
        QVERIFY(device.images().isEmpty());
        device.plugInBootloader();
    }

    device.pullAfter(-1);
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);
    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(device.reports(), kTheReport);
    QCOMPARE(device.images(), QList<QByteArray>{stage.imageHash()});
    QVERIFY(stage.close());
}

void tst_RealDevice::foreignDeviceGetsNothing()
{
    DeviceProcess device({"--usage-page", "0xFF32"});
    RealStage stage;
    device.plugInApplication();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kNoDevice, kSoon);

    QTRY_VERIFY(stage.isUpgradeEnabled());
    QVERIFY(device.reports().isEmpty());
    QVERIFY(stage.close());
}

void tst_RealDevice::twoDevices()
{
    DeviceProcess first({"--controller", "dummy_udc.0", "--serial-number", "0001"});
    DeviceProcess second({"--controller", "dummy_udc.1", "--serial-number", "0002"});
    RealStage stage;
    first.plugInApplication();
    second.plugInApplication();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);

    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(first.reports(), kTheReport);
    QCOMPARE(second.reports(), kTheReport);
    QCOMPARE(first.images(), QList<QByteArray>{stage.imageHash()});
    QVERIFY(second.images().isEmpty());
    QTRY_COMPARE(DeviceProcess::hidNodes(), kHidInterfaces);
    QCOMPARE(DeviceProcess::ports(), 1);
    QVERIFY(stage.close());
}

void tst_RealDevice::ordinaryUser_data()
{
    QTest::addColumn<bool>("withRules");
    QTest::addColumn<bool>("inBootloader");
    QTest::addColumn<QString>("status"); // null for the tool's error text
    QTest::newRow("with the rules, from the application") << true << false << kSuccess;
    QTest::newRow("with the rules, in the bootloader") << true << true << kSuccess;
    QTest::newRow("without the rules, from the application") << false << false << kNoDevice;
    QTest::newRow("without the rules, in the bootloader") << false << true << QString();
}

void tst_RealDevice::ordinaryUser()
{
    QFETCH(const bool, withRules);
    QFETCH(const bool, inBootloader);
    QFETCH(const QString, status);
    DeviceProcess::setRules(withRules);
    DeviceProcess device;
    RealStage stage(RealStage::Who::OrdinaryUser);
    inBootloader ? device.plugInBootloader() : device.plugInApplication();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    if (status.isNull()) {
        QTRY_VERIFY_WITH_TIMEOUT(
            stage.errorText().endsWith(
                "\nDfuError: could not open port /dev/ttyACM0: Permission denied\n"),
            kSoon);
        QTRY_COMPARE(stage.status(), stage.lastErrorText());
    } else {
        QTRY_COMPARE_WITH_TIMEOUT(stage.status(), status, kSoon);
    }

    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(device.reports(), withRules && !inBootloader ? kTheReport : QList<QByteArray>());
    QCOMPARE(device.images(),
             withRules ? QList<QByteArray>{stage.imageHash()} : QList<QByteArray>());
    QVERIFY(stage.close());
}

void tst_RealDevice::hotplugExample()
{
    const QStringList arrival
        = {"arrived 7f3c:0c51 usage 0001:0006 Device", "arrived 7f3c:0c51 usage ff31:0074 Device"};
    const QStringList removal
        = {"removed 7f3c:0c51 usage 0001:0006 Device", "removed 7f3c:0c51 usage ff31:0074 Device"};
    DeviceProcess first({"--controller", "dummy_udc.0", "--serial-number", "0001"});
    DeviceProcess second({"--controller", "dummy_udc.1", "--serial-number", "0002"});
    QStringList lines;
    QProcess example;
    const auto allLines = [&] {
        while (example.canReadLine()) {
            lines.append(QString::fromUtf8(example.readLine().trimmed()));
        }
        // The kernel reports the interfaces of a device in any order.
        lines.sort();
        return lines;
    };
    example.start(HOTPLUG_EXAMPLE, QStringList());
    first.plugInApplication();
    QTRY_COMPARE_WITH_TIMEOUT(allLines(), arrival, kSoon);
    lines.clear();
    second.plugInApplication();
    QTRY_COMPARE_WITH_TIMEOUT(allLines(), arrival, kSoon);
    lines.clear();
    first.pull();
    QTRY_COMPARE_WITH_TIMEOUT(allLines(), removal, kSoon);
    lines.clear();
    second.pull();
    QTRY_COMPARE_WITH_TIMEOUT(allLines(), removal, kSoon);

    QCOMPARE(example.state(), QProcess::Running);
    example.kill();
    example.waitForFinished();
}

QTEST_MAIN(tst_RealDevice)
#include "tst_RealDevice.moc"
