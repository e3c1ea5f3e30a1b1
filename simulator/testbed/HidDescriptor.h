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

/// A collection with the given usage and one output report, with id 0xAA and 63 more bytes.
inline QByteArray output(int usagePage, int usage)
{
    const QByteArray page
        = QByteArray(1, static_cast<char>(usagePage)) + static_cast<char>(usagePage >> 8);
    return '\x06' + page + '\x09' + static_cast<char>(usage) + QByteArray::fromHex("a10185aa09")
        + static_cast<char>(usage) + QByteArray::fromHex("150026ff007508953f9102c0");
}

} // namespace HidDescriptor
