// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/LibraryHooks.h"
#include "tests/reliability/Outcome.h"
#include "tests/reliability/QueuedClick.h"

#include <QElapsedTimer>
#include <QtTest>

#include <csignal>

using namespace WindowParts;

namespace {

const char *const kRunning = "Upgrading, please do not plug or unplug the device!";
const char *const kNoPort = "Find Upgrade Device Error!";

enum End { Success, Error, TimeOut };

const QByteArray kRelay = "cat \"$0.error\" >&2 &\nexec cat \"$0.output\"\n";
const QByteArray kStubborn = "trap '' TERM INT HUP\n" + kRelay;
const QByteArray kTalks = "while :; do echo Sending; done\n";
const QByteArray kForks = "sleep 1000 &\necho $! > \"$0.forked\"\n" + kRelay;

} // namespace

Q_DECLARE_METATYPE(End)

/// A user who clicks again, who closes the window, or who cannot wait, and tools that make it hard.
class tst_UserFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void secondClick_data();
    void secondClick();
    void forkedProcessHoldsNothingUp();
    void closesWhileWaiting_data();
    void closesWhileWaiting();
    void closes_data();
    void closes();
    void clicksWhileFrozen_data();
    void clicksWhileFrozen();

private:
    void finish(End end);

    std::unique_ptr<UpgradeStage> m_stage;
    qint64 m_endless = 0; // a process that does not end with the tool's input
};

void tst_UserFaults::init()
{
    m_stage = std::make_unique<UpgradeStage>();
}

void tst_UserFaults::cleanup()
{
    LibraryHooks::insteadOfSleep = {};
    if (m_endless != 0) {
        ::kill(static_cast<pid_t>(m_endless), SIGKILL);
        m_endless = 0;
    }
    m_stage.reset();
    QFile::remove(DirectedTool::path() + ".forked");
}

void tst_UserFaults::finish(End end)
{
    switch (end) {
    case Success:
        m_stage->tool->say("Device programmed");
        break;
    case Error:
        m_stage->tool->complain("trouble");
        break;
    case TimeOut:
        m_stage->tick(UpgradeStage::kTicksToTimeOut);
        break;
    }
    QTRY_VERIFY(m_stage->canClick());
}

void tst_UserFaults::secondClick_data()
{
    QTest::addColumn<End>("end");
    QTest::addColumn<QByteArray>("script");

    QTest::newRow("after success") << Success << kRelay;
    QTest::newRow("after an error") << Error << kRelay;
    QTest::newRow("after the time-out") << TimeOut << kRelay;
    QTest::newRow("tool ignores TERM, after success") << Success << kStubborn;
    QTest::newRow("tool ignores TERM, after an error") << Error << kStubborn;
    QTest::newRow("tool ignores TERM, after the time-out") << TimeOut << kStubborn;
}

void tst_UserFaults::secondClick()
{
    QFETCH(End, end);
    QFETCH(QByteArray, script);

    m_stage->tool->setScript(script);
    m_stage->addPort();
    m_stage->startUpgrade();
    finish(end);
    const auto first = static_cast<pid_t>(m_stage->tool->pid());
    QVERIFY(m_stage->tool->isRunning());

    QElapsedTimer clock;
    qint64 goneAfter = -1;
    const QMetaObject::Connection pressed = connect(
        upgradeButton(*m_stage->window), &QAbstractButton::pressed, [&clock] { clock.start(); });
    m_stage->journal->onStatus = [&](const QString &text) {
        if (text == "Start Upgrade" && ::kill(first, 0) != 0) {
            goneAfter = clock.elapsed();
        }
    };
    m_stage->startUpgrade();
    disconnect(pressed);
    QVERIFY(goneAfter >= 0);
    QVERIFY2(goneAfter < 100, qPrintable(QString("%1 ms").arg(goneAfter)));
    QCOMPARE(Outcome::of(*m_stage), (Outcome{kRunning, false, 0, 1}));
}

void tst_UserFaults::forkedProcessHoldsNothingUp()
{
    m_stage->tool->setScript(kForks);
    m_stage->addPort();
    m_stage->startUpgrade();
    const auto forked = [] {
        QFile file(DirectedTool::path() + ".forked");
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    };
    QTRY_VERIFY((m_endless = forked()) > 0);
    finish(Success);

    // It keeps both channels open, and is left alone.
    m_stage->tool->setScript(kRelay);
    QElapsedTimer clock;
    clock.start();
    m_stage->startUpgrade();
    QVERIFY(clock.elapsed() < 5000); // a wait for the channels' end would take 30 s
    QCOMPARE(Outcome::of(*m_stage), (Outcome{kRunning, false, 0, 1}));
    QCOMPARE(::kill(static_cast<pid_t>(m_endless), 0), 0);
}

