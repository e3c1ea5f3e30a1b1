// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: the host's requests, in the format of BootloaderHost.

#include "tests/fuzz/BootloaderHost.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzBytes input(data, size);
    static const Bootloader fresh = BootloaderHost::bootloader();
    Bootloader bootloader = fresh;
    while (!input.isEmpty()) {
        BootloaderHost::sendNext(bootloader, input);
        const bool fits = bootloader.imageBytesReceived() <= Bootloader::kMaxImageSize
            && bootloader.initPacket().size() <= Bootloader::kMaxCommandSize;
        if (!fits || bootloader.isFinished() == bootloader.image().isEmpty()) {
            std::abort();
        }
    }
    return 0;
}
