// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/ChildProcesses.h"
#include "tests/reliability/LibraryHooks.h"
#include "tests/reliability/Outcome.h"
#include "tests/reliability/QueuedClick.h"
#include "tests/reliability/SequenceModel.h"

#include <QMetaEnum>
#include <QtTest>

#include <algorithm>
#include <csignal>

using namespace WindowParts;

namespace {

const char *const kPort = "/dev/cu.usbmodem14201";

} // namespace

/// One upgrade of a device that is in its application, disturbed once, at each of its steps and in
/// each way. Then it goes on as far as it can, up to the time-out, and must agree with the rules
/// all along. A disturbance may come before what it takes away; that changes nothing then.
class tst_Interruption : public QObject
{
    Q_OBJECT

public:
    enum Step {
        Clicked, ///< from here to ToolStarts the window is frozen
        MadeExecutable,
        FoundNoPort,
        AskedTheDevice,
        DeviceCameBack,
        FoundThePort,
        AnnouncesTheUpgrade,
        ToolStarts,
        ToolRuns,
        FirstTick,
        FirstOutput,
        FirstError,
        Phrase
    };
    Q_ENUM(Step)
    enum Disturbance { ToolKilled, PortGone, HidGone, Closed, ClickedAgain };
    Q_ENUM(Disturbance)

private slots:
    void init();
    void cleanup();
    void disturbed_data();
    void disturbed();

private:
    void reach(Step step);
    void disturb();
    bool mustHit() const;
    void catchUp();
    void compare();
    int runningTimers() const;
    void runSequence();
    void runTool();
    void say(const QByteArray &chunk);
    void complain(const QByteArray &chunk);
    void tick(int times);

    std::unique_ptr<UpgradeStage> m_stage;
    SequenceModel m_model;
    QString m_hidDevice;
    QString m_hid;
    Step m_when = Clicked;
    Disturbance m_what = ToolKilled;
    int m_disturbances = 0;
    bool m_hits = false; // what the disturbance takes away was there
    bool m_isQueued = false; // a click that the window has not seen yet
    bool m_isFrozen = false;
    bool m_isAsked = false;
    bool m_portIsThere = false;
    bool m_toolLives = false;
};

void tst_Interruption::init()
{
    m_stage = std::make_unique<UpgradeStage>();
    m_hidDevice = m_stage->testbed->addUsbDevice({0x7F3C, 0x0C51, "Target", "2"});
    m_hid = m_stage->testbed->addHidInterface(m_hidDevice, {0xFF31, 0x74, {}, {}});
    m_model = SequenceModel();
    m_disturbances = 0;
    m_hits = false;
    m_isQueued = false;
    m_isAsked = false;
    m_portIsThere = false;
    m_toolLives = false;
}

void tst_Interruption::cleanup()
{
    LibraryHooks::insteadOfSleep = {};
    m_stage.reset();
}

void tst_Interruption::disturbed_data()
{
    QTest::addColumn<Step>("step");
    QTest::addColumn<Disturbance>("disturbance");

    const auto steps = QMetaEnum::fromType<Step>();
    const auto disturbances = QMetaEnum::fromType<Disturbance>();
    for (int s = 0; s < steps.keyCount(); ++s) {
        for (int d = 0; d < disturbances.keyCount(); ++d) {
            QTest::addRow("%s at %s", disturbances.key(d), steps.key(s))
                << static_cast<Step>(steps.value(s))
                << static_cast<Disturbance>(disturbances.value(d));
        }
    }
}

void tst_Interruption::disturbed()
{
    QFETCH(Step, step);
    QFETCH(Disturbance, disturbance);

    m_when = step;
    m_what = disturbance;
    runSequence();
    if (m_model.hasProcess) {
        runTool();
    }
    tick(UpgradeStage::kTicksToTimeOut);
    compare();
    QVERIFY(m_model.canClick || !m_model.isVisible);
    QCOMPARE(m_disturbances, 1);
    QCOMPARE(m_hits, mustHit());
}

void tst_Interruption::reach(Step step)
{
    if (step == m_when) {
        disturb();
    }
    if (!m_isFrozen) {
        QCoreApplication::processEvents();
        catchUp();
        compare();
    }
}

