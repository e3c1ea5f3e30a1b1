// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/Outcome.h"

#include "tests/app/UpgradeStage.h"

#include <QDir>
#include <QtTest>

namespace {

int children()
{
    const QByteArray self = QByteArray::number(QCoreApplication::applicationPid());
    int count = 0;
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString &process : processes) {
        QFile file("/proc/" + process + "/stat");
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        // The name, in brackets, may hold blanks; state and parent follow it.
        const QByteArray line = file.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        count += fields.value(1) == self ? 1 : 0;
    }
    return count;
}

} // namespace

Outcome Outcome::of(const UpgradeStage &stage)
{
    return {stage.status(), stage.canClick(), WindowParts::progressValue(*stage.window),
            children()};
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
