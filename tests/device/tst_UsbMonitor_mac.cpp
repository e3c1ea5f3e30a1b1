// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor.h"
#include "device/UsbMonitor_mac.h"
#include "tests/device/Patience.h"
#include "tests/device/StdoutCapture.h"
#include "tests/device/UsbCalls_mac.h"
#include "tests/doubles/CoreFoundationDouble.h"

#include <QtTest>

#include <future>

namespace {

const Calls kFirstRegistration
    = {"IONotificationPortCreate 0", "IONotificationPortGetRunLoopSource",
       "IOServiceMatching IOUSBDevice",
       "IOServiceAddMatchingNotification IOServiceFirstMatch IOUSBDevice null"};
const Calls kSecondRegistration
    = {"IOServiceMatching IOUSBDevice",
       "IOServiceAddMatchingNotification IOServiceTerminate IOUSBDevice null"};
const Calls kEnd = {"IOObjectRelease iterator of IOServiceFirstMatch",
                    "IOObjectRelease iterator of IOServiceTerminate"};
const Calls kArrival = {"handler of IOServiceFirstMatch"};

Calls operator+(Calls first, const Calls &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// Runs init_plug() in a separate thread. The constructor waits until its run loop is waiting.
class Monitor
{
public:
    Monitor()
    {
        std::promise<CFRunLoopRef> runLoop;
        m_result = std::async(std::launch::async, [&runLoop] {
            runLoop.set_value(CFRunLoopGetCurrent());
            return init_plug();
        });
        m_runLoop = runLoop.get_future().get();
        waitUntilIdle();
    }

    ~Monitor()
    {
        if (m_result.valid()) {
            stop();
        }
    }

    Monitor(const Monitor &) = delete;
    Monitor &operator=(const Monitor &) = delete;

    void waitUntilIdle() const { AWAIT_VERIFY(doubleIsWaiting(m_runLoop)); }

    int stop()
    {
        CFRunLoopStop(m_runLoop);
        return m_result.get();
    }

    /// Ends it by removing all sources from its run loop.
    int starve()
    {
        UsbDouble::removeSources();
        CFRunLoopWakeUp(m_runLoop);
        return m_result.get();
    }

private:
    CFRunLoopRef m_runLoop = nullptr;
    std::future<int> m_result;
};

} // namespace

class tst_UsbMonitor_mac : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Patience::loseAfterFailure(); }
    void watchFromStartToEnd_data();
    void watchFromStartToEnd();
    void handlersAreRegistered();
    void resultIsThatOfTheSecondRelease_data();
    void resultIsThatOfTheSecondRelease();
    void oneAttachedDeviceIsTaken_data();
    void oneAttachedDeviceIsTaken();
    void arrivalIsNotifiedOnce();
    void removalIsNeverNotified();
    void registrationFails_data();
    void registrationFails();
    void fiftyStartsAndStops();
};

void tst_UsbMonitor_mac::watchFromStartToEnd_data()
{
    QTest::addColumn<bool>("stopped");
    QTest::newRow("run loop is stopped") << true;
    QTest::newRow("run loop has no source left") << false;
}

void tst_UsbMonitor_mac::watchFromStartToEnd()
{
    QFETCH(const bool, stopped);
    const int objects = doubleObjectCount();
    {
        const UsbDouble usb;
        Monitor monitor;
        QCOMPARE(stopped ? monitor.stop() : monitor.starve(), 0);
        QCOMPARE(toText(UsbDouble::calls()),
                 toText(kFirstRegistration + kSecondRegistration + kNoneTaken + kEnd));
        // The port and its source remain.
        QCOMPARE(UsbDouble::portCount(), 1);
        QCOMPARE(doubleObjectCount(), objects + 1);
    }
    QCOMPARE(doubleObjectCount(), objects);
}

void tst_UsbMonitor_mac::handlersAreRegistered()
{
    const UsbDouble usb;
    const Monitor monitor;
    QVERIFY(UsbDouble::handlerOf(kIOFirstMatchNotification) == usbDeviceAdded);
    QVERIFY(UsbDouble::handlerOf(kIOTerminatedNotification) == usbDeviceRemoved);
}

void tst_UsbMonitor_mac::resultIsThatOfTheSecondRelease_data()
{
    QTest::addColumn<int>("added");
    QTest::addColumn<int>("removed");
    QTest::newRow("both fail") << 0xE << 0xF;
    QTest::newRow("first fails") << 0xE << 0;
    QTest::newRow("second fails") << 0 << 0xF;
}

void tst_UsbMonitor_mac::resultIsThatOfTheSecondRelease()
{
    QFETCH(const int, added);
    QFETCH(const int, removed);
    const UsbDouble usb;
    Monitor monitor;
    UsbDouble::failReleaseOfIterator(kIOFirstMatchNotification, added);
    UsbDouble::failReleaseOfIterator(kIOTerminatedNotification, removed);
    QCOMPARE(monitor.stop(), removed);
    QCOMPARE(toText(UsbDouble::calls()),
             toText(kFirstRegistration + kSecondRegistration + kNoneTaken + kEnd));
}

