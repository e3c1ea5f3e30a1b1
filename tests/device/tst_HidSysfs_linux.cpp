// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidReportDescriptor_p.h"
#include "device/HidSysfs_linux_p.h"

#include <QtTest>

namespace {

QString text(const HidProductName &name)
{
    return QString::fromWCharArray(name.data());
}

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

/// What is made of the text and the report descriptor in sysfs, both of which devices control.
class tst_HidSysfs_linux : public QObject
{
    Q_OBJECT

private slots:
    void ids_data();
    void ids();
    void name_data();
    void name();
    void surrogateIsNotPassedOn();
    void usagesComeFromTheDescriptor();
    void firstCollection_data();
    void firstCollection();
    void cutAnywhere();
    void endless();
};

void tst_HidSysfs_linux::ids_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<int>("vendorId");
    QTest::addColumn<int>("productId");
    const auto row = [](const char *id, int vendorId, int productId) {
        QTest::newRow(*id != '\0' ? id : "nothing") << QByteArray(id) << vendorId << productId;
    };
    row("0003:00007F3C:00000C51", 0x7F3C, 0x0C51);
    row("0003:00007f3c:00000c51", 0x7F3C, 0x0C51);
    row("0005:00012345:FFFFFFFF", 0x12345, -1);
    row("3:1:2", 1, 2);
    row("0003:00007F3C:00000C51:more", 0x7F3C, 0x0C51);
    row("0003:00007F3C:", 0x7F3C, 0);
    row("0003:00007F3C", 0x7F3C, 0);
    row("0003::00000C51", 0, 0x0C51);
    row("0003", 0, 0);
    row(":::", 0, 0);
    row("", 0, 0);
    row("0003:100000000:00000C51", 0, 0x0C51);
    row("0003:-1:+2", 0, 0);
    row("0003:0x7F3C: 0C51", 0, 0);
    row("0003:7F3G:0C51 ", 0, 0);
}

void tst_HidSysfs_linux::ids()
{
    QFETCH(const QByteArray, id);
    const HidProperties properties = HidSysfs{id.toStdString(), {}, {}}.properties();
    QTEST(properties.vendorId, "vendorId");
    QTEST(properties.productId, "productId");
}

void tst_HidSysfs_linux::name_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *title, const QByteArray &name, const QString &expected) {
        QTest::newRow(title) << name << expected;
    };
    row("empty", "", "");
    row("plain", "Device", "Device");
    row("two bytes", "\xC3\xA4", QString(QChar(0xE4)));
    row("three bytes", "\xE6\xBC\xA2", QString(QChar(0x6F22)));
    row("four bytes", "a\xF0\x9F\x94\x8C\x62", QString::fromStdU32String(U"a\U0001F50Cb"));
    row("replacement character is one like others", "\xEF\xBF\xBD", QString(QChar(0xFFFD)));
    row("stray byte", "a\xFF\x62", "a?b");
    row("stray continuation", "a\x80\x62", "a?b");
    row("cut off", "a\xE6\xBC", "a??");
    row("cut off by another character", "\xC3\x61", "?a");
    row("overlong", "\xC0\x80", "??");
    row("too large", "\xF4\x90\x80\x80", "????");
    row("10000 stray bytes", QByteArray(10000, '\xFF'), QString(255, '?'));
}

void tst_HidSysfs_linux::name()
{
    QFETCH(const QByteArray, name);
    const HidProperties properties = HidSysfs{{}, name.toStdString(), {}}.properties();
    QTEST(text(properties.productName), "expected");
}

void tst_HidSysfs_linux::surrogateIsNotPassedOn()
{
    // C++ libraries differ in whether this is one character or three stray bytes.
    const QString name = text(HidSysfs{{}, "a\xED\xA0\x80", {}}.properties().productName);
    QVERIFY2(name == "a?" || name == "a???", qPrintable(name));
}

void tst_HidSysfs_linux::usagesComeFromTheDescriptor()
{
    const HidProperties properties
        = HidSysfs{{}, {}, {0x06, 0x31, 0xFF, 0x09, 0x74, 0xA1, 0x01}}.properties();
    QCOMPARE(properties.usagePage, 0xFF31);
    QCOMPARE(properties.usage, 0x74);
}

void tst_HidSysfs_linux::firstCollection_data()
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
    QTest::newRow("page beyond 16 bits keeps its low ones")
        << hex("0731ff0100 0974 a101") << 0xFF31 << 0x74;
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

void tst_HidSysfs_linux::firstCollection()
{
    QFETCH(const QByteArray, descriptor);
    const HidReportDescriptor result = read(descriptor);
    QTEST(result.usagePage(), "usagePage");
    QTEST(result.usage(), "usage");
}

void tst_HidSysfs_linux::cutAnywhere()
{
    const QByteArray whole = hex("fe0110ee 0631ff a4 0b740031ff a101");
    for (int size = 0; size < whole.size(); ++size) {
        const HidReportDescriptor result = read(whole.left(size));
        QCOMPARE(result.usagePage(), 0);
        QCOMPARE(result.usage(), 0);
    }
    QCOMPARE(read(whole).usage(), 0x74);
}

void tst_HidSysfs_linux::endless()
{
    for (const char *const item : {"0974", "a4", "b4", "c0", "fe0010", "00"}) {
        const HidReportDescriptor result = read(hex(item).repeated(100000));
        QCOMPARE(result.usagePage(), 0);
        QCOMPARE(result.usage(), 0);
    }
}

QTEST_APPLESS_MAIN(tst_HidSysfs_linux)
#include "tst_HidSysfs_linux.moc"
