// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "device/HidPlugHook.h"
#include "device/UsbMonitor.h"
#include "device/UsbMonitor_linux.h"

#include <cstdio>
#include <future>

namespace {

void ignorePlug(int /*arrived*/, int /*vendorId*/, int /*productId*/, int /*usage*/,
                int /*usagePage*/, const wchar_t * /*productName*/, void * /*context*/)
{ }

} // namespace

int main()
{
    register_hid_plug_callback(ignorePlug, nullptr);
    const bool found = DeviceComm::GetInst().startUpdate(-1, -1);
    std::puts(found ? "a device" : "no device");

    std::future<int> watch = std::async(std::launch::async, init_plug);
    stop_plug();
    std::printf("the watch ended with %d\n", watch.get());
    return 0;
}
