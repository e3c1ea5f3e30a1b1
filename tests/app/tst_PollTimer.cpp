// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace WindowParts;

namespace {

const char *const kRunning = "Upgrading, please do not plug or unplug the device!";
const char *const kSuccess = "Upgrade Successfully";
const char *const kNotFound = "Find Upgrade Device Error!";

} // namespace

/// The poll timer, the bar that it drives and the time-out: every test begins with an upgrade that
/// has just been started on a device in its bootloader.
class tst_PollTimer : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_stage = std::make_unique<UpgradeStage>();
        m_stage->addPort();
        m_stage->startUpgrade();
        m_stage->journal->clear();
    }
    void cleanup() { m_stage.reset(); }

    void tickMovesTheBar_data();
    void tickMovesTheBar();
    void everyTickLogsALine();
    void timesOut();
    void counterWrapsAround();
    void successAfterTheTimeOut();
    void closingStopsTheTimerAndLeavesTheTool();
    void olderTimerKeepsTicking();
    void olderTimerTicksWithoutProcess();
    void olderTimerReachesTheTimeOutWithoutTimer();

private:
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_PollTimer::tickMovesTheBar_data()
{
    QTest::addColumn<int>("ticks");
    QTest::addColumn<int>("filled");

    // 5 of 10000 a tick, on 430 pixels.
    QTest::newRow("4 ticks") << 4 << 0;
    QTest::newRow("47 ticks") << 47 << 10;
    QTest::newRow("1000 ticks") << 1000 << 215;
    QTest::newRow("1820 ticks") << 1820 << 391;
}

void tst_PollTimer::tickMovesTheBar()
{
    QFETCH(int, ticks);
    QFETCH(int, filled);

    m_stage->tick(ticks);
    QCOMPARE(m_stage->filledPixels(), filled);
    QVERIFY(!m_stage->canClick());
    QVERIFY(m_stage->timer()->isActive());
}

void tst_PollTimer::everyTickLogsALine()
{
    m_stage->tick(3);
    const QString line = "Standard Output: \"\"";
    QCOMPARE(m_stage->journal->lines(),
             QStringList({"log: " + line, "log: " + line, "log: " + line}));
}

void tst_PollTimer::timesOut()
{
    m_stage->tick(UpgradeStage::kTicksToTimeOut - 1);
    QVERIFY(!m_stage->canClick());
    QVERIFY(m_stage->timer()->isActive());

    m_stage->tick();
    QVERIFY(m_stage->canClick());
    QVERIFY(!m_stage->timer().isNull()); // stopped, but kept
    QVERIFY(!m_stage->timer()->isActive());
    QCOMPARE(m_stage->filledPixels(), 391); // 9105 of 10000
    QCOMPARE(m_stage->status(), QString(kRunning));
    QVERIFY(m_stage->tool->isRunning());
    QCOMPARE(m_stage->journal->statusTexts(), QStringList());
}

void tst_PollTimer::counterWrapsAround()
{
    m_stage->tick(2000);
    QCOMPARE(m_stage->filledPixels(), 430); // 10000
    m_stage->tick();
    QCOMPARE(m_stage->filledPixels(), 0); // 10005 is 0 again
    m_stage->tick(1000);
    QCOMPARE(m_stage->filledPixels(), 215);
}

void tst_PollTimer::successAfterTheTimeOut()
{
    m_stage->tick(UpgradeStage::kTicksToTimeOut);
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
    QCOMPARE(m_stage->filledPixels(), 430);
    QVERIFY(m_stage->canClick());
    QVERIFY(m_stage->timer().isNull());
}

void tst_PollTimer::closingStopsTheTimerAndLeavesTheTool()
{
    QTest::mouseClick(closeButton(*m_stage->window), Qt::LeftButton);
    QVERIFY(!m_stage->window->isVisible());
    QVERIFY(!m_stage->timer().isNull());
    QVERIFY(!m_stage->timer()->isActive());
    QVERIFY(m_stage->tool->isRunning());
    m_stage->journal.reset();
    m_stage->window.reset();
    QVERIFY(!m_stage->timer().isNull()); // left alone, and so is the tool
    QVERIFY(m_stage->tool->isRunning());
}

void tst_PollTimer::olderTimerKeepsTicking()
{
    m_stage->tool->complain("trouble");
    QTRY_VERIFY(m_stage->canClick());
    m_stage->startUpgrade();
    m_stage->journal->clear();
    QVERIFY(m_stage->timer(0)->isActive());
    QVERIFY(m_stage->timer(1)->isActive());

    m_stage->watch->holdsTicks = false;
    const QSignalSpy older(m_stage->timer(0), SIGNAL(timeout()));
    const QSignalSpy newer(m_stage->timer(1), SIGNAL(timeout()));
    QTRY_VERIFY(older.count() >= 3 && newer.count() >= 3);
    m_stage->watch->holdsTicks = true;
    // Both drive the same counter: a log line each.
    QCOMPARE(m_stage->journal->logLines().size(), older.count() + newer.count());
    const int steps = older.count() + newer.count();
    m_stage->tick(1000 - steps);
    QCOMPARE(m_stage->filledPixels(), 215); // 1000 steps in all, half of the bar
}

void tst_PollTimer::olderTimerTicksWithoutProcess()
{
    m_stage->tool->complain("trouble");
    QTRY_VERIFY(m_stage->canClick());
    m_stage->testbed->removeUsbDevice(m_stage->usbPath);
    m_stage->click();
    QCOMPARE(m_stage->status(), QString(kNotFound));
    m_stage->journal->clear();

    m_stage->watch->holdsTicks = false;
    QTRY_VERIFY(m_stage->journal->logLines().size() >= 3);
    m_stage->watch->holdsTicks = true;
    QCOMPARE(m_stage->journal->logLines().first(), QString("Standard Output: \"\""));
    QVERIFY(m_stage->canClick());

    m_stage->tick(UpgradeStage::kTicksToTimeOut);
    QVERIFY(!m_stage->timer()->isActive());
    QCOMPARE(m_stage->status(), QString(kNotFound));
}

void tst_PollTimer::olderTimerReachesTheTimeOutWithoutTimer()
{
    m_stage->tool->complain("trouble");
    QTRY_VERIFY(m_stage->canClick());
    m_stage->startUpgrade();
    m_stage->journal->clear();
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
    QVERIFY(!m_stage->timer(0).isNull());
    QVERIFY(m_stage->timer(1).isNull());

    upgradeButton(*m_stage->window)->setEnabled(false);
    m_stage->tick(UpgradeStage::kTicksToTimeOut);
    QVERIFY(m_stage->canClick()); // everything but the stop
    QVERIFY(m_stage->timer(0)->isActive());
    QCOMPARE(m_stage->filledPixels(), 391);
    QCOMPARE(m_stage->status(), QString(kSuccess));
}

QTEST_MAIN(tst_PollTimer)
#include "tst_PollTimer.moc"
