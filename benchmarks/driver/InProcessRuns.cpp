// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/InProcessRuns.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtDebug>

#include <map>

namespace {

/// The microseconds of all repetitions, by name, such as "bar/ours".
using Results = std::map<QString, Series>;

QByteArray outputOf(const QString &path, const Program::Variables &variables, int rounds)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto entry = variables.begin(); entry != variables.end(); ++entry) {
        environment.insert(QString::fromLocal8Bit(entry.key()),
                           QString::fromLocal8Bit(entry.value()));
    }
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(path,
                  {"--benchmark_format=json", "--benchmark_enable_random_interleaving=true",
                   QString("--benchmark_repetitions=%1").arg(rounds)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        qFatal("The benchmarks inside a process failed");
    }
    return process.readAllStandardOutput();
}

Results parse(const QByteArray &output)
{
    Results results;
    const QJsonObject report = QJsonDocument::fromJson(output).object();
    const QJsonArray runs = report["benchmarks"].toArray();
    for (const auto &entry : runs) {
        const QJsonObject run = entry.toObject();
        if (run["run_type"].toString() != "iteration") {
            continue;
        }
        // Google Benchmark reports times that the benchmark sets itself as real time.
        const QString name = run["run_name"].toString();
        const char *const figure = name.endsWith("/manual_time") ? "real_time" : "cpu_time";
        const double nanoseconds = run[figure].toDouble();
        if (nanoseconds <= 0) {
            qFatal("%s cannot have taken %g ns", qUtf8Printable(name), nanoseconds);
        }
        results[name.section('/', 0, 1)].add(nanoseconds / 1000);
    }
    return results;
}

} // namespace

Rows InProcessRuns::run(const QString &path, const Program::Variables &variables, int rounds)
{
    Results results = parse(outputOf(path, variables, rounds));
    const auto row = [&results](const QString &what, const QString &name, const QString &floor,
                                Row::Kind kind, double target) {
        const Series &ours = results[name + "/ours"];
        const Series &floors = results[name + '/' + floor];
        if (ours.isEmpty() || floors.isEmpty()) {
            qFatal("There is no benchmark %s", qUtf8Printable(name));
        }
        return Row{what, "µs", floor, ours, floors, kind, target};
    };
    return {
        row("Success line to status text", "success", "slot", Row::Drifting, 1.25),
        row("Error line to status text", "error", "slot", Row::Drifting, 1.25),
        row("Error line to status text", "error", "slot and log", Row::Drifting, 1.25),
        row("CPU to read 1 MB of output", "drain", "search", Row::Drifting, 1.15),
        row("CPU to read 1 MB of output", "drain", "search and log", Row::Drifting, 1.15),
        row("Click to the tool's first output", "click", "calls", Row::Drifting, 1.15),
        row("Nine-patch paint", "nine-patch", "flat", Row::Drifting, 1.05),
        row("Bar paint", "bar", "flat", Row::Drifting, 1.05),
    };
}
