// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"
#include "tests/endtoend/Hub.h"
#include "tests/endtoend/Stage.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QtTest>

namespace {

const QString kUpgrading = StatusText::kUpgrading;
const QString kSuccess = StatusText::kSuccess;
const QString kNoDevice = StatusText::kNotFound;
const QString kPort = "/dev/cu.usbmodem14201";

constexpr int kSoon = 20000;

/// A device whose upgrade takes long enough for checks in between.
DeviceBehaviour unhurried()
{
    DeviceBehaviour behaviour;
    behaviour.answerDelay = 15;
    return behaviour;
}

DeviceBehaviour withFault(const QString &fault)
{
    DeviceBehaviour behaviour;
    if (!behaviour.addFault(fault)) {
        qFatal("unknown fault %s", qPrintable(fault));
    }
    return behaviour;
}

} // namespace

class tst_Upgrade : public QObject
{
    Q_OBJECT

private slots:
    void fromTheBootloader();
    void withSeveralPortsTheFirstIsUsed();
    void deviceIsNotFound_data();
    void deviceIsNotFound();
    void aLateDeviceIsFoundByTheNextClick();
    void hubsComeAndGo_data();
    void hubsComeAndGo();
    void errorTextIsShown_data();
    void errorTextIsShown();
    void brokenUpgradeShowsAnError_data();
    void brokenUpgradeShowsAnError();
    void closingLeavesTheToolAlone();
    void toolIsCalledAsEver();
    void toolIsMadeExecutable_data();
    void toolIsMadeExecutable();
};

void tst_Upgrade::fromTheBootloader()
{
    Stage stage(unhurried());
    stage.device.startInBootloader();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kUpgrading, kSoon);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);

    QVERIFY(stage.device.reports().isEmpty());
    QCOMPARE(stage.device.image(), stage.package.firmware);
}

void tst_Upgrade::withSeveralPortsTheFirstIsUsed()
{
    Stage stage(withFault("several-ports"));
    stage.device.startInBootloader();
    stage.setToolScript("record record.json\nflash\n");
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);

    QCOMPARE(stage.record().value("argv").toArray().last().toString(), kPort);
    QCOMPARE(stage.device.image(), stage.package.firmware);
}

void tst_Upgrade::deviceIsNotFound_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("reports");
    QTest::newRow("not connected") << QString() << 0;
    QTest::newRow("does not return") << "never-return" << 1;
    QTest::newRow("returns too late") << "late-return=2500" << 1;
    QTest::newRow("cannot be opened") << "open-fails" << 0;
    QTest::newRow("loses the report") << "write-fails" << 0;
}

void tst_Upgrade::deviceIsNotFound()
{
    QFETCH(const QString, fault);
    QFETCH(const int, reports);
    Stage stage(fault.isEmpty() ? DeviceBehaviour() : withFault(fault));
    if (!fault.isEmpty()) {
        stage.device.startInApplication();
    }
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kNoDevice, kSoon);

    QTRY_VERIFY(stage.isUpgradeEnabled());
    QCOMPARE(stage.progress(), 0);
    QCOMPARE(stage.device.reports().size(), reports);
    QVERIFY(stage.device.image().isEmpty());
}

void tst_Upgrade::aLateDeviceIsFoundByTheNextClick()
{
    Stage stage(withFault("late-return=2500"));
    stage.device.startInApplication();
    QVERIFY(stage.open());
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kNoDevice, kSoon);
    QTRY_COMPARE(stage.device.state(), SimulatedDevice::State::Bootloader);

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);

    QCOMPARE(stage.device.reports().size(), 1);
    QCOMPARE(stage.device.image(), stage.package.firmware);
}

void tst_Upgrade::hubsComeAndGo_data()
{
    QTest::addColumn<bool>("isConnected");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("with the device") << true << kSuccess;
    QTest::newRow("without the device") << false << kNoDevice;
}

/// Devices come and go during the whole search, since nobody can tell when the program reads which.
void tst_Upgrade::hubsComeAndGo()
{
    QFETCH(const bool, isConnected);
    QFETCH(const QString, outcome);
    DeviceBehaviour behaviour;
    behaviour.returnAfter = 300; // the changes delay it
    Stage stage(behaviour);
    if (isConnected) {
        stage.device.startInApplication();
    }
    Hub hub(stage.testbed);
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    const auto isSearched = [&] {
        hub.change();
        return stage.status() != QString("");
    };
    QVERIFY(ScreenUser::waitUntil(isSearched, kSoon));

    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), outcome, kSoon);
    QCOMPARE(stage.device.image(), isConnected ? stage.package.firmware : QByteArray());
}

