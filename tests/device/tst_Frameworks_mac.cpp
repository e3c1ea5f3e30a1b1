// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "device/UsbMonitor.h"
#include "tests/device/PlugRecorder.h"

#include <CoreFoundation/CoreFoundation.h>

#include <QtTest>

#include <chrono>
#include <future>

/// The device layer with the frameworks that it is linked with: those of the system on a Mac.
class tst_Frameworks_mac : public QObject
{
    Q_OBJECT

private slots:
    void otherIdsMatchNoDevice();
    void usbWatchEndsWithItsRunLoop();
};

void tst_Frameworks_mac::otherIdsMatchNoDevice()
{
    const PlugRecorder recorder;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    while (CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, 1) == kCFRunLoopRunHandledSource) { }
    QVERIFY(!deviceComm.startUpdate(0x17F3C, 0x10C51));
    for (const Plug &plug : recorder.plugs) {
        QCOMPARE(plug.arrived, 1);
    }
}

void tst_Frameworks_mac::usbWatchEndsWithItsRunLoop()
{
    std::promise<CFRunLoopRef> promise;
    std::future<int> result = std::async(std::launch::async, [&promise] {
        promise.set_value(CFRunLoopGetCurrent());
        return init_plug();
    });
    const CFRunLoopRef runLoop = promise.get_future().get();
    // Stopping a run loop that does not run yet has no effect.
    const auto hasStopped = [&] {
        CFRunLoopStop(runLoop);
        return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    QTRY_VERIFY(hasStopped());
    QCOMPARE(result.get(), 0);
}

QTEST_GUILESS_MAIN(tst_Frameworks_mac)
#include "tst_Frameworks_mac.moc"
