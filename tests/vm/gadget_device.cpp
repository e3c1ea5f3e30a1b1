// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Simulates the device on a USB device controller of this machine, which may be a simulated one
// (dummy_hcd). Prints a line for each event and reads one command per line:
//
//     plug application      plugs the device in, with its application running
//     plug bootloader       plugs the device in, with its bootloader running
//     pull                  pulls the cable
//     pull when opened      pulls the cable as soon as a program opens a HID node
//     pull after N          pulls the cable whenever N bytes of an image have arrived; never if -1
//
// Unplugs the device and exits at the end of standard input.

#include "tests/vm/GadgetDevice.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>

#include <unistd.h>

#include <array>

namespace {

void say(const QString &line)
{
    QTextStream(stdout) << line << '\n';
}

GadgetDevice::Settings parse(const QCoreApplication &application)
{
    GadgetDevice::Settings settings;
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{"controller", "The USB device controller.", "NAME", "dummy_udc.0"},
         {"serial-number", "The serial number.", "TEXT", settings.identity.serialNumber},
         {"usage-page", "The usage page of the second HID interface.", "N",
          QString::number(settings.identity.usagePage)},
         {"return-after", "The duration of a restart.", "MS", "1000"}});
    parser.process(application);

    settings.controller = parser.value("controller");
    settings.identity.serialNumber = parser.value("serial-number");
    settings.identity.usagePage = parser.value("usage-page").toInt(nullptr, 0);
    settings.returnAfter = parser.value("return-after").toInt();
    return settings;
}

void obey(GadgetDevice &device, const QByteArray &command)
{
    if (command == "plug application") {
        device.plugIn(GadgetDevice::State::Application);
    } else if (command == "plug bootloader") {
        device.plugIn(GadgetDevice::State::Bootloader);
    } else if (command == "pull") {
        device.pull();
    } else if (command == "pull when opened") {
        device.pullWhenOpened();
    } else if (command.startsWith("pull after ")) {
        device.pullAfter(command.mid(11).toInt());
    } else {
        say("unknown command \"" + command + '"');
    }
}

void obeyAll(GadgetDevice &device)
{
    std::array<char, 4096> buffer = {};
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        QCoreApplication::quit();
        return;
    }
    const QByteArray bytes(buffer.data(), static_cast<int>(count));
    const QList<QByteArray> commands = bytes.trimmed().split('\n');
    for (const QByteArray &command : commands) {
        obey(device, command);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    GadgetDevice device(parse(application));
    QObject::connect(&device, &GadgetDevice::happened, say);
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &device, [&] { obeyAll(device); });
    say("ready");
    return QCoreApplication::exec();
}
