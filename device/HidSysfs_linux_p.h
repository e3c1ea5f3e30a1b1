// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "device/HidPlugHook_p.h"

#include <cstdint>
#include <string>
#include <vector>

/// What sysfs says of a HID device, as it stands there. All of it is the device's own word.
struct HidSysfs
{
    /// The properties that this amounts to; what cannot be made out is 0 or "?".
    HidProperties properties() const;

    std::string id; ///< Bus, vendor and product in hexadecimal: "0003:00007F3C:00000C51".
    std::string name; ///< UTF-8.
    std::vector<std::uint8_t> reportDescriptor; ///< As the device sent it, or the front of it.
};
