// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOCFPlugIn.h>

#include <string>
#include <vector>

/// The USB side of the IOKit double: devices that come and go, and a record of what is done.
///
/// A notification is sent only while its iterator is armed, which it is from the moment at which it
/// has been found empty until it gets a device; its run-loop source delivers it. Each call of a
/// handler is one notification. One of these exists at a time, and it forgets the one before.
class UsbDouble
{
public:
    UsbDouble();
    ~UsbDouble();

    UsbDouble(const UsbDouble &) = delete;
    UsbDouble &operator=(const UsbDouble &) = delete;

    /// Any thread may call these two. Several devices that come before the loop turns are one
    /// notification.
    static io_service_t attach();
    static void detach(io_service_t service);

    /// An iterator of these services, as a notification brings it.
    static io_iterator_t makeIterator(const std::vector<io_service_t> &services);

    /// The number of references somebody holds of an object; 0 when it is gone.
    static int references(io_object_t object);
    static std::size_t devicesIn(io_iterator_t iterator);

    /// What is registered for such notifications; null when nothing is.
    static IOServiceMatchingCallback handlerOf(const char *notificationType);

    static int portCount();
    static int plugInCount();

    /// The calls in their order: each with its arguments, pointers left out.
    static std::vector<std::string> calls();

    /// From now on these calls return the status, 0 for success.
    static void failRegistration(const char *notificationType, kern_return_t status);
    static void failPlugIn(kern_return_t status);
    static void failReleaseOfServices(kern_return_t status);
    static void failReleaseOfIterator(const char *notificationType, kern_return_t status);

    /// Leaves no source of a port on any run loop.
    static void removeSources();
};
