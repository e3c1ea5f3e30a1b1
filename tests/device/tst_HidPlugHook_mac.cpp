// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "device/HidPlugHook_p.h"
#include "tests/device/PlugRecorder.h"
#include "tests/doubles/CoreFoundationDouble.h"
#include "tests/doubles/HidManagerDouble.h"

#include <QtTest>

#include <limits>

namespace {

using Properties = HidManagerDouble::Properties;
using Keys = std::vector<std::string>;

const Properties kTarget
    = {{"VendorID", 0x7F3C},        {"ProductID", 0x0C51}, {"DeviceUsage", 0x74},
       {"DeviceUsagePage", 0xFF31}, {"PrimaryUsage", 1},   {"PrimaryUsagePage", 2},
       {"Product", u"Device"}};
const Plug kArrival = {1, 0x7F3C, 0x0C51, 0x74, 0xFF31, "Device"};

Plug removal(Plug arrival)
{
    arrival.arrived = 0;
    return arrival;
}

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

Properties named(const std::u16string &name)
{
    return with(kTarget, {{"Product", name}});
}

/// Turns the run loop until nothing is left to do.
void turnRunLoop()
{
    while (CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, 1) == kCFRunLoopRunHandledSource) { }
}

/// Watches while it lives.
class Watch
{
public:
    Watch() { startHidPlugWatch(); }
    ~Watch() { stopHidPlugWatch(); }

    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;
};

QStringList calls()
{
    QStringList result;
    for (const std::string &call : HidManagerDouble::calls()) {
        result.append(QString::fromStdString(call));
    }
    return result;
}

const QStringList kStart = {"create 0", "match all", "register matching null",
                            "register removal null", "schedule kCFRunLoopDefaultMode"};
const QStringList kEnd = {"unschedule kCFRunLoopDefaultMode", "manager is gone"};

} // namespace

Q_DECLARE_METATYPE(Properties)
Q_DECLARE_METATYPE(Keys)

class tst_HidPlugHook_mac : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void watchFromStartToEnd();
    void attachedBeforehand_data();
    void attachedBeforehand();
    void comesAndGoes();
    void properties_data();
    void properties();
    void name_data();
    void name();
    void propertiesAreReadForNobody_data();
    void propertiesAreReadForNobody();
    void primaryUsagesAreReadInNeedOnly_data();
    void primaryUsagesAreReadInNeedOnly();
    void noDeviceIsIgnored();
    void callbackReplacesItself();
    void nothingDuringStartUpdate_data();
    void nothingDuringStartUpdate();
    void startUpdateWithoutEvents();
    void startUpdateFromTheCallback();
    void managerCannotBeMade();
    void startedTwice();
    void fiftyStartsAndStops();
    void stoppedReportsNothing();
};

void tst_HidPlugHook_mac::cleanup()
{
    stopHidPlugWatch();
    register_hid_plug_callback(nullptr, nullptr);
}

void tst_HidPlugHook_mac::watchFromStartToEnd()
{
    const int objects = doubleObjectCount();
    const HidManagerDouble hid;
    {
        const Watch watch;
        QCOMPARE(calls(), kStart);
    }
    QCOMPARE(calls(), kStart + kEnd);
    QCOMPARE(doubleObjectCount(), objects);
    QCOMPARE(doubleSourceCount(), 0);
}

void tst_HidPlugHook_mac::attachedBeforehand_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
}

void tst_HidPlugHook_mac::attachedBeforehand()
{
    QFETCH(const int, count);
    const HidManagerDouble hid;
    for (int i = 0; i < count; ++i) {
        HidManagerDouble::attach(kTarget);
    }
    PlugRecorder recorder;
    const Watch watch;
    QCOMPARE(recorder.plugs.size(), 0);
    turnRunLoop();
    QCOMPARE(recorder.plugs, QList<Plug>(QVector<Plug>(count, kArrival).toList()));
    QVERIFY(recorder.wasCalledHere());
}

void tst_HidPlugHook_mac::comesAndGoes()
{
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    const int device = HidManagerDouble::attach(kTarget);
    turnRunLoop();
    QCOMPARE(recorder.plugs, QList<Plug>({kArrival}));
    HidManagerDouble::detach(device);
    turnRunLoop();
    QCOMPARE(recorder.plugs, QList<Plug>({kArrival, removal(kArrival)}));
    QVERIFY(recorder.wasCalledHere());
}

void tst_HidPlugHook_mac::properties_data()
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
    QTest::newRow("no name") << without(kTarget, {"Product"})
                             << Plug{1, 0x7F3C, 0x0C51, 0x74, 0xFF31, ""};
}

void tst_HidPlugHook_mac::properties()
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

void tst_HidPlugHook_mac::name_data()
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
    QTest::newRow("pair goes through the limit")
        << QString(254, 'x') + pair << QString(254, 'x') + '?';
    QTest::newRow("127 pairs and one half") << pair.repeated(200) << pair.repeated(127) + '?';
    QTest::newRow("lone high surrogate") << QString("a") + pair.at(0) + 'b' << "a?b";
    QTest::newRow("lone low surrogate") << QString("a") + pair.at(1) + 'b' << "a?b";
    QTest::newRow("lone low surrogate at the limit")
        << QString(254, 'x') + pair.at(1) << QString(254, 'x') + '?';
}

void tst_HidPlugHook_mac::name()
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

