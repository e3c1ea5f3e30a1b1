// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/DeviceFile.h"

#include <QFile>
#include <QSocketNotifier>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace {

int openRaw(const QString &node)
{
    const int fd
        = ::open(QFile::encodeName(node).constData(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        qFatal("cannot open %s", qPrintable(node));
    }
    termios settings = {};
    if (tcgetattr(fd, &settings) == 0) {
        cfmakeraw(&settings);
        tcsetattr(fd, TCSANOW, &settings);
    }
    return fd;
}

} // namespace

DeviceFile::DeviceFile(const QString &node, QObject *parent)
    : QObject(parent)
    , m_fd(openRaw(node))
    , m_notifier(new QSocketNotifier(m_fd, QSocketNotifier::Read, this))
{
    connect(m_notifier, &QSocketNotifier::activated, this, &DeviceFile::read);
}

DeviceFile::~DeviceFile()
{
    close();
}

void DeviceFile::close()
{
    m_notifier->setEnabled(false);
    if (m_fd >= 0) {
        ::close(m_fd);
    }
    m_fd = -1;
}

bool DeviceFile::write(const QByteArray &bytes)
{
    return ::write(m_fd, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size();
}

void DeviceFile::read()
{
    std::array<char, 4096> buffer = {};
    const ssize_t count = ::read(m_fd, buffer.data(), buffer.size());
    if (count > 0) {
        emit received(QByteArray(buffer.data(), static_cast<int>(count)));
    } else if (count == 0 || errno != EAGAIN) {
        m_notifier->setEnabled(false);
    }
}
