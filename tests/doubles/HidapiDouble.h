// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// What hidapi for macOS finds, as far as DeviceComm uses it. Its enumeration turns the run loop.
///
/// Its calls are added to those of HidManagerDouble: each with its arguments, a handle and a list
/// by what they stand for.
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

    /// What the next enumerations list, in this order.
    static void setInterfaces(const std::vector<Interface> &interfaces);

    /// From now on hid_init() fails.
    static void failToInitialise();
};
