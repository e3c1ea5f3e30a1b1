// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor_p.h"
#include "tests/device/StdoutCapture.h"

#include <QtTest>

Q_DECLARE_METATYPE(UsbFailure)

class tst_UsbMonitor : public QObject
{
    Q_OBJECT

private slots:
    void failureIsPrinted_data();
    void failureIsPrinted();
};

void tst_UsbMonitor::failureIsPrinted_data()
{
    QTest::addColumn<UsbFailure>("failure");
    QTest::addColumn<quint32>("status");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("arrivals") << UsbFailure::RegisterAdded << 0xE00002BCU
                              << QByteArray("Unable to register device added notification: "
                                            "e00002bc\n");
    QTest::newRow("removals") << UsbFailure::RegisterRemoved << 0xE00002BCU
                              << QByteArray("Unable to register device removed notification: "
                                            "e00002bc\n");
    QTest::newRow("interface") << UsbFailure::CreateInterface << 0x1BU
                               << QByteArray("Unable to create a device interface: 0000001b\n");
    QTest::newRow("release") << UsbFailure::ReleaseDevice << 0xFU
                             << QByteArray("Unable to release device object: 0000000f\n");
    QTest::newRow("all bits") << UsbFailure::ReleaseDevice << 0xFFFFFFFFU
                              << QByteArray("Unable to release device object: ffffffff\n");
    QTest::newRow("no status") << UsbFailure::ReleaseDevice << 0U
                               << QByteArray("Unable to release device object: 00000000\n");
}

void tst_UsbMonitor::failureIsPrinted()
{
    QFETCH(const UsbFailure, failure);
    QFETCH(const quint32, status);
    QFETCH(const QByteArray, text);
    int result = 0;
    QCOMPARE(printedBy([&] { result = printUsbFailure(failure, status); }), text);
    QCOMPARE(result, text.size());
}

QTEST_APPLESS_MAIN(tst_UsbMonitor)
#include "tst_UsbMonitor.moc"
