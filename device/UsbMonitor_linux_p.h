// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "device/Udev_linux_p.h"

#include <deque>

struct UsbDeviceIterator
{
    std::deque<UdevDevice> devices;
};
