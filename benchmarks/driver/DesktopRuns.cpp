// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/DesktopRuns.h"

#include "benchmarks/driver/DesktopSession.h"
#include "benchmarks/driver/Program.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <utility>

namespace {

struct Desktop
{
    QString name;
    QStringList options; ///< of with-screen
    QByteArray current; ///< XDG_CURRENT_DESKTOP, by which Qt chooses its theme
    Series resident = {};
    Series faults = {};
    Series errors = {};
};

/// A Wayland client cannot see when its window is painted, so all desktops get the same time.
void once(const QString &path, Desktop &desktop)
{
    constexpr int kUntilPainted = 3;
    const DesktopSession session(desktop.options);
    Program::Variables variables = session.variables();
    variables.insert("XDG_CURRENT_DESKTOP", desktop.current);
    const QTemporaryDir folder;
    QFile errors(folder.filePath("errors"));
    const Program program(path, variables, errors.fileName());
    QThread::sleep(kUntilPainted);
    const Program::Costs costs = program.costs();
    desktop.resident.add(costs.residentKilobytes / 1024);
    desktop.faults.add(costs.pageFaults);
    desktop.errors.add(static_cast<double>(errors.size()));
    if (errors.size() > 0 && errors.open(QIODevice::ReadOnly)) {
        qWarning("%s: %s", qPrintable(desktop.name), errors.readAll().trimmed().constData());
    }
}

} // namespace

Rows DesktopRuns::run(const QString &bareProgram, const QString &program, int rounds)
{
    constexpr double kLimit = 1.15;
    Desktop bare = {"bare X", {}, ""};
    QList<Desktop> desktops = {{"GNOME's plugins on X", {}, "GNOME"},
                               {"KDE's plugins on X", {}, "KDE"},
                               {"Weston", {"--weston"}, ""},
                               {"Mutter", {"--mutter"}, "GNOME"}};
    for (int round = 0; round < rounds; ++round) {
        once(bareProgram, bare);
        for (Desktop &desktop : desktops) {
            once(program, desktop);
        }
    }
    Rows rows;
    for (const Desktop &desktop : std::as_const(desktops)) {
        rows += {{"Resident memory, " + desktop.name, "MB", bare.name, desktop.resident,
                  bare.resident, Row::Gate, kLimit},
                 {"Page faults, " + desktop.name, "", bare.name, desktop.faults, bare.faults,
                  Row::Gate, kLimit},
                 {"Standard error, " + desktop.name, "B", "", desktop.errors, {}, Row::Gate, 0}};
    }
    return rows;
}
