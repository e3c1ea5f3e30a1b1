// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOCFPlugIn.h>

#define kIOUSBDeviceClassName "IOUSBDevice"

#define kIOUSBDeviceUserClientTypeID                                                               \
    CFUUIDGetConstantUUIDWithBytes(nullptr, 0x9D, 0xC7, 0xB7, 0x80, 0x9E, 0xC0, 0x11, 0xD4, 0xA5,  \
                                   0x4F, 0x00, 0x0A, 0x27, 0x05, 0x28, 0x61)
