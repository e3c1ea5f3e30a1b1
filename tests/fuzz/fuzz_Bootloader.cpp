// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: what the host sends, in chunks; one with an odd mark is sent as a frame of its own.

#include "simulator/Bootloader.h"
#include "tests/fuzz/FuzzBytes.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzBytes input(data, size);
    Bootloader bootloader;
    while (!input.isEmpty()) {
        const int mark = input.byte();
        const QByteArray chunk = input.chunk();
        if (mark == 0xFF) {
            bootloader.reset();
        }
        bootloader.receive(mark % 2 == 1 ? Slip::encode(chunk) : chunk);
        const bool fits = bootloader.imageBytesReceived() <= Bootloader::kMaxImageSize
            && bootloader.initPacket().size() <= Bootloader::kMaxCommandSize;
        if (!fits || bootloader.isFinished() == bootloader.image().isEmpty()) {
            std::abort();
        }
    }
    return 0;
}
