// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/Testbed.h"
#include "tests/app/DirectedTool.h"
#include "tests/app/EventWatch.h"
#include "tests/app/Journal.h"
#include "tests/app/WindowParts.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include <sys/stat.h>

using namespace WindowParts;

namespace {

const char *const kPort = "/dev/cu.usbmodem14201";
const char *const kRunning = "Upgrading, please do not plug or unplug the device!";
const char *const kSuccess = "Upgrade Successfully";
const char *const kNotFound = "Find Upgrade Device Error!";

const int kTicksToTimeOut = 1821;

/// A line of Qt's debug stream.
QString logged(const char *prefix, const QByteArray &chunk)
{
    QString line;
    QDebug(&line) << prefix << chunk;
    return line.trimmed();
}

void tick(QObject &window, int times = 1)
{
    for (int i = 0; i < times; ++i) {
        QMetaObject::invokeMethod(&window, "onTimerProcessOutput", Qt::DirectConnection);
    }
}

} // namespace

/// What the window makes of the running tool: every test begins with an upgrade that has just
/// been started on a device in its bootloader.
class tst_ToolMonitor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void findsThePhrase_data();
    void findsThePhrase();
    void tickFindsThePhrase_data();
    void tickFindsThePhrase();
    void phraseAcrossTwoChunksIsMissed();
    void readySlotMatchesBeforeItLogs();
    void tickLogsBeforeItMatches();
    void successEndsTheUpgrade();
    void outputAfterSuccess();
    void showsErrorTextAsItIs_data();
    void showsErrorTextAsItIs();
    void imageTagInErrorTextOpensNothing();
    void errorTextLeavesTheUpgradeRunning();
    void phraseOnStandardErrorIsNoSuccess();
    void tickMovesTheBar_data();
    void tickMovesTheBar();
    void everyTickLogsALine();
    void timesOut();
    void counterWrapsAround();
    void successAfterTheTimeOut();
    void exitIsNotNoticed();
    void closingStopsTheTimerAndLeavesTheTool();
    void olderTimerKeepsTicking();
    void olderTimerTicksWithoutProcess();
    void olderTimerReachesTheTimeOutWithoutTimer();

private:
    void startUpgrade();
    void sayToTick(const QByteArray &chunk);
    void click() { QTest::mouseClick(upgradeButton(*m_window), Qt::LeftButton); }
    QString status() const { return statusLabel(*m_window)->text(); }
    bool canClick() const { return upgradeButton(*m_window)->isEnabled(); }
    QPointer<QTimer> timer(int index = 0) const { return m_watch->timers.value(index); }

    std::unique_ptr<Testbed> m_testbed;
    QString m_usbPath;
    std::unique_ptr<DirectedTool> m_tool;
    std::unique_ptr<EventWatch> m_watch;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<Journal> m_journal;
};

void tst_ToolMonitor::init()
{
    m_testbed = std::make_unique<Testbed>();
    m_usbPath = m_testbed->addUsbDevice({0x1234, 0x5678, "Bootloader", "1"});
    m_testbed->addSerialPort(m_usbPath, kPort);
    m_tool = std::make_unique<DirectedTool>();
    m_watch = std::make_unique<EventWatch>();
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    m_journal = std::make_unique<Journal>(statusLabel(*m_window));
    startUpgrade();
}

void tst_ToolMonitor::cleanup()
{
    m_journal.reset();
    m_tool.reset();
    m_watch->deleteAll();
    m_window.reset();
    m_watch.reset();
    m_testbed.reset();
}

void tst_ToolMonitor::startUpgrade()
{
    const int starts = m_tool->starts();
    const int timers = m_watch->timers.size();
    click();
    QCOMPARE(status(), QString(kRunning));
    QTRY_COMPARE(m_tool->starts(), starts + 1);
    QTRY_COMPARE(m_watch->timers.size(), timers + 1);
    QTRY_COMPARE(m_watch->processes.size(), starts + 1);
    m_journal->clear();
}

/// Brings \a chunk into the process's buffer without the slot that would take it at once.
void tst_ToolMonitor::sayToTick(const QByteArray &chunk)
{
    QProcess *process = m_watch->processes.last();
    QVERIFY(QObject::disconnect(process, SIGNAL(readyReadStandardOutput()), m_window.get(),
                                SLOT(onReadyReadStandardOutput())));
    m_tool->say(chunk);
    QTRY_COMPARE(process->bytesAvailable(), qint64(chunk.size()));
}

