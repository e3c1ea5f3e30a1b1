// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/TerminationWatch.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

// The handler's end and the notifier's end. A signal descriptor would be shorter, but needs blocked
// signals, which child processes inherit.
std::array<int, 2> pipeEnds = {-1, -1};

void wake(int /*signal*/)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
}

void handle(void (*handler)(int))
{
    for (const int signal : kSignals) {
        std::signal(signal, handler);
    }
}

} // namespace

TerminationWatch::TerminationWatch(QObject *parent)
    : QObject(parent)
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qFatal("cannot create a pipe");
    }
    auto *const notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (::read(pipeEnds[0], &byte, 1) > 0) {
            emit requested();
        }
    });
    handle(wake);
}

TerminationWatch::~TerminationWatch()
{
    handle(SIG_DFL);
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
}
