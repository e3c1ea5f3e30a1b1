// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"
#include "tests/app/DirectedTool.h"
#include "tests/app/EventWatch.h"
#include "tests/app/Journal.h"
#include "tests/app/WindowParts.h"

#include <QPointer>
#include <QTimer>

#include <memory>

/// The window on its stage: an attached device without ports yet, the tool in its place, and
/// somebody who clicks and takes notes. The poll timers' ticks are held back; tick() gives them.
class UpgradeStage
{
public:
    static constexpr int kTicksToTimeOut = 1821;

    UpgradeStage();
    /// Ends the tool and clears away what the window leaves behind.
    ~UpgradeStage();
    UpgradeStage(const UpgradeStage &) = delete;
    UpgradeStage &operator=(const UpgradeStage &) = delete;

    void addPort(const QString &node = "/dev/cu.usbmodem14201");
    void click();
    QString status() const;
    bool canClick() const;
    int filledPixels() const;
    void tick(int times = 1);

    /// Clicks, and waits until the tool runs and its timer wants to tick.
    void startUpgrade();
    /// The timer of the first upgrade, the second and so on; null once deleted.
    QPointer<QTimer> timer(int index = 0) const;

    // A test may end each of them early.
    std::unique_ptr<Testbed> testbed;
    QString usbPath;
    std::unique_ptr<DirectedTool> tool;
    std::unique_ptr<EventWatch> watch;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<Journal> journal;

private:
    void awaitTimers() const;

    int m_upgrades = 0; // that have got as far as the tool
};
