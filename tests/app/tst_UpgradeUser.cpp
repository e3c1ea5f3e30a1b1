// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/fixtures/ChildProcesses.h"
#include "tests/app/fixtures/UpgradeSteps.h"

#include <QElapsedTimer>
#include <QtTest>

#include <csignal>

using namespace UpgradeSteps;
using namespace WindowParts;

namespace {

const QByteArray kWaits = "exec sleep 1000\n";
const QByteArray kIgnoresSignals = "trap '' TERM INT HUP\n" + kWaits;
const QByteArray kForks = "sleep 1000 &\n" + kWaits;
const QByteArray kTalks = "while :; do echo Sending; done\n";

} // namespace

/// A user who clicks again, closes the window or does not wait, with every kind of tool.
class tst_UpgradeUser : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_stage = std::make_unique<UpgradeStage>(); }
    void cleanup() { m_stage.reset(); }

    void secondClick_data();
    void secondClick();
    void closes_data();
    void closes();
    void closesWhileFrozen_data();
    void closesWhileFrozen();
    void clicksWhileFrozen_data();
    void clicksWhileFrozen();
    void eventsDuringTheSearch_data();
    void eventsDuringTheSearch();

private:
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_UpgradeUser::secondClick_data()
{
    QTest::addColumn<Steps>("end");
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<Outcome::Timer>("timer"); // of the first upgrade

    const auto tool = [](const char *name, const QByteArray &script) {
        const Steps error = {ticks(1000), complains("trouble")};
        QTest::addRow("after success, %s", name) << Steps{kSucceeds} << script << Outcome::Deleted;
        QTest::addRow("after an error, %s", name) << error << script << Outcome::Running;
        QTest::addRow("after the time-out, %s", name)
            << Steps{kTimesOut} << script << Outcome::Stopped;
    };
    tool("usual tool", kWaits);
    tool("tool ignores signals", kIgnoresSignals);
    tool("tool has forked", kForks);
}

/// The click ends the first tool before it does anything else, but not what the tool has forked.
void tst_UpgradeUser::secondClick()
{
    QFETCH(Steps, end);
    QFETCH(QByteArray, tool);
    QFETCH(Outcome::Timer, timer);

    UpgradeStage::setTool(tool);
    m_stage->addPort();
    m_stage->click();
    play(*m_stage, end);
    QVERIFY(m_stage->outcome().canClick);
    const auto first = static_cast<pid_t>(m_stage->tools.first()->processId());
    QVERIFY(m_stage->waitForSleep());
    const QVector<pid_t> forked = childProcesses(first);
    QCOMPARE(forked.size(), tool == kForks ? 1 : 0);

    UpgradeStage::setTool(); // forks nothing
    m_stage->takeJournal();
    m_stage->onStatus = [&](const QString &text) {
        QVERIFY(text != StatusText::kStart || ::kill(first, 0) != 0);
    };
    QElapsedTimer clock;
    clock.start();
    m_stage->click();
    QVERIFY(clock.elapsed() < 5000); // waiting for the tool to end by itself would take 30 s
    QCOMPARE(m_stage->outcome(),
             (Outcome{StatusText::kUpgrading, false, 0, {timer, Outcome::Running}, 1}));
    QCOMPARE(m_stage->takeJournal().mid(0, 4),
             QStringList({"button off", "bar: 0", "tool deleted",
                          QString("status: ") + StatusText::kStart}));
    for (const pid_t process : forked) {
        QCOMPARE(::kill(process, SIGKILL), 0);
    }
}

void tst_UpgradeUser::closes_data()
{
    QTest::addColumn<bool>("upgrades");
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QStringList>("journal");
    QTest::newRow("before any upgrade") << false << kWaits << QStringList{"window closed"};
    const QStringList stops = {"window closed", "timers: stopped"};
    QTest::newRow("while the tool is silent") << true << kWaits << stops;
    QTest::newRow("while the tool talks") << true << kTalks << stops;
}

/// Closing stops the timer but not the tool, whose output is read until the window is deleted.
void tst_UpgradeUser::closes()
{
    QFETCH(bool, upgrades);
    QFETCH(QByteArray, tool);
    QFETCH(QStringList, journal);

    UpgradeStage::setTool(tool);
    if (upgrades) {
        m_stage->addPort();
        m_stage->click();
        m_stage->tick(600);
    }
    m_stage->takeJournal();
    const Outcome before = m_stage->outcome();
    m_stage->close();
    QVERIFY(!m_stage->window->isVisible());
    QCOMPARE(m_stage->takeJournal(), journal);
    Outcome expected = before;
    expected.timers.fill(Outcome::Stopped);
    QCOMPARE(m_stage->outcome(), expected);
    if (!upgrades) {
        return;
    }
    m_stage->say("Sending\n");
    QVERIFY(!m_stage->takeJournal().filter("Sending").isEmpty());

    m_stage->window.reset();
    m_stage->say("Sending\n"); // nobody reads it
    QCOMPARE(childProcesses().size(), 1);
    QVERIFY(!m_stage->timers.first().isNull());
}

