// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceIdentity.h"
#include "tests/app/fixtures/ChildProcesses.h"
#include "tests/app/fixtures/UpgradeStage.h"
#include "tests/models/SequenceModel.h"

#include <QMetaEnum>
#include <QtTest>

#include <csignal>

using namespace WindowParts;

/// Each row disturbs an upgrade at one of its steps in one way. The upgrade then goes on as far as
/// it can, up to the time-out, and must agree with its model all the time. A disturbance has no
/// effect if there is nothing to take away yet.
class tst_Interruption : public QObject
{
    Q_OBJECT

public:
    enum Step {
        Clicked, ///< the window is blocked from here to ToolStarts
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
    void disturbed_data();
    void disturbed();
};

namespace {

using Step = tst_Interruption::Step;
using Disturbance = tst_Interruption::Disturbance;

class DisturbedUpgrade
{
public:
    DisturbedUpgrade(Step when, Disturbance what)
        : m_when(when)
        , m_what(what)
    { }

    void play();

private:
    void runSequence();
    void runTool();
    void reach(Step step);
    void reachByText(const QString &text);
    void disturb();
    bool mustMeetSomething() const;
    void catchUp();
    void compare();
    void restartDevice();
    void say(const QByteArray &chunk);
    void complain(const QByteArray &chunk);
    void tick(int times);

    const Step m_when;
    const Disturbance m_what;
    UpgradeStage m_stage;
    const DeviceIdentity m_device;
    const QString m_target
        = m_stage.testbed.addUsbDevice({m_device.vendorId, m_device.applicationId, "Target", "2"});
    const QString m_hid
        = m_stage.testbed.addHidInterface(m_target, {m_device.usagePage, m_device.usage, {}, {}});
    SequenceModel m_model;
    int m_disturbances = 0;
    bool m_meetsSomething = true;
    bool m_isQueued = false; // a click that the window has not processed yet
    bool m_isFrozen = false;
    bool m_hidIsThere = true;
    bool m_portIsThere = false;
};

void DisturbedUpgrade::play()
{
    runSequence();
    if (m_model.hasTool) {
        runTool();
    }
    tick(UpgradeStage::kTicksToTimeOut);
    compare();
    QVERIFY(m_model.outcome.canClick || !m_model.isVisible);
    QCOMPARE(m_disturbances, 1);
    QCOMPARE(m_meetsSomething, mustMeetSomething());
}

void DisturbedUpgrade::runSequence()
{
    m_stage.onStatus = [this](const QString &text) {
        reachByText(text);
    };
    m_stage.whileAsleep = [this] {
        restartDevice();
    };
    m_isFrozen = true;
    m_stage.click();
    m_isFrozen = false;
    reach(Step::ToolStarts);
}

void DisturbedUpgrade::reachByText(const QString &text)
{
    static const QHash<QString, Step> kSteps
        = {{StatusText::kStart, Step::Clicked},
           {StatusText::kInitialised, Step::MadeExecutable},
           {StatusText::kNotFound, Step::FoundNoPort},
           {StatusText::kFound, Step::FoundThePort},
           {StatusText::kUpgrading, Step::AnnouncesTheUpgrade}};
    const bool isFirstSearch = m_stage.slept == 0;
    if (m_isFrozen && (isFirstSearch || text != StatusText::kNotFound)) {
        reach(kSteps.value(text));
    }
}

void DisturbedUpgrade::restartDevice()
{
    const bool takesTheReport = m_hidIsThere && !m_stage.testbed.reports(m_hid).isEmpty();
    reach(Step::AskedTheDevice);
    if (takesTheReport) {
        m_stage.addPort();
        m_portIsThere = true;
    }
    reach(Step::DeviceCameBack);
    m_model.click(false, m_portIsThere);
}

void DisturbedUpgrade::runTool()
{
    QProcess *const tool = m_stage.tools.first();
    QVERIFY(UpgradeStage::waitFor([tool] { return tool->state() != QProcess::Starting; }));
    reach(Step::ToolRuns);
    tick(1);
    reach(Step::FirstTick);
    say("Sending");
    reach(Step::FirstOutput);
    complain("trouble");
    reach(Step::FirstError);
    say("Device programmed");
    reach(Step::Phrase);
}

void DisturbedUpgrade::reach(Step step)
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

void DisturbedUpgrade::disturb()
{
    ++m_disturbances;
    switch (m_what) {
    case Disturbance::ToolKilled:
        m_meetsSomething = !childProcesses().isEmpty();
        for (const pid_t child : childProcesses()) {
            ::kill(child, SIGKILL);
            m_model.end();
        }
        break;
    case Disturbance::PortGone:
        m_meetsSomething = m_portIsThere;
        if (m_portIsThere) {
            m_stage.testbed.removeNode(UpgradeStage::kPort);
        }
        m_portIsThere = false;
        break;
    case Disturbance::HidGone:
        m_stage.testbed.removeUsbDevice(m_target);
        m_hidIsThere = false;
        break;
    case Disturbance::Closed:
        m_stage.queueClick(closeButton(*m_stage.window));
        m_isQueued = true;
        break;
    case Disturbance::ClickedAgain:
        m_stage.queueClick(upgradeButton(*m_stage.window));
        m_isQueued = true;
        break;
    }
}

bool DisturbedUpgrade::mustMeetSomething() const
{
    return (m_what != Disturbance::ToolKilled || m_when >= Step::ToolStarts)
        && (m_what != Disturbance::PortGone || m_when >= Step::DeviceCameBack);
}

/// Passes the click to the model once the window has processed it.
void DisturbedUpgrade::catchUp()
{
    if (!m_isQueued) {
        return;
    }
    m_isQueued = false;
    if (m_what == Disturbance::Closed) {
        m_model.close();
    } else {
        m_model.click(m_portIsThere, false);
    }
}

void DisturbedUpgrade::compare()
{
    if (QTest::currentTestFailed()) {
        return; // the later steps would wait in vain
    }
    QCOMPARE(m_stage.awaitOutcome(m_model.outcome), m_model.outcome);
    QCOMPARE(m_stage.window->isVisible(), m_model.isVisible);
}

void DisturbedUpgrade::say(const QByteArray &chunk)
{
    if (m_model.outcome.processes > 0) {
        m_stage.say(chunk);
        m_model.say(chunk, true);
    }
}

void DisturbedUpgrade::complain(const QByteArray &chunk)
{
    if (m_model.outcome.processes > 0) {
        m_stage.complain(chunk);
        m_model.complain(chunk);
    }
}

void DisturbedUpgrade::tick(int times)
{
    const auto &timers = m_model.outcome.timers;
    for (int i = 0; i < times && !timers.isEmpty() && timers.last() == Outcome::Running; ++i) {
        m_model.tick(int(timers.size()) - 1);
        m_stage.tick();
    }
}

} // namespace

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

    DisturbedUpgrade(step, disturbance).play();
}

QTEST_MAIN(tst_Interruption)
#include "tst_Interruption.moc"
