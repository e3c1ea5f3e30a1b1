// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

extern "C" {

/// The function that is called for each HID device that arrives or leaves.
///
/// - `arrived`: 1 for an arrival, 0 for a removal
/// - `vendorId`, `productId`: 0..65535; 0 when the device has none
/// - `usage`, `usagePage`: of the device's top-level collection; 0 when unknown
/// - `productName`: UTF-32, NUL-terminated, at most 255 characters; "?" replaces each character
///   that cannot be converted. Empty when the device has no name. Valid only during the call.
/// - `context`: the pointer given to register_hid_plug_callback()
///
/// The function is called on the GUI thread from its event loop, but never during
/// DeviceComm::startUpdate(): events from that time are reported afterwards, in order. It must not
/// throw.
using HidPlugCallback = void (*)(int arrived, int vendorId, int productId, int usage, int usagePage,
                                 const wchar_t *productName, void *context);

/// Registers `callback` for HID arrivals and removals, instead of any earlier one. Null removes it.
///
/// The process has one callback. Devices are watched from the first DeviceComm::GetInst() on; those
/// already attached by then are reported as arrivals. The caller keeps ownership of `context`.
/// There is no lock: call this function on the GUI thread, or before DeviceComm exists. The
/// callback may call it, and it may exit the process.
void register_hid_plug_callback(HidPlugCallback callback, void *context);
}
