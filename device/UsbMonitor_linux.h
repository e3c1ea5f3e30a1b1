// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// The devices of a notification, taken one by one. Null is an empty iterator.
struct UsbDeviceIterator;
using io_iterator_t = UsbDeviceIterator *;

/// A device that was taken, behind a double pointer as on macOS. Each function takes that pointer
/// and returns the number of references left; the last Release frees the device.
struct IOCFPlugInInterface
{
    void *reserved; ///< Null.
    void *QueryInterface; ///< Null: Linux has no interfaces to ask for.
    std::uint32_t (*AddRef)(void *self); ///< Adds a reference.
    std::uint32_t (*Release)(void *self); ///< Removes a reference.
};

extern "C" {

/// Ends one running init_plug(), or the next one if none runs yet. May be called on any thread.
void stop_plug();

/// Called with the iterator of a notification of arrivals or removals. Takes one device and
/// releases it. `reference` is not used.
void usbDeviceAdded(void *reference, io_iterator_t iterator);
void usbDeviceRemoved(void *reference, io_iterator_t iterator);

/// Returns the next device of `iterator`, which the caller releases, or null when there is none. A
/// device without a node cannot be used: prints that to standard output and returns null.
IOCFPlugInInterface **getUSBDeviceInterface(io_iterator_t iterator);
}
