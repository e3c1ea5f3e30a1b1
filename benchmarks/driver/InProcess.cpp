// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/InProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtDebug>

namespace {

QByteArray outputOf(const QString &path, const Program::Variables &variables, const QString &filter,
                    int rounds)
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
                   "--benchmark_filter=" + filter,
                   QString("--benchmark_repetitions=%1").arg(rounds)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        qFatal("The benchmarks inside a process failed");
    }
    return process.readAllStandardOutput();
}

InProcess::Results parse(const QByteArray &output)
{
    InProcess::Results results;
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

InProcess::Results InProcess::measure(const QString &path, const Program::Variables &variables,
                                      const QString &filter, int rounds)
{
    return parse(outputOf(path, variables, filter, rounds));
}
