// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/HidapiDouble.h"

#include "tests/doubles/CoreFoundationDouble.h"
#include "tests/doubles/HidManagerDouble.h"

#include <CoreFoundation/CoreFoundation.h>
#include <hidapi.h>

#include <algorithm>
#include <array>
#include <memory>

struct hid_device_ // NOLINT(bugprone-reserved-identifier): the library's own name
{
    std::string path;
};

namespace {

std::vector<HidapiDouble::Interface> interfaces;
std::vector<hid_device_info> listed; // refers to the interfaces' paths
std::function<void()> timer = [] {
};
int initialised = 0;

std::string hexadecimal(const unsigned char *data, std::size_t length)
{
    constexpr std::array<char, 17> kDigits = {"0123456789abcdef"};
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text += kDigits[data[i] >> 4U];
        text += kDigits[data[i] & 0xFU];
    }
    return text;
}

/// Goes on until no source is left or nothing happens in time.
void turnRunLoop()
{
    const DoubleOwned<CFRunLoopSource> source(std::make_unique<CFRunLoopSource>(timer).release());
    CFRunLoopAddSource(CFRunLoopGetCurrent(), source.get(), kCFRunLoopDefaultMode);
    doublePost(source.get());
    CFRunLoopRunResult result = 0;
    do {
        // Returns after each source: on a busy machine, the time may be over before the next one.
        result = CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.001, 1);
    } while (result != kCFRunLoopRunFinished && result != kCFRunLoopRunTimedOut);
    CFRunLoopSourceInvalidate(source.get());
}

} // namespace

void HidapiDouble::setInterfaces(const std::vector<Interface> &newOnes)
{
    interfaces = newOnes;
}

void HidapiDouble::setTimer(const std::function<void()> &newOne)
{
    timer = newOne;
}

void HidapiDouble::failToInitialise()
{
    initialised = -1;
}

int hid_init()
{
    HidManagerDouble::record("hid_init");
    return initialised;
}

int hid_exit()
{
    HidManagerDouble::record("hid_exit");
    return 0;
}

hid_device_info *hid_enumerate(unsigned short vendorId, unsigned short productId)
{
    HidManagerDouble::record("enumerate " + std::to_string(vendorId) + ' '
                             + std::to_string(productId));
    turnRunLoop();
    listed.clear();
    for (HidapiDouble::Interface &interface : interfaces) {
        hid_device_info info = {};
        info.path = interface.path.data();
        info.vendor_id = interface.vendorId;
        info.product_id = interface.productId;
        info.usage_page = interface.usagePage;
        info.usage = interface.usage;
        listed.push_back(info);
    }
    for (std::size_t i = 1; i < listed.size(); ++i) {
        listed[i - 1].next = &listed[i];
    }
    return listed.empty() ? nullptr : listed.data();
}

void hid_free_enumeration(hid_device_info *devices)
{
    const bool isWhole = !listed.empty() && devices == listed.data();
    HidManagerDouble::record(devices == nullptr ? "free null"
                                 : isWhole      ? "free list"
                                                : "free something");
    listed.clear();
}

hid_device *hid_open_path(const char *path)
{
    HidManagerDouble::record(std::string("open ") + path);
    const auto found
        = std::find_if(interfaces.begin(), interfaces.end(),
                       [path](const HidapiDouble::Interface &one) { return one.path == path; });
    const bool opens = found != interfaces.end() && found->opens;
    return opens ? std::make_unique<hid_device>(hid_device{path}).release() : nullptr;
}

int hid_write(hid_device *device, const unsigned char *data, size_t length)
{
    HidManagerDouble::record("write " + device->path + ' ' + std::to_string(length) + ' '
                             + hexadecimal(data, length));
    return static_cast<int>(length);
}

void hid_close(hid_device *device)
{
    const std::unique_ptr<hid_device> closed(device);
    HidManagerDouble::record("close " + closed->path);
}
