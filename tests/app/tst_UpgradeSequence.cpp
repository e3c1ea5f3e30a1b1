// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/Testbed.h"
#include "tests/app/DirectedTool.h"
#include "tests/app/EventWatch.h"
#include "tests/app/Journal.h"
#include "tests/app/WindowParts.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>

using namespace WindowParts;

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
    void startsTheToolWithSixArguments();
    void makesTheToolExecutable_data();
    void makesTheToolExecutable();
    void carriesOnWhateverChmodDoes_data();
    void carriesOnWhateverChmodDoes();
    void carriesOnWithoutChmod();
    void logsWhatChmodSays();
    void missingToolKeepsTheButtonUntilTheTimeOut();
    void secondClickDeletesTheProcessFirst();
    void secondClickAfterErrorStartsAnew();

private:
    void installChmod(const QByteArray &script);
    QStringList chmodCalls() const;
    void addPort(const QString &node = kPort) { m_testbed->addSerialPort(m_usbPath, node); }
    void click() { QTest::mouseClick(upgradeButton(*m_window), Qt::LeftButton); }
    QString status() const { return statusLabel(*m_window)->text(); }
    bool canClick() const { return upgradeButton(*m_window)->isEnabled(); }

    QByteArray m_searchPath;
    QString m_workingDirectory;
    std::unique_ptr<QTemporaryDir> m_bin;
    std::unique_ptr<Testbed> m_testbed;
    QString m_usbPath;
    std::unique_ptr<DirectedTool> m_tool;
    std::unique_ptr<EventWatch> m_watch;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<Journal> m_journal;
};

void tst_UpgradeSequence::init()
{
    m_searchPath = qgetenv("PATH");
    m_workingDirectory = QDir::currentPath();
    m_bin = std::make_unique<QTemporaryDir>();
    installChmod("PATH=${PATH#*:} exec chmod \"$@\"\n");
    qputenv("PATH", m_bin->path().toLocal8Bit() + ':' + m_searchPath);

    m_testbed = std::make_unique<Testbed>();
    m_usbPath = m_testbed->addUsbDevice({0x1234, 0x5678, "Bootloader", "1"});
    m_tool = std::make_unique<DirectedTool>();
    m_watch = std::make_unique<EventWatch>();
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    m_journal = std::make_unique<Journal>(statusLabel(*m_window));
}

void tst_UpgradeSequence::cleanup()
{
    m_journal.reset();
    m_tool.reset();
    QCoreApplication::processEvents();
    m_watch->deleteAll();
    m_window.reset();
    m_watch.reset();
    m_testbed.reset();
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
    const QString usb = m_testbed->addUsbDevice({0x7F3C, 0x0C51, "Device", "2"});
    const QString hid = m_testbed->addHidInterface(usb, {0xFF31, 0x74, {}, {}});
    addPort();
    QElapsedTimer clock;
    clock.start();
    click();
    QVERIFY(clock.elapsed() < 2000); // no wait
    QCOMPARE(m_testbed->reports(hid), QList<QByteArray>()); // no report
    QCOMPARE(m_journal->statusTexts(), QStringList({kStart, kInitialised, kFound, kRunning}));
    QVERIFY(!canClick());
    QCOMPARE(filledPixels(*m_window), 0);
    QTRY_COMPARE(m_tool->starts(), 1);
    QTRY_COMPARE(m_watch->timers.size(), 1);
}

void tst_UpgradeSequence::deviceInItsApplication()
{
    const QString usb = m_testbed->addUsbDevice({0x7F3C, 0x0C51, "Device", "2"});
    const QString hid = m_testbed->addHidInterface(usb, {0xFF31, 0x74, {}, {}});
    const QString keyboard = m_testbed->addHidInterface(usb, {0x01, 0x06, {}, {}});
    std::atomic_bool reported{false};
    m_testbed->setReportHandler([&](const QString &, const QByteArray &) { reported = true; });
    std::thread device([&] {
        while (!reported) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        addPort(); // while the window waits
    });
    QElapsedTimer clock;
    clock.start();
    click();
    device.join();
    QVERIFY(clock.elapsed() >= 2000);
    QCOMPARE(m_testbed->reports(hid).size(), 1);
    QCOMPARE(m_testbed->reports(hid).first(), QByteArray("\xAA\xBB") + QByteArray(62, '\0'));
    QCOMPARE(m_testbed->reports(keyboard), QList<QByteArray>());
    QCOMPARE(m_journal->statusTexts(),
             QStringList({kStart, kInitialised, kNotFound, kFound, kRunning}));
    QVERIFY(!canClick());
    QTRY_COMPARE(m_tool->starts(), 1);
    QCOMPARE(m_tool->arguments().last(), QString(kPort));
}

void tst_UpgradeSequence::noDevice()
{
    QElapsedTimer clock;
    clock.start();
    click();
    QVERIFY(clock.elapsed() >= 2000);
    QCOMPARE(m_journal->statusTexts(), QStringList({kStart, kInitialised, kNotFound}));
    QVERIFY(canClick());
    QCOMPARE(filledPixels(*m_window), 0);
    QCOMPARE(m_journal->logLines().size(), 2); // chmod's, and no tick's
    QTest::qWait(100); // a timer would have ticked, a process been noticed
    QCOMPARE(m_watch->timers.size(), 0);
    QCOMPARE(m_watch->processes.size(), 0);
    QCOMPARE(m_tool->starts(), 0);
}

void tst_UpgradeSequence::portComesWithoutTrigger()
{
    // Nobody takes the report, and the sequence goes on all the same.
    std::thread device([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        addPort();
    });
    click();
    device.join();
    QCOMPARE(status(), QString(kRunning));
    QTRY_COMPARE(m_tool->starts(), 1);
}

