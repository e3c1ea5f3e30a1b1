// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "device/HidPlugHook_p.h"

#include <cstdint>
#include <string>
#include <vector>

/// What sysfs reports about a HID device. All of it comes from the device and may be wrong.
struct HidSysfs
{
    /// Parses the properties. What cannot be parsed is 0 or "?".
    HidProperties properties() const;

    std::string id; ///< Bus, vendor and product in hexadecimal: "0003:00007F3C:00000C51".
    std::string name; ///< UTF-8.
    std::vector<std::uint8_t> reportDescriptor; ///< As the device sent it, possibly truncated.
};
