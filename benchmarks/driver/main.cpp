// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/CrowdRuns.h"
#include "benchmarks/driver/DesktopRuns.h"
#include "benchmarks/driver/DisplayServer.h"
#include "benchmarks/driver/InProcessRuns.h"
#include "benchmarks/driver/Installation.h"
#include "benchmarks/driver/QtPlugins.h"
#include "benchmarks/driver/Report.h"
#include "benchmarks/driver/RunningRuns.h"
#include "benchmarks/driver/Spectator.h"
#include "benchmarks/driver/StartRuns.h"
#include "simulator/testbed/Testbed.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <iostream>

namespace {

/// A testbed with the device in its bootloader.
class Bootloader
{
public:
    Bootloader()
    {
        m_testbed.addSerialPort(m_testbed.addUsbDevice({0x7F3C, 0x0C51, "Bootloader", "1"}),
                                "/dev/cu.usbmodem14201");
    }

    Program::Variables variables() const { return m_testbed.childEnvironment(); }

private:
    Testbed m_testbed;
};

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("Cannot write %s", qUtf8Printable(path));
    }
}

Rows measure(const QString &program, int rounds)
{
    const QDir here(QCoreApplication::applicationDirPath());
    Installation installation(program);
    const QDir bare(installation.folder().path());
    QtPlugins::restrictTo(bare);
    for (const char *floor : {"empty-window", "plain-window", "animated-window"}) {
        QFile::copy(here.filePath(floor), bare.filePath(floor));
    }
    const DisplayServer server;
    Spectator spectator(server.name());
    const Bootloader world;
    Program::Variables variables = world.variables();
    variables.insert("DISPLAY", server.name());

    Rows rows = StartRuns::run(spectator,
                               {installation.program(), bare.filePath("empty-window"),
                                bare.filePath("plain-window"), server.name()},
                               rounds);
    rows += RunningRuns::run(spectator, installation, bare.filePath("animated-window"), variables,
                             (rounds + 1) / 2);
    rows += InProcessRuns::run(here.filePath("inprocess.run/inprocess"), variables, rounds);
    rows += CrowdRuns::run(here.filePath("inprocess.run/inprocess"), variables, (rounds + 1) / 2);
    rows += installation.rows();
    rows += DesktopRuns::run(installation.program(), Installation(program).program(),
                             (rounds + 1) / 2);
    return rows;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Compares the program with the floors in this folder.");
    parser.addHelpOption();
    parser.addOption({"rounds", "The number of measurements.", "number", "10"});
    parser.addPositionalArgument("program", "The program to measure.");
    parser.addPositionalArgument("folder", "The folder for table.md and picture.svg.");
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() != 2) {
        parser.showHelp(2);
    }

    const Rows rows = measure(arguments.at(0), std::max(1, parser.value("rounds").toInt()));
    const QByteArray table = (Report::machine() + ".\n\n" + Report::table(rows)).toUtf8();
    std::cout << table.constData() << std::flush;
    QDir().mkpath(arguments.at(1));
    write(QDir(arguments.at(1)).filePath("table.md"), table);
    write(QDir(arguments.at(1)).filePath("picture.svg"), Report::picture(rows));
    const bool missed = std::any_of(rows.begin(), rows.end(), [](const Row &row) {
        return row.kind == Row::Gate && !row.isMet();
    });
    return missed ? 1 : 0;
}
