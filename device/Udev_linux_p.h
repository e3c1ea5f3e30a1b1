// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <libudev.h>

#include <memory>

/// Gives a libudev object back.
struct UdevUnref
{
    void operator()(udev *object) const { udev_unref(object); }
    void operator()(udev_monitor *object) const { udev_monitor_unref(object); }
    void operator()(udev_enumerate *object) const { udev_enumerate_unref(object); }
    void operator()(udev_device *object) const { udev_device_unref(object); }
};

// libudev's objects belong to one thread; none of these may be handed to another one.
using Udev = std::unique_ptr<udev, UdevUnref>;
using UdevMonitor = std::unique_ptr<udev_monitor, UdevUnref>;
using UdevEnumerate = std::unique_ptr<udev_enumerate, UdevUnref>;
using UdevDevice = std::unique_ptr<udev_device, UdevUnref>;
