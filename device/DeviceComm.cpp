// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"

#include "device/HidPlugHook_p.h"

#include <hidapi.h>

#include <array>

namespace {

bool matches(const hid_device_info &info, int vendorId, int productId)
{
    constexpr int kUsagePage = 0xFF31;
    constexpr int kUsage = 0x74;
    return info.vendor_id == vendorId && info.product_id == productId
        && info.usage_page == kUsagePage && info.usage == kUsage;
}

bool sendEnterBootloader(const char *path)
{
    hid_device *device = hid_open_path(path);
    if (device == nullptr) {
        return false;
    }
    // hidapi takes the first byte for the report's id. It is the first data byte as well, so the
    // device receives all 64 bytes that are written; the 65th is never sent.
    const std::array<unsigned char, 65> report = {0xAA, 0xBB};
    hid_write(device, report.data(), 64);
    hid_close(device);
    return true;
}

} // namespace

DeviceComm &DeviceComm::GetInst()
{
    static DeviceComm deiviceCommObject;
    return deiviceCommObject;
}

DeviceComm::DeviceComm()
{
    hid_init();
    startHidPlugWatch();
}

DeviceComm::~DeviceComm()
{
    stopHidPlugWatch();
    hid_exit();
}

bool DeviceComm::startUpdate(int vendorId, int productId)
{
    // The enumeration may turn the event loop, and devices come and go while it does.
    const HidPlugPause pause;
    bool reached = false;
    hid_device_info *const all = hid_enumerate(0, 0);
    // The walk goes on after a success, so that with two devices attached both restart.
    for (const hid_device_info *info = all; info != nullptr; info = info->next) {
        if (matches(*info, vendorId, productId) && sendEnterBootloader(info->path)) {
            reached = true;
        }
    }
    hid_free_enumeration(all);
    return reached;
}
