// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <libudev.h>

#include <cerrno>
#include <deque>
#include <memory>
#include <string>
#include <utility>

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

/// What the iterators of the USB monitor point to.
struct UsbDeviceIterator
{
    std::deque<UdevDevice> devices;
};

/// libudev has null for a text that is missing.
inline std::string orEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

/// Listens from now on for events of a subsystem's devices of one type, null for all of them. The
/// result is null, and the reason in errno, when that cannot be done.
inline UdevMonitor listenToUdev(udev *udev, const char *subsystem, const char *deviceType)
{
    UdevMonitor monitor(udev_monitor_new_from_netlink(udev, "udev"));
    if (monitor == nullptr) {
        return monitor;
    }
    int error
        = udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), subsystem, deviceType);
    if (error >= 0) {
        error = udev_monitor_enable_receiving(monitor.get());
    }
    if (error < 0) {
        monitor.reset();
        errno = -error;
    }
    return monitor;
}

/// Calls `take` with a UdevDevice for each device attached now, of the same kind as above.
template <typename Take>
void takeAttached(udev *udev, const char *subsystem, const char *deviceType, const Take &take)
{
    const UdevEnumerate devices(udev_enumerate_new(udev));
    udev_enumerate_add_match_subsystem(devices.get(), subsystem);
    if (deviceType != nullptr) {
        udev_enumerate_add_match_property(devices.get(), "DEVTYPE", deviceType);
    }
    udev_enumerate_scan_devices(devices.get());
    for (udev_list_entry *entry = udev_enumerate_get_list_entry(devices.get()); entry != nullptr;
         entry = udev_list_entry_get_next(entry)) {
        UdevDevice device(udev_device_new_from_syspath(udev, udev_list_entry_get_name(entry)));
        if (device != nullptr) {
            take(std::move(device));
        }
    }
}