void tst_ToolMonitor::findsThePhrase_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<bool>("success");

    QTest::newRow("alone") << QByteArray("Device programmed") << true;
    QTest::newRow("with line end") << QByteArray("Device programmed.\n") << true;
    QTest::newRow("in the middle") << QByteArray("100%\nDevice programmed.\nbye\n") << true;
    QTest::newRow("twice") << QByteArray("Device programmed Device programmed") << true;
    QTest::newRow("lower case") << QByteArray("device programmed") << false;
    QTest::newRow("upper case") << QByteArray("DEVICE PROGRAMMED") << false;
    QTest::newRow("two blanks") << QByteArray("Device  programmed") << false;
    QTest::newRow("cut short") << QByteArray("Device programme") << false;
    QTest::newRow("after a zero byte") << QByteArray("\0Device programmed", 18) << false;
    QTest::newRow("before a zero byte") << QByteArray("Device programmed\0x", 19) << true;
    QTest::newRow("among invalid text") << QByteArray("\xff\xfe Device programmed \xc3") << true;
    QTest::newRow("something else") << QByteArray("Sending firmware\n") << false;
}

void tst_ToolMonitor::findsThePhrase()
{
    QFETCH(QByteArray, chunk);
    QFETCH(bool, success);

    m_tool->say(chunk);
    QTRY_VERIFY(m_journal->logLines().contains(logged("Standard Output:", chunk)));
    QCOMPARE(status(), QString(success ? kSuccess : kRunning));
    QCOMPARE(canClick(), success);
    QCOMPARE(timer().isNull(), success);
}

void tst_ToolMonitor::tickFindsThePhrase_data()
{
    findsThePhrase_data();
}

void tst_ToolMonitor::tickFindsThePhrase()
{
    QFETCH(QByteArray, chunk);
    QFETCH(bool, success);

    sayToTick(chunk);
    tick(*m_window);
    QCOMPARE(m_journal->logLines().last(), logged("Standard Output:", chunk));
    QCOMPARE(status(), QString(success ? kSuccess : kRunning));
    QCOMPARE(canClick(), success);
    QCOMPARE(timer().isNull(), success);
}

void tst_ToolMonitor::phraseAcrossTwoChunksIsMissed()
{
    m_tool->say("Device pro");
    QTRY_VERIFY(m_journal->logLines().contains("Standard Output: \"Device pro\""));
    m_tool->say("grammed.\n");
    QTRY_VERIFY(m_journal->logLines().contains("Standard Output: \"grammed.\\n\""));
    QCOMPARE(status(), QString(kRunning));
    QVERIFY(!canClick());
}

void tst_ToolMonitor::readySlotMatchesBeforeItLogs()
{
    m_tool->say("Device programmed");
    QTRY_COMPARE(status(), QString(kSuccess));
    const QString line = "log: Standard Output: \"Device programmed\"";
    QTRY_VERIFY(m_journal->lines().contains(line));
    QCOMPARE(m_journal->lines().indexOf(line),
             m_journal->lines().indexOf("status: Upgrade Successfully") + 1);
}

void tst_ToolMonitor::tickLogsBeforeItMatches()
{
    sayToTick("Device programmed");
    tick(*m_window);
    QCOMPARE(status(), QString(kSuccess));
    QCOMPARE(m_journal->lines().indexOf("log: Standard Output: \"Device programmed\""),
             m_journal->lines().indexOf("status: Upgrade Successfully") - 1);
}

void tst_ToolMonitor::successEndsTheUpgrade()
{
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString(kSuccess));
    QCOMPARE(filledPixels(*m_window), 430);
    QVERIFY(canClick());
    QVERIFY(timer().isNull());
    QVERIFY(m_tool->isRunning()); // the tool is left as it is
}

void tst_ToolMonitor::outputAfterSuccess()
{
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString(kSuccess));
    m_tool->complain("late trouble");
    QTRY_COMPARE(status(), QString("late trouble"));
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString(kSuccess));
}

