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
/// A scheduled manager that matches devices reports those that are already attached, as a set and
/// while it holds its lock, and all later changes from its own run-loop source. A device's
/// properties are those that it had when it was attached. Only one object of this class may exist
/// at a time.
class HidManagerDouble
{
public:
    /// Properties of other types have no value here.
    enum class Other { ArrayType, BooleanType, DataType };
    using Properties = std::map<std::string, std::variant<std::int64_t, std::u16string, Other>>;

    HidManagerDouble();
    ~HidManagerDouble();

    HidManagerDouble(const HidManagerDouble &) = delete;
    HidManagerDouble &operator=(const HidManagerDouble &) = delete;

    /// Attaches a device and returns a number for detach(). A property that the device does not
    /// have is looked up in its parent.
    static int attach(const Properties &properties, const Properties &parent = {});
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
