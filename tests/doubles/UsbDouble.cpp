// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/UsbDouble.h"

#include "tests/doubles/CoreFoundationDouble.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <tuple>
#include <utility>

struct IONotificationPort
{
    DoubleOwned<CFRunLoopSource> source = nullptr;
};

namespace {

constexpr kern_return_t kNoInterface = 1;

struct Object
{
    int references = 1;
    bool isIterator = false;
    std::deque<io_service_t> services = {};
    bool armed = false;
};

struct Notification
{
    std::string type;
    IONotificationPortRef port;
    IOServiceMatchingCallback callback;
    void *refCon;
    io_iterator_t iterator;
    bool pending;
};

/// The function table comes first: its address is what the double pointer points at.
struct PlugIn
{
    IOCFPlugInInterface *functions;
    int references;
    io_service_t service;
};

struct World
{
    std::map<io_object_t, Object> objects;
    std::vector<io_service_t> attached;
    std::vector<std::unique_ptr<IONotificationPort>> ports;
    std::vector<Notification> notifications;
    std::vector<std::string> calls;
    std::map<std::string, kern_return_t> failingRegistrations;
    kern_return_t plugInStatus = KERN_SUCCESS;
    kern_return_t serviceReleaseStatus = KERN_SUCCESS;
    kern_return_t iteratorReleaseStatus = KERN_SUCCESS;
    std::map<void *, std::unique_ptr<PlugIn>> plugIns;
    io_object_t lastName = 0x100;
};

// Not held while a handler is called, which calls back.
std::mutex lock;
std::unique_ptr<World> world;

io_object_t makeObject(bool isIterator)
{
    const io_object_t name = ++world->lastName;
    world->objects[name].isIterator = isIterator;
    return name;
}

void dropReference(io_object_t name)
{
    const auto entry = world->objects.find(name);
    if (--entry->second.references == 0) {
        const std::deque<io_service_t> services = std::move(entry->second.services);
        world->objects.erase(entry);
        for (const io_service_t service : services) {
            dropReference(service);
        }
    }
}

void putInto(io_iterator_t iterator, io_service_t service)
{
    ++world->objects.at(service).references;
    world->objects.at(iterator).services.push_back(service);
}

void notify(const std::string &type, io_service_t service)
{
    for (Notification &notification : world->notifications) {
        if (notification.type != type) {
            continue;
        }
        putInto(notification.iterator, service);
        Object &iterator = world->objects.at(notification.iterator);
        if (std::exchange(iterator.armed, false)) {
            notification.pending = true;
            CFRunLoopSourceSignal(notification.port->source.get());
            CFRunLoopWakeUp(nullptr);
        }
    }
}

void deliver(IONotificationPortRef port)
{
    for (std::size_t i = 0;; ++i) {
        std::unique_lock guard(lock);
        if (i >= world->notifications.size()) {
            return;
        }
        Notification &notification = world->notifications[i];
        if (notification.port != port || !std::exchange(notification.pending, false)) {
            continue;
        }
        const auto [callback, refCon, iterator]
            = std::tuple(notification.callback, notification.refCon, notification.iterator);
        world->calls.push_back("handler of " + notification.type);
        guard.unlock();
        callback(refCon, iterator);
    }
}

HRESULT queryInterface(void * /*self*/, REFIID /*interfaceId*/, LPVOID * /*result*/)
{
    const std::lock_guard guard(lock);
    world->calls.emplace_back("QueryInterface");
    return kNoInterface;
}

ULONG addReference(void *self)
{
    const std::lock_guard guard(lock);
    world->calls.emplace_back("AddRef");
    return static_cast<ULONG>(++static_cast<PlugIn *>(self)->references);
}

ULONG release(void *self)
{
    const std::lock_guard guard(lock);
    auto *const plugIn = static_cast<PlugIn *>(self);
    world->calls.emplace_back("Release");
    const int left = --plugIn->references;
    if (left == 0) {
        dropReference(plugIn->service);
        world->plugIns.erase(plugIn);
    }
    return static_cast<ULONG>(left);
}

IOCFPlugInInterface functions = {nullptr, queryInterface, addReference, release};

} // namespace

UsbDouble::UsbDouble()
{
    world = std::make_unique<World>();
}

UsbDouble::~UsbDouble()
{
    removeSources(); // on a run loop they would outlive their port
    world.reset();
}

io_service_t UsbDouble::attach()
{
    const std::lock_guard guard(lock);
    const io_service_t service = makeObject(false);
    world->attached.push_back(service);
    notify(kIOFirstMatchNotification, service);
    return service;
}

void UsbDouble::detach(io_service_t service)
{
    const std::lock_guard guard(lock);
    auto &attached = world->attached;
    for (auto entry = attached.begin(); entry != attached.end(); ++entry) {
        if (*entry == service) {
            attached.erase(entry);
            break;
        }
    }
    notify(kIOTerminatedNotification, service);
    dropReference(service);
}

io_iterator_t UsbDouble::makeIterator(const std::vector<io_service_t> &services)
{
    const std::lock_guard guard(lock);
    const io_iterator_t iterator = makeObject(true);
    for (const io_service_t service : services) {
        putInto(iterator, service);
    }
    return iterator;
}

int UsbDouble::references(io_object_t object)
{
    const std::lock_guard guard(lock);
    const auto entry = world->objects.find(object);
    return entry != world->objects.end() ? entry->second.references : 0;
}