void tst_ToolMonitor::showsErrorTextAsItIs_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QString>("text");

    QTest::newRow("one line") << QByteArray("no such port") << "no such port";
    QTest::newRow("line end kept") << QByteArray("no such port\n") << "no such port\n";
    QTest::newRow("three lines") << QByteArray("a\nb\nc\n") << "a\nb\nc\n";
    QTest::newRow("markup") << QByteArray("<b>x") << "<b>x";
    QTest::newRow("up to a zero byte") << QByteArray("seen\0unseen", 11) << "seen";
    QTest::newRow("UTF-8") << QByteArray("Ger\xc3\xa4t") << QString::fromUtf8("Ger\xc3\xa4t");
    QTest::newRow("invalid UTF-8") << QByteArray("a\xff") << QString("a") + QChar(0xFFFD);
    QTest::newRow("an ampersand") << QByteArray("a && b") << "a && b";
}

void tst_ToolMonitor::showsErrorTextAsItIs()
{
    QFETCH(QByteArray, chunk);
    QFETCH(QString, text);

    m_tool->complain(chunk);
    QTRY_COMPARE(status(), text);
    QVERIFY(canClick());
    QVERIFY(m_journal->logLines().contains(logged("Standard Error:", chunk)));

    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    plain.setText(text);
    plain.setFont(statusLabel(*m_window)->font());
    plain.setAlignment(Qt::AlignCenter);
    plain.setStyleSheet("color:#ffffff;");
    plain.resize(430, 30);
    QImage expected(430, 30, QImage::Format_RGB32);
    expected.fill(Qt::black);
    QImage shown = expected;
    plain.render(&expected, QPoint(), QRegion(), QWidget::DrawChildren);
    statusLabel(*m_window)->render(&shown, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(shown, expected);
}

void tst_ToolMonitor::imageTagInErrorTextOpensNothing()
{
    // Opening a FIFO that nobody writes to would hang the window.
    const QTemporaryDir folder;
    const QByteArray fifo = folder.filePath("picture.png").toLocal8Bit();
    QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
    const QByteArray chunk = "<img src=\"" + fifo + "\">";
    m_tool->complain(chunk);
    QTRY_COMPARE(status(), QString(chunk));
    m_window->grab();
}

void tst_ToolMonitor::errorTextLeavesTheUpgradeRunning()
{
    m_tool->complain("first");
    QTRY_COMPARE(status(), QString("first"));
    QVERIFY(timer()->isActive());
    QVERIFY(m_tool->isRunning());
    const int filled = filledPixels(*m_window);
    tick(*m_window, 100);
    QVERIFY(filledPixels(*m_window) > filled);
    m_tool->complain("second");
    QTRY_COMPARE(status(), QString("second"));
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString(kSuccess));
}

void tst_ToolMonitor::phraseOnStandardErrorIsNoSuccess()
{
    m_tool->complain("Device programmed");
    QTRY_COMPARE(status(), QString("Device programmed"));
    QVERIFY(timer()->isActive());
    QVERIFY(filledPixels(*m_window) < 430);
}

void tst_ToolMonitor::tickMovesTheBar_data()
{
    QTest::addColumn<int>("ticks");
    QTest::addColumn<int>("filled");

    // 5 of 10000 a tick, on 430 pixels.
    QTest::newRow("4 ticks") << 4 << 0;
    QTest::newRow("47 ticks") << 47 << 10;
    QTest::newRow("1000 ticks") << 1000 << 215;
    QTest::newRow("1820 ticks") << 1820 << 391;
}

void tst_ToolMonitor::tickMovesTheBar()
{
    QFETCH(int, ticks);
    QFETCH(int, filled);

    tick(*m_window, ticks);
    QCOMPARE(filledPixels(*m_window), filled);
    QVERIFY(!canClick());
    QVERIFY(timer()->isActive());
}

void tst_ToolMonitor::everyTickLogsALine()
{
    tick(*m_window, 3);
    const QString line = "Standard Output: \"\"";
    QCOMPARE(m_journal->lines(), QStringList({"log: " + line, "log: " + line, "log: " + line}));
}

