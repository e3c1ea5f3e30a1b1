// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Writing to standard output or error without a buffer, so that one call is one chunk.
namespace StandardChannel {

/// Writes \a bytes to \a fd. When nobody reads any more they are lost, and that is all right.
void write(int fd, const QByteArray &bytes);

} // namespace StandardChannel
