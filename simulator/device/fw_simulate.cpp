// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceSettings.h"
#include "simulator/device/SimulatedDevice.h"
#include "simulator/device/TerminationWatch.h"
#include "simulator/testbed/InsideProgram.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kUsageError = 2;

void complain(const QString &message)
{
    QTextStream(stderr) << "fw-simulate: " << message << '\n';
}

[[noreturn]] void fail(const QString &message)
{
    complain(message);
    std::exit(kUsageError);
}

/// Where the events of the device are written.
class EventLog
{
public:
    /// Writes to standard output if \a path is empty.
    EventLog(const QString &path, bool asJson)
        : m_file(path)
        , m_asJson(asJson)
    {
        const bool isOpen = path.isEmpty() ? m_file.open(stdout, QIODevice::WriteOnly)
                                           : m_file.open(QIODevice::WriteOnly);
        if (!isOpen) {
            fail(path + ": " + m_file.errorString());
        }
    }

    void write(const DeviceEvent &event)
    {
        m_file.write((m_asJson ? event.toJson() : event.text.toUtf8()) + '\n');
        m_file.flush();
    }

private:
    QFile m_file;
    const bool m_asJson;
};

struct Options
{
    DeviceDescription device;
    QString events;
    bool asJson = false;
    QStringList program;
};

Options parse(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Starts a program with simulated devices, including one with firmware that can be\n"
        "updated. Prints a line for each event of the device. Exits with the program's exit\n"
        "status, once the program and all its child processes have exited.\n\nFaults:\n"
        + DeviceBehaviour::help().trimmed().prepend("  "));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("program", "The program and its arguments.", "-- PROGRAM …");
    parser.addOptions({{"json", "Writes each event as one line of JSON."},
                       {"events", "Writes the events to FILE, not to standard output.", "FILE"}});
    DeviceSettings settings;
    settings.addOptions(parser);
    parser.process(application);

    Options options;
    options.events = parser.value("events");
    options.asJson = parser.isSet("json");
    if (!settings.read(parser, &options.device)) {
        fail(settings.errorString());
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
    QCoreApplication::setApplicationVersion(FW_UPDATE_VERSION);
    const Options options = parse(application);

    if (!Testbed::isAvailable()) {
        fail("cannot load umockdev's library; install the package umockdev");
    }
    TerminationWatch termination;
    EventLog log(options.events, options.asJson);
    Testbed testbed;
    SimulatedDevice device(testbed, options.device);
    QObject::connect(&device, &SimulatedDevice::happened, &device,
                     [&log](const DeviceEvent &event) { log.write(event); });
    device.start();

    InsideProgram program(testbed);
    QObject::connect(&termination, &TerminationWatch::requested, &program,
                     &InsideProgram::terminate);
    QObject::connect(&program, &InsideProgram::allFinished, &device,
                     [&] { quitWhenSettled(device, program.exitCode()); });
    if (!program.start(options.program.first(), options.program.mid(1))) {
        complain("cannot start " + options.program.first());
        return kUsageError;
    }
    return QCoreApplication::exec();
}
