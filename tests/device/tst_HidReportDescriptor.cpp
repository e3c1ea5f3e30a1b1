// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidReportDescriptor_p.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

HidReportDescriptor read(const QByteArray &bytes)
{
    // An exact copy, so that the sanitizers notice each access beyond its end.
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
    return {exact.data(), exact.size()};
}

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

} // namespace

class tst_HidReportDescriptor : public QObject
{
    Q_OBJECT

private slots:
    void firstCollection_data();
    void firstCollection();
    void cutAnywhere();
    void endless_data();
    void endless();
    void random();
};

void tst_HidReportDescriptor::firstCollection_data()
{
    QTest::addColumn<QByteArray>("descriptor");
    QTest::addColumn<int>("usagePage");
    QTest::addColumn<int>("usage");
    QTest::newRow("keyboard") << hex("05010906a101 c0") << 0x01 << 0x06;
    QTest::newRow("vendor-defined") << hex("0631ff 0974 a101 c0") << 0xFF31 << 0x74;
    QTest::newRow("usage with two bytes") << hex("05ff 0a3412 a101") << 0xFF << 0x1234;
    QTest::newRow("usage with four bytes includes its page")
        << hex("0501 0b740031ff a101") << 0xFF31 << 0x74;
    QTest::newRow("page with four bytes") << hex("0731ff0000 0974 a101") << 0xFF31 << 0x74;
    QTest::newRow("page without data is zero") << hex("0501 04 0906 a101") << 0 << 0x06;
    QTest::newRow("page after the usage") << hex("0906 0501 a101") << 0x01 << 0x06;
    QTest::newRow("page zero") << hex("0500 0906 a101") << 0 << 0x06;
    QTest::newRow("no page") << hex("0906 a101") << 0 << 0x06;
    QTest::newRow("no usage") << hex("0501 a101") << 0x01 << 0;
    QTest::newRow("collection only") << hex("a101") << 0 << 0;
    QTest::newRow("first of two collections")
        << hex("05010906a101c0 0631ff0974a101c0") << 0x01 << 0x06;
    QTest::newRow("outer of two collections") << hex("05010902a101 0901a100 c0c0") << 0x01 << 0x02;
    QTest::newRow("collection that is not an application") << hex("05010906a100") << 0x01 << 0x06;
    QTest::newRow("first of several usages") << hex("0501 0906 0907 a101") << 0x01 << 0x06;
    QTest::newRow("usage range") << hex("0501 1906 2908 a101") << 0x01 << 0x06;
    QTest::newRow("usage belongs to an earlier field")
        << hex("0501 0906 8102 0902 a101") << 0x01 << 0x02;
    QTest::newRow("pop restores the pushed page")
        << hex("0501 a4 0507 b4 0906 a101") << 0x01 << 0x06;
    QTest::newRow("pop without push") << hex("0501 b4 0906 a101") << 0x01 << 0x06;
    QTest::newRow("long item is skipped") << hex("fe0210a101 05010906a101") << 0x01 << 0x06;
    QTest::newRow("empty long item") << hex("fe0010 05010906a101") << 0x01 << 0x06;
    QTest::newRow("empty") << QByteArray() << 0 << 0;
    QTest::newRow("no collection") << hex("0501 0906 7508 9501 8102") << 0 << 0;
    QTest::newRow("long item without size") << hex("0501 0906 fe") << 0 << 0;
    QTest::newRow("long item without tag") << hex("0501 0906 fe02") << 0 << 0;
    QTest::newRow("long item longer than the descriptor") << hex("fe05 10 a101a1") << 0 << 0;
    QTest::newRow("last item without its data") << hex("0501 0906 a2 01") << 0 << 0;
}

void tst_HidReportDescriptor::firstCollection()
{
    QFETCH(const QByteArray, descriptor);
    const HidReportDescriptor result = read(descriptor);
    QTEST(result.usagePage(), "usagePage");
    QTEST(result.usage(), "usage");
}

void tst_HidReportDescriptor::cutAnywhere()
{
    const QByteArray whole = hex("fe0110ee 0631ff a4 0b740031ff a101");
    for (int size = 0; size < whole.size(); ++size) {
        const HidReportDescriptor result = read(whole.left(size));
        QCOMPARE(result.usagePage(), 0);
        QCOMPARE(result.usage(), 0);
    }
    QCOMPARE(read(whole).usage(), 0x74);
}

void tst_HidReportDescriptor::endless_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::newRow("usages") << hex("0974");
    QTest::newRow("pushes") << hex("a4");
    QTest::newRow("pops") << hex("b4");
    QTest::newRow("ends of collections") << hex("c0");
    QTest::newRow("long items") << hex("fe0010");
    QTest::newRow("zeros") << hex("00");
}

void tst_HidReportDescriptor::endless()
{
    QFETCH(const QByteArray, item);
    const HidReportDescriptor result = read(item.repeated(100000));
    QCOMPARE(result.usagePage(), 0);
    QCOMPARE(result.usage(), 0);
}

void tst_HidReportDescriptor::random()
{
    QRandomGenerator generator(20);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(generator.bounded(64), '\0');
        std::generate(bytes.begin(), bytes.end(),
                      [&generator] { return static_cast<char>(generator.bounded(256)); });
        const HidReportDescriptor result = read(bytes);
        QVERIFY(result.usagePage() >= 0 && result.usagePage() <= 0xFFFF);
        QVERIFY(result.usage() >= 0 && result.usage() <= 0xFFFF);
    }
}

QTEST_APPLESS_MAIN(tst_HidReportDescriptor)
#include "tst_HidReportDescriptor.moc"
