// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// Talks to the device over USB HID; nothing else in the program does.
///
/// The single object exists from the first GetInst() to the end of the process. For that time
/// hidapi is initialised and the watch behind register_hid_plug_callback() runs. Use it on the GUI
/// thread only.
class DeviceComm
{
public:
    /// Returns the single object, which is created on first use.
    static DeviceComm &GetInst();

    DeviceComm(const DeviceComm &) = delete;
    DeviceComm &operator=(const DeviceComm &) = delete;

    /// Sends one HID output report to each interface with the vendor-defined usage of each attached
    /// device with these ids. The report makes the device restart into its bootloader.
    ///
    /// Blocks while it enumerates and writes. Returns whether at least one such interface could be
    /// opened; a failed write goes unnoticed. Ids outside 0..65535 match nothing.
    bool startUpdate(int vendorId, int productId);

private:
    DeviceComm();
    ~DeviceComm();
};