void tst_UpgradeSequence::choosesThePort_data()
{
    QTest::addColumn<QStringList>("ports");
    QTest::addColumn<QString>("chosen");

    QTest::newRow("the only one") << QStringList{kPort} << kPort;
    QTest::newRow("mark alone") << QStringList{"/dev/cu.usbmodem"} << "/dev/cu.usbmodem";
    QTest::newRow("first of two") << QStringList{"/dev/cu.usbmodem1", "/dev/cu.usbmodem2"}
                                  << "/dev/cu.usbmodem1";
    QTest::newRow("passes over others")
        << QStringList{"/dev/cu.Bluetooth", "/dev/ttyACM0", kPort} << kPort;
    QTest::newRow("upper case") << QStringList{"/dev/CU.USBMODEM14201"} << "";
    QTest::newRow("the other half of the pair") << QStringList{"/dev/tty.usbmodem14201"} << "";
}

void tst_UpgradeSequence::choosesThePort()
{
    QFETCH(QStringList, ports);
    QFETCH(QString, chosen);

    for (const QString &port : ports) {
        addPort(port);
    }
    click();
    if (chosen.isEmpty()) {
        QCOMPARE(status(), QString(kNotFound));
        QVERIFY(canClick());
        return;
    }
    QTRY_COMPARE(m_tool->starts(), 1);
    QCOMPARE(m_tool->arguments().last(), chosen);
}

void tst_UpgradeSequence::startsTheToolWithSixArguments()
{
    addPort();
    click();
    QTRY_COMPARE(m_tool->starts(), 1);
    const QString package = QCoreApplication::applicationDirPath() + "/dfu.zip";
    QCOMPARE(m_tool->arguments(), QStringList({"dfu", "usb-serial", "-pkg", package, "-p", kPort}));
    QCOMPARE(m_tool->workingDirectory(), QDir::currentPath());
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
    addPort();
    click();
    QCOMPARE(chmodCalls(), QStringList(QDir::currentPath() + "|+x ./nrfutil-mac"));
    QCOMPARE(QFileInfo(DirectedTool::path()).isExecutable(), inApplicationDirectory);
    QCOMPARE(status(), QString(kRunning));
    if (inApplicationDirectory) {
        QTRY_COMPARE(m_tool->starts(), 1);
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
    addPort();
    click();
    QCOMPARE(m_journal->statusTexts(), QStringList({kStart, kInitialised, kFound, kRunning}));
    QTRY_COMPARE(m_tool->starts(), 1);
}

void tst_UpgradeSequence::carriesOnWithoutChmod()
{
    qputenv("PATH", "");
    addPort();
    click();
    qputenv("PATH", m_searchPath);
    QCOMPARE(m_journal->statusTexts(), QStringList({kStart, kInitialised, kFound, kRunning}));
}

void tst_UpgradeSequence::logsWhatChmodSays()
{
    installChmod("echo out; echo err >&2\n");
    addPort();
    click();
    QCOMPARE(m_journal->lines().mid(0, 4),
             QStringList({"status: Start Upgrade", "log: Output: \"out\\n\"",
                          "log: Error: \"err\\n\"", "status: Init Upgrade success!"}));
}

void tst_UpgradeSequence::missingToolKeepsTheButtonUntilTheTimeOut()
{
    m_tool.reset();
    addPort();
    click();
    QCOMPARE(status(), QString(kRunning));
    QTRY_COMPARE(m_watch->timers.size(), 1);
    for (int i = 0; i < 1820; ++i) {
        QMetaObject::invokeMethod(m_window.get(), "onTimerProcessOutput", Qt::DirectConnection);
    }
    QVERIFY(!canClick());
    QMetaObject::invokeMethod(m_window.get(), "onTimerProcessOutput", Qt::DirectConnection);
    QVERIFY(canClick());
    QCOMPARE(status(), QString(kRunning));
}

void tst_UpgradeSequence::secondClickDeletesTheProcessFirst()
{
    addPort();
    click();
    QTRY_COMPARE(m_tool->starts(), 1);
    QTRY_COMPARE(m_watch->processes.size(), 1);
    const QByteArray pid = QByteArray::number(m_tool->pid());
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString("Upgrade Successfully"));
    QVERIFY(m_tool->isRunning());

    installChmod("kill -0 " + pid + " 2>/dev/null && echo alive || echo gone\n");
    m_journal->clear();
    click();
    QCOMPARE(m_journal->logLines().first(), QString("Output: \"gone\\n\""));
    QVERIFY(m_watch->processes.at(0).isNull());
    QCOMPARE(filledPixels(*m_window), 0);
    QTRY_COMPARE(m_tool->starts(), 2);
}

void tst_UpgradeSequence::secondClickAfterErrorStartsAnew()
{
    addPort();
    click();
    QTRY_COMPARE(m_tool->starts(), 1);
    for (int i = 0; i < 100; ++i) {
        QMetaObject::invokeMethod(m_window.get(), "onTimerProcessOutput", Qt::DirectConnection);
    }
    QVERIFY(filledPixels(*m_window) > 0);
    m_tool->complain("trouble");
    QTRY_COMPARE(status(), QString("trouble"));
    m_journal->clear();
    click();
    QCOMPARE(m_journal->statusTexts(), QStringList({kStart, kInitialised, kFound, kRunning}));
    QVERIFY(!canClick());
    QCOMPARE(filledPixels(*m_window), 0);
    QTRY_COMPARE(m_tool->starts(), 2);
}

QTEST_MAIN(tst_UpgradeSequence)
#include "tst_UpgradeSequence.moc"