void tst_UserFaults::closesWhileWaiting_data()
{
    QTest::addColumn<bool>("portComes");
    QTest::addColumn<Outcome>("outcome");

    QTest::newRow("and the port comes") << true << Outcome{kRunning, false, 0, 1};
    QTest::newRow("and no port comes") << false << Outcome{kNoPort, true, 0, 0};
}

/// The window is frozen while it waits for the port, and closes once it has gone on to the tool.
void tst_UserFaults::closesWhileWaiting()
{
    QFETCH(bool, portComes);
    QFETCH(Outcome, outcome);

    int waits = 0;
    LibraryHooks::insteadOfSleep = [&](unsigned long /*secs*/) {
        ++waits;
        queueClick(closeButton(*m_stage->window));
        if (portComes) {
            m_stage->addPort();
        }
    };
    m_stage->click();
    QCOMPARE(waits, 1);
    QVERIFY(m_stage->window->isVisible());
    QCOMPARE(m_stage->status(), outcome.status);

    QTRY_VERIFY(!m_stage->window->isVisible());
    QTRY_COMPARE(m_stage->tool->starts(), outcome.processes);
    QTest::qWait(50); // a timer that still ran would have ticked
    QVERIFY(m_stage->watch->timers.isEmpty());
    QCOMPARE(Outcome::of(*m_stage), outcome);
}

void tst_UserFaults::closes_data()
{
    QTest::addColumn<QByteArray>("script");

    QTest::newRow("while flashing") << kRelay;
    QTest::newRow("while the tool talks") << kTalks;
}

void tst_UserFaults::closes()
{
    QFETCH(QByteArray, script);

    const auto hears = [this] {
        return !m_stage->journal->logLines().filter("Sending").isEmpty();
    };
    m_stage->tool->setScript(script);
    m_stage->addPort();
    m_stage->startUpgrade();
    m_endless = script == kTalks ? m_stage->tool->pid() : 0;
    m_stage->tick(600);
    m_stage->tool->say("Sending\n");
    QTRY_VERIFY(hears());
    queueClick(closeButton(*m_stage->window));
    QTRY_VERIFY(!m_stage->window->isVisible());
    QVERIFY(!m_stage->timer()->isActive());
    QCOMPARE(Outcome::of(*m_stage), (Outcome{kRunning, false, 3000, 1}));
    m_stage->journal->clear();
    m_stage->tool->say("Sending\n");
    QTRY_VERIFY(hears()); // it is heard until the window is gone

    m_stage->journal.reset();
    m_stage->window.reset();
    m_stage->tool->say("Sending\n"); // to nobody
    QCoreApplication::processEvents();
    QVERIFY(m_stage->tool->isRunning());
}

void tst_UserFaults::clicksWhileFrozen_data()
{
    QTest::addColumn<int>("clicks");
    QTest::addColumn<bool>("portComes");

    for (int clicks = 1; clicks <= 5; ++clicks) {
        QTest::addRow("%d, and the port comes", clicks) << clicks << true;
        QTest::addRow("%d, and no port comes", clicks) << clicks << false;
    }
}

/// A disabled button drops them; one that is enabled again by then obeys each.
void tst_UserFaults::clicksWhileFrozen()
{
    QFETCH(int, clicks);
    QFETCH(bool, portComes);

    int waits = 0;
    LibraryHooks::insteadOfSleep = [&](unsigned long /*secs*/) {
        if (++waits > 1) {
            return;
        }
        for (int i = 0; i < clicks; ++i) {
            queueClick(upgradeButton(*m_stage->window));
        }
        if (portComes) {
            m_stage->addPort();
        }
    };
    m_stage->click();
    QCOMPARE(waits, 1);
    QTRY_COMPARE(waits, portComes ? 1 : 1 + clicks);
    QTRY_COMPARE(m_stage->tool->starts(), portComes ? 1 : 0);
    QTest::qWait(50); // one more would have begun
    QCOMPARE(waits, portComes ? 1 : 1 + clicks);
    QCOMPARE(Outcome::of(*m_stage),
             (portComes ? Outcome{kRunning, false, 0, 1} : Outcome{kNoPort, true, 0, 0}));
    QCOMPARE(m_stage->journal->statusTexts().count("Start Upgrade"), portComes ? 1 : 1 + clicks);
}

QTEST_MAIN(tst_UserFaults)
#include "tst_UserFaults.moc"
