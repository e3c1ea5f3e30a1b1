// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/HidManagerDouble.h"

#include "tests/doubles/CoreFoundationDouble.h"

#include <IOKit/hid/IOHIDManager.h>

#include <deque>

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
    DoubleOwned<CFRunLoopSource> source = nullptr;
};

namespace {

struct Event
{
    bool arrived;
    DoubleOwned<IOHIDDevice> device;
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

void announce(bool arrived, IOHIDDevice *device)
{
    if (world->scheduled == nullptr) {
        return;
    }
    world->events.push_back({arrived, retained(device)});
    CFRunLoopSourceSignal(world->scheduled->source.get());
    CFRunLoopWakeUp(nullptr);
}

void deliver()
{
    while (world->scheduled != nullptr && !world->events.empty()) {
        const Event event = std::move(world->events.front());
        world->events.pop_front();
        IOHIDManager *const manager = world->scheduled;
        const IOHIDDeviceCallback callback = event.arrived ? manager->matched : manager->removed;
        if (callback == nullptr) {
            continue;
        }
        world->calls.emplace_back(event.arrived ? "matching handler" : "removal handler");
        callback(event.arrived ? manager->matchedContext : manager->removedContext, 0, manager,
                 event.device.get());
    }
}

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

int HidManagerDouble::attach(const Properties &properties)
{
    DoubleOwned<IOHIDDevice> device(std::make_unique<IOHIDDevice>().release());
    for (const auto &[key, value] : properties) {
        std::unique_ptr<CFObject> object;
        if (const auto *const number = std::get_if<std::int64_t>(&value)) {
            object = std::make_unique<CFNumber>(*number);
        } else {
            object = std::make_unique<CFString>(std::get<std::u16string>(value));
        }
        device->properties[key].reset(object.release());
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

void IOHIDManagerSetDeviceMatching(IOHIDManagerRef /*manager*/, CFDictionaryRef matching)
{
    world->calls.emplace_back(matching == nullptr ? "match all" : "match some");
}

void IOHIDManagerRegisterDeviceMatchingCallback(IOHIDManagerRef manager,
                                                IOHIDDeviceCallback callback, void *context)
{
    world->calls.push_back("register matching" + contextName(context));
    manager->matched = callback;
    manager->matchedContext = context;
}

void IOHIDManagerRegisterDeviceRemovalCallback(IOHIDManagerRef manager,
                                               IOHIDDeviceCallback callback, void *context)
{
    world->calls.push_back("register removal" + contextName(context));
    manager->removed = callback;
    manager->removedContext = context;
}

void IOHIDManagerScheduleWithRunLoop(IOHIDManagerRef manager, CFRunLoopRef runLoop,
                                     CFStringRef mode)
{
    world->calls.push_back("schedule " + modeName(mode));
    manager->source.reset(std::make_unique<CFRunLoopSource>(deliver).release());
    CFRunLoopAddSource(runLoop, manager->source.get(), mode);
    world->scheduled = manager;
    for (const auto &[number, device] : world->devices) {
        announce(true, device.get());
    }
}

void IOHIDManagerUnscheduleFromRunLoop(IOHIDManagerRef manager, CFRunLoopRef /*runLoop*/,
                                       CFStringRef mode)
{
    world->calls.push_back("unschedule " + modeName(mode));
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
