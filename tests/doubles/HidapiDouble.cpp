// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// hidapi for macOS, as far as DeviceComm uses it: its enumeration turns the run loop.

#include "tests/doubles/HidManagerDouble.h"

#include <CoreFoundation/CoreFoundation.h>
#include <hidapi.h>

int hid_init()
{
    HidManagerDouble::record("hid_init");
    return 0;
}

int hid_exit()
{
    HidManagerDouble::record("hid_exit");
    return 0;
}

hid_device_info *hid_enumerate(unsigned short /*vendorId*/, unsigned short /*productId*/)
{
    HidManagerDouble::record("enumeration begins");
    while (CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.001, 1) == kCFRunLoopRunHandledSource) { }
    HidManagerDouble::record("enumeration ends");
    return nullptr;
}

void hid_free_enumeration(hid_device_info * /*devices*/) { }

hid_device *hid_open_path(const char * /*path*/)
{
    return nullptr;
}

int hid_write(hid_device * /*device*/, const unsigned char * /*data*/, size_t /*length*/)
{
    return -1;
}

void hid_close(hid_device * /*device*/) { }
