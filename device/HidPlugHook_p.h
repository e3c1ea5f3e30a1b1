// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

// The HID plug hook's inside: DeviceComm starts, pauses and stops the watch, and the platform's
// file fetches properties and events. All of it belongs to the GUI thread.

constexpr std::size_t kHidNameLength = 255;

/// A product name in UTF-32 with the NUL behind it.
using HidProductName = std::array<wchar_t, kHidNameLength + 1>;
static_assert(sizeof(HidProductName) == 1024, "a wide character has 32 bits");

/// A device's properties as the system has them; a number that is missing or none is 0.
struct HidProperties
{
    int vendorId = 0;
    int productId = 0;
    int usage = 0;
    int usagePage = 0;
    HidProductName productName = {};
};

/// How much of a name of `units` UTF-16 units is kept, in units.
std::size_t hidNameUnits(std::size_t units);

/// The part of a UTF-16 name that is kept, a pair as one character and a lone surrogate as "?".
HidProductName hidProductName(std::u16string_view name);

/// Keeps a report for the next deliverHidPlugs().
void queueHidPlug(bool arrived, const HidProperties &properties);

/// Calls the registered callback for everything kept, in order; does nothing during a pause.
void deliverHidPlugs();

/// While one lives nothing is delivered; the event loop catches up after the last of them.
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
    /// Queues what comes and goes, and delivers it, from the calling thread's event loop. Devices
    /// that are attached already count as arrivals. Without an event loop, or if the system cannot
    /// watch, nothing is reported.
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

/// Deletes the watch and drops what it has not delivered.
void stopHidPlugWatch();
