// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor_mac.h"
#include "tests/device/StdoutCapture.h"
#include "tests/device/UsbCalls_mac.h"

#include <QtTest>

/// The handlers of the USB monitor, called with iterators of their own.
class tst_UsbMonitorHandlers_mac : public QObject
{
    Q_OBJECT

private slots:
    void handlersTakeOne_data();
    void handlersTakeOne();
    void interfaceIsTheCallers();
    void interfaceCannotBeMade();
    void serviceCannotBeReleased();
};

void tst_UsbMonitorHandlers_mac::handlersTakeOne_data()
{
    QTest::addColumn<bool>("arrival");
    QTest::addColumn<int>("devices");
    QTest::newRow("arrival of none") << true << 0;
    QTest::newRow("arrival of one") << true << 1;
    QTest::newRow("arrival of two") << true << 2;
    QTest::newRow("removal of none") << false << 0;
    QTest::newRow("removal of one") << false << 1;
    QTest::newRow("removal of two") << false << 2;
}

void tst_UsbMonitorHandlers_mac::handlersTakeOne()
{
    QFETCH(const bool, arrival);
    QFETCH(const int, devices);
    const UsbDouble usb;
    std::vector<io_service_t> services(static_cast<std::size_t>(devices));
    std::generate(services.begin(), services.end(), UsbDouble::attach);
    const io_iterator_t iterator = UsbDouble::makeIterator(services);
    (arrival ? usbDeviceAdded : usbDeviceRemoved)(this, iterator);
    QCOMPARE(toText(UsbDouble::calls()), toText(devices > 0 ? kOneTaken : kNoneTaken));
    QCOMPARE(static_cast<int>(UsbDouble::devicesIn(iterator)), std::max(devices - 1, 0));
    QCOMPARE(UsbDouble::plugInCount(), 0);
    QCOMPARE(notTaken(services), qMax(0, devices - 1));
}

void tst_UsbMonitorHandlers_mac::interfaceIsTheCallers()
{
    const UsbDouble usb;
    const io_service_t service = UsbDouble::attach();
    IOCFPlugInInterface **const plugIn = getUSBDeviceInterface(UsbDouble::makeIterator({service}));
    QVERIFY(plugIn != nullptr);
    QCOMPARE(toText(UsbDouble::calls()),
             toText({"IOIteratorNext", kPlugIn, "IOObjectRelease service"}));
    QCOMPARE(UsbDouble::references(service), 2); // attached, and used by the interface
    QCOMPARE((*plugIn)->Release(plugIn), 0U);
    QCOMPARE(UsbDouble::references(service), 1);
}

void tst_UsbMonitorHandlers_mac::interfaceCannotBeMade()
{
    const UsbDouble usb;
    const io_service_t service = UsbDouble::attach();
    const io_iterator_t iterator = UsbDouble::makeIterator({service});
    UsbDouble::failPlugIn(static_cast<kern_return_t>(0xE00002BE));
    QCOMPARE(printedBy([iterator] { usbDeviceAdded(nullptr, iterator); }),
             QByteArray("Unable to create a device interface: e00002be\n"));
    QCOMPARE(toText(UsbDouble::calls()), toText({"IOIteratorNext", kPlugIn}));
    QCOMPARE(UsbDouble::references(service), 2); // the iterator's reference is never released
    QVERIFY(getUSBDeviceInterface(iterator) == nullptr);
}

void tst_UsbMonitorHandlers_mac::serviceCannotBeReleased()
{
    const UsbDouble usb;
    const io_service_t service = UsbDouble::attach();
    const io_iterator_t iterator = UsbDouble::makeIterator({service});
    UsbDouble::failReleaseOfServices(0xF);
    QCOMPARE(printedBy([iterator] { usbDeviceRemoved(nullptr, iterator); }),
             QByteArray("Unable to release device object: 0000000f\n"));
    QCOMPARE(toText(UsbDouble::calls()),
             toText({"IOIteratorNext", kPlugIn, "IOObjectRelease service"}));
    QCOMPARE(UsbDouble::plugInCount(), 1); // neither returned nor released
}

QTEST_APPLESS_MAIN(tst_UsbMonitorHandlers_mac)
#include "tst_UsbMonitorHandlers_mac.moc"
