// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Plays the device on a USB device controller of this machine, which may be a simulated one
// (dummy_hcd). Prints a line for each thing that happens to it and takes one command per line:
//
//     plug application      plugs it in, with its application running
//     plug bootloader       plugs it in, with its bootloader running
//     pull                  pulls its cable
//     pull when opened      pulls its cable as soon as a program opens a HID node
//     pull after N          pulls its cable whenever N bytes of an image have arrived, -1 for never
//
// It ends, unplugged, with its standard input.

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
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({{"controller", "Where it is plugged in.", "NAME", "dummy_udc.0"},
                       {"serial-number", "Its serial number.", "TEXT", "0001"},
                       {"usage-page", "Of its HID interface beside the keyboard.", "N", "0xFF31"},
                       {"return-after", "How long it is away for a restart.", "MS", "1000"}});
    parser.process(application);

    GadgetDevice::Settings settings;
    settings.controller = parser.value("controller");
    settings.serialNumber = parser.value("serial-number");
    settings.usagePage = parser.value("usage-page").toInt(nullptr, 0);
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
        say("there is no command \"" + command + '"');
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
