// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"

#include <QtTest>

#include <memory>

using namespace WindowParts;

namespace {

/// Looks at the window, which runs an upgrade, whenever one of its parts changes: when a line is
/// logged, a text set, the upgrade button switched, the tool's process deleted, the window closed.
class Witness : public QObject
{
public:
    explicit Witness(UpgradeStage &stage)
        : m_stage(stage)
        , m_button(upgradeButton(*stage.window))
    {
        stage.journal->onLog = [this] {
            note("log");
        };
        stage.journal->onStatus = [this](const QString &) {
            note("text");
        };
        connect(stage.watch->processes.last(), &QObject::destroyed, this,
                [this] { note("process"); });
        m_button->installEventFilter(this);
        stage.window->installEventFilter(this);
    }

    ~Witness() override
    {
        m_stage.journal->onLog = nullptr;
        m_stage.journal->onStatus = nullptr;
    }

    /// What changed and how the window was then, oldest first.
    QStringList moments;

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (receiver == m_button && event->type() == QEvent::EnabledChange) {
            note("button");
        } else if (receiver == m_stage.window.get() && event->type() == QEvent::Close) {
            note("close");
        }
        return false;
    }

private:
    void note(const QString &change)
    {
        const QPointer<QTimer> timer = m_stage.timer();
        moments.append(QString("%1: %2, bar %3, timer %4")
                           .arg(change, m_stage.canClick() ? "enabled" : "disabled")
                           .arg(m_stage.filledPixels())
                           .arg(timer.isNull()          ? "gone"
                                    : timer->isActive() ? "runs"
                                                        : "stopped"));
    }

    UpgradeStage &m_stage;
    QObject *const m_button;
};

} // namespace

/// In which order the window changes: every test begins with a running upgrade whose bar has filled
/// 215 of its 430 pixels.
class tst_StepOrder : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_stage = std::make_unique<UpgradeStage>();
        m_stage->addPort();
        m_stage->startUpgrade();
        m_stage->tick(1000);
    }
    void cleanup() { m_stage.reset(); }

    void errorText();
    void success();
    void timeOut();
    void secondClick();
    void closing();

private:
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_StepOrder::errorText()
{
    const Witness witness(*m_stage);
    m_stage->tool->complain("trouble");
    QTRY_COMPARE(m_stage->status(), QString("trouble"));
    QCOMPARE(
        witness.moments,
        QStringList({"log: disabled, bar 215, timer runs", "button: enabled, bar 215, timer runs",
                     "text: enabled, bar 215, timer runs"}));
}

void tst_StepOrder::success()
{
    const Witness witness(*m_stage);
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(witness.moments.size(), 3);
    QCOMPARE(
        witness.moments,
        QStringList({"text: disabled, bar 215, timer gone", "button: enabled, bar 430, timer gone",
                     "log: enabled, bar 430, timer gone"}));
}

void tst_StepOrder::timeOut()
{
    m_stage->tick(UpgradeStage::kTicksToTimeOut - 1000 - 1);
    const Witness witness(*m_stage);
    m_stage->tick();
    QCOMPARE(witness.moments,
             QStringList({"button: enabled, bar 391, timer stopped",
                          "log: enabled, bar 391, timer stopped"}));
}

void tst_StepOrder::secondClick()
{
    m_stage->tool->complain("trouble");
    QTRY_COMPARE(m_stage->status(), QString("trouble"));
    const Witness witness(*m_stage);
    m_stage->click();
    QCOMPARE(QStringList(witness.moments.mid(0, 4)),
             QStringList({"button: disabled, bar 215, timer runs",
                          "process: disabled, bar 0, timer runs",
                          "text: disabled, bar 0, timer runs", // "Start Upgrade"
                          "log: disabled, bar 0, timer runs"})); // chmod's output
}

void tst_StepOrder::closing()
{
    const Witness witness(*m_stage);
    QTest::mouseClick(closeButton(*m_stage->window), Qt::LeftButton);
    QCOMPARE(witness.moments, QStringList("close: disabled, bar 215, timer runs"));
    QVERIFY(!m_stage->timer()->isActive());
}

QTEST_MAIN(tst_StepOrder)
#include "tst_StepOrder.moc"
