// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>
#include <vector>

/// A double of the functions of hidapi for macOS that DeviceComm uses. As on macOS, enumerating
/// runs the run loop.
///
/// Calls are added to the record of HidManagerDouble with their arguments; handles and lists appear
/// by name.
class HidapiDouble
{
public:
    struct Interface
    {
        std::string path;
        unsigned short vendorId;
        unsigned short productId;
        unsigned short usagePage;
        unsigned short usage;
        bool opens = true;
    };

    /// Sets the result of all later enumerations.
    static void setInterfaces(const std::vector<Interface> &interfaces);

    /// Sets what the run loop calls during each enumeration, as a timer would be; null calls
    /// nothing.
    static void setTimer(const std::function<void()> &timer);

    /// Makes hid_init() fail from now on.
    static void failToInitialise();
};
