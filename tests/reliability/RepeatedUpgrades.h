// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/app/fixtures/UpgradeStage.h"

/// One upgrade after the other in one window, with a port and a tool that acts by itself. Nothing
/// else keeps what they leave behind.
class RepeatedUpgrades
{
public:
    RepeatedUpgrades();

    /// Lets the tool run the shell \a script for that many upgrades; each must end with \a status.
    void run(int times, const QByteArray &script, const QString &status);

    /// Open in this process once its tools are gone; -1 when they do not go.
    static int descriptors();

    UpgradeStage stage;
};
