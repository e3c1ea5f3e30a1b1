// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// A stand-in for the vendor's flashing tool, for the demo and the tests. It is never installed. It
// flashes the simulated device and prints progress and errors. If there is a file
// nrfutil-mac.script in its folder, it runs that instead: see StandInScript.

#include "simulator/dfu/DfuClient.h"
#include "simulator/dfu/DfuPackage.h"
#include "simulator/tool/StandInScript.h"
#include "simulator/tool/StandardChannel.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;
constexpr int kExitBadScript = 3;

void writeOut(const QByteArray &text)
{
    StandardChannel::write(STDOUT_FILENO, text);
}

void writeError(const QByteArray &text)
{
    StandardChannel::write(STDERR_FILENO, text);
}

int failWithTraceback(const QString &reason)
{
    const QByteArray traceback = "Traceback (most recent call last):\n"
                                 "  File \"nrfutil-mac\", line 8, in <module>\n"
                                 "    sys.exit(main())\n"
                                 "  File \"nrfutil-mac\", line 291, in usb_serial\n"
                                 "    device.flash(package)\n"
                                 "DfuError: "
        + reason.toUtf8() + '\n';
    // An interpreter writes a traceback in several chunks.
    int begin = 0;
    while (begin < traceback.size()) {
        const int space = int(traceback.indexOf(' ', begin));
        const int end = space < 0 ? int(traceback.size()) : space + 1;
        writeError(traceback.mid(begin, end - begin));
        begin = end;
    }
    return kExitFailure;
}

bool isUsage(const QStringList &arguments)
{
    return arguments.size() == 6 && arguments.at(0) == "dfu" && arguments.at(1) == "usb-serial"
        && arguments.at(2) == "-pkg" && arguments.at(4) == "-p";
}

QString flash(const DfuPackage &package, const QString &port)
{
    const int fd
        = open(QFile::encodeName(port).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return QStringLiteral("could not open port %1: %2")
            .arg(port, QString::fromLocal8Bit(std::strerror(errno)));
    }
    DfuClient client(fd);
    client.flash(package.initPacket, package.firmware);
    close(fd);
    return client.errorString();
}

int flash(const QStringList &arguments)
{
    if (!isUsage(arguments)) {
        writeError("Usage: nrfutil-mac dfu usb-serial -pkg FILE -p PORT\n");
        return kExitUsage;
    }
    const QString &file = arguments.at(3);
    if (!QFileInfo::exists(file)) {
        writeError(R"(Error: Invalid value for "-pkg": Path ")" + file.toUtf8()
                   + "\" does not exist.\n");
        return kExitUsage;
    }
    writeOut("\n");
    DfuPackage package;
    if (const auto error = package.read(file); error != DfuPackage::Error::None) {
        return failWithTraceback(DfuPackage::errorText(error));
    }
    if (const QString error = flash(package, arguments.at(5)); !error.isEmpty()) {
        return failWithTraceback(error);
    }
    writeOut("Device programmed.\n");
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    // The program may be closed at any time, which must not interrupt writing to the device.
    std::signal(SIGPIPE, SIG_IGN);
    // With another encoding, Qt 6.11 writes a warning, which the program shows as the tool's error.
    qputenv("LC_ALL", "C.UTF-8");

    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto run = [&arguments]() {
        return flash(arguments.mid(1));
    };

    const QString folder = QFileInfo(arguments.at(0)).absolutePath();
    QFile file(folder + "/nrfutil-mac.script");
    if (!file.open(QIODevice::ReadOnly)) {
        return run();
    }
    StandInScript script(folder);
    if (!script.parse(file.readAll())) {
        writeError("nrfutil-mac.script: " + script.errorString().toUtf8() + '\n');
        return kExitBadScript;
    }
    return script.run(run);
}
