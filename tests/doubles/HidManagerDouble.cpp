// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/HidManagerDouble.h"

#include "tests/doubles/CoreFoundationDouble.h"

#include <IOKit/hid/IOHIDManager.h>

#include <deque>
#include <utility>

struct IOHIDDevice final : CFObject
{
    std::map<std::string, DoubleOwned<CFObject>> properties;
};

struct IOHIDManager final : CFObject
{
    ~IOHIDManager() override;

    IOHIDDeviceCallback matched = nullptr;
    IOHIDDeviceCallback removed = nullptr;
    void *matchedContext = nullptr;
    void *removedContext = nullptr;
    bool matchesAll = false;
    int callbacks = 0; ///< Calls of the two that have not returned.
    bool isLocked = false;
    CFRunLoopRef runLoop = nullptr;
    CFRunLoopMode mode = nullptr;
    DoubleOwned<CFRunLoopSource> source = nullptr; ///< Null while it is not scheduled.
};

namespace {

using Devices = std::vector<DoubleOwned<IOHIDDevice>>;

struct Event
{
    bool arrived;
    bool isEnumeration; ///< Of the devices that were attached before.
    Devices devices;
};

struct World
{
    std::map<int, DoubleOwned<IOHIDDevice>> devices;
    std::deque<Event> events;
    std::vector<std::string> calls;
    std::vector<std::string> reads;
    IOHIDManager *scheduled = nullptr;
    bool failing = false;
    int lastNumber = 0;
};

std::unique_ptr<World> world = std::make_unique<World>();

DoubleOwned<IOHIDDevice> retained(IOHIDDevice *device)
{
    return DoubleOwned<IOHIDDevice>(
        device != nullptr ? static_cast<IOHIDDevice *>(const_cast<void *>(CFRetain(device)))
                          : nullptr);
}

/// The manager, unless the platform would crash or deadlock with it.
IOHIDManager &usable(IOHIDManagerRef manager)
{
    if (manager == nullptr) {
        doubleFail("no manager");
    }
    if (manager->isLocked) {
        doubleFail("a manager is used while it holds its lock");
    }
    return *manager;
}

void post(Event event)
{
    world->events.push_back(std::move(event));
    doublePost(world->scheduled->source.get());
}

void announce(bool arrived, IOHIDDevice *device)
{
    if (world->scheduled == nullptr || !world->scheduled->matchesAll) {
        return;
    }
    Devices devices;
    devices.push_back(retained(device));
    post({arrived, false, std::move(devices)});
}

/// The set has no order: the last one attached comes first.
void announceAttached()
{
    Devices devices;
    for (auto entry = world->devices.rbegin(); entry != world->devices.rend(); ++entry) {
        devices.push_back(retained(entry->second.get()));
    }
    post({true, true, std::move(devices)});
}

void call(IOHIDManager &manager, bool arrived, IOHIDDevice *device)
{
    const IOHIDDeviceCallback callback = arrived ? manager.matched : manager.removed;
    if (callback == nullptr) {
        return;
    }
    world->calls.emplace_back(arrived ? "matching handler" : "removal handler");
    ++manager.callbacks;
    callback(arrived ? manager.matchedContext : manager.removedContext, 0, &manager, device);
    --manager.callbacks;
}

void deliver()
{
    while (world->scheduled != nullptr && !world->events.empty()) {
        const Event event = std::move(world->events.front());
        world->events.pop_front();
        IOHIDManager &manager = *world->scheduled;
        const bool wasLocked
            = std::exchange(manager.isLocked, manager.isLocked || event.isEnumeration);
        for (const auto &device : event.devices) {
            call(manager, event.arrived, device.get());
        }
        manager.isLocked = wasLocked;
    }
}

struct MakeObject
{
    using Object = std::unique_ptr<CFObject>;

    Object operator()(std::int64_t number) const { return std::make_unique<CFNumber>(number); }
    Object operator()(const std::u16string &text) const { return std::make_unique<CFString>(text); }
    Object operator()(HidManagerDouble::Other type) const
    {
        switch (type) {
        case HidManagerDouble::Other::ArrayType:
            return std::make_unique<CFArray>();
        case HidManagerDouble::Other::BooleanType:
            return std::make_unique<CFBoolean>();
        case HidManagerDouble::Other::DataType:
            return std::make_unique<CFData>();
        }
        doubleFail("a type that is not known");
    }
};

std::string contextName(const void *context)
{
    return context == nullptr ? " null" : " something";
}

std::string modeName(CFStringRef mode)
{
    return {mode->text.begin(), mode->text.end()};
}

} // namespace

