// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor_p.h"

#include <cinttypes>
#include <cstdio>

int printUsbFailure(UsbFailure failure, std::uint32_t status)
{
    switch (failure) {
    case UsbFailure::RegisterAdded:
        return std::printf("Unable to register device added notification: %08" PRIx32 "\n", status);
    case UsbFailure::RegisterRemoved:
        return std::printf("Unable to register device removed notification: %08" PRIx32 "\n",
                           status);
    case UsbFailure::CreateInterface:
        return std::printf("Unable to create a device interface: %08" PRIx32 "\n", status);
    case UsbFailure::ReleaseDevice:
        return std::printf("Unable to release device object: %08" PRIx32 "\n", status);
    }
    return 0;
}