std::size_t UsbDouble::devicesIn(io_iterator_t iterator)
{
    const std::lock_guard guard(lock);
    return world->objects.at(iterator).services.size();
}

int UsbDouble::portCount()
{
    const std::lock_guard guard(lock);
    return static_cast<int>(world->ports.size());
}

int UsbDouble::plugInCount()
{
    const std::lock_guard guard(lock);
    return static_cast<int>(world->plugIns.size());
}

std::vector<std::string> UsbDouble::calls()
{
    const std::lock_guard guard(lock);
    return world->calls;
}

void UsbDouble::failRegistration(const char *notificationType, kern_return_t status)
{
    const std::lock_guard guard(lock);
    world->failingRegistrations[notificationType] = status;
}

void UsbDouble::failPlugIn(kern_return_t status)
{
    const std::lock_guard guard(lock);
    world->plugInStatus = status;
}

void UsbDouble::failReleaseOfServices(kern_return_t status)
{
    const std::lock_guard guard(lock);
    world->serviceReleaseStatus = status;
}

void UsbDouble::failReleaseOfIterators(kern_return_t status)
{
    const std::lock_guard guard(lock);
    world->iteratorReleaseStatus = status;
}

void UsbDouble::removeSources()
{
    const std::lock_guard guard(lock);
    for (const auto &port : world->ports) {
        CFRunLoopSourceInvalidate(port->source.get());
    }
    CFRunLoopWakeUp(nullptr);
}

IONotificationPortRef IONotificationPortCreate(mach_port_t masterPort)
{
    const std::lock_guard guard(lock);
    world->calls.push_back("IONotificationPortCreate " + std::to_string(masterPort));
    world->ports.push_back(std::make_unique<IONotificationPort>());
    IONotificationPortRef const port = world->ports.back().get();
    port->source.reset(std::make_unique<CFRunLoopSource>([port] { deliver(port); }).release());
    return port;
}

CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef port)
{
    const std::lock_guard guard(lock);
    world->calls.emplace_back("IONotificationPortGetRunLoopSource");
    return port->source.get();
}

CFMutableDictionaryRef IOServiceMatching(const char *name)
{
    const std::lock_guard guard(lock);
    world->calls.push_back(std::string("IOServiceMatching ") + name);
    return std::make_unique<CFDictionary>(name).release();
}

kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef port,
                                               const io_name_t notificationType,
                                               CFDictionaryRef matching,
                                               IOServiceMatchingCallback callback, void *refCon,
                                               io_iterator_t *notification)
{
    const std::lock_guard guard(lock);
    const DoubleOwned<const CFDictionary> consumed(matching);
    const std::string type = notificationType;
    world->calls.push_back("IOServiceAddMatchingNotification " + type + ' ' + consumed->className
                           + (refCon == nullptr ? " null" : " something"));
    if (const kern_return_t status = world->failingRegistrations[type]; status != KERN_SUCCESS) {
        return status;
    }
    const io_iterator_t iterator = makeObject(true);
    world->notifications.push_back({type, port, callback, refCon, iterator, false});
    if (type == kIOFirstMatchNotification) {
        for (const io_service_t service : world->attached) {
            putInto(iterator, service);
        }
    }
    *notification = iterator;
    return KERN_SUCCESS;
}

io_object_t IOIteratorNext(io_iterator_t iterator)
{
    const std::lock_guard guard(lock);
    Object &object = world->objects.at(iterator);
    world->calls.emplace_back("IOIteratorNext");
    if (object.services.empty()) {
        object.armed = true;
        return 0;
    }
    const io_service_t service = object.services.front();
    object.services.pop_front();
    return service; // its reference goes over to the caller
}

kern_return_t IOCreatePlugInInterfaceForService(io_service_t service, CFUUIDRef pluginType,
                                                CFUUIDRef interfaceType,
                                                IOCFPlugInInterface ***theInterface,
                                                SInt32 *theScore)
{
    const std::lock_guard guard(lock);
    world->calls.push_back("IOCreatePlugInInterfaceForService " + pluginType->text + ' '
                           + interfaceType->text);
    if (world->plugInStatus != KERN_SUCCESS) {
        return world->plugInStatus;
    }
    ++world->objects.at(service).references;
    auto plugIn = std::make_unique<PlugIn>(PlugIn{&functions, 1, service});
    *theInterface = &plugIn->functions;
    world->plugIns[*theInterface] = std::move(plugIn);
    *theScore = 1000; // without a look, as on the platform
    return KERN_SUCCESS;
}

kern_return_t IOObjectRelease(io_object_t object)
{
    const std::lock_guard guard(lock);
    const auto entry = world->objects.find(object);
    if (entry == world->objects.end()) {
        world->calls.emplace_back("IOObjectRelease of nothing");
        return KERN_INVALID_NAME;
    }
    const bool isIterator = entry->second.isIterator;
    world->calls.emplace_back(isIterator ? "IOObjectRelease iterator" : "IOObjectRelease service");
    const kern_return_t status
        = isIterator ? world->iteratorReleaseStatus : world->serviceReleaseStatus;
    if (status != KERN_SUCCESS) {
        return status;
    }
    if (isIterator) {
        auto &all = world->notifications;
        for (auto notification = all.begin(); notification != all.end(); ++notification) {
            if (notification->iterator == object) {
                all.erase(notification);
                break;
            }
        }
    }
    dropReference(object);
    return KERN_SUCCESS;
}
