// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOCFPlugIn.h>
#include <IOKit/IOKitLib.h>

extern "C" {

/// Called by IOKit for devices that came, or went, with the notification's iterator: takes one
/// device and releases it. `reference` is not used.
void usbDeviceAdded(void *reference, io_iterator_t iterator);
void usbDeviceRemoved(void *reference, io_iterator_t iterator);

/// The plug-in interface of the next device in `iterator`, for the caller to release; null when
/// there is none. Failures are printed to standard output; the result is null then, too.
IOCFPlugInInterface **getUSBDeviceInterface(io_iterator_t iterator);
}
