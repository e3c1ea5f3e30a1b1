// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: a report descriptor.

#include "device/HidReportDescriptor_p.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const HidReportDescriptor descriptor(data, size);
    const auto fits = [](int value) {
        return value >= 0 && value <= 0xFFFF;
    };
    if (!fits(descriptor.usagePage()) || !fits(descriptor.usage())) {
        std::abort();
    }
    return 0;
}
