// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/PtyDevice.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>

PtyDevice::PtyDevice(Answer answer, Manner manner)
    : m_answer(std::move(answer))
    , m_manner(manner)
    , m_unplugAfter(INT_MAX)
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0) {
        qFatal("cannot create a pseudo terminal");
    }
    // Kept open: the device's end hangs up when the last descriptor of the terminal is closed.
    const char *const name = ptsname(m_master);
    m_path = QFile::decodeName(name);
    m_terminal = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<int, 2> stop{};
    if (m_terminal < 0 || pipe2(stop.data(), O_CLOEXEC) != 0) {
        qFatal("cannot open the terminal");
    }
    m_stopReceiver = stop[0];
    m_stopSender = stop[1];
    termios settings{};
    tcgetattr(m_terminal, &settings);
    cfmakeraw(&settings);
    tcsetattr(m_terminal, TCSANOW, &settings);
    m_thread = std::thread([this]() { serve(); });
}

PtyDevice::~PtyDevice()
{
    unplug();
    close(m_terminal);
    close(m_stopReceiver);
}

void PtyDevice::unplug()
{
    if (m_thread.joinable()) {
        close(m_stopSender);
        m_thread.join();
    }
}

void PtyDevice::serve()
{
    std::array<pollfd, 2> ends{pollfd{m_master, POLLIN, 0}, pollfd{m_stopReceiver, POLLIN, 0}};
    bool goesOn = true;
    while (goesOn && m_received < m_unplugAfter) {
        poll(ends.data(), ends.size(), m_manner == Talkative ? 0 : -1);
        goesOn = ends[1].revents == 0 && exchange();
    }
    close(m_master);
}

bool PtyDevice::exchange()
{
    std::array<char, 4096> chunk{};
    const ssize_t size = read(m_master, chunk.data(), chunk.size());
    if (size < 0 && errno != EAGAIN) {
        return false;
    }
    const QByteArray bytes(chunk.data(), static_cast<int>(qMax<ssize_t>(size, 0)));
    m_received += int(bytes.size());
    const QByteArray answer = m_answer(bytes);
    const ssize_t sent = write(m_master, answer.constData(), static_cast<size_t>(answer.size()));
    return m_manner == Talkative || sent == answer.size();
}