void tst_Interruption::disturb()
{
    ++m_disturbances;
    m_hits = true;
    switch (m_what) {
    case ToolKilled:
        m_hits = !childProcesses().isEmpty();
        for (const pid_t child : childProcesses()) {
            ::kill(child, SIGKILL);
        }
        m_toolLives = false;
        break;
    case PortGone:
        m_hits = m_portIsThere;
        if (m_portIsThere) {
            m_stage->testbed->removeNode(kPort);
            m_portIsThere = false;
        }
        break;
    case HidGone:
        m_stage->testbed->removeUsbDevice(m_hidDevice);
        m_hid.clear();
        break;
    case Closed:
        queueClick(closeButton(*m_stage->window));
        m_isQueued = true;
        break;
    case ClickedAgain:
        queueClick(upgradeButton(*m_stage->window));
        m_isQueued = true;
        break;
    }
}

bool tst_Interruption::mustHit() const
{
    return (m_what != ToolKilled || m_when >= ToolStarts)
        && (m_what != PortGone || m_when >= DeviceCameBack);
}

/// What the window takes up by itself once it is no longer frozen.
void tst_Interruption::catchUp()
{
    if (!m_isQueued) {
        return;
    }
    m_isQueued = false;
    if (m_what == Closed) {
        m_model.close();
        QTest::qWait(50); // a timer that still ran would have shown itself
        return;
    }
    const int started = m_model.started;
    m_model.click(m_portIsThere, false);
    if (m_model.started > started) {
        QTRY_COMPARE(m_stage->tool->starts(), m_model.started);
    }
}

void tst_Interruption::compare()
{
    if (QTest::currentTestFailed()) {
        return; // each later step would wait in vain
    }
    const int processes = m_model.hasProcess && m_toolLives ? 1 : 0;
    QTRY_COMPARE(Outcome::of(*m_stage),
                 (Outcome{m_model.status, m_model.canClick, m_model.progress, processes}));
    QCOMPARE(m_stage->window->isVisible(), m_model.isVisible);
    QTRY_COMPARE(runningTimers(), m_model.timers.count(SequenceModel::Running));
}

int tst_Interruption::runningTimers() const
{
    const auto &timers = m_stage->watch->timers;
    return static_cast<int>(
        std::count_if(timers.begin(), timers.end(), [](const QPointer<QTimer> &timer) {
            return !timer.isNull() && timer->isActive();
        }));
}

void tst_Interruption::runSequence()
{
    m_isFrozen = true;
    m_stage->journal->onStatus = [this](const QString &text) {
        const QHash<QString, Step> steps
            = {{"Start Upgrade", Clicked},
               {"Init Upgrade success!", MadeExecutable},
               {"Find Upgrade Device!", FoundThePort},
               {"Upgrading, please do not plug or unplug the device!", AnnouncesTheUpgrade}};
        if (m_isFrozen && steps.contains(text)) {
            reach(steps.value(text));
        } else if (m_isFrozen && !m_isAsked) {
            reach(FoundNoPort);
        }
    };
    LibraryHooks::insteadOfSleep = [this](unsigned long /*secs*/) {
        m_isAsked = true;
        const bool takesIt = !m_hid.isEmpty() && !m_stage->testbed->reports(m_hid).isEmpty();
        reach(AskedTheDevice);
        if (takesIt) {
            m_stage->addPort(kPort);
            m_portIsThere = true;
        }
        reach(DeviceCameBack);
        m_model.click(false, m_portIsThere);
    };
    m_stage->click();
    m_isFrozen = false;
    m_toolLives = m_model.hasProcess;
    reach(ToolStarts);
}

void tst_Interruption::runTool()
{
    if (m_toolLives) {
        QTRY_COMPARE(m_stage->tool->starts(), 1);
    }
    reach(ToolRuns);
    tick(1);
    reach(FirstTick);
    say("Sending");
    reach(FirstOutput);
    complain("trouble");
    reach(FirstError);
    say("Device programmed");
    reach(Phrase);
}

void tst_Interruption::say(const QByteArray &chunk)
{
    if (m_toolLives) {
        m_stage->journal->clear();
        m_stage->tool->say(chunk);
        QTRY_COMPARE(m_stage->journal->logLines().size(), 1);
        m_model.say(chunk, true);
    }
}

void tst_Interruption::complain(const QByteArray &chunk)
{
    if (m_toolLives) {
        m_stage->journal->clear();
        m_stage->tool->complain(chunk);
        QTRY_COMPARE(m_stage->journal->logLines().size(), 1);
        m_model.complain(chunk);
    }
}

void tst_Interruption::tick(int times)
{
    if (m_model.timers.isEmpty()) {
        return;
    }
    // A closed window's timer has not got to tick even once, so nothing would be noted of it.
    const int index = m_model.timers.size() - 1;
    for (int i = 0; i < times && m_model.timers.at(index) == SequenceModel::Running; ++i) {
        m_model.tick(index);
        m_stage->tick();
    }
}

QTEST_MAIN(tst_Interruption)
#include "tst_Interruption.moc"