void tst_HidPlugHook_mac::propertiesAreReadForNobody_data()
{
    QTest::addColumn<bool>("registered");
    QTest::newRow("callback registered") << true;
    QTest::newRow("no callback") << false;
}

void tst_HidPlugHook_mac::propertiesAreReadForNobody()
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

void tst_HidPlugHook_mac::primaryUsagesAreReadInNeedOnly_data()
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

void tst_HidPlugHook_mac::primaryUsagesAreReadInNeedOnly()
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

void tst_HidPlugHook_mac::noDeviceIsIgnored()
{
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    HidManagerDouble::notifyOfNothing();
    turnRunLoop();
    QCOMPARE(calls(), kStart + QStringList({"matching handler", "removal handler"}));
    QCOMPARE(HidManagerDouble::reads().size(), std::size_t(0));
    QCOMPARE(recorder.plugs.size(), 0);
}

void tst_HidPlugHook_mac::callbackReplacesItself()
{
    const HidManagerDouble hid;
    PlugRecorder second;
    PlugRecorder first;
    first.onPlug = [&second] {
        register_hid_plug_callback(PlugRecorder::record, &second);
    };
    const Watch watch;
    HidManagerDouble::detach(HidManagerDouble::attach(kTarget));
    turnRunLoop();
    QCOMPARE(first.plugs, QList<Plug>({kArrival}));
    QCOMPARE(second.plugs, QList<Plug>({removal(kArrival)}));
}

void tst_HidPlugHook_mac::nothingDuringStartUpdate_data()
{
    QTest::addColumn<bool>("oneMoreComes");
    QTest::newRow("nothing happens afterwards") << false;
    QTest::newRow("one more comes afterwards") << true;
}

void tst_HidPlugHook_mac::nothingDuringStartUpdate()
{
    QFETCH(const bool, oneMoreComes);
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    turnRunLoop();
    const int before = calls().size();

    HidManagerDouble::detach(HidManagerDouble::attach(named(u"first")));
    HidManagerDouble::attach(named(u"second"));
    QVERIFY(!deviceComm.startUpdate(0x7F3C, 0x0C51));
    QCOMPARE(calls().mid(before),
             QStringList({"enumerate 0 0", "matching handler", "removal handler",
                          "matching handler", "free null"}));
    QCOMPARE(recorder.plugs.size(), 0);

    QStringList expected = {"1first", "0first", "1second"};
    if (oneMoreComes) {
        HidManagerDouble::attach(named(u"third"));
        expected.append("1third");
    }
    turnRunLoop();
    QStringList names;
    for (const Plug &plug : recorder.plugs) {
        names.append(QString::number(plug.arrived) + plug.name);
    }
    QCOMPARE(names, expected);
}

void tst_HidPlugHook_mac::startUpdateWithoutEvents()
{
    const HidManagerDouble hid;
    const Watch watch;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    turnRunLoop();
    deviceComm.startUpdate(0x7F3C, 0x0C51);
    // Nothing is to be caught up with.
    QCOMPARE(CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, 1), kCFRunLoopRunTimedOut);
}

void tst_HidPlugHook_mac::startUpdateFromTheCallback()
{
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    bool working = false;
    recorder.onPlug = [&] {
        QVERIFY(!working);
        working = true;
        deviceComm.startUpdate(0x7F3C, 0x0C51);
        working = false;
    };
    HidManagerDouble::detach(HidManagerDouble::attach(kTarget));
    HidManagerDouble::attach(kTarget);
    turnRunLoop();
    QCOMPARE(recorder.plugs, QList<Plug>({kArrival, removal(kArrival), kArrival}));
}

void tst_HidPlugHook_mac::managerCannotBeMade()
{
    const int objects = doubleObjectCount();
    const HidManagerDouble hid;
    HidManagerDouble::failToCreate();
    {
        const Watch watch;
        turnRunLoop();
        QCOMPARE(calls(), QStringList({"create 0"}));
    }
    QCOMPARE(calls(), QStringList({"create 0"}));
    QCOMPARE(doubleObjectCount(), objects);
}

void tst_HidPlugHook_mac::startedTwice()
{
    const HidManagerDouble hid;
    const Watch watch;
    startHidPlugWatch();
    QCOMPARE(calls(), kStart);
}

void tst_HidPlugHook_mac::fiftyStartsAndStops()
{
    const HidManagerDouble hid;
    HidManagerDouble::attach(kTarget);
    PlugRecorder recorder;
    const int objects = doubleObjectCount();
    for (int round = 1; round <= 50; ++round) {
        {
            const Watch watch;
            turnRunLoop();
        }
        QCOMPARE(recorder.plugs.size(), round);
        QCOMPARE(doubleObjectCount(), objects);
        QCOMPARE(doubleSourceCount(), 0);
    }
}

void tst_HidPlugHook_mac::stoppedReportsNothing()
{
    const HidManagerDouble hid;
    HidManagerDouble::attach(kTarget);
    PlugRecorder recorder;
    {
        const Watch watch;
    }
    HidManagerDouble::attach(kTarget);
    turnRunLoop();
    QCOMPARE(recorder.plugs.size(), 0);
    // Nor does the next one report what the last one kept.
    const Watch watch;
    turnRunLoop();
    QCOMPARE(recorder.plugs.size(), 2);
}

QTEST_GUILESS_MAIN(tst_HidPlugHook_mac)
#include "tst_HidPlugHook_mac.moc"
