// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Checksums of what host and device hold: a CRC-32 during the transfer, a hash of the whole.
namespace Checksum {

/// The CRC of everything so far and \a bytes, where \a crc is the one of everything so far.
quint32 extended(quint32 crc, const QByteArray &bytes);

/// The CRC of the first \a size bytes of \a bytes, which must have as many.
quint32 ofFirst(int size, const QByteArray &bytes);

/// The SHA-256 of \a bytes in hexadecimal digits.
QByteArray sha256(const QByteArray &bytes);

} // namespace Checksum
