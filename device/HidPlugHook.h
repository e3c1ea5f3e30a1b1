// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

extern "C" {

/// What is called for every HID device that comes or goes.
///
/// - `arrived`: 1 when the device came, 0 when it went
/// - `vendorId`, `productId`: 0..65535; 0 when the device has none
/// - `usage`, `usagePage`: of the device's top-level collection; 0 when unknown
/// - `productName`: UTF-32, NUL-terminated, at most 255 characters, with "?" for each that cannot
///   be expressed; empty when the device has no name. Copy it: it is gone after the call.
/// - `context`: what was given to register_hid_plug_callback()
///
/// It is called on the GUI thread from its event loop, and never during DeviceComm::startUpdate():
/// what comes or goes meanwhile is reported afterwards, in its order. It must not throw.
using HidPlugCallback = void (*)(int arrived, int vendorId, int productId, int usage, int usagePage,
                                 const wchar_t *productName, void *context);

/// Tells `callback` of HID devices from now on, instead of the one before it; null tells nobody.
///
/// There is one callback in the process. Devices are watched while DeviceComm lives, so from the
/// first DeviceComm::GetInst(); those already attached by then are reported as arrivals. `context`
/// stays the caller's. There is no lock: call it on the GUI thread, or before DeviceComm is made.
/// The callback itself may call it, too.
void register_hid_plug_callback(HidPlugCallback callback, void *context);
}
