// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/doubles/CoreFoundationDouble.h"
#include "tests/doubles/UsbDouble.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

struct IONotificationPort
{
    DoubleOwned<CFRunLoopSource> source = nullptr;
};

struct UsbObject
{
    int references = 1;
    bool isIterator = false;
    std::string notificationType = {}; ///< Set for an iterator of a notification.
    std::vector<io_service_t> services = {}; ///< Taken from the end.
    bool armed = false;
};

struct UsbNotification
{
    std::string type;
    IONotificationPortRef port;
    IOServiceMatchingCallback callback;
    void *refCon;
    io_iterator_t iterator;
    bool pending;
};

/// The function table must be first: the double pointer points at its address.
struct UsbPlugIn
{
    IOCFPlugInInterface *functions;
    int references;
    io_service_t service;
};

/// The state that UsbDouble shares with the IOKit functions. Protected by usbLock.
struct UsbWorld
{
    io_object_t makeObject(bool isIterator);
    void dropReference(io_object_t name);
    void putInto(io_iterator_t iterator, io_service_t service);

    /// Adds a device to the iterators for notifications of this \a type and delivers armed ones.
    void notify(const std::string &type, io_service_t service);

    std::map<io_object_t, UsbObject> objects;
    std::vector<io_service_t> attached;
    std::vector<std::unique_ptr<IONotificationPort>> ports;
    std::vector<UsbNotification> notifications;
    std::vector<std::string> calls;
    std::map<std::string, kern_return_t> failingRegistrations;
    kern_return_t plugInStatus = KERN_SUCCESS;
    kern_return_t serviceReleaseStatus = KERN_SUCCESS;
    std::map<std::string, kern_return_t> failingIteratorReleases;
    std::map<void *, std::unique_ptr<UsbPlugIn>> plugIns;
    io_object_t lastName = 0x100;
};

// Not locked while a handler runs, since handlers call functions that lock it.
extern std::mutex usbLock;
extern std::unique_ptr<UsbWorld> usbWorld;
