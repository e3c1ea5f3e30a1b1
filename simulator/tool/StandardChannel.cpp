// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/tool/StandardChannel.h"

#include <unistd.h>

#include <cerrno>

void StandardChannel::write(int fd, const QByteArray &bytes)
{
    int offset = 0;
    while (offset < bytes.size()) {
        const auto rest = static_cast<size_t>(bytes.size() - offset);
        const ssize_t written = ::write(fd, bytes.constData() + offset, rest);
        if (written < 0 && errno != EINTR) {
            return;
        }
        offset += static_cast<int>(qMax<ssize_t>(written, 0));
    }
}
