// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"
#include "tests/endtoend/Stage.h"

#include <QElapsedTimer>
#include <QtTest>

/// Waits for a minute, so it is a program of its own that runs beside the others.
class tst_TimeOut : public QObject
{
    Q_OBJECT

private slots:
    void givesTheButtonBack();
};

void tst_TimeOut::givesTheButtonBack()
{
    constexpr int kTimeOut = 54630; // 1821 ticks of 30 ms
    constexpr int kSoon = 20000;
    constexpr int kBusyMachine = 40000; // ticks may come late, but never early
    constexpr int kNoticed = 4000; // until the start was noticed
    const QString upgrading = StatusText::kUpgrading;
    Stage stage;
    stage.device.startInBootloader();
    stage.setToolScript("sleep 60000\n");
    QVERIFY(stage.open());
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), upgrading, kSoon);

    QElapsedTimer sinceStart;
    sinceStart.start();
    QTRY_VERIFY_WITH_TIMEOUT(stage.isUpgradeEnabled(), kTimeOut + kBusyMachine);
    QVERIFY(sinceStart.elapsed() > kTimeOut - kNoticed);

    const int progress = stage.progress();
    QVERIFY2(progress >= 9050 && progress <= 9105, qPrintable(QString::number(progress)));
    QCOMPARE(stage.status(), upgrading);
}

QTEST_MAIN(tst_TimeOut)
#include "tst_TimeOut.moc"
