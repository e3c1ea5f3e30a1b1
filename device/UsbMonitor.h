// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

extern "C" {

/// Watches USB devices come and go, on the calling thread and until that is made to stop.
///
/// Each notification takes one device and gives it back again; nobody is told. Run it on a thread
/// of its own: on macOS it ends when that thread's run loop is stopped with CFRunLoopStop(), on
/// Linux by stop_plug(). macOS notifies only after all devices of the last notification have been
/// taken, so with several attached it may stay silent.
///
/// Returns 0 at the end of a watch; on macOS, where its last release may fail, the status of that.
/// When the system does not let it watch, it says so on standard output and returns at once with
/// the number of characters printed.
int init_plug();
}
