// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Checksums of transferred data: a CRC-32 during the transfer, and a hash of the image.
namespace Checksum {

/// Extends \a crc, the CRC of the previous bytes, by \a bytes.
quint32 extended(quint32 crc, const QByteArray &bytes);

/// The CRC of the first \a size bytes. There must be as many.
quint32 ofFirst(int size, const QByteArray &bytes);

/// The SHA-256 of \a bytes as hexadecimal digits.
QByteArray sha256(const QByteArray &bytes);

} // namespace Checksum
