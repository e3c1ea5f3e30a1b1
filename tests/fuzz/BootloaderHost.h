// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Bootloader.h"
#include "tests/fuzz/FuzzBytes.h"
#include "tests/support/GoldenPackages.h"

/// Reads the input of the bootloader's target: a mark, the length of a chunk, the chunk, and so on.
namespace BootloaderHost {

constexpr int kFramed = 1; ///< any odd mark
constexpr int kResetFirst = 0xFF;

/// A bootloader that checks signatures, but also takes unsigned packages.
inline Bootloader bootloader()
{
    BootloaderSettings settings;
    settings.key = PublicKey::fromPem(GoldenPackages::ecdsaKey());
    return Bootloader(settings);
}

/// Sends the next chunk, as a frame if its mark is odd.
inline void sendNext(Bootloader &bootloader, FuzzBytes &input)
{
    const int mark = input.byte();
    const QByteArray chunk = input.chunk();
    if (mark == kResetFirst) {
        bootloader.reset();
    }
    bootloader.receive((mark & kFramed) != 0 ? Slip::encode(chunk) : chunk);
}

} // namespace BootloaderHost
