// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidPlugHook_p.h"
#include "device/HidSysfs_linux_p.h"
#include "device/Udev_linux_p.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>

#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace {

constexpr char kSubsystem[] = "hidraw";

std::vector<std::uint8_t> readReportDescriptor(udev_device *hid)
{
    constexpr std::size_t kMaxSize = 4096; // the kernel accepts no larger one
    std::ifstream file(orEmpty(udev_device_get_syspath(hid)) + "/report_descriptor",
                       std::ios::binary);
    std::array<char, kMaxSize> content = {};
    file.read(content.data(), content.size());
    return {content.begin(), content.begin() + file.gcount()};
}

std::string readName(udev_device *hid, const std::string &id)
{
    // Only for a USB device: the USB parent of a Bluetooth keyboard is its adapter.
    const bool isUsb = id.rfind("0003:", 0) == 0;
    udev_device *const usb
        = isUsb ? udev_device_get_parent_with_subsystem_devtype(hid, "usb", "usb_device") : nullptr;
    const char *const product
        = usb != nullptr ? udev_device_get_sysattr_value(usb, "product") : nullptr;
    return orEmpty(product != nullptr ? product : udev_device_get_property_value(hid, "HID_NAME"));
}

HidProperties readProperties(udev_device *hidraw)
{
    // A parent is owned by its child and must not be released.
    udev_device *const hid = udev_device_get_parent_with_subsystem_devtype(hidraw, "hid", nullptr);
    if (hid == nullptr) {
        return {};
    }
    const std::string id = orEmpty(udev_device_get_property_value(hid, "HID_ID"));
    const HidSysfs sysfs = {id, readName(hid, id), readReportDescriptor(hid)};
    return sysfs.properties();
}

class UdevHidPlugWatch final : public HidPlugWatch
{
public:
    UdevHidPlugWatch();
    ~UdevHidPlugWatch() override;

    void wake() override;

private:
    void listen();
    void receive();
    void queueArrival(udev_device *device);
    void queueRemoval(udev_device *device);

    const Udev m_udev;
    const UdevMonitor m_monitor;
    // At removal, the device's properties are no longer available.
    std::map<std::string, HidProperties> m_attached;
    // The application's child: DeviceComm outlives it and must find it gone by then.
    QPointer<QSocketNotifier> m_notifier;
};

UdevHidPlugWatch::UdevHidPlugWatch()
    : m_udev(udev_new())
    , m_monitor(listenToUdev(m_udev.get(), kSubsystem, nullptr))
{
    if (m_monitor == nullptr) {
        return;
    }
    listen();
    // After the monitor is enabled, so that no device is missed in between.
    takeAttached(m_udev.get(), kSubsystem, nullptr,
                 [this](const UdevDevice &device) { queueArrival(device.get()); });
    wake();
}

UdevHidPlugWatch::~UdevHidPlugWatch()
{
    delete m_notifier; // null when the application has gone
}

void UdevHidPlugWatch::wake()
{
    if (m_notifier != nullptr) {
        QMetaObject::invokeMethod(m_notifier, &deliverHidPlugs, Qt::QueuedConnection);
    }
}

void UdevHidPlugWatch::listen()
{
    if (QCoreApplication::instance() == nullptr) {
        return;
    }
    m_notifier = new QSocketNotifier(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read,
                                     QCoreApplication::instance());
    QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, [this] { receive(); });
}

void UdevHidPlugWatch::receive()
{
    while (const UdevDevice device = UdevDevice(udev_monitor_receive_device(m_monitor.get()))) {
        const std::string action = orEmpty(udev_device_get_action(device.get()));
        if (action == "add") {
            queueArrival(device.get());
        } else if (action == "remove") {
            queueRemoval(device.get());
        }
    }
    deliverHidPlugs();
}

void UdevHidPlugWatch::queueArrival(udev_device *device)
{
    const std::string path = udev_device_get_syspath(device);
    if (m_attached.count(path) != 0) {
        return; // announced while it was enumerated
    }
    const HidProperties properties = readProperties(device);
    m_attached.emplace(path, properties);
    queueHidPlug(true, properties);
}

void UdevHidPlugWatch::queueRemoval(udev_device *device)
{
    const auto known = m_attached.find(udev_device_get_syspath(device));
    if (known == m_attached.end()) {
        return;
    }
    queueHidPlug(false, known->second);
    m_attached.erase(known);
}

} // namespace

std::unique_ptr<HidPlugWatch> HidPlugWatch::create()
{
    return std::make_unique<UdevHidPlugWatch>();
}
