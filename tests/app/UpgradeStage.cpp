// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"

#include <QtTest>

namespace {

const char *const kRunning = "Upgrading, please do not plug or unplug the device!";

} // namespace

UpgradeStage::UpgradeStage()
    : testbed(std::make_unique<Testbed>())
    , usbPath(testbed->addUsbDevice({0x1234, 0x5678, "Bootloader", "1"}))
    , tool(std::make_unique<DirectedTool>())
    , watch(std::make_unique<EventWatch>())
    , window(std::make_unique<MainWindow>())
    , journal(std::make_unique<Journal>(WindowParts::statusLabel(*window)))
{
    window->show();
}

UpgradeStage::~UpgradeStage()
{
    awaitTimers();
    journal.reset();
    tool.reset();
    QCoreApplication::processEvents();
    watch->deleteAll();
}

/// A timer that has not shown itself yet would turn up in the next test; a closed window's, which
/// is stopped, never does.
void UpgradeStage::awaitTimers() const
{
    if (window == nullptr || !window->isVisible()) {
        return;
    }
    QTRY_VERIFY(watch->timers.size() >= m_upgrades);
}

void UpgradeStage::addPort(const QString &node)
{
    testbed->addSerialPort(usbPath, node);
}

void UpgradeStage::click()
{
    QTest::mouseClick(WindowParts::upgradeButton(*window), Qt::LeftButton);
    m_upgrades += status() == kRunning ? 1 : 0;
}

QString UpgradeStage::status() const
{
    return WindowParts::statusLabel(*window)->text();
}

bool UpgradeStage::canClick() const
{
    return WindowParts::upgradeButton(*window)->isEnabled();
}

int UpgradeStage::filledPixels() const
{
    return WindowParts::filledPixels(*window);
}

void UpgradeStage::tick(int times)
{
    for (int i = 0; i < times; ++i) {
        QMetaObject::invokeMethod(window.get(), "onTimerProcessOutput", Qt::DirectConnection);
    }
}

void UpgradeStage::startUpgrade()
{
    const int starts = tool->starts();
    const int timers = watch->timers.size();
    click();
    QCOMPARE(status(), QString(kRunning));
    QTRY_COMPARE(tool->starts(), starts + 1);
    QTRY_COMPARE(watch->timers.size(), timers + 1);
    QTRY_COMPARE(watch->processes.size(), starts + 1);
}

QPointer<QTimer> UpgradeStage::timer(int index) const
{
    return watch->timers.value(index);
}
