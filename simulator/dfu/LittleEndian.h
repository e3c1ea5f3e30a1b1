// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QtEndian>

/// The number format in requests and responses.
namespace LittleEndian {

/// The bytes of \a number, least significant first.
template <typename Number> QByteArray bytes(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/// The number at \a offset in \a bytes, which must be long enough.
template <typename Number> Number number(const QByteArray &bytes, int offset = 0)
{
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

} // namespace LittleEndian
