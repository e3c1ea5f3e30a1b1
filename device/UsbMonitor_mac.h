// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOCFPlugIn.h>
#include <IOKit/IOKitLib.h>

extern "C" {

/// Called by IOKit with the iterator of a notification of arrivals or removals. Takes one device
/// and releases it. `reference` is not used.
void usbDeviceAdded(void *reference, io_iterator_t iterator);
void usbDeviceRemoved(void *reference, io_iterator_t iterator);

/// Returns the plug-in interface of the next device in `iterator`, which the caller releases, or
/// null when there is none. Prints a failure to standard output and returns null.
IOCFPlugInInterface **getUSBDeviceInterface(io_iterator_t iterator);
}
