// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOKitLib.h>

// The part of IOKit that the HID plug hook uses, with the documented names. IOHIDManagerOpen is
// missing, so that a program that calls it does not link.

extern "C" {

using IOHIDManagerRef = struct IOHIDManager *;
using IOHIDDeviceRef = struct IOHIDDevice *;
using IOHIDDeviceCallback
    = void (*)(void *context, IOReturn result, void *sender, IOHIDDeviceRef device);

constexpr IOOptionBits kIOHIDOptionsTypeNone = 0;

IOHIDManagerRef IOHIDManagerCreate(CFAllocatorRef allocator, IOOptionBits options);
void IOHIDManagerSetDeviceMatching(IOHIDManagerRef manager, CFDictionaryRef matching);
void IOHIDManagerRegisterDeviceMatchingCallback(IOHIDManagerRef manager,
                                                IOHIDDeviceCallback callback, void *context);
void IOHIDManagerRegisterDeviceRemovalCallback(IOHIDManagerRef manager,
                                               IOHIDDeviceCallback callback, void *context);
void IOHIDManagerScheduleWithRunLoop(IOHIDManagerRef manager, CFRunLoopRef runLoop,
                                     CFStringRef mode);
void IOHIDManagerUnscheduleFromRunLoop(IOHIDManagerRef manager, CFRunLoopRef runLoop,
                                       CFStringRef mode);

CFTypeRef IOHIDDeviceGetProperty(IOHIDDeviceRef device, CFStringRef key);
}
