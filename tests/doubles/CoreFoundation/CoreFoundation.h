// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

// The part of CoreFoundation that the macOS files of the device layer and the doubles use, with the
// documented names and the sizes of 64-bit macOS.

#include <cstdint>

extern "C" {

using Boolean = unsigned char;
using UInt8 = std::uint8_t;
using SInt32 = std::int32_t;
using UInt32 = std::uint32_t;
using CFIndex = long;
using CFTypeID = unsigned long;
using CFHashCode = unsigned long;
using CFTimeInterval = double;
using CFStringEncoding = UInt32;
using CFNumberType = CFIndex;

using CFTypeRef = const void *;
using CFAllocatorRef = const struct CFAllocator *;
using CFStringRef = const struct CFString *;
using CFNumberRef = const struct CFNumber *;
using CFDictionaryRef = const struct CFDictionary *;
using CFMutableDictionaryRef = struct CFDictionary *;
using CFUUIDRef = const struct CFUUID *;
using CFRunLoopRef = struct CFRunLoop *;
using CFRunLoopSourceRef = struct CFRunLoopSource *;
using CFRunLoopMode = CFStringRef;
using CFRunLoopRunResult = SInt32;

struct CFRange
{
    CFIndex location;
    CFIndex length;
};

struct CFRunLoopSourceContext
{
    CFIndex version;
    void *info;
    const void *(*retain)(const void *info);
    void (*release)(const void *info);
    CFStringRef (*copyDescription)(const void *info);
    Boolean (*equal)(const void *info1, const void *info2);
    CFHashCode (*hash)(const void *info);
    void (*schedule)(void *info, CFRunLoopRef runLoop, CFRunLoopMode mode);
    void (*cancel)(void *info, CFRunLoopRef runLoop, CFRunLoopMode mode);
    void (*perform)(void *info);
};

constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
constexpr CFStringEncoding kCFStringEncodingUTF32LE = 0x1c000100;
constexpr CFNumberType kCFNumberSInt32Type = 3;

constexpr CFRunLoopRunResult kCFRunLoopRunFinished = 1;
constexpr CFRunLoopRunResult kCFRunLoopRunStopped = 2;
constexpr CFRunLoopRunResult kCFRunLoopRunTimedOut = 3;
constexpr CFRunLoopRunResult kCFRunLoopRunHandledSource = 4;

extern const CFRunLoopMode kCFRunLoopDefaultMode;

/// The constant string for CFSTR(); there is one for each text, and callers do not own it.
CFStringRef doubleConstantString(const char *text);
#define CFSTR(text) doubleConstantString(text)

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

CFTypeID CFNumberGetTypeID();
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void *value);

CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8 *buffer,
                         CFIndex maxBufLen, CFIndex *usedBufLen);

CFUUIDRef CFUUIDGetConstantUUIDWithBytes(CFAllocatorRef allocator, UInt8 byte0, UInt8 byte1,
                                         UInt8 byte2, UInt8 byte3, UInt8 byte4, UInt8 byte5,
                                         UInt8 byte6, UInt8 byte7, UInt8 byte8, UInt8 byte9,
                                         UInt8 byte10, UInt8 byte11, UInt8 byte12, UInt8 byte13,
                                         UInt8 byte14, UInt8 byte15);

CFRunLoopRef CFRunLoopGetCurrent();
void CFRunLoopRun();
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      Boolean returnAfterSourceHandled);
void CFRunLoopStop(CFRunLoopRef runLoop);
void CFRunLoopWakeUp(CFRunLoopRef runLoop);
void CFRunLoopAddSource(CFRunLoopRef runLoop, CFRunLoopSourceRef source, CFRunLoopMode mode);
CFRunLoopSourceRef CFRunLoopSourceCreate(CFAllocatorRef allocator, CFIndex order,
                                         CFRunLoopSourceContext *context);
void CFRunLoopSourceSignal(CFRunLoopSourceRef source);
void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source);
}

constexpr CFRange CFRangeMake(CFIndex location, CFIndex length)
{
    return {location, length};
}
