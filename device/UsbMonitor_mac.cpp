// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor_mac.h"

#include "device/UsbMonitor.h"
#include "device/UsbMonitor_p.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/usb/IOUSBLib.h>

namespace {

void takeAndRelease(io_iterator_t iterator)
{
    IOCFPlugInInterface **const plugIn = getUSBDeviceInterface(iterator);
    if (plugIn != nullptr) {
        (*plugIn)->Release(plugIn);
    }
}

/// Creates a matching dictionary for each call: IOKit consumes it, even on failure.
kern_return_t registerNotification(IONotificationPortRef port, const char *type,
                                   IOServiceMatchingCallback handler, io_iterator_t *iterator)
{
    return IOServiceAddMatchingNotification(port, type, IOServiceMatching(kIOUSBDeviceClassName),
                                            handler, nullptr, iterator);
}

// The name is deprecated since macOS 12, but the new one, for the same value, is unknown before.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
IONotificationPortRef makePort()
{
    return IONotificationPortCreate(kIOMasterPortDefault);
}
#pragma GCC diagnostic pop

} // namespace

int init_plug()
{
    IONotificationPortRef port = makePort();
    CFRunLoopSourceRef source = IONotificationPortGetRunLoopSource(port);

    io_iterator_t added = 0;
    kern_return_t status
        = registerNotification(port, kIOFirstMatchNotification, usbDeviceAdded, &added);
    if (status != 0) {
        return printUsbFailure(UsbFailure::RegisterAdded, static_cast<std::uint32_t>(status));
    }
    io_iterator_t removed = 0;
    status = registerNotification(port, kIOTerminatedNotification, usbDeviceRemoved, &removed);
    if (status != 0) {
        // The port and the first iterator stay: IOKit frees them when the process ends.
        return printUsbFailure(UsbFailure::RegisterRemoved, static_cast<std::uint32_t>(status));
    }

    // Only one arrival is taken here and no removal. IOKit notifies again only once an iterator is
    // empty, so with several devices attached it stays silent.
    takeAndRelease(added);

    CFRunLoopAddSource(CFRunLoopGetCurrent(), source, kCFRunLoopDefaultMode);
    CFRunLoopRun();

    // The port and its source stay: they end with the process or with the thread's run loop.
    IOObjectRelease(added);
    return IOObjectRelease(removed);
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
    // One device per notification, even when the iterator holds more.
    const io_service_t service = IOIteratorNext(iterator);
    if (service == 0) {
        return nullptr;
    }
    IOCFPlugInInterface **plugIn = nullptr;
    SInt32 score = 0; // unused, but the system writes to it unconditionally
    kern_return_t status = IOCreatePlugInInterfaceForService(
        service, kIOUSBDeviceUserClientTypeID, kIOCFPlugInInterfaceID, &plugIn, &score);
    if (status != 0) {
        // A service without a plug-in is kept; its reference ends with the process.
        printUsbFailure(UsbFailure::CreateInterface, static_cast<std::uint32_t>(status));
        return nullptr;
    }
    status = IOObjectRelease(service);
    if (status != 0) {
        // So is the plug-in interface of a service that cannot be released.
        printUsbFailure(UsbFailure::ReleaseDevice, static_cast<std::uint32_t>(status));
        return nullptr;
    }
    return plugIn;
}
