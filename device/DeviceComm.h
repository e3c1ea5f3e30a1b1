// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// The program's only conversation with the device over USB HID.
///
/// The one object owns hidapi for as long as it lives: from the first GetInst() to the end of the
/// process. So does the watch behind register_hid_plug_callback(). Use it on the GUI thread only.
class DeviceComm
{
public:
    /// The one object, made on first use.
    static DeviceComm &GetInst();

    DeviceComm(const DeviceComm &) = delete;
    DeviceComm &operator=(const DeviceComm &) = delete;

    /// Asks every attached device with these ids to restart into its bootloader, by one HID output
    /// report to each of its interfaces with the vendor's own usage.
    ///
    /// Blocks while it enumerates and writes. Returns whether at least one such interface could be
    /// opened; a report that is lost on the way is not noticed. Ids outside 0..65535 match nothing.
    bool startUpdate(int vendorId, int productId);

private:
    DeviceComm();
    ~DeviceComm();
};