IOHIDManager::~IOHIDManager()
{
    if (source != nullptr || callbacks > 0) {
        doubleFail("a manager is released while the system uses it");
    }
    if (world != nullptr) {
        world->calls.emplace_back("manager is gone");
    }
}

HidManagerDouble::HidManagerDouble()
{
    world = std::make_unique<World>();
}

HidManagerDouble::~HidManagerDouble()
{
    world.reset();
}

int HidManagerDouble::attach(const Properties &properties, const Properties &parent)
{
    DoubleOwned<IOHIDDevice> device(std::make_unique<IOHIDDevice>().release());
    Properties all = properties;
    all.insert(parent.begin(), parent.end());
    for (const auto &[key, value] : all) {
        device->properties[key].reset(std::visit(MakeObject(), value).release());
    }
    const int number = ++world->lastNumber;
    announce(true, device.get());
    world->devices[number] = std::move(device);
    return number;
}

void HidManagerDouble::detach(int device)
{
    announce(false, world->devices.at(device).get());
    world->devices.erase(device);
}

void HidManagerDouble::notifyOfNothing()
{
    announce(true, nullptr);
    announce(false, nullptr);
}

void HidManagerDouble::failToCreate()
{
    world->failing = true;
}

void HidManagerDouble::record(const std::string &call)
{
    if (world != nullptr) {
        world->calls.push_back(call);
    }
}

std::vector<std::string> HidManagerDouble::calls()
{
    return world->calls;
}

std::vector<std::string> HidManagerDouble::reads()
{
    return world->reads;
}

IOHIDManagerRef IOHIDManagerCreate(CFAllocatorRef /*allocator*/, IOOptionBits options)
{
    world->calls.push_back("create " + std::to_string(options));
    return world->failing ? nullptr : std::make_unique<IOHIDManager>().release();
}

void IOHIDManagerSetDeviceMatching(IOHIDManagerRef manager, CFDictionaryRef matching)
{
    world->calls.emplace_back(matching == nullptr ? "match all" : "match some");
    usable(manager).matchesAll = matching == nullptr;
    if (manager->source != nullptr) {
        announceAttached();
    }
}

void IOHIDManagerRegisterDeviceMatchingCallback(IOHIDManagerRef manager,
                                                IOHIDDeviceCallback callback, void *context)
{
    world->calls.push_back("register matching" + contextName(context));
    usable(manager).matched = callback;
    manager->matchedContext = context;
}

void IOHIDManagerRegisterDeviceRemovalCallback(IOHIDManagerRef manager,
                                               IOHIDDeviceCallback callback, void *context)
{
    world->calls.push_back("register removal" + contextName(context));
    usable(manager).removed = callback;
    manager->removedContext = context;
}

void IOHIDManagerScheduleWithRunLoop(IOHIDManagerRef manager, CFRunLoopRef runLoop,
                                     CFStringRef mode)
{
    world->calls.push_back("schedule " + modeName(mode));
    if (usable(manager).source != nullptr || runLoop == nullptr) {
        doubleFail("a manager is scheduled twice or nowhere");
    }
    manager->source.reset(std::make_unique<CFRunLoopSource>(deliver).release());
    manager->runLoop = runLoop;
    manager->mode = mode;
    CFRunLoopAddSource(runLoop, manager->source.get(), mode);
    world->scheduled = manager;
    if (manager->matchesAll) {
        announceAttached();
    }
}

void IOHIDManagerUnscheduleFromRunLoop(IOHIDManagerRef manager, CFRunLoopRef runLoop,
                                       CFStringRef mode)
{
    world->calls.push_back("unschedule " + modeName(mode));
    if (usable(manager).callbacks > 0) {
        doubleFail("a manager is unscheduled by its own callback");
    }
    if (runLoop != manager->runLoop || mode != manager->mode) {
        return; // it stays where it is
    }
    CFRunLoopSourceInvalidate(manager->source.get());
    manager->source.reset();
    world->scheduled = nullptr;
    world->events.clear();
}

CFTypeRef IOHIDDeviceGetProperty(IOHIDDeviceRef device, CFStringRef key)
{
    world->reads.emplace_back(key->text.begin(), key->text.end());
    const auto property = device->properties.find(world->reads.back());
    return property != device->properties.end() ? property->second.get() : nullptr;
}
