// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSerialPortInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace {

const char *const kPort = "/dev/cu.usbmodem14201";
const char *const kStart = "Start Upgrade";
const char *const kInitialised = "Init Upgrade success!";
const char *const kFound = "Find Upgrade Device!";
const char *const kNotFound = "Find Upgrade Device Error!";
const char *const kRunning = "Upgrading, please do not plug or unplug the device!";

} // namespace

/// What a click does until it returns. The search path leads to a chmod of the test's own first.
class tst_UpgradeSequence : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void deviceInItsBootloader();
    void deviceInItsApplication();
    void noDevice();
    void portComesWithoutTrigger();
    void choosesThePort_data();
    void choosesThePort();
    void firstInTheListWins();
    void startsTheToolWithSixArguments();
    void makesTheToolExecutable_data();
    void makesTheToolExecutable();
    void carriesOnWhateverChmodDoes_data();
    void carriesOnWhateverChmodDoes();
    void waitsForChmod();
    void carriesOnWithoutChmod();
    void logsWhatChmodSays();
    void missingToolKeepsTheButtonUntilTheTimeOut();
    void secondClickDeletesTheProcessFirst();
    void secondClickAfterErrorStartsAnew();

private:
    void installChmod(const QByteArray &script);
    QStringList chmodCalls() const;

    QByteArray m_searchPath;
    QString m_workingDirectory;
    std::unique_ptr<QTemporaryDir> m_bin;
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_UpgradeSequence::init()
{
    m_searchPath = qgetenv("PATH");
    m_workingDirectory = QDir::currentPath();
    m_bin = std::make_unique<QTemporaryDir>();
    installChmod("PATH=${PATH#*:} exec chmod \"$@\"\n");
    qputenv("PATH", m_bin->path().toLocal8Bit() + ':' + m_searchPath);

    m_stage = std::make_unique<UpgradeStage>();
}

void tst_UpgradeSequence::cleanup()
{
    m_stage.reset();
    m_bin.reset();
    qputenv("PATH", m_searchPath);
    QDir::setCurrent(m_workingDirectory);
}

