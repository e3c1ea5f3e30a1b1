// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/device/HidWatch_mac.h"

#include <QtTest>

#include <limits>

namespace {

using Other = HidManagerDouble::Other;
using Keys = std::vector<std::string>;

Properties with(Properties properties, const Properties &others)
{
    for (const auto &[key, value] : others) {
        properties[key] = value;
    }
    return properties;
}

Properties without(Properties properties, const Keys &keys)
{
    for (const std::string &key : keys) {
        properties.erase(key);
    }
    return properties;
}

} // namespace

Q_DECLARE_METATYPE(Properties)
Q_DECLARE_METATYPE(Keys)

class tst_HidPlugProperties_mac : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void properties_data();
    void properties();
    void parentsProperties();
    void name_data();
    void name();
    void propertiesAreReadForNobody_data();
    void propertiesAreReadForNobody();
    void primaryUsagesAreReadInNeedOnly_data();
    void primaryUsagesAreReadInNeedOnly();
};

void tst_HidPlugProperties_mac::cleanup()
{
    stopHidPlugWatch();
    register_hid_plug_callback(nullptr, nullptr);
}

void tst_HidPlugProperties_mac::properties_data()
{
    QTest::addColumn<Properties>("properties");
    QTest::addColumn<Plug>("arrival");
    const std::int64_t large = 0x5'1234'7F3C;
    const int min = std::numeric_limits<int>::min();
    QTest::newRow("none") << Properties() << Plug{1};
    QTest::newRow("all") << kTarget << kArrival;
    QTest::newRow("vendor above 16 bits") << with(kTarget, {{"VendorID", 0x12345}})
                                          << Plug{1, 0x2345, 0x0C51, 0x74, 0xFF31, "Device"};
    QTest::newRow("vendor above 32 bits")
        << with(kTarget, {{"VendorID", large}}) << Plug{1, 0x7F3C, 0x0C51, 0x74, 0xFF31, "Device"};
    QTest::newRow("negative product")
        << with(kTarget, {{"ProductID", -1}}) << Plug{1, 0x7F3C, 0xFFFF, 0x74, 0xFF31, "Device"};
    QTest::newRow("no vendor") << without(kTarget, {"VendorID"})
                               << Plug{1, 0, 0x0C51, 0x74, 0xFF31, "Device"};
    QTest::newRow("ids are texts")
        << with(kTarget, {{"VendorID", u"32572"}, {"ProductID", u"3153"}})
        << Plug{1, 0, 0, 0x74, 0xFF31, "Device"};
    QTest::newRow("usage is zero")
        << with(kTarget, {{"DeviceUsage", 0}}) << Plug{1, 0x7F3C, 0x0C51, 1, 0xFF31, "Device"};
    QTest::newRow("usage page is zero")
        << with(kTarget, {{"DeviceUsagePage", 0}}) << Plug{1, 0x7F3C, 0x0C51, 0x74, 2, "Device"};
    QTest::newRow("usages are missing") << without(kTarget, {"DeviceUsage", "DeviceUsagePage"})
                                        << Plug{1, 0x7F3C, 0x0C51, 1, 2, "Device"};
    QTest::newRow("usages are texts")
        << with(kTarget, {{"DeviceUsage", u"116"}, {"DeviceUsagePage", u"65329"}})
        << Plug{1, 0x7F3C, 0x0C51, 1, 2, "Device"};
    QTest::newRow("all usages are missing")
        << without(kTarget, {"DeviceUsage", "DeviceUsagePage", "PrimaryUsage", "PrimaryUsagePage"})
        << Plug{1, 0x7F3C, 0x0C51, 0, 0, "Device"};
    QTest::newRow("primary usages are texts") << with(kTarget,
                                                      {{"DeviceUsage", 0},
                                                       {"DeviceUsagePage", 0},
                                                       {"PrimaryUsage", u"1"},
                                                       {"PrimaryUsagePage", u"2"}})
                                              << Plug{1, 0x7F3C, 0x0C51, 0, 0, "Device"};
    QTest::newRow("usages keep 32 bits")
        << with(kTarget, {{"DeviceUsage", min}, {"DeviceUsagePage", 0x12345678}})
        << Plug{1, 0x7F3C, 0x0C51, min, 0x12345678, "Device"};
    QTest::newRow("ids are of other types")
        << with(kTarget, {{"VendorID", Other::DataType}, {"ProductID", Other::ArrayType}})
        << Plug{1, 0, 0, 0x74, 0xFF31, "Device"};
    QTest::newRow("usages are of other types") << with(
        kTarget, {{"DeviceUsage", Other::BooleanType}, {"DeviceUsagePage", Other::DataType}})
                                               << Plug{1, 0x7F3C, 0x0C51, 1, 2, "Device"};
    QTest::newRow("no name") << without(kTarget, {"Product"})
                             << Plug{1, 0x7F3C, 0x0C51, 0x74, 0xFF31, ""};
}

