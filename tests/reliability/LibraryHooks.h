// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

/// Moments inside the upgrade that a test cannot reach otherwise, since the window is frozen then.
/// A program that links this calls what stands here, on the GUI thread; empty ones do nothing.
namespace LibraryHooks {

/// Instead of the wait for the device, with its length. Empty: the wait itself.
extern std::function<void(unsigned long secs)> insteadOfSleep;

/// Between the search for HID devices and the opening of one.
extern std::function<void()> beforeHidOpen;

} // namespace LibraryHooks
