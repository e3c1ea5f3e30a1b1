// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/PseudoTerminal.h"

#include <QtGlobal>

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>

PseudoTerminal::PseudoTerminal()
{
    std::array<char, 64> path = {};
    termios settings = {};
    cfmakeraw(&settings);
    if (openpty(&m_device, &m_program, path.data(), &settings, nullptr) != 0) {
        qFatal("cannot create a pseudo terminal");
    }
    m_path = path.data();
    for (const int descriptor : {m_device, m_program}) {
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
    fcntl(m_device, F_SETFL, O_NONBLOCK);
}

PseudoTerminal::~PseudoTerminal()
{
    ::close(m_device);
    ::close(m_program);
}

bool PseudoTerminal::isHeard() const
{
    int unread = 0;
    return ioctl(m_program, FIONREAD, &unread) == 0 && unread == 0;
}