void tst_Upgrade::errorTextIsShown_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << "Error: No device on the port";
    QTest::newRow("markup is text") << "<b>bold</b> <img src=x>";
    QTest::newRow("two lines") << "first\nsecond";
}

void tst_Upgrade::errorTextIsShown()
{
    QFETCH(const QString, text);
    Stage stage;
    stage.device.startInBootloader();
    stage.addText(text);
    stage.setToolScript("err \"" + QString(text).replace('\n', "\\n").toUtf8()
                        + "\"\nsleep 1500\nexit 1\n");
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), text, kSoon);

    QTRY_VERIFY(stage.isUpgradeEnabled());
    const int progress = stage.progress();
    QTRY_VERIFY(stage.progress() > progress);
    QCOMPARE(stage.status(), text);
}

void tst_Upgrade::brokenUpgradeShowsAnError_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("cable pulled") << "drop-out=20000";
    QTest::newRow("wrong checksums") << "wrong-crc";
}

void tst_Upgrade::brokenUpgradeShowsAnError()
{
    QFETCH(const QString, fault);
    Stage stage(withFault(fault));
    stage.device.startInApplication();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.device.reports().size(), 1, kSoon);
    QTRY_VERIFY_WITH_TIMEOUT(stage.progress() > 0, kSoon);
    QTRY_VERIFY_WITH_TIMEOUT(stage.isUpgradeEnabled(), kSoon);

    QVERIFY(stage.status().isNull()); // the tool's error text
    QVERIFY(stage.device.image().isEmpty());
}

void tst_Upgrade::closingLeavesTheToolAlone()
{
    Stage stage(unhurried());
    stage.device.startInApplication();
    QVERIFY(stage.open());
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kUpgrading, kSoon);

    stage.user.click(WindowLook::kCloseButton);
    QTRY_VERIFY(!stage.program.isRunning());
    QCOMPARE(stage.program.exitCode(), 0);
    QVERIFY(stage.device.image().isEmpty());
    QVERIFY(!stage.program.isAllFinished());

    QTRY_COMPARE_WITH_TIMEOUT(stage.device.image(), stage.package.firmware, kSoon);
    QTRY_VERIFY(stage.program.isAllFinished());
}

void tst_Upgrade::toolIsCalledAsEver()
{
    Stage stage;
    stage.device.startInBootloader();
    stage.setToolScript("record record.json\nout \"Device programmed.\\n\"\n");
    QVERIFY(stage.open());
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);
    const QJsonObject record = stage.record();

    const QJsonArray arguments = {stage.path("nrfutil-mac"), "dfu", "usb-serial", "-pkg",
                                  stage.path("dfu.zip"),     "-p",  kPort};
    QCOMPARE(record.value("argv").toArray(), arguments);

    QVariantMap environment;
    const QProcessEnvironment expected = stage.program.environment();
    const QStringList names = expected.keys();
    for (const QString &name : names) {
        environment.insert(name, expected.value(name));
    }
    QCOMPARE(record.value("env").toObject().toVariantMap(), environment);
}

void tst_Upgrade::toolIsMadeExecutable_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<bool>("becomesExecutable");
    QTest::newRow("started in the program's own folder") << QString() << true;
    QTest::newRow("started elsewhere") << "/" << false;
}

void tst_Upgrade::toolIsMadeExecutable()
{
    QFETCH(const QString, directory);
    QFETCH(const bool, becomesExecutable);
    Stage stage(unhurried());
    QVERIFY(QFile::setPermissions(stage.path("nrfutil-mac"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    stage.device.startInBootloader();
    QVERIFY(stage.open(directory));

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kUpgrading, kSoon);

    QCOMPARE(QFileInfo(stage.path("nrfutil-mac")).isExecutable(), becomesExecutable);
    if (becomesExecutable) {
        QTRY_COMPARE_WITH_TIMEOUT(stage.status(), kSuccess, kSoon);
    } else {
        QTRY_VERIFY(stage.progress() > 0); // the upgrade runs, although the tool did not start
        QVERIFY(!stage.isUpgradeEnabled());
    }
}

QTEST_MAIN(tst_Upgrade)
#include "tst_Upgrade.moc"
