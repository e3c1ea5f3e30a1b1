// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOCFPlugIn.h>

#include <string>
#include <vector>

/// The USB part of the IOKit double: attaches and detaches devices and records calls.
///
/// A run-loop source delivers notifications, but only while their iterator is armed. Reading an
/// iterator to its end arms it, and adding a device disarms it. Only one object of this class may
/// exist at a time; it starts without the devices and calls of the previous one.
class UsbDouble
{
public:
    UsbDouble();
    ~UsbDouble();

    UsbDouble(const UsbDouble &) = delete;
    UsbDouble &operator=(const UsbDouble &) = delete;

    /// Thread-safe. Several devices that are attached before the run loop runs cause only one
    /// notification.
    static io_service_t attach();
    static void detach(io_service_t service);

    /// An iterator over \a services, like that of a notification.
    static io_iterator_t makeIterator(const std::vector<io_service_t> &services);

    /// The reference count of an object; 0 if it has been deleted.
    static int references(io_object_t object);
    static std::size_t devicesIn(io_iterator_t iterator);

    /// The handler registered for notifications of this type, or null.
    static IOServiceMatchingCallback handlerOf(const char *notificationType);

    static int portCount();
    static int plugInCount();

    /// All calls in order, with their arguments except pointers.
    static std::vector<std::string> calls();

    /// Sets the status that these calls return from now on; 0 is success.
    static void failRegistration(const char *notificationType, kern_return_t status);
    static void failPlugIn(kern_return_t status);
    static void failReleaseOfServices(kern_return_t status);
    static void failReleaseOfIterator(const char *notificationType, kern_return_t status);

    /// Removes the sources of all ports from all run loops.
    static void removeSources();
};
