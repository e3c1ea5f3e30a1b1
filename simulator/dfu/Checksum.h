// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// The CRC-32 by which host and device compare what they hold.
namespace Checksum {

/// The CRC of everything so far and \a bytes, where \a crc is the one of everything so far.
quint32 extended(quint32 crc, const QByteArray &bytes);

/// The CRC of the first \a size bytes of \a bytes, which must have as many.
quint32 ofFirst(int size, const QByteArray &bytes);

} // namespace Checksum
