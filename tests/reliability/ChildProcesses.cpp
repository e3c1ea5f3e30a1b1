// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/ChildProcesses.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

QVector<pid_t> childProcesses()
{
    const QByteArray self = QByteArray::number(QCoreApplication::applicationPid());
    QVector<pid_t> found;
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString &process : processes) {
        QFile file("/proc/" + process + "/stat");
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        // The name, in brackets, may hold blanks; state and parent follow it.
        const QByteArray line = file.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        if (fields.value(1) == self) {
            found.append(process.toInt());
        }
    }
    return found;
}
