// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"
#include "tests/device/HidWatch.h"
#include "tests/device/Patience.h"

#include <QtTest>

// Shared by the tests of the HID watch: a device, the expected reports, and the watch.

inline const Testbed::UsbDevice kTarget = {0x7F3C, 0x0C51, "Device", "0001"};
inline const Testbed::HidInterface kTrigger = {0xFF31, 0x74, {}, {}};

/// The arrival of a device that is already gone.
inline const Plug kUnknown = {1};

/// Runs the event loop until all events so far have been processed, marked by one last device.
inline void settle(Testbed &testbed, PlugRecorder &recorder)
{
    const QString last = testbed.addUsbDevice({1, 2, "last", ""});
    testbed.addHidInterface(last, {1, 6, {}, {}});
    const Plug arrival = {1, 1, 2, 6, 1, "last"};
    AWAIT_VERIFY(!recorder.plugs.isEmpty() && recorder.plugs.last() == arrival);
    recorder.plugs.removeLast();
}
