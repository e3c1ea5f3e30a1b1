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

/// Consumes a matching dictionary of its own each time, whether it succeeds or not.
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
        // The port and the first iterator are left as they are on purpose.
        return printUsbFailure(UsbFailure::RegisterRemoved, static_cast<std::uint32_t>(status));
    }

    // One device only, and none of those that went, on purpose: with several attached the system
    // does not notify, since it waits for the iterator to be emptied.
    takeAndRelease(added);

    CFRunLoopAddSource(CFRunLoopGetCurrent(), source, kCFRunLoopDefaultMode);
    CFRunLoopRun();

    // The port lives on, and its source stays on the run loop, on purpose.
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
    // A notification takes one device only, on purpose, even when there are more.
    const io_service_t service = IOIteratorNext(iterator);
    if (service == 0) {
        return nullptr;
    }
    IOCFPlugInInterface **plugIn = nullptr;
    SInt32 score = 0; // nobody wants it, but the system writes it without looking
    kern_return_t status = IOCreatePlugInInterfaceForService(
        service, kIOUSBDeviceUserClientTypeID, kIOCFPlugInInterfaceID, &plugIn, &score);
    if (status != 0) {
        // The service is not released here on purpose.
        printUsbFailure(UsbFailure::CreateInterface, static_cast<std::uint32_t>(status));
        return nullptr;
    }
    status = IOObjectRelease(service);
    if (status != 0) {
        // Neither is the plug-in interface.
        printUsbFailure(UsbFailure::ReleaseDevice, static_cast<std::uint32_t>(status));
        return nullptr;
    }
    return plugIn;
}
