// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/RepeatedUpgrades.h"

#include "tests/app/fixtures/ChildProcesses.h"

#include <QDir>
#include <QtTest>

RepeatedUpgrades::RepeatedUpgrades()
{
    stage.stopWatching();
    stage.addPort();
}

void RepeatedUpgrades::run(int times, const QByteArray &script, const QString &status)
{
    UpgradeStage::setTool(script);
    const auto *button = WindowParts::upgradeButton(*stage.window);
    for (int i = 0; i < times; ++i) {
        stage.click();
        QVERIFY(!button->isEnabled());
        QVERIFY(UpgradeStage::waitFor(
            [button] { return button->isEnabled() && childProcesses().isEmpty(); }));
        QCOMPARE(stage.outcome().status, status);
    }
}

int RepeatedUpgrades::descriptors()
{
    if (!UpgradeStage::waitFor([] { return childProcesses().isEmpty(); })) {
        return -1;
    }
    QCoreApplication::processEvents(); // closes the pipes of the last tool
    return int(QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size());
}
