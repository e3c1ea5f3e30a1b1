// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

/// The HID part of the IOKit double: attaches and detaches devices and records calls.
///
/// A scheduled manager reports the devices that are already attached and all later changes from its
/// own run-loop source. Only one object of this class may exist at a time.
class HidManagerDouble
{
public:
    /// Numbers and texts by key. A device has no other properties.
    using Properties = std::map<std::string, std::variant<std::int64_t, std::u16string>>;

    HidManagerDouble();
    ~HidManagerDouble();

    HidManagerDouble(const HidManagerDouble &) = delete;
    HidManagerDouble &operator=(const HidManagerDouble &) = delete;

    /// Attaches a device and returns a number for detach().
    static int attach(const Properties &properties);
    static void detach(int device);

    /// Makes the scheduled manager call its handlers with a null device.
    static void notifyOfNothing();

    /// Makes creating a manager fail from now on.
    static void failToCreate();

    /// Adds a call of another double to the record.
    static void record(const std::string &call);

    /// All recorded calls, in order.
    static std::vector<std::string> calls();

    /// The keys of all properties that have been read, in order.
    static std::vector<std::string> reads();
};
