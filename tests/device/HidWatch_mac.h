// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/device/HidWatch.h"
#include "tests/doubles/HidManagerDouble.h"

#include <CoreFoundation/CoreFoundation.h>

#include <QStringList>

// Shared by the tests of the HID watch: a device, the expected reports, and the watch.

using Properties = HidManagerDouble::Properties;

inline const Properties kTarget
    = {{"VendorID", 0x7F3C},        {"ProductID", 0x0C51}, {"DeviceUsage", 0x74},
       {"DeviceUsagePage", 0xFF31}, {"PrimaryUsage", 1},   {"PrimaryUsagePage", 2},
       {"Product", u"Device"}};

inline Properties named(const std::u16string &name)
{
    Properties properties = kTarget;
    properties["Product"] = name;
    return properties;
}

/// Runs the run loop until nothing is left to do.
inline void turnRunLoop()
{
    while (CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, 1) == kCFRunLoopRunHandledSource) { }
}

/// All calls of the frameworks' and hidapi's doubles so far.
inline QStringList calls()
{
    QStringList result;
    for (const std::string &call : HidManagerDouble::calls()) {
        result.append(QString::fromStdString(call));
    }
    return result;
}
