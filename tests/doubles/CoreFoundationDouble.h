// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

/// An object of the CoreFoundation double, counted by CFRetain and CFRelease.
///
/// Releasing more often than was retained ends the process. The derived classes put nothing before
/// this base, so that a reference to one is also one to it.
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

/// How many objects live that someone must release; constants and run loops do not count.
int doubleObjectCount();

/// How many sources the run loop of the calling thread has.
int doubleSourceCount();

/// Whether the run loop waits for something to happen, in whatever mode. Any thread may ask.
bool doubleIsWaiting(CFRunLoopRef runLoop);