void tst_ToolMonitor::timesOut()
{
    tick(*m_window, kTicksToTimeOut - 1);
    QVERIFY(!canClick());
    QVERIFY(timer()->isActive());

    tick(*m_window);
    QVERIFY(canClick());
    QVERIFY(!timer().isNull()); // stopped, but kept
    QVERIFY(!timer()->isActive());
    QCOMPARE(filledPixels(*m_window), 391); // 9105 of 10000
    QCOMPARE(status(), QString(kRunning));
    QVERIFY(m_tool->isRunning());
    QCOMPARE(m_journal->statusTexts(), QStringList());
}

void tst_ToolMonitor::counterWrapsAround()
{
    tick(*m_window, 2000);
    QCOMPARE(filledPixels(*m_window), 430); // 10000
    tick(*m_window);
    QCOMPARE(filledPixels(*m_window), 0); // 10005 is 0 again
    tick(*m_window, 1000);
    QCOMPARE(filledPixels(*m_window), 215);
}

void tst_ToolMonitor::successAfterTheTimeOut()
{
    tick(*m_window, kTicksToTimeOut);
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString(kSuccess));
    QCOMPARE(filledPixels(*m_window), 430);
    QVERIFY(canClick());
    QVERIFY(timer().isNull());
}

void tst_ToolMonitor::exitIsNotNoticed()
{
    m_tool.reset(); // ends it
    QTRY_COMPARE(m_watch->processes.at(0)->state(), QProcess::NotRunning);
    QVERIFY(!canClick());
    QVERIFY(timer()->isActive());
    QCOMPARE(m_journal->statusTexts(), QStringList());
}

void tst_ToolMonitor::closingStopsTheTimerAndLeavesTheTool()
{
    QTest::mouseClick(closeButton(*m_window), Qt::LeftButton);
    QVERIFY(!m_window->isVisible());
    QVERIFY(!timer().isNull());
    QVERIFY(!timer()->isActive());
    QVERIFY(m_tool->isRunning());
    m_journal.reset();
    m_window.reset();
    QVERIFY(!timer().isNull()); // left alone, and so is the tool
    QVERIFY(m_tool->isRunning());
}

void tst_ToolMonitor::olderTimerKeepsTicking()
{
    m_tool->complain("trouble");
    QTRY_VERIFY(canClick());
    startUpgrade();
    QVERIFY(timer(0)->isActive());
    QVERIFY(timer(1)->isActive());

    m_watch->holdsTicks = false;
    const QSignalSpy older(timer(0), SIGNAL(timeout()));
    const QSignalSpy newer(timer(1), SIGNAL(timeout()));
    QTRY_VERIFY(older.count() >= 3 && newer.count() >= 3);
    m_watch->holdsTicks = true;
    // Both drive the same counter: a log line each.
    QCOMPARE(m_journal->logLines().size(), older.count() + newer.count());
}

void tst_ToolMonitor::olderTimerTicksWithoutProcess()
{
    m_tool->complain("trouble");
    QTRY_VERIFY(canClick());
    m_testbed->removeUsbDevice(m_usbPath);
    click();
    QCOMPARE(status(), QString(kNotFound));
    m_journal->clear();

    m_watch->holdsTicks = false;
    QTRY_VERIFY(m_journal->logLines().size() >= 3);
    m_watch->holdsTicks = true;
    QCOMPARE(m_journal->logLines().first(), QString("Standard Output: \"\""));
    QVERIFY(canClick());

    tick(*m_window, kTicksToTimeOut);
    QVERIFY(!timer()->isActive());
    QCOMPARE(status(), QString(kNotFound));
}

void tst_ToolMonitor::olderTimerReachesTheTimeOutWithoutTimer()
{
    m_tool->complain("trouble");
    QTRY_VERIFY(canClick());
    startUpgrade();
    m_tool->say("Device programmed.\n");
    QTRY_COMPARE(status(), QString(kSuccess));
    QVERIFY(!timer(0).isNull());
    QVERIFY(timer(1).isNull());

    upgradeButton(*m_window)->setEnabled(false);
    tick(*m_window, kTicksToTimeOut);
    QVERIFY(canClick()); // everything but the stop
    QVERIFY(timer(0)->isActive());
    QCOMPARE(filledPixels(*m_window), 391);
    QCOMPARE(status(), QString(kSuccess));
}

QTEST_MAIN(tst_ToolMonitor)
#include "tst_ToolMonitor.moc"
