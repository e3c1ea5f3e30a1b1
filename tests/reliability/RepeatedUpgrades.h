// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/app/fixtures/UpgradeStage.h"

/// Many upgrades in one window. Nothing but the window keeps their processes and timers.
class RepeatedUpgrades
{
public:
    RepeatedUpgrades();

    /// Upgrades that often with a shell \a script as the tool. Each upgrade must end with \a
    /// status.
    void run(int times, const QByteArray &script, const QString &status);

    /// The number of open file descriptors once all tools have ended; -1 if one does not end.
    static int descriptors();

    UpgradeStage stage;
};
