// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/Outcome.h"

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/ChildProcesses.h"

#include <QTest>

Outcome Outcome::of(const UpgradeStage &stage)
{
    return {stage.status(), stage.canClick(), WindowParts::progressValue(*stage.window),
            childProcesses().size()};
}

bool Outcome::operator==(const Outcome &other) const
{
    return status == other.status && canClick == other.canClick && progress == other.progress
        && processes == other.processes;
}

char *toString(const Outcome &outcome)
{
    return qstrdup(qPrintable(QString("\"%1\", button %2, %3 of 10000, %4 processes")
                                  .arg(outcome.status, outcome.canClick ? "enabled" : "disabled")
                                  .arg(outcome.progress)
                                  .arg(outcome.processes)));
}