void tst_HidPlugProperties_mac::properties()
{
    QFETCH(const Properties, properties);
    QFETCH(const Plug, arrival);
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    HidManagerDouble::detach(HidManagerDouble::attach(properties));
    turnRunLoop();
    QCOMPARE(recorder.plugs, QList<Plug>({arrival, removal(arrival)}));
}

void tst_HidPlugProperties_mac::parentsProperties()
{
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    const Properties other = {{"VendorID", 1}, {"ProductID", 2}, {"Product", u"Parent"}};
    HidManagerDouble::attach(without(kTarget, {"ProductID", "Product"}), other);
    turnRunLoop();
    QCOMPARE(recorder.plugs, QList<Plug>({{1, 0x7F3C, 2, 0x74, 0xFF31, "Parent"}}));
}

void tst_HidPlugProperties_mac::name_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const QString pair = QString::fromStdU32String(U"\U0001F50C");
    for (const int length : {0, 1, 254, 255, 256, 10000}) {
        QTest::addRow("%d characters", length)
            << QString(length, 'x') << QString(qMin(length, 255), 'x');
    }
    QTest::newRow("other scripts") << QString::fromUtf8("ä漢") << QString::fromUtf8("ä漢");
    QTest::newRow("pair") << 'a' + pair + 'b' << 'a' + pair + 'b';
    QTest::newRow("pair ends at the limit") << QString(253, 'x') + pair << QString(253, 'x') + pair;
    QTest::newRow("pair across the limit") << QString(254, 'x') + pair << QString(254, 'x') + '?';
    QTest::newRow("127 pairs and one half") << pair.repeated(200) << pair.repeated(127) + '?';
    QTest::newRow("lone high surrogate") << QString("a") + pair.at(0) + 'b' << "a?b";
    QTest::newRow("lone low surrogate") << QString("a") + pair.at(1) + 'b' << "a?b";
    QTest::newRow("lone low surrogate at the limit")
        << QString(254, 'x') + pair.at(1) << QString(254, 'x') + '?';
}

void tst_HidPlugProperties_mac::name()
{
    QFETCH(const QString, name);
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    HidManagerDouble::attach(named(name.toStdU16String()));
    turnRunLoop();
    QCOMPARE(recorder.plugs.size(), 1);
    QTEST(recorder.plugs.at(0).name, "expected");
}

void tst_HidPlugProperties_mac::propertiesAreReadForNobody_data()
{
    QTest::addColumn<bool>("registered");
    QTest::newRow("callback registered") << true;
    QTest::newRow("no callback") << false;
}

void tst_HidPlugProperties_mac::propertiesAreReadForNobody()
{
    QFETCH(const bool, registered);
    const HidManagerDouble hid;
    PlugRecorder recorder;
    if (!registered) {
        register_hid_plug_callback(nullptr, nullptr);
    }
    const Watch watch;
    HidManagerDouble::attach(with(kTarget, {{"DeviceUsage", 0}, {"DeviceUsagePage", 0}}));
    turnRunLoop();
    QCOMPARE(HidManagerDouble::reads(),
             std::vector<std::string>({"VendorID", "ProductID", "DeviceUsage", "PrimaryUsage",
                                       "DeviceUsagePage", "PrimaryUsagePage", "Product"}));
    QCOMPARE(recorder.plugs.size(), registered ? 1 : 0);
}

void tst_HidPlugProperties_mac::primaryUsagesAreReadInNeedOnly_data()
{
    QTest::addColumn<Properties>("properties");
    QTest::addColumn<Keys>("usages");
    const Keys all = {"DeviceUsage", "PrimaryUsage", "DeviceUsagePage", "PrimaryUsagePage"};
    QTest::newRow("neither") << kTarget << Keys{"DeviceUsage", "DeviceUsagePage"};
    QTest::newRow("usage is zero") << with(kTarget, {{"DeviceUsage", 0}})
                                   << Keys{"DeviceUsage", "PrimaryUsage", "DeviceUsagePage"};
    QTest::newRow("page is zero") << with(kTarget, {{"DeviceUsagePage", 0}})
                                  << Keys{"DeviceUsage", "DeviceUsagePage", "PrimaryUsagePage"};
    QTest::newRow("both are texts")
        << with(kTarget, {{"DeviceUsage", u"116"}, {"DeviceUsagePage", u"65329"}}) << all;
    QTest::newRow("both are missing")
        << without(kTarget, {"DeviceUsage", "DeviceUsagePage"}) << all;
}

void tst_HidPlugProperties_mac::primaryUsagesAreReadInNeedOnly()
{
    QFETCH(const Properties, properties);
    QFETCH(const Keys, usages);
    const HidManagerDouble hid;
    const Watch watch;
    HidManagerDouble::attach(properties);
    turnRunLoop();
    Keys expected = {"VendorID", "ProductID"};
    expected.insert(expected.end(), usages.begin(), usages.end());
    expected.emplace_back("Product");
    QCOMPARE(HidManagerDouble::reads(), expected);
}

QTEST_GUILESS_MAIN(tst_HidPlugProperties_mac)
#include "tst_HidPlugProperties_mac.moc"
