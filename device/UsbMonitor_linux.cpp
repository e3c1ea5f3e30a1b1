// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor_linux.h"

#include "device/Udev_linux_p.h"
#include "device/UsbMonitor.h"
#include "device/UsbMonitor_p.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <cerrno>
#include <type_traits>

namespace {

constexpr char kSubsystem[] = "usb";
constexpr char kDeviceType[] = "usb_device";

struct UsbPlugIn
{
    IOCFPlugInInterface *functions;
    udev_device *device;
    std::uint32_t references;
};
static_assert(std::is_standard_layout_v<UsbPlugIn>, "the functions' address is the object's");

std::uint32_t addReference(void *self)
{
    return ++static_cast<UsbPlugIn *>(self)->references;
}

std::uint32_t release(void *self)
{
    auto *const plugIn = static_cast<UsbPlugIn *>(self);
    const std::uint32_t left = --plugIn->references;
    if (left == 0) {
        const std::unique_ptr<UsbPlugIn> last(plugIn);
        udev_device_unref(last->device);
    }
    return left;
}

IOCFPlugInInterface plugInFunctions = {nullptr, nullptr, addReference, release};

void takeAndRelease(io_iterator_t iterator)
{
    IOCFPlugInInterface **const plugIn = getUSBDeviceInterface(iterator);
    if (plugIn != nullptr) {
        (*plugIn)->Release(plugIn);
    }
}

/// Counts the requests to stop, so that a request made before the watch begins is not lost.
int stopEvent()
{
    static const int event = eventfd(0, EFD_SEMAPHORE | EFD_NONBLOCK | EFD_CLOEXEC);
    return event;
}

struct Notification
{
    /// Returns 0 or the error's number.
    int listen(udev *udev);
    void receive();

    const char *action;
    void (*handler)(void *, io_iterator_t);
    UdevMonitor monitor = nullptr;
    UsbDeviceIterator iterator = {};
};

int Notification::listen(udev *udev)
{
    monitor = listenToUdev(udev, kSubsystem, kDeviceType);
    return monitor != nullptr ? 0 : errno;
}

void Notification::receive()
{
    UdevDevice device(udev_monitor_receive_device(monitor.get()));
    if (device == nullptr || orEmpty(udev_device_get_action(device.get())) != action) {
        return;
    }
    iterator.devices.push_back(std::move(device));
    handler(nullptr, &iterator);
}

void runUntilStopped(Notification &added, Notification &removed)
{
    std::array<pollfd, 3> sources = {{{stopEvent(), POLLIN, 0},
                                      {udev_monitor_get_fd(added.monitor.get()), POLLIN, 0},
                                      {udev_monitor_get_fd(removed.monitor.get()), POLLIN, 0}}};
    while (poll(sources.data(), sources.size(), -1) >= 0 || errno == EINTR) {
        eventfd_t stop = 0;
        if (eventfd_read(stopEvent(), &stop) == 0) {
            return;
        }
        added.receive();
        removed.receive();
    }
}

} // namespace

int init_plug()
{
    const Udev udev(udev_new());
    Notification added = {"add", usbDeviceAdded};
    Notification removed = {"remove", usbDeviceRemoved};

    int error = added.listen(udev.get());
    if (error != 0) {
        return printUsbFailure(UsbFailure::RegisterAdded, static_cast<std::uint32_t>(error));
    }
    error = removed.listen(udev.get());
    if (error != 0) {
        return printUsbFailure(UsbFailure::RegisterRemoved, static_cast<std::uint32_t>(error));
    }
    // Only one of the devices that are already attached is taken, as on macOS. The others wait in
    // the iterator, ahead of those that arrive later.
    takeAttached(udev.get(), kSubsystem, kDeviceType, [&added](UdevDevice device) {
        added.iterator.devices.push_back(std::move(device));
    });
    takeAndRelease(&added.iterator);

    runUntilStopped(added, removed);
    return 0;
}

void stop_plug()
{
    eventfd_write(stopEvent(), 1);
}

void usbDeviceAdded(void * /*reference*/, io_iterator_t iterator)
{
    takeAndRelease(iterator);
}

void usbDeviceRemoved(void * /*reference*/, io_iterator_t iterator)
{
    takeAndRelease(iterator);
}

IOCFPlugInInterface **getUSBDeviceInterface(io_iterator_t iterator)
{
    if (iterator == nullptr || iterator->devices.empty()) {
        return nullptr;
    }
    // One device per notification, even when there are more, as on macOS.
    UdevDevice device = std::move(iterator->devices.front());
    iterator->devices.pop_front();
    if (udev_device_get_devnode(device.get()) == nullptr) {
        printUsbFailure(UsbFailure::CreateInterface, ENODEV);
        return nullptr;
    }
    auto plugIn = std::make_unique<UsbPlugIn>(UsbPlugIn{&plugInFunctions, device.release(), 1});
    return &plugIn.release()->functions;
}
