// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "simulator/demo/Demo.h"
#include "simulator/demo/ScreenUser.h"
#include "simulator/device/DeviceSettings.h"
#include "simulator/device/TerminationWatch.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int kUsageError = 2;

[[noreturn]] void fail(const QString &message)
{
    QTextStream(stderr) << "demo: " << message << '\n';
    std::exit(kUsageError);
}

bool isGiven(const char *option, int argc, char **argv)
{
    return std::any_of(argv + 1, argv + argc,
                       [option](const char *given) { return qstrcmp(given, option) == 0; });
}

/// Whether a Wayland desktop answers.
bool canReachWayland()
{
    const QDir folder(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    const QByteArray path
        = QFile::encodeName(folder.filePath(qEnvironmentVariable("WAYLAND_DISPLAY")));
    sockaddr_un address = {};
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || std::size_t(path.size()) >= sizeof address.sun_path) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool answers
        = connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(socket);
    return answers;
}

/// The faults and the initial state are the demo's.
QStringList settingNames()
{
    QStringList names = DeviceSettings::allNames();
    names.removeAll("fault");
    names.removeAll("start");
    return names;
}

/// Only the simulated user needs access to the screen.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv)
{
    if (isGiven("--pictures", argc, argv)) {
        return std::make_unique<QApplication>(argc, argv);
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

struct Options
{
    QString folder;
    QString fault;
    QString pictures; ///< Where to save screenshots; empty if a person uses the program.
    DeviceDescription device;
};

Options parse(const QCoreApplication &application)
{
    constexpr int kAnswerDelay = 25; // about as slow as a real device, to see the progress
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows an upgrade of the simulated device.\n\nFaults:\n  "
                                     + Demo::help().trimmed());
    parser.addHelpOption();
    parser.addOptions(
        {{"fault", "Simulates a fault.", "NAME[=VALUE]"},
         {"can-see", "Only sets the exit status: 0 if there is a display."},
         {"pictures", "Clicks by itself and saves screenshots in FOLDER.", "FOLDER"}});
    DeviceSettings settings(settingNames());
    settings.addOptions(parser);
    parser.addPositionalArgument(
        "FOLDER", "The folder with the program, the tool and, if there is one, the package.");
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(kUsageError);
    }
    Options options = {parser.positionalArguments().constFirst(),
                       parser.value("fault"),
                       parser.value("pictures"),
                       {}};
    options.device.behaviour.answerDelay = kAnswerDelay;
    if (!settings.read(parser, &options.device)) {
        fail(settings.errorString());
    }
    return options;
}

} // namespace

int main(int argc, char *argv[])
{
    if (isGiven("--can-see", argc, argv)) {
        return ScreenUser::canSee() || canReachWayland() ? 0 : 1;
    }
    // The simulated user recognises texts by drawing them with the program's settings.
    Desktop desktop;
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    desktop.restoreEnvironment(); // the program must not inherit the settings

    const Options options = parse(*application);
    Demo demo(options.folder, options.fault, options.device);
    if (!demo.isValid()) {
        fail("unknown fault \"" + options.fault + "\", see --help");
    }
    if (!demo.prepare()) {
        return 1;
    }
    TerminationWatch termination;
    QObject::connect(&termination, &TerminationWatch::requested, [&demo] { demo.stop(); });
    return options.pictures.isEmpty() ? demo.playForPerson() : demo.playWithUser(options.pictures);
}