void tst_UsbMonitor_mac::oneAttachedDeviceIsTaken_data()
{
    QTest::addColumn<int>("attached");
    QTest::newRow("one") << 1;
    QTest::newRow("three") << 3;
}

void tst_UsbMonitor_mac::oneAttachedDeviceIsTaken()
{
    QFETCH(const int, attached);
    const UsbDouble usb;
    std::vector<io_service_t> services(static_cast<std::size_t>(attached));
    std::generate(services.begin(), services.end(), UsbDouble::attach);
    Monitor monitor;
    const Calls start = kFirstRegistration + kSecondRegistration + kOneTaken;
    QCOMPARE(toText(UsbDouble::calls()), toText(start));
    // The other devices are still in the iterator, which is therefore not armed.
    QCOMPARE(notTaken(services), qMax(0, attached - 1));

    UsbDouble::attach();
    monitor.waitUntilIdle();
    QCOMPARE(monitor.stop(), 0);
    QCOMPARE(toText(UsbDouble::calls()), toText(start + kEnd));
    for (const io_service_t service : services) {
        QCOMPARE(UsbDouble::references(service), 1);
    }
    QCOMPARE(UsbDouble::plugInCount(), 0);
}

void tst_UsbMonitor_mac::arrivalIsNotifiedOnce()
{
    const UsbDouble usb;
    Monitor monitor;
    const io_service_t first = UsbDouble::attach();
    const io_service_t second = UsbDouble::attach();
    const Calls expected
        = kFirstRegistration + kSecondRegistration + kNoneTaken + kArrival + kOneTaken;
    AWAIT_COMPARE(toText(UsbDouble::calls()), toText(expected));
    monitor.waitUntilIdle();
    QCOMPARE(notTaken({first, second}), 1);

    // The first handler left the iterator unarmed.
    UsbDouble::attach();
    monitor.waitUntilIdle();
    monitor.stop();
    QCOMPARE(toText(UsbDouble::calls()), toText(expected + kEnd));
    QCOMPARE(notTaken({first, second}), 0);
}

void tst_UsbMonitor_mac::removalIsNeverNotified()
{
    const UsbDouble usb;
    const io_service_t service = UsbDouble::attach();
    Monitor monitor;
    UsbDouble::detach(service);
    monitor.waitUntilIdle();
    monitor.stop();
    QCOMPARE(toText(UsbDouble::calls()),
             toText(kFirstRegistration + kSecondRegistration + kOneTaken + kEnd));
    QCOMPARE(UsbDouble::references(service), 0);
}

void tst_UsbMonitor_mac::registrationFails_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("second");
    QTest::newRow("arrivals") << QByteArray(kIOFirstMatchNotification)
                              << QByteArray("Unable to register device added notification: "
                                            "e00002bc\n")
                              << false;
    QTest::newRow("removals") << QByteArray(kIOTerminatedNotification)
                              << QByteArray("Unable to register device removed notification: "
                                            "e00002bc\n")
                              << true;
}

void tst_UsbMonitor_mac::registrationFails()
{
    QFETCH(const QByteArray, type);
    QFETCH(const QByteArray, text);
    QFETCH(const bool, second);
    const UsbDouble usb;
    const io_service_t attached = UsbDouble::attach();
    const int objects = doubleObjectCount();
    UsbDouble::failRegistration(type.constData(), static_cast<kern_return_t>(0xE00002BC));
    int result = 0;
    QCOMPARE(printedBy([&result] { result = init_plug(); }), text);
    QCOMPARE(result, text.size());
    QCOMPARE(toText(UsbDouble::calls()),
             toText(kFirstRegistration + (second ? kSecondRegistration : Calls())));
    // The port and the first iterator remain, but no dictionary.
    QCOMPARE(UsbDouble::portCount(), 1);
    QCOMPARE(doubleObjectCount(), objects + 1);
    QCOMPARE(UsbDouble::references(attached), second ? 2 : 1);
    QCOMPARE(doubleSourceCount(), 0);
}

void tst_UsbMonitor_mac::fiftyStartsAndStops()
{
    const UsbDouble usb;
    const io_service_t service = UsbDouble::attach();
    const int objects = doubleObjectCount();
    for (int round = 1; round <= 50; ++round) {
        Monitor monitor;
        QCOMPARE(monitor.stop(), 0);
        QCOMPARE(UsbDouble::portCount(), round);
        QCOMPARE(doubleObjectCount(), objects + round);
    }
    QCOMPARE(UsbDouble::references(service), 1);
    QCOMPARE(UsbDouble::plugInCount(), 0);
}

QTEST_APPLESS_MAIN(tst_UsbMonitor_mac)
#include "tst_UsbMonitor_mac.moc"
