// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Unbuffered writing to standard output or standard error, so that each call writes one chunk.
namespace StandardChannel {

/// Writes \a bytes to \a fd. Discards them if the other end is closed.
void write(int fd, const QByteArray &bytes);

} // namespace StandardChannel
