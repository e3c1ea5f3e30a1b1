// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/FramedPort.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace {

constexpr int kMaxFrameSize = 4096;
constexpr auto kNoAnswer = "The device did not answer in time";

QString systemError(const char *what)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what),
                                        QString::fromLocal8Bit(std::strerror(errno)));
}

bool isTransient(int error)
{
    return error == EINTR || error == EAGAIN;
}

} // namespace

FramedPort::FramedPort(int fd, Line line)
    : m_fd(fd)
    , m_line(line)
    , m_slip(kMaxFrameSize)
{ }

bool FramedPort::open()
{
    if (m_line == Line::Terminal && !makeRaw()) {
        return false;
    }
    const int flags = fcntl(m_fd, F_GETFL);
    if (flags < 0 || fcntl(m_fd, F_SETFL, flags | O_NONBLOCK) != 0) {
        return fail(systemError("The port cannot be set up"));
    }
    if (m_line == Line::Terminal) {
        // Discards responses to an earlier program.
        tcflush(m_fd, TCIOFLUSH);
    }
    m_slip.reset();
    m_frames.clear();
    return true;
}

bool FramedPort::makeRaw()
{
    termios settings{};
    if (tcgetattr(m_fd, &settings) != 0) {
        return fail(systemError("The port is not a serial port"));
    }
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    return tcsetattr(m_fd, TCSANOW, &settings) == 0
        || fail(systemError("The port cannot be set up"));
}

bool FramedPort::send(const QByteArray &frame, QDeadlineTimer deadline)
{
    QByteArray rest = Slip::encode(frame);
    while (!rest.isEmpty()) {
        if (!waitFor(POLLOUT, deadline, "The device did not take the data in time")) {
            return false;
        }
        const ssize_t written = ::write(m_fd, rest.constData(), static_cast<size_t>(rest.size()));
        if (written < 0 && !isTransient(errno)) {
            return fail(systemError("The port cannot be written to"));
        }
        rest.remove(0, static_cast<int>(qMax<ssize_t>(written, 0)));
    }
    return true;
}

bool FramedPort::receive(QByteArray *frame, QDeadlineTimer deadline)
{
    // Checked first, in case a device never stops sending.
    if (deadline.hasExpired()) {
        return fail(kNoAnswer);
    }
    while (m_frames.isEmpty()) {
        if (!waitFor(POLLIN, deadline, kNoAnswer) || !readChunk()) {
            return false;
        }
    }
    *frame = m_frames.takeFirst();
    return true;
}

bool FramedPort::waitFor(short events, QDeadlineTimer deadline, const char *timeoutError)
{
    pollfd port{m_fd, events, 0};
    int ready = -1;
    do {
        ready = poll(&port, 1, static_cast<int>(deadline.remainingTime()));
    } while (ready < 0 && errno == EINTR);
    if (ready < 0) {
        return fail(systemError("The port cannot be waited for"));
    }
    // A port that has disappeared is ready as well. The next operation on it fails.
    return ready > 0 || fail(timeoutError);
}

bool FramedPort::readChunk()
{
    std::array<char, 4096> chunk{};
    const ssize_t size = ::read(m_fd, chunk.data(), chunk.size());
    if (size < 0 && isTransient(errno)) {
        return true;
    }
    if (size <= 0) {
        return fail("The port was closed");
    }
    m_frames += m_slip.decode(QByteArray(chunk.data(), static_cast<int>(size)));
    return true;
}

bool FramedPort::fail(const QString &error)
{
    m_error = error;
    return false;
}
