// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

/// An object of the CoreFoundation double, with the reference count of CFRetain and CFRelease.
///
/// Releasing an object too often aborts the process. This must be the first base of a derived
/// class, so that a reference to the derived object is also one to this base.
struct CFObject
{
    CFObject();
    virtual ~CFObject();

    CFObject(const CFObject &) = delete;
    CFObject &operator=(const CFObject &) = delete;

    int references = 1;
};

struct CFString final : CFObject
{
    explicit CFString(std::u16string characters);

    const std::u16string text;
};

struct CFNumber final : CFObject
{
    explicit CFNumber(std::int64_t number);

    const std::int64_t value;
};

struct CFDictionary final : CFObject
{
    explicit CFDictionary(std::string name);

    const std::string className;
};

// Other types of properties, without a value.
struct CFArray final : CFObject
{
};
struct CFBoolean final : CFObject
{
};
struct CFData final : CFObject
{
};

struct CFUUID final : CFObject
{
    explicit CFUUID(std::string digits);

    const std::string text; ///< Lower-case hexadecimal digits without separators.
};

struct CFRunLoopSource final : CFObject
{
    explicit CFRunLoopSource(std::function<void()> action);

    const std::function<void()> perform;
    bool signaled = false; ///< Protected by the lock of all run loops.
};

struct DoubleRelease
{
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

template <typename Object> using DoubleOwned = std::unique_ptr<Object, DoubleRelease>;

/// Aborts the process. For calls that crash on the platform or are undefined there.
[[noreturn]] void doubleFail(const char *what);

/// The number of objects that have not been released, without constants and run loops.
int doubleObjectCount();

/// The number of sources in the calling thread's run loop.
int doubleSourceCount();

/// Signals the source and wakes its run loops, as a message from the kernel does. Thread-safe.
void doublePost(CFRunLoopSourceRef source);

/// Whether the run loop is waiting, in any mode. Thread-safe.
bool doubleIsWaiting(CFRunLoopRef runLoop);

/// Whether the run loop has been woken and has not waited since. Thread-safe.
bool doubleIsAwake(CFRunLoopRef runLoop);
