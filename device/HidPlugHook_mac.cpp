// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidPlugHook_p.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/hid/IOHIDKeys.h>
#include <IOKit/hid/IOHIDManager.h>

#include <memory>
#include <type_traits>

namespace {

struct Release
{
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

template <typename Ref> using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

int readNumber(IOHIDDeviceRef device, CFStringRef key)
{
    const CFTypeRef property = IOHIDDeviceGetProperty(device, key);
    if (property == nullptr || CFGetTypeID(property) != CFNumberGetTypeID()) {
        return 0;
    }
    SInt32 value = 0;
    // The result is ignored: a number that does not fit is truncated.
    CFNumberGetValue(static_cast<CFNumberRef>(property), kCFNumberSInt32Type, &value);
    return value;
}

int readUsage(IOHIDDeviceRef device, CFStringRef key, CFStringRef fallbackKey)
{
    const int usage = readNumber(device, key);
    return usage != 0 ? usage : readNumber(device, fallbackKey);
}

HidProductName readProductName(IOHIDDeviceRef device)
{
    HidProductName name = {};
    // The type is not checked: the platform documents the product name as a string.
    const auto product
        = static_cast<CFStringRef>(IOHIDDeviceGetProperty(device, CFSTR(kIOHIDProductKey)));
    if (product == nullptr) {
        return name;
    }
    const auto units = hidNameUnits(static_cast<std::size_t>(CFStringGetLength(product)));
    CFIndex used = 0;
    CFStringGetBytes(product, CFRangeMake(0, static_cast<CFIndex>(units)), kCFStringEncodingUTF32LE,
                     '?', 0, reinterpret_cast<UInt8 *>(name.data()),
                     static_cast<CFIndex>(kHidNameLength * sizeof(wchar_t)), &used);
    name[static_cast<std::size_t>(used) / sizeof(wchar_t)] = L'\0';
    return name;
}

void report(bool arrived, IOHIDDeviceRef device)
{
    if (device == nullptr) {
        return;
    }
    HidProperties properties;
    properties.vendorId = readNumber(device, CFSTR(kIOHIDVendorIDKey));
    properties.productId = readNumber(device, CFSTR(kIOHIDProductIDKey));
    properties.usage = readUsage(device, CFSTR(kIOHIDDeviceUsageKey), CFSTR(kIOHIDPrimaryUsageKey));
    properties.usagePage
        = readUsage(device, CFSTR(kIOHIDDeviceUsagePageKey), CFSTR(kIOHIDPrimaryUsagePageKey));
    properties.productName = readProductName(device);
    queueHidPlug(arrived, properties);
    deliverHidPlugs();
}

void deviceMatched(void * /*context*/, IOReturn /*result*/, void * /*sender*/,
                   IOHIDDeviceRef device)
{
    report(true, device);
}

void deviceRemoved(void * /*context*/, IOReturn /*result*/, void * /*sender*/,
                   IOHIDDeviceRef device)
{
    report(false, device);
}

void catchUp(void * /*context*/)
{
    deliverHidPlugs();
}

Owned<CFRunLoopSourceRef> makeCatchUpSource()
{
    CFRunLoopSourceContext context = {};
    context.perform = catchUp;
    return Owned<CFRunLoopSourceRef>(CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &context));
}

class IOKitHidPlugWatch final : public HidPlugWatch
{
public:
    IOKitHidPlugWatch();
    ~IOKitHidPlugWatch() override;

    void wake() override;

private:
    const CFRunLoopRef m_runLoop; // the thread's own; the system owns it
    const Owned<CFRunLoopSourceRef> m_catchUp;
    // Never opened: notifications do not need it, and macOS would ask the user whether the program
    // may monitor the keyboard.
    const Owned<IOHIDManagerRef> m_manager;
};

IOKitHidPlugWatch::IOKitHidPlugWatch()
    : m_runLoop(CFRunLoopGetCurrent())
    , m_catchUp(makeCatchUpSource())
    , m_manager(IOHIDManagerCreate(kCFAllocatorDefault, kIOHIDOptionsTypeNone))
{
    CFRunLoopAddSource(m_runLoop, m_catchUp.get(), kCFRunLoopDefaultMode);
    if (m_manager == nullptr) {
        return;
    }
    IOHIDManagerSetDeviceMatching(m_manager.get(), nullptr);
    // The callbacks come first, because scheduling already announces the attached devices.
    IOHIDManagerRegisterDeviceMatchingCallback(m_manager.get(), deviceMatched, nullptr);
    IOHIDManagerRegisterDeviceRemovalCallback(m_manager.get(), deviceRemoved, nullptr);
    IOHIDManagerScheduleWithRunLoop(m_manager.get(), m_runLoop, kCFRunLoopDefaultMode);
}

IOKitHidPlugWatch::~IOKitHidPlugWatch()
{
    if (m_manager != nullptr) {
        IOHIDManagerUnscheduleFromRunLoop(m_manager.get(), m_runLoop, kCFRunLoopDefaultMode);
    }
    CFRunLoopSourceInvalidate(m_catchUp.get());
}

void IOKitHidPlugWatch::wake()
{
    CFRunLoopSourceSignal(m_catchUp.get());
    CFRunLoopWakeUp(m_runLoop);
}

} // namespace

std::unique_ptr<HidPlugWatch> HidPlugWatch::create()
{
    return std::make_unique<IOKitHidPlugWatch>();
}
