// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

extern "C" {

/// Watches USB arrivals and removals, and blocks the calling thread until it is stopped.
///
/// Each notification takes one device and releases it; nothing else is called. Run it on a separate
/// thread. On macOS it ends when that thread's run loop is stopped with CFRunLoopStop(), on Linux
/// when stop_plug() is called. macOS notifies again only once all devices of the last notification
/// have been taken, so it may stay silent when several are attached.
///
/// Returns 0 at the end of a watch; on macOS, the status of the last release. If the system cannot
/// watch, prints the failure to standard output and returns the number of characters printed at
/// once.
int init_plug();
}
