// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/UsbDouble_p.h"

#include <IOKit/IOCFPlugIn.h>

#include <tuple>
#include <utility>

namespace {

constexpr HRESULT kNoInterface = 1;

void deliver(IONotificationPortRef port)
{
    for (std::size_t i = 0;; ++i) {
        std::unique_lock guard(usbLock);
        if (i >= usbWorld->notifications.size()) {
            return;
        }
        UsbNotification &notification = usbWorld->notifications[i];
        if (notification.port != port || !std::exchange(notification.pending, false)) {
            continue;
        }
        const auto [callback, refCon, iterator]
            = std::tuple(notification.callback, notification.refCon, notification.iterator);
        usbWorld->calls.push_back("handler of " + notification.type);
        guard.unlock();
        callback(refCon, iterator);
    }
}

HRESULT queryInterface(void * /*self*/, REFIID /*interfaceId*/, LPVOID * /*result*/)
{
    const std::lock_guard guard(usbLock);
    usbWorld->calls.emplace_back("QueryInterface");
    return kNoInterface;
}

ULONG addReference(void *self)
{
    const std::lock_guard guard(usbLock);
    usbWorld->calls.emplace_back("AddRef");
    return static_cast<ULONG>(++static_cast<UsbPlugIn *>(self)->references);
}

ULONG release(void *self)
{
    const std::lock_guard guard(usbLock);
    auto *const plugIn = static_cast<UsbPlugIn *>(self);
    usbWorld->calls.emplace_back("Release");
    const int left = --plugIn->references;
    if (left == 0) {
        usbWorld->dropReference(plugIn->service);
        usbWorld->plugIns.erase(plugIn);
    }
    return static_cast<ULONG>(left);
}

IOCFPlugInInterface functions = {nullptr, queryInterface, addReference, release};

} // namespace

IONotificationPortRef IONotificationPortCreate(mach_port_t masterPort)
{
    const std::lock_guard guard(usbLock);
    usbWorld->calls.push_back("IONotificationPortCreate " + std::to_string(masterPort));
    usbWorld->ports.push_back(std::make_unique<IONotificationPort>());
    IONotificationPortRef const port = usbWorld->ports.back().get();
    port->source.reset(std::make_unique<CFRunLoopSource>([port] { deliver(port); }).release());
    return port;
}

CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef port)
{
    const std::lock_guard guard(usbLock);
    usbWorld->calls.emplace_back("IONotificationPortGetRunLoopSource");
    return port->source.get();
}

CFMutableDictionaryRef IOServiceMatching(const char *name)
{
    const std::lock_guard guard(usbLock);
    usbWorld->calls.push_back(std::string("IOServiceMatching ") + name);
    return std::make_unique<CFDictionary>(name).release();
}

kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef port,
                                               const io_name_t notificationType,
                                               CFDictionaryRef matching,
                                               IOServiceMatchingCallback callback, void *refCon,
                                               io_iterator_t *notification)
{
    const std::lock_guard guard(usbLock);
    const DoubleOwned<const CFDictionary> consumed(matching);
    const std::string type = notificationType;
    usbWorld->calls.push_back("IOServiceAddMatchingNotification " + type + ' ' + consumed->className
                              + (refCon == nullptr ? " null" : " something"));
    if (const kern_return_t status = usbWorld->failingRegistrations[type]; status != KERN_SUCCESS) {
        return status;
    }
    const io_iterator_t iterator = usbWorld->makeObject(true);
    usbWorld->objects[iterator].notificationType = type;
    usbWorld->notifications.push_back({type, port, callback, refCon, iterator, false});
    if (type == kIOFirstMatchNotification) {
        for (const io_service_t service : usbWorld->attached) {
            usbWorld->putInto(iterator, service);
        }
    }
    *notification = iterator;
    return KERN_SUCCESS;
}

io_object_t IOIteratorNext(io_iterator_t iterator)
{
    const std::lock_guard guard(usbLock);
    UsbObject &object = usbWorld->objects.at(iterator);
    usbWorld->calls.emplace_back("IOIteratorNext");
    if (object.services.empty()) {
        object.armed = true;
        return 0;
    }
    const io_service_t service = object.services.back();
    object.services.pop_back();
    return service; // the caller owns this reference
}

kern_return_t IOCreatePlugInInterfaceForService(io_service_t service, CFUUIDRef pluginType,
                                                CFUUIDRef interfaceType,
                                                IOCFPlugInInterface ***theInterface,
                                                SInt32 *theScore)
{
    const std::lock_guard guard(usbLock);
    usbWorld->calls.push_back("IOCreatePlugInInterfaceForService " + pluginType->text + ' '
                              + interfaceType->text);
    if (usbWorld->plugInStatus != KERN_SUCCESS) {
        return usbWorld->plugInStatus;
    }
    ++usbWorld->objects.at(service).references;
    auto plugIn = std::make_unique<UsbPlugIn>(UsbPlugIn{&functions, 1, service});
    *theInterface = &plugIn->functions;
    usbWorld->plugIns[*theInterface] = std::move(plugIn);
    *theScore = 1000; // macOS does not check the pointer either
    return KERN_SUCCESS;
}

kern_return_t IOObjectRelease(io_object_t object)
{
    const std::lock_guard guard(usbLock);
    const auto entry = usbWorld->objects.find(object);
    if (entry == usbWorld->objects.end()) {
        usbWorld->calls.emplace_back("IOObjectRelease of nothing");
        return KERN_INVALID_NAME;
    }
    const bool isIterator = entry->second.isIterator;
    const std::string type = entry->second.notificationType;
    usbWorld->calls.push_back(isIterator ? "IOObjectRelease iterator of " + type
                                         : "IOObjectRelease service");
    const kern_return_t status
        = isIterator ? usbWorld->failingIteratorReleases[type] : usbWorld->serviceReleaseStatus;
    if (status != KERN_SUCCESS) {
        return status;
    }
    if (isIterator) {
        auto &all = usbWorld->notifications;
        for (auto notification = all.begin(); notification != all.end(); ++notification) {
            if (notification->iterator == object) {
                all.erase(notification);
                break;
            }
        }
    }
    usbWorld->dropReference(object);
    return KERN_SUCCESS;
}
