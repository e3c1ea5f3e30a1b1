// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/device/UsbTaken_linux.h"

#include "device/UsbMonitor.h"
#include "device/UsbMonitor_linux.h"
#include "tests/device/Patience.h"

#include <QtTest>

#include <dlfcn.h>
#include <libudev.h>

#include <atomic>
#include <chrono>

UsbTaken taken;

namespace {

std::atomic<bool> actionsAreHidden = false;
std::atomic<int> hiddenAsked = 0;

using TextOf = const char *(*)(udev_device *);

TextOf original(const char *name)
{
    return reinterpret_cast<TextOf>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

// Replaces udev's function: the code under test calls it for each device that it takes.
const char *udev_device_get_devnode(udev_device *device)
{
    static const TextOf function = original("udev_device_get_devnode");
    taken.add(QString(udev_device_get_devpath(device)));
    return function(device);
}

const char *udev_device_get_action(udev_device *device)
{
    static const TextOf function = original("udev_device_get_action");
    if (actionsAreHidden) {
        ++hiddenAsked;
        return nullptr;
    }
    return function(device);
}
}

void UsbTaken::add(const QString &path)
{
    const std::lock_guard lock(m_mutex);
    m_paths.append(path);
}

QStringList UsbTaken::paths() const
{
    const std::lock_guard lock(m_mutex);
    return m_paths;
}

void UsbTaken::clear()
{
    const std::lock_guard lock(m_mutex);
    m_paths.clear();
}

void hideActions(bool hidden)
{
    hiddenAsked = 0;
    actionsAreHidden = hidden;
}

int hiddenActionsAsked()
{
    return hiddenAsked;
}

bool hasEnded(const std::future<int> &result)
{
    return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

UsbMonitorThread::UsbMonitorThread(Testbed &testbed)
{
    taken.clear();
    testbed.addUsbDevice({1, 1, "Probe", ""});
    std::promise<pthread_t> handle;
    m_result = std::async(std::launch::async, [&handle] {
        handle.set_value(pthread_self());
        return init_plug();
    });
    m_handle = handle.get_future().get();
    // Once the watch takes this attached device, it notices all later events.
    AWAIT_COMPARE(taken.paths().size(), 1);
    taken.clear();
}

UsbMonitorThread::~UsbMonitorThread()
{
    if (m_result.valid() && !hasEnded()) {
        stop();
    }
}

int UsbMonitorThread::stop()
{
    stop_plug();
    return m_result.get();
}
