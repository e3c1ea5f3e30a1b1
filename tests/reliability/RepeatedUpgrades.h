// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/app/UpgradeStage.h"

/// One upgrade after the other in one window, with a port and a tool that acts by itself; nothing
/// else keeps what they leave behind.
class RepeatedUpgrades
{
public:
    RepeatedUpgrades();
    ~RepeatedUpgrades();
    RepeatedUpgrades(const RepeatedUpgrades &) = delete;
    RepeatedUpgrades &operator=(const RepeatedUpgrades &) = delete;

    /// Lets the tool do what the shell \a script says, as often; each must end with that status.
    void run(int times, const QByteArray &script, const QString &status);

    /// Open in this process once its tools are gone; -1 when they do not go.
    static int descriptors();

    UpgradeStage stage;

private:
    QtMessageHandler m_otherHandler = nullptr;
};
