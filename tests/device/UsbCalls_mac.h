// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/doubles/UsbDouble.h"

#include <QByteArray>

#include <algorithm>
#include <string>
#include <vector>

// Shared by the tests of the USB monitor: the calls that it makes, and what is left to take.

using Calls = std::vector<std::string>;

inline const std::string kPlugIn
    = "IOCreatePlugInInterfaceForService 9dc7b7809ec011d4a54f000a27052861 "
      "c244e858109c11d491d40050e4c6426f";

inline const Calls kOneTaken = {"IOIteratorNext", kPlugIn, "IOObjectRelease service", "Release"};
inline const Calls kNoneTaken = {"IOIteratorNext"};

inline QByteArray toText(const Calls &calls)
{
    QByteArray text;
    for (const std::string &call : calls) {
        text += QByteArray::fromStdString(call) + '\n';
    }
    return text;
}

/// How many of these attached devices are still in an iterator. The order is the kernel's.
inline int notTaken(const std::vector<io_service_t> &services)
{
    return static_cast<int>(
        std::count_if(services.begin(), services.end(),
                      [](io_service_t service) { return UsbDouble::references(service) == 2; }));
}