void tst_UpgradeUser::closesWhileFrozen_data()
{
    QTest::addColumn<bool>("portComes");
    QTest::addColumn<Outcome>("outcome");

    QTest::newRow("and the port comes")
        << true << Outcome{StatusText::kUpgrading, false, 0, {Outcome::Stopped}, 1};
    QTest::newRow("and no port comes") << false << Outcome::notFound();
}

/// The window closes once the click on the upgrade button has returned.
void tst_UpgradeUser::closesWhileFrozen()
{
    QFETCH(bool, portComes);
    QFETCH(Outcome, outcome);

    m_stage->whileAsleep = [&] {
        m_stage->queueClick(closeButton(*m_stage->window));
        if (portComes) {
            m_stage->addPort();
        }
    };
    m_stage->click();
    QVERIFY(m_stage->window->isVisible());
    QCoreApplication::processEvents();
    QVERIFY(!m_stage->window->isVisible());
    QCOMPARE(m_stage->outcome(), outcome);
}

void tst_UpgradeUser::clicksWhileFrozen_data()
{
    QTest::addColumn<int>("clicks");
    QTest::addColumn<bool>("portComes");

    for (int clicks = 1; clicks <= 5; ++clicks) {
        QTest::addRow("%d, and the port comes", clicks) << clicks << true;
        QTest::addRow("%d, and no port comes", clicks) << clicks << false;
    }
}

/// The button drops the clicks if it is still disabled, and obeys each one otherwise.
void tst_UpgradeUser::clicksWhileFrozen()
{
    QFETCH(int, clicks);
    QFETCH(bool, portComes);

    m_stage->whileAsleep = [&] {
        if (m_stage->slept > 2) {
            return;
        }
        for (int i = 0; i < clicks; ++i) {
            m_stage->queueClick(upgradeButton(*m_stage->window));
        }
        if (portComes) {
            m_stage->addPort();
        }
    };
    m_stage->click();
    QCoreApplication::processEvents();
    QCOMPARE(m_stage->slept, portComes ? 2UL : 2UL + 2UL * static_cast<unsigned long>(clicks));
    QCOMPARE(m_stage->outcome(), portComes ? Outcome::upgrading() : Outcome::notFound());
    QCOMPARE(m_stage->takeJournal().count("button off"), portComes ? 1 : 1 + clicks);
}

void tst_UpgradeUser::eventsDuringTheSearch_data()
{
    QTest::addColumn<Steps>("events");
    QTest::addColumn<int>("bar");
    QTest::addColumn<Outcome::Timer>("timer"); // of the first upgrade
    QTest::addColumn<bool>("isVisible");

    const auto clicksOn = [](MButton *(*button)(const QWidget &)) {
        return Steps{[button](UpgradeStage &stage) {
            stage.queueClick(button(*stage.window));
        }};
    };
    QTest::newRow("none") << Steps() << 0 << Outcome::Running << true;
    QTest::newRow("two ticks") << Steps{ticks(2)} << 10 << Outcome::Running << true;
    QTest::newRow("click on the upgrade button")
        << clicksOn(upgradeButton) << 0 << Outcome::Running << true;
    QTest::newRow("click on the close button")
        << clicksOn(closeButton) << 0 << Outcome::Stopped << false;
}

/// On macOS, the search for HID devices runs the event loop.
void tst_UpgradeUser::eventsDuringTheSearch()
{
    QFETCH(Steps, events);
    QFETCH(int, bar);
    QFETCH(Outcome::Timer, timer);
    QFETCH(bool, isVisible);

    m_stage->addPort();
    play(*m_stage, {kClick, complains("trouble"), kUnplug});
    LibraryHooks::current.whileHidSearched = [&] {
        play(*m_stage, events);
        QCoreApplication::processEvents();
    };
    m_stage->click();
    QCOMPARE(m_stage->outcome(), (Outcome{StatusText::kNotFound, true, bar, {timer}, 0}));
    QCOMPARE(m_stage->slept, 2UL); // so there was one search
    QCOMPARE(m_stage->window->isVisible(), isVisible);
}

QTEST_MAIN(tst_UpgradeUser)
#include "tst_UpgradeUser.moc"
