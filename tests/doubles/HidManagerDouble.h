// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

/// The HID side of the IOKit double: devices that come and go, and a record of what is done.
///
/// A manager that is scheduled tells of the devices that are attached already, and of all that
/// follow, from a run-loop source of its own. One of these exists at a time.
class HidManagerDouble
{
public:
    /// Numbers and texts by their key; other keys are missing.
    using Properties = std::map<std::string, std::variant<std::int64_t, std::u16string>>;

    HidManagerDouble();
    ~HidManagerDouble();

    HidManagerDouble(const HidManagerDouble &) = delete;
    HidManagerDouble &operator=(const HidManagerDouble &) = delete;

    /// Returns a number for detach().
    static int attach(const Properties &properties);
    static void detach(int device);

    /// Has the scheduled manager's handlers called with no device.
    static void notifyOfNothing();

    /// From now on no manager can be made.
    static void failToCreate();

    /// Adds to the calls, for what is recorded beside the manager's own.
    static void record(const std::string &call);

    /// The calls and the handlers' entries in their order.
    static std::vector<std::string> calls();

    /// The keys of the properties that have been read, in their order.
    static std::vector<std::string> reads();
};
