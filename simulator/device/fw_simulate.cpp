// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/SimulatedDevice.h"
#include "simulator/device/TerminationWatch.h"
#include "simulator/testbed/InsideProgram.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

namespace {

constexpr int kUsageError = 2;

[[noreturn]] void fail(const QString &message)
{
    QTextStream(stderr) << "fw-simulate: " << message << '\n';
    std::exit(kUsageError);
}

void say(const QString &line)
{
    QTextStream(stdout) << line << '\n';
}

struct Options
{
    DeviceBehaviour behaviour;
    QString start;
    QStringList program;
};

Options parse(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Starts a program with simulated devices, including the device that FW Update upgrades.\n"
        "Prints a line for each event of the device. Exits with the program's exit status, once\n"
        "the program and all its child processes have exited.\n\nFaults:\n"
        + DeviceBehaviour::help().trimmed().prepend("  "));
    parser.addHelpOption();
    parser.addPositionalArgument("program", "The program and its arguments.", "-- PROGRAM …");
    parser.addOptions(
        {{"fault", "Simulates a fault. Can be repeated.", "NAME[=VALUE]"},
         {"start", "The initial state of the device: application, bootloader or absent.", "STATE",
          "application"},
         {"port", "The node of the bootloader's serial port.", "NODE"},
         {"return-after", "The duration of the restart into the bootloader.", "MS"}});
    parser.process(application);

    Options options;
    options.start = parser.value("start");
    if (!QStringList{"application", "bootloader", "absent"}.contains(options.start)) {
        fail("unknown state \"" + options.start + "\"");
    }
    if (parser.isSet("port")) {
        options.behaviour.ports = QStringList(parser.value("port"));
    }
    if (parser.isSet("return-after")) {
        bool isNumber = false;
        options.behaviour.returnAfter = parser.value("return-after").toInt(&isNumber);
        if (!isNumber || options.behaviour.returnAfter < 0) {
            fail("--return-after needs a number of milliseconds");
        }
    }
    const QStringList faults = parser.values("fault");
    for (const QString &fault : faults) {
        if (!options.behaviour.addFault(fault)) {
            fail("unknown fault \"" + fault + "\", see --help");
        }
    }
    options.program = parser.positionalArguments();
    if (options.program.isEmpty()) {
        fail("no program given, see --help");
    }
    return options;
}

/// Waits for the device, which may still be restarting when the last process exits.
void quitWhenSettled(const SimulatedDevice &device, int exitCode)
{
    constexpr int kLookEach = 20;
    auto *const timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [&device, exitCode] {
        if (!device.isRestarting() || device.image().isEmpty()) {
            QCoreApplication::exit(exitCode);
        }
    });
    timer->start(kLookEach);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const Options options = parse(application);

    TerminationWatch termination;
    Testbed testbed;
    SimulatedDevice device(testbed, options.behaviour);
    QObject::connect(&device, &SimulatedDevice::happened, say);
    if (options.start == "application") {
        device.startInApplication();
    } else if (options.start == "bootloader") {
        device.startInBootloader();
    }

    InsideProgram program(testbed);
    QObject::connect(&termination, &TerminationWatch::requested, &program,
                     &InsideProgram::terminate);
    QObject::connect(&program, &InsideProgram::allFinished, &device,
                     [&] { quitWhenSettled(device, program.exitCode()); });
    if (!program.start(options.program.first(), options.program.mid(1))) {
        fail("cannot start " + options.program.first());
    }
    return QCoreApplication::exec();
}
