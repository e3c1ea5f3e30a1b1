// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// Devices that a notification has brought, to be taken one by one. Null is an empty one.
struct UsbDeviceIterator;
using io_iterator_t = UsbDeviceIterator *;

/// A device that has been taken, reached through a double pointer as on macOS. Each function takes
/// that pointer and returns how many references are left; the last Release gives the device back.
struct IOCFPlugInInterface
{
    void *reserved; ///< Null.
    void *QueryInterface; ///< Null: Linux has no interfaces to ask for.
    std::uint32_t (*AddRef)(void *self); ///< Keeps the device for one more holder.
    std::uint32_t (*Release)(void *self); ///< Ends one holder's use.
};

extern "C" {

/// Ends one running init_plug(), or the next one if none runs yet. May be called on any thread.
void stop_plug();

/// Called for devices that came, or went, with the notification's iterator: takes one device and
/// releases it. `reference` is not used.
void usbDeviceAdded(void *reference, io_iterator_t iterator);
void usbDeviceRemoved(void *reference, io_iterator_t iterator);

/// The next device of `iterator`, for the caller to release; null when there is none. A device
/// without a node cannot be used: that is printed to standard output, the result is null, too.
IOCFPlugInInterface **getUSBDeviceInterface(io_iterator_t iterator);
}
