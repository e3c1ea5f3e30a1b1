// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>

/// An encoder for protocol buffers, which shares nothing with the program's.
namespace ProtocolFields {

inline QByteArray varint(quint64 value)
{
    QByteArray result;
    for (; value >= 0x80; value >>= 7) {
        result.append(static_cast<char>(value | 0x80));
    }
    return result.append(static_cast<char>(value));
}

inline QByteArray number(int field, quint64 value)
{
    return varint(static_cast<quint64>(field) << 3) + varint(value);
}

/// A message or a byte string.
inline QByteArray bytes(int field, const QByteArray &value)
{
    return varint(static_cast<quint64>(field) << 3 | 2) + varint(static_cast<quint64>(value.size()))
        + value;
}

inline QByteArray packed(int field, const QList<quint64> &values)
{
    QByteArray result;
    for (const quint64 value : values) {
        result += varint(value);
    }
    return bytes(field, result);
}

} // namespace ProtocolFields
