// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <libudev.h>

#include <cerrno>
#include <deque>
#include <memory>
#include <string>
#include <utility>

/// Releases a libudev object.
struct UdevUnref
{
    void operator()(udev *object) const { udev_unref(object); }
    void operator()(udev_monitor *object) const { udev_monitor_unref(object); }
    void operator()(udev_enumerate *object) const { udev_enumerate_unref(object); }
    void operator()(udev_device *object) const { udev_device_unref(object); }
};

// libudev objects are not thread-safe: use each on the thread that created it.
using Udev = std::unique_ptr<udev, UdevUnref>;
using UdevMonitor = std::unique_ptr<udev_monitor, UdevUnref>;
using UdevEnumerate = std::unique_ptr<udev_enumerate, UdevUnref>;
using UdevDevice = std::unique_ptr<udev_device, UdevUnref>;

/// The devices behind the USB monitor's iterators.
struct UsbDeviceIterator
{
    std::deque<UdevDevice> devices;
};

/// libudev returns null for a missing text.
inline std::string orEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

/// Starts to listen for events of a subsystem's devices of one type; null means all types. Returns
/// null on failure and leaves the reason in errno.
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

/// Calls `take` with a UdevDevice for each attached device of that subsystem and type.
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
