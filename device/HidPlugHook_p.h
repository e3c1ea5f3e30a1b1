// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

// The internals of the HID plug hook. DeviceComm starts, pauses and stops the watch; the platform's
// file supplies properties and events. Use all of it on the GUI thread.

constexpr std::size_t kHidNameLength = 255;

/// A product name in UTF-32 with the NUL behind it.
using HidProductName = std::array<wchar_t, kHidNameLength + 1>;
static_assert(sizeof(HidProductName) == 1024, "a wide character has 32 bits");

/// A device's properties as the system reports them. A missing or invalid number is 0.
struct HidProperties
{
    int vendorId = 0;
    int productId = 0;
    int usage = 0;
    int usagePage = 0;
    HidProductName productName = {};
};

/// Returns how many of a name's `units` UTF-16 units are kept.
std::size_t hidNameUnits(std::size_t units);

/// Converts the part of a UTF-16 name that is kept. A lone surrogate becomes "?".
HidProductName hidProductName(std::u16string_view name);

/// Queues a report for the next deliverHidPlugs().
void queueHidPlug(bool arrived, const HidProperties &properties);

/// Calls the registered callback for each queued report, in order. Does nothing during a pause.
void deliverHidPlugs();

/// Pauses delivery for its lifetime. After the last pause the event loop delivers what is queued.
class HidPlugPause
{
public:
    HidPlugPause();
    ~HidPlugPause();

    HidPlugPause(const HidPlugPause &) = delete;
    HidPlugPause &operator=(const HidPlugPause &) = delete;
};

/// The platform's watch over all HID devices, for as long as it lives.
class HidPlugWatch
{
public:
    /// Queues and delivers arrivals and removals from the calling thread's event loop. Devices that
    /// are already attached count as arrivals. Nothing is reported without an event loop, or if the
    /// system cannot watch.
    static std::unique_ptr<HidPlugWatch> create();

    /// May run after the end of the event loop.
    virtual ~HidPlugWatch() = default;

    HidPlugWatch(const HidPlugWatch &) = delete;
    HidPlugWatch &operator=(const HidPlugWatch &) = delete;

    /// Makes the event loop call deliverHidPlugs() soon.
    virtual void wake() = 0;

protected:
    HidPlugWatch() = default;
};

/// Creates the process's one watch, unless it exists.
void startHidPlugWatch();

/// Deletes the watch and drops what it has not delivered. During a callback the watch stays,
/// because the platform still uses it.
void stopHidPlugWatch();
