// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Report descriptors for simulated HID interfaces.
namespace HidDescriptor {

/// The eight modifier keys of a boot keyboard.
inline QByteArray keyboard()
{
    return QByteArray::fromHex("05010906a101050719e029e715002501750195088102c0");
}

/// A collection with the given usage and one output report with \a reportId and \a size more bytes,
/// up to 255. With id 0, the report has no id.
inline QByteArray output(int usagePage, int usage, int reportId = 0xAA, int size = 63)
{
    const QByteArray page
        = QByteArray(1, static_cast<char>(usagePage)) + static_cast<char>(usagePage >> 8);
    const QByteArray id
        = reportId == 0 ? QByteArray() : QByteArray("\x85") + static_cast<char>(reportId);
    return '\x06' + page + '\x09' + static_cast<char>(usage) + QByteArray::fromHex("a101") + id
        + '\x09' + static_cast<char>(usage) + QByteArray::fromHex("150026ff00750895")
        + static_cast<char>(size) + QByteArray::fromHex("9102c0");
}

} // namespace HidDescriptor
