// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <CoreFoundation/CoreFoundation.h>

// The part of IOKit that the USB monitor uses, with the documented names.

extern "C" {

using kern_return_t = int;
using IOReturn = kern_return_t;
using IOOptionBits = UInt32;
using mach_port_t = unsigned int;
using io_object_t = mach_port_t;
using io_iterator_t = io_object_t;
using io_service_t = io_object_t;
using io_name_t = char[128];
using IONotificationPortRef = struct IONotificationPort *;
using IOServiceMatchingCallback = void (*)(void *refCon, io_iterator_t iterator);

constexpr kern_return_t KERN_SUCCESS = 0;
constexpr kern_return_t KERN_INVALID_NAME = 15;
[[deprecated("since macOS 12")]] constexpr mach_port_t kIOMasterPortDefault = 0;

#define kIOFirstMatchNotification "IOServiceFirstMatch"
#define kIOTerminatedNotification "IOServiceTerminate"

IONotificationPortRef IONotificationPortCreate(mach_port_t masterPort);
CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef port);
CFMutableDictionaryRef IOServiceMatching(const char *name);
kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef port,
                                               const io_name_t notificationType,
                                               CFDictionaryRef matching,
                                               IOServiceMatchingCallback callback, void *refCon,
                                               io_iterator_t *notification);
io_object_t IOIteratorNext(io_iterator_t iterator);
kern_return_t IOObjectRelease(io_object_t object);
}
