// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaType>
#include <QString>

class UpgradeStage;

/// What is left in the end: all that a user sees, and what goes on running unseen.
struct Outcome
{
    QString status;
    bool canClick = true;
    int progress = 0; ///< of 10000
    int processes = 0; ///< children of this process, dead ones included until they are reaped

    static Outcome of(const UpgradeStage &stage);

    bool operator==(const Outcome &other) const;
};

/// For the messages of QCOMPARE.
char *toString(const Outcome &outcome);

Q_DECLARE_METATYPE(Outcome)
