// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidSysfs_linux_p.h"

#include <QtTest>

namespace {

QString text(const HidProductName &name)
{
    return QString::fromWCharArray(name.data());
}

} // namespace

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
    row("254 characters", QByteArray(254, 'x'), QString(254, 'x'));
    row("255 characters", QByteArray(255, 'x'), QString(255, 'x'));
    row("256 characters", QByteArray(256, 'x'), QString(255, 'x'));
    row("10000 characters", QByteArray(10000, 'x'), QString(255, 'x'));
    row("10000 stray bytes", QByteArray(10000, '\xFF'), QString(255, '?'));
    row("four bytes at the limit", QByteArray(254, 'x') + "\xF0\x9F\x94\x8C",
        QString(254, 'x') + '?');
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

QTEST_APPLESS_MAIN(tst_HidSysfs_linux)
#include "tst_HidSysfs_linux.moc"