/// A chmod that notes its working directory and arguments before it does what \a script says.
void tst_UpgradeSequence::installChmod(const QByteArray &script)
{
    QFile file(m_bin->filePath("chmod"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("#!/bin/sh\necho \"$PWD|$*\" >> \"$0.calls\"\n" + script);
    file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
}

QStringList tst_UpgradeSequence::chmodCalls() const
{
    QFile file(m_bin->filePath("chmod.calls"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QString::fromLocal8Bit(file.readAll()).trimmed().split('\n');
}

void tst_UpgradeSequence::deviceInItsBootloader()
{
    const QString usb = m_stage->testbed->addUsbDevice({0x7F3C, 0x0C51, "Device", "2"});
    const QString hid = m_stage->testbed->addHidInterface(usb, {0xFF31, 0x74, {}, {}});
    m_stage->addPort();
    QElapsedTimer clock;
    clock.start();
    m_stage->click();
    QVERIFY(clock.elapsed() < 2000); // no wait
    QCOMPARE(m_stage->testbed->reports(hid), QList<QByteArray>()); // no report
    QCOMPARE(m_stage->journal->statusTexts(),
             QStringList({kStart, kInitialised, kFound, kRunning}));
    QVERIFY(!m_stage->canClick());
    QCOMPARE(m_stage->filledPixels(), 0);
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    QTRY_COMPARE(m_stage->watch->timers.size(), 1);
}

void tst_UpgradeSequence::deviceInItsApplication()
{
    const QString usb = m_stage->testbed->addUsbDevice({0x7F3C, 0x0C51, "Device", "2"});
    const QString hid = m_stage->testbed->addHidInterface(usb, {0xFF31, 0x74, {}, {}});
    const QString keyboard = m_stage->testbed->addHidInterface(usb, {0x01, 0x06, {}, {}});
    std::atomic_bool reported{false};
    m_stage->testbed->setReportHandler(
        [&](const QString &, const QByteArray &) { reported = true; });
    std::thread device([&] {
        for (int i = 0; i < 1000 && !reported; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        m_stage->addPort(); // while the window waits
    });
    QElapsedTimer clock;
    clock.start();
    m_stage->click();
    device.join();
    QVERIFY(clock.elapsed() >= 2000);
    QCOMPARE(m_stage->testbed->reports(hid).size(), 1);
    QCOMPARE(m_stage->testbed->reports(hid).first(), QByteArray("\xAA\xBB") + QByteArray(62, '\0'));
    QCOMPARE(m_stage->testbed->reports(keyboard), QList<QByteArray>());
    QCOMPARE(m_stage->journal->statusTexts(),
             QStringList({kStart, kInitialised, kNotFound, kFound, kRunning}));
    QVERIFY(!m_stage->canClick());
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    QCOMPARE(m_stage->tool->arguments().last(), QString(kPort));
}

void tst_UpgradeSequence::noDevice()
{
    QElapsedTimer clock;
    clock.start();
    m_stage->click();
    QVERIFY(clock.elapsed() >= 2000);
    QCOMPARE(m_stage->journal->statusTexts(), QStringList({kStart, kInitialised, kNotFound}));
    QVERIFY(m_stage->canClick());
    QCOMPARE(m_stage->filledPixels(), 0);
    QCOMPARE(m_stage->journal->logLines().size(), 2); // chmod's, and no tick's
    QTest::qWait(100); // a timer would have ticked, a process been noticed
    QCOMPARE(m_stage->watch->timers.size(), 0);
    QCOMPARE(m_stage->watch->processes.size(), 0);
    QCOMPARE(m_stage->tool->starts(), 0);
}

void tst_UpgradeSequence::portComesWithoutTrigger()
{
    // Nobody takes the report, and the sequence goes on all the same.
    std::thread device([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        m_stage->addPort();
    });
    m_stage->click();
    device.join();
    QCOMPARE(m_stage->status(), QString(kRunning));
    QTRY_COMPARE(m_stage->tool->starts(), 1);
}

void tst_UpgradeSequence::choosesThePort_data()
{
    QTest::addColumn<QStringList>("ports");
    QTest::addColumn<QString>("chosen");

    QTest::newRow("the only one") << QStringList{kPort} << kPort;
    QTest::newRow("mark alone") << QStringList{"/dev/cu.usbmodem"} << "/dev/cu.usbmodem";
    QTest::newRow("mark in the middle")
        << QStringList{"/dev/far/dev/cu.usbmodem1"} << "/dev/far/dev/cu.usbmodem1";
    QTest::newRow("first of two") << QStringList{"/dev/cu.usbmodem1", "/dev/cu.usbmodem2"}
                                  << "/dev/cu.usbmodem1";
    QTest::newRow("passes over others")
        << QStringList{"/dev/cu.Bluetooth", "/dev/ttyACM0", kPort} << kPort;
    QTest::newRow("not quite the mark") << QStringList{"/dev/cu.usbserial-1420"} << "";
    QTest::newRow("upper case") << QStringList{"/dev/CU.USBMODEM14201"} << "";
    QTest::newRow("the other half of the pair") << QStringList{"/dev/tty.usbmodem14201"} << "";
}

void tst_UpgradeSequence::choosesThePort()
{
    QFETCH(QStringList, ports);
    QFETCH(QString, chosen);

    for (const QString &port : ports) {
        m_stage->addPort(port);
    }
    m_stage->click();
    if (chosen.isEmpty()) {
        QCOMPARE(m_stage->status(), QString(kNotFound));
        QVERIFY(m_stage->canClick());
        return;
    }
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    QCOMPARE(m_stage->tool->arguments().last(), chosen);
}

void tst_UpgradeSequence::firstInTheListWins()
{
    const QString other = m_stage->testbed->addUsbDevice({0x1234, 0x5678, "Bootloader", "2"});
    m_stage->testbed->addSerialPort(other, "/dev/cu.usbmodem1");
    m_stage->addPort("/dev/cu.usbmodem2");
    // The list goes by device, not by name.
    QCOMPARE(QSerialPortInfo::availablePorts().first().systemLocation(),
             QString("/dev/cu.usbmodem2"));
    m_stage->click();
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    QCOMPARE(m_stage->tool->arguments().last(), QString("/dev/cu.usbmodem2"));
}

void tst_UpgradeSequence::startsTheToolWithSixArguments()
{
    m_stage->addPort();
    m_stage->click();
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    const QString package = QCoreApplication::applicationDirPath() + "/dfu.zip";
    QCOMPARE(m_stage->tool->arguments(),
             QStringList({"dfu", "usb-serial", "-pkg", package, "-p", kPort}));
    QCOMPARE(m_stage->tool->workingDirectory(), QDir::currentPath());
    QTRY_COMPARE(m_stage->watch->processes.size(), 1);
    QCOMPARE(m_stage->watch->processes.first()->openMode(), QIODevice::ReadWrite);
}

void tst_UpgradeSequence::makesTheToolExecutable_data()
{
    QTest::addColumn<bool>("inApplicationDirectory");
    QTest::newRow("from the application directory") << true;
    QTest::newRow("from another directory") << false; // the tool is not reached, on purpose
}

void tst_UpgradeSequence::makesTheToolExecutable()
{
    QFETCH(bool, inApplicationDirectory);

    const QFile::Permissions plain = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(QFile::setPermissions(DirectedTool::path(), plain));
    QDir::setCurrent(inApplicationDirectory ? QCoreApplication::applicationDirPath()
                                            : m_bin->path());
    m_stage->addPort();
    m_stage->click();
    QCOMPARE(chmodCalls(), QStringList(QDir::currentPath() + "|+x ./nrfutil-mac"));
    QCOMPARE(QFileInfo(DirectedTool::path()).isExecutable(), inApplicationDirectory);
    QCOMPARE(m_stage->status(), QString(kRunning));
    if (inApplicationDirectory) {
        QTRY_COMPARE(m_stage->tool->starts(), 1);
    }
}

void tst_UpgradeSequence::carriesOnWhateverChmodDoes_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("fails") << QByteArray("exit 1\n");
    QTest::newRow("is killed") << QByteArray("kill -9 $$\n");
    QTest::newRow("complains") << QByteArray("echo no >&2; exit 1\n");
    QTest::newRow("prints a megabyte") << QByteArray("head -c 1000000 /dev/zero\n");
}

void tst_UpgradeSequence::carriesOnWhateverChmodDoes()
{
    QFETCH(QByteArray, script);

    installChmod(script);
    m_stage->addPort();
    m_stage->click();
    QCOMPARE(m_stage->journal->statusTexts(),
             QStringList({kStart, kInitialised, kFound, kRunning}));
    QTRY_COMPARE(m_stage->tool->starts(), 1);
}

void tst_UpgradeSequence::waitsForChmod()
{
    installChmod("sleep 1.5; echo done\n");
    m_stage->addPort();
    m_stage->click();
    QCOMPARE(m_stage->journal->logLines().first(), QString("Output: \"done\\n\""));
}

void tst_UpgradeSequence::carriesOnWithoutChmod()
{
    qputenv("PATH", "");
    m_stage->addPort();
    m_stage->click();
    qputenv("PATH", m_searchPath);
    QCOMPARE(m_stage->journal->statusTexts(),
             QStringList({kStart, kInitialised, kFound, kRunning}));
}

void tst_UpgradeSequence::logsWhatChmodSays()
{
    installChmod("echo out; echo err >&2\n");
    m_stage->addPort();
    m_stage->click();
    QCOMPARE(m_stage->journal->lines().mid(0, 4),
             QStringList({"status: Start Upgrade", "log: Output: \"out\\n\"",
                          "log: Error: \"err\\n\"", "status: Init Upgrade success!"}));
}

void tst_UpgradeSequence::missingToolKeepsTheButtonUntilTheTimeOut()
{
    m_stage->tool.reset();
    m_stage->addPort();
    m_stage->click();
    QCOMPARE(m_stage->status(), QString(kRunning));
    QTRY_COMPARE(m_stage->watch->timers.size(), 1);
    m_stage->tick(1820);
    QVERIFY(!m_stage->canClick());
    m_stage->tick();
    QVERIFY(m_stage->canClick());
    QCOMPARE(m_stage->status(), QString(kRunning));
}

void tst_UpgradeSequence::secondClickDeletesTheProcessFirst()
{
    m_stage->addPort();
    m_stage->startUpgrade();
    const QByteArray pid = QByteArray::number(m_stage->tool->pid());
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString("Upgrade Successfully"));
    QVERIFY(m_stage->tool->isRunning());

    installChmod("kill -0 " + pid + " 2>/dev/null && echo alive || echo gone\n");
    m_stage->journal->clear();
    m_stage->click();
    QCOMPARE(m_stage->journal->logLines().first(), QString("Output: \"gone\\n\""));
    QVERIFY(m_stage->watch->processes.at(0).isNull());
    QCOMPARE(m_stage->filledPixels(), 0);
    QTRY_COMPARE(m_stage->tool->starts(), 2);
}

void tst_UpgradeSequence::secondClickAfterErrorStartsAnew()
{
    m_stage->addPort();
    m_stage->startUpgrade();
    m_stage->tick(100);
    QVERIFY(m_stage->filledPixels() > 0);
    m_stage->tool->complain("trouble");
    QTRY_COMPARE(m_stage->status(), QString("trouble"));
    m_stage->journal->clear();
    m_stage->click();
    QCOMPARE(m_stage->journal->statusTexts(),
             QStringList({kStart, kInitialised, kFound, kRunning}));
    QVERIFY(!m_stage->canClick());
    QCOMPARE(m_stage->filledPixels(), 0);
    QTRY_COMPARE(m_stage->tool->starts(), 2);
}

QTEST_MAIN(tst_UpgradeSequence)
#include "tst_UpgradeSequence.moc"
