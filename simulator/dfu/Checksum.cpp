// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/Checksum.h"

#include <QCryptographicHash>

#include <zlib.h>

quint32 Checksum::extended(quint32 crc, const QByteArray &bytes)
{
    const auto *data = reinterpret_cast<const Bytef *>(bytes.constData());
    return static_cast<quint32>(crc32(crc, data, static_cast<uInt>(bytes.size())));
}

quint32 Checksum::ofFirst(int size, const QByteArray &bytes)
{
    return extended(0, QByteArray::fromRawData(bytes.constData(), size));
}

QByteArray Checksum::sha256(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}
