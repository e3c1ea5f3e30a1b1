// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/UsbDouble.h"

#include "tests/doubles/UsbDouble_p.h"

#include <algorithm>
#include <utility>

std::mutex usbLock;
std::unique_ptr<UsbWorld> usbWorld = std::make_unique<UsbWorld>();

io_object_t UsbWorld::makeObject(bool isIterator)
{
    objects[++lastName].isIterator = isIterator;
    return lastName;
}

void UsbWorld::dropReference(io_object_t name)
{
    UsbObject &object = objects.at(name);
    if (--object.references == 0) {
        const std::vector<io_service_t> services = std::move(object.services);
        objects.erase(name);
        for (const io_service_t service : services) {
            dropReference(service);
        }
    }
}

void UsbWorld::putInto(io_iterator_t iterator, io_service_t service)
{
    ++objects.at(service).references;
    objects.at(iterator).services.push_back(service);
}

void UsbWorld::notify(const std::string &type, io_service_t service)
{
    for (UsbNotification &notification : notifications) {
        if (notification.type != type) {
            continue;
        }
        putInto(notification.iterator, service);
        if (std::exchange(objects.at(notification.iterator).armed, false)) {
            notification.pending = true;
            doublePost(notification.port->source.get());
        }
    }
}

UsbDouble::UsbDouble()
{
    usbWorld = std::make_unique<UsbWorld>();
}

UsbDouble::~UsbDouble()
{
    removeSources(); // the run loop would keep them longer than their port exists
    usbWorld.reset();
}

io_service_t UsbDouble::attach()
{
    const std::lock_guard guard(usbLock);
    const io_service_t service = usbWorld->makeObject(false);
    usbWorld->attached.push_back(service);
    usbWorld->notify(kIOFirstMatchNotification, service);
    return service;
}

void UsbDouble::detach(io_service_t service)
{
    const std::lock_guard guard(usbLock);
    auto &attached = usbWorld->attached;
    for (auto entry = attached.begin(); entry != attached.end(); ++entry) {
        if (*entry == service) {
            attached.erase(entry);
            break;
        }
    }
    usbWorld->notify(kIOTerminatedNotification, service);
    usbWorld->dropReference(service);
}

io_iterator_t UsbDouble::makeIterator(const std::vector<io_service_t> &services)
{
    const std::lock_guard guard(usbLock);
    const io_iterator_t iterator = usbWorld->makeObject(true);
    for (const io_service_t service : services) {
        usbWorld->putInto(iterator, service);
    }
    return iterator;
}

int UsbDouble::references(io_object_t object)
{
    const std::lock_guard guard(usbLock);
    const auto entry = usbWorld->objects.find(object);
    return entry != usbWorld->objects.end() ? entry->second.references : 0;
}

std::size_t UsbDouble::devicesIn(io_iterator_t iterator)
{
    const std::lock_guard guard(usbLock);
    return usbWorld->objects.at(iterator).services.size();
}

IOServiceMatchingCallback UsbDouble::handlerOf(const char *notificationType)
{
    const std::lock_guard guard(usbLock);
    const auto &all = usbWorld->notifications;
    const auto entry
        = std::find_if(all.begin(), all.end(), [notificationType](const UsbNotification &one) {
              return one.type == notificationType;
          });
    return entry != all.end() ? entry->callback : nullptr;
}

int UsbDouble::portCount()
{
    const std::lock_guard guard(usbLock);
    return static_cast<int>(usbWorld->ports.size());
}

int UsbDouble::plugInCount()
{
    const std::lock_guard guard(usbLock);
    return static_cast<int>(usbWorld->plugIns.size());
}

std::vector<std::string> UsbDouble::calls()
{
    const std::lock_guard guard(usbLock);
    return usbWorld->calls;
}

void UsbDouble::failRegistration(const char *notificationType, kern_return_t status)
{
    const std::lock_guard guard(usbLock);
    usbWorld->failingRegistrations[notificationType] = status;
}

void UsbDouble::failPlugIn(kern_return_t status)
{
    const std::lock_guard guard(usbLock);
    usbWorld->plugInStatus = status;
}

void UsbDouble::failReleaseOfServices(kern_return_t status)
{
    const std::lock_guard guard(usbLock);
    usbWorld->serviceReleaseStatus = status;
}

void UsbDouble::failReleaseOfIterator(const char *notificationType, kern_return_t status)
{
    const std::lock_guard guard(usbLock);
    usbWorld->failingIteratorReleases[notificationType] = status;
}

void UsbDouble::removeSources()
{
    const std::lock_guard guard(usbLock);
    for (const auto &port : usbWorld->ports) {
        CFRunLoopSourceInvalidate(port->source.get());
    }
}
