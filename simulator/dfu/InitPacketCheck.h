// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/BootloaderSettings.h"
#include "simulator/dfu/Dfu.h"

#include <QByteArray>

/// Reads an init packet and decides whether the bootloader accepts it.
namespace InitPacketCheck {

struct Verdict
{
    Dfu::Result result = Dfu::Success;
    Dfu::ExtendedResult reason = {}; ///< For the result ExtendedError.

    // For the result Success:
    int imageSize = 0;
    QByteArray imageHash; ///< A SHA-256, with the most significant byte first.
    quint32 firmwareVersion = 0;
};

/// Checks \a packet. An image larger than \a maxImageSize is refused. If a packet has several
/// faults, the verdict names the one that a bootloader finds first: the form of the packet, then
/// its signature, its type of image and hash, its versions, and the size of the image.
Verdict check(const QByteArray &packet, const BootloaderSettings &settings, int maxImageSize);

} // namespace InitPacketCheck
