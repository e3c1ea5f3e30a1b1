// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/OpenWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>

OpenWatch::OpenWatch(QObject *parent)
    : QObject(parent)
    , m_fd(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    , m_notifier(m_fd, QSocketNotifier::Read)
{
    if (inotify_add_watch(m_fd, "/dev", IN_OPEN) < 0) {
        qFatal("cannot watch /dev");
    }
    connect(&m_notifier, &QSocketNotifier::activated, this, &OpenWatch::read);
}

OpenWatch::~OpenWatch()
{
    ::close(m_fd);
}

void OpenWatch::read()
{
    alignas(inotify_event) std::array<char, 4096> buffer = {};
    const ssize_t size = ::read(m_fd, buffer.data(), buffer.size());
    for (ssize_t at = 0; at < size;) {
        inotify_event event = {};
        std::memcpy(&event, &buffer.at(static_cast<std::size_t>(at)), sizeof(event));
        at += static_cast<ssize_t>(sizeof(event));
        const char *const name = event.len > 0 ? &buffer.at(static_cast<std::size_t>(at)) : "";
        at += event.len;
        if (std::strncmp(name, "hidraw", std::strlen("hidraw")) == 0) {
            m_notifier.setEnabled(false);
            emit opened();
            return;
        }
    }
}
