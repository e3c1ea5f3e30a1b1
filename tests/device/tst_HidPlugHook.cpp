// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidPlugHook.h"
#include "device/HidPlugHook_p.h"
#include "tests/device/PlugRecorder.h"

#include <QtTest>

#include <limits>

namespace {

int wakes = 0;

class CountingWatch final : public HidPlugWatch
{
public:
    void wake() override { ++wakes; }
};

HidProperties named(const QString &name)
{
    HidProperties properties;
    properties.productName = hidProductName(name.toStdU16String());
    return properties;
}

QStringList namesOf(const QList<Plug> &plugs)
{
    QStringList names;
    for (const Plug &plug : plugs) {
        names.append(plug.name);
    }
    return names;
}

} // namespace

// Replaces the platform's watch. These tests call deliverHidPlugs() instead of running an event
// loop.
std::unique_ptr<HidPlugWatch> HidPlugWatch::create()
{
    return std::make_unique<CountingWatch>();
}

Q_DECLARE_METATYPE(HidProperties)
Q_DECLARE_METATYPE(std::u16string)
Q_DECLARE_METATYPE(std::u32string)

class tst_HidPlugHook : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void properties_data();
    void properties();
    void name_data();
    void name();
    void nameEndsInZeros();
    void contextIsPassedOn();
    void withoutCallbackReportsAreUsedUp();
    void callbackReplacesItself();
    void callbackUnregistersItself();
    void orderIsKept();
    void pauseKeepsReports();
    void pauseWakesOnlyForReports_data();
    void pauseWakesOnlyForReports();
    void pausesNest();
    void pauseInsideTheCallback();
    void callbackTurnsTheLoop();
    void callbackQueues();
    void stopDropsReports();
};

void tst_HidPlugHook::init()
{
    register_hid_plug_callback(nullptr, nullptr);
    stopHidPlugWatch();
    startHidPlugWatch();
    wakes = 0;
}

void tst_HidPlugHook::properties_data()
{
    QTest::addColumn<HidProperties>("properties");
    QTest::addColumn<Plug>("arrival");
    const int all = -1;
    const int max = std::numeric_limits<int>::max();
    const int min = std::numeric_limits<int>::min();
    QTest::newRow("all missing") << HidProperties() << Plug{1};
    QTest::newRow("the target") << HidProperties{0x7F3C, 0x0C51, 0x74, 0xFF31,
                                                 hidProductName(u"Device")}
                                << Plug{1, 0x7F3C, 0x0C51, 0x74, 0xFF31, "Device"};
    QTest::newRow("ids keep their low 16 bits")
        << HidProperties{0x12345, 0x7FFF0001, 0, 0, {}} << Plug{1, 0x2345, 1};
    QTest::newRow("largest ids") << HidProperties{0xFFFF, 0xFFFF, 0, 0, {}}
                                 << Plug{1, 0xFFFF, 0xFFFF};
    QTest::newRow("negative ids") << HidProperties{all, min, 0, 0, {}} << Plug{1, 0xFFFF, 0};
    QTest::newRow("ids above 16 bits only")
        << HidProperties{0x10000, 0x20000, 0, 0, {}} << Plug{1, 0, 0};
    QTest::newRow("neither usage nor page") << HidProperties{5, 6, 0, 0, {}} << Plug{1, 5, 6, 0, 0};
    QTest::newRow("usages keep 32 bits")
        << HidProperties{0, 0, max, min, {}} << Plug{1, 0, 0, max, min};
    QTest::newRow("usages of all bits and of some")
        << HidProperties{0, 0, all, 0x12345678, {}} << Plug{1, 0, 0, all, 0x12345678};
}

void tst_HidPlugHook::properties()
{
    QFETCH(const HidProperties, properties);
    QFETCH(Plug, arrival);
    PlugRecorder recorder;
    queueHidPlug(true, properties);
    queueHidPlug(false, properties);
    QVERIFY(recorder.plugs.isEmpty());
    deliverHidPlugs();
    Plug removal = arrival;
    removal.arrived = 0;
    QCOMPARE(recorder.plugs.size(), 2);
    QCOMPARE(recorder.plugs.at(0), arrival);
    QCOMPARE(recorder.plugs.at(1), removal);
}

void tst_HidPlugHook::name_data()
{
    QTest::addColumn<std::u16string>("name");
    QTest::addColumn<std::u32string>("expected");
    const auto row
        = [](const char *title, const std::u16string &name, const std::u32string &expected) {
              QTest::newRow(title) << name << expected;
          };
    const auto times = [](std::size_t count) {
        return std::u16string(count, u'x');
    };
    const std::u16string pair = u"\U0001F50C";
    const std::u16string high = pair.substr(0, 1);
    const std::u16string low = pair.substr(1);

    row("empty", u"", U"");
    row("one character", u"x", U"x");
    row("254 characters", times(254), std::u32string(254, U'x'));
    row("255 characters", times(255), std::u32string(255, U'x'));
    row("256 characters", times(256), std::u32string(255, U'x'));
    row("10000 characters", times(10000), std::u32string(255, U'x'));
    row("other scripts", u"\u00e4\u6f22\uffff", U"\u00e4\u6f22\uffff");
    row("pair", u"a" + pair + u"b", U"a\U0001F50Cb");
    row("first pair there is", u"\U00010000", U"\U00010000");
    row("last pair there is", u"\U0010FFFF", U"\U0010FFFF");
    row("pair ends at the limit", times(253) + pair, std::u32string(253, U'x') + U"\U0001F50C");
    row("pair ends before the limit", times(252) + pair + u"yz",
        std::u32string(252, U'x') + U"\U0001F50Cy");
    row("pair goes through the limit", times(254) + pair, std::u32string(254, U'x') + U"?");
    row("pair begins at the limit", times(255) + pair, std::u32string(255, U'x'));
    row(
        "300 pairs",
        [&pair] {
            std::u16string name;
            for (int i = 0; i < 300; ++i) {
                name += pair;
            }
            return name;
        }(),
        std::u32string(127, U'\U0001F50C') + U"?");
    row("lone high surrogate", u"a" + high + u"b", U"a?b");
    row("lone low surrogate", u"a" + low + u"b", U"a?b");
    row("halves exchanged", low + high, U"??");
    row("high surrogate before a pair", high + pair, U"?\U0001F50C");
    row("high surrogate last", u"a" + high, U"a?");
    row("lone high surrogate at the limit", times(254) + high, std::u32string(254, U'x') + U"?");
    row("lone low surrogate at the limit", times(254) + low, std::u32string(254, U'x') + U"?");
    row("lone low surrogate behind the limit", times(255) + low, std::u32string(255, U'x'));
    row("zero inside", std::u16string(u"a\0b", 3), std::u32string(U"a\0b", 3));
}

void tst_HidPlugHook::name()
{
    QFETCH(const std::u16string, name);
    QFETCH(const std::u32string, expected);
    const HidProductName result = hidProductName(name);
    QCOMPARE(std::u32string(result.begin(), result.begin() + static_cast<int>(expected.size())),
             expected);
    QCOMPARE(result.at(expected.size()), L'\0');
}

void tst_HidPlugHook::nameEndsInZeros()
{
    const HidProductName result = hidProductName(u"abc");
    QVERIFY(std::all_of(result.begin() + 3, result.end(), [](wchar_t c) { return c == L'\0'; }));
}

void tst_HidPlugHook::contextIsPassedOn()
{
    static void *received = nullptr;
    int context = 0;
    register_hid_plug_callback(
        [](int, int, int, int, int, const wchar_t *, void *given) { received = given; }, &context);
    queueHidPlug(true, {});
    deliverHidPlugs();
    QCOMPARE(received, static_cast<void *>(&context));
}

void tst_HidPlugHook::withoutCallbackReportsAreUsedUp()
{
    queueHidPlug(true, {});
    deliverHidPlugs();
    PlugRecorder recorder;
    deliverHidPlugs();
    QCOMPARE(recorder.plugs.size(), 0);
}

void tst_HidPlugHook::callbackReplacesItself()
{
    PlugRecorder second;
    PlugRecorder first;
    first.onPlug = [&second] {
        register_hid_plug_callback(PlugRecorder::record, &second);
    };
    queueHidPlug(true, named("one"));
    queueHidPlug(true, named("two"));
    queueHidPlug(true, named("three"));
    deliverHidPlugs();
    QCOMPARE(namesOf(first.plugs), QStringList({"one"}));
    QCOMPARE(namesOf(second.plugs), QStringList({"two", "three"}));
}

void tst_HidPlugHook::callbackUnregistersItself()
{
    PlugRecorder recorder;
    recorder.onPlug = [] {
        register_hid_plug_callback(nullptr, nullptr);
    };
    queueHidPlug(true, named("one"));
    queueHidPlug(true, named("two"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), QStringList({"one"}));
}

void tst_HidPlugHook::orderIsKept()
{
    PlugRecorder recorder;
    QStringList expected;
    for (int i = 0; i < 1000; ++i) {
        expected.append(QString::number(i));
        queueHidPlug(i % 2 == 0, named(expected.last()));
    }
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), expected);
}

void tst_HidPlugHook::pauseKeepsReports()
{
    PlugRecorder recorder;
    queueHidPlug(true, named("before"));
    {
        const HidPlugPause pause;
        deliverHidPlugs();
        queueHidPlug(true, named("meanwhile"));
        queueHidPlug(false, named("meanwhile, too"));
        deliverHidPlugs();
        QCOMPARE(recorder.plugs.size(), 0);
    }
    QCOMPARE(recorder.plugs.size(), 0);
    queueHidPlug(true, named("after"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs),
             QStringList({"before", "meanwhile", "meanwhile, too", "after"}));
}

void tst_HidPlugHook::pauseWakesOnlyForReports_data()
{
    QTest::addColumn<int>("reports");
    QTest::addColumn<int>("expected");
    QTest::newRow("no event") << 0 << 0;
    QTest::newRow("one event") << 1 << 1;
    QTest::newRow("three events") << 3 << 1;
}

void tst_HidPlugHook::pauseWakesOnlyForReports()
{
    QFETCH(const int, reports);
    {
        const HidPlugPause pause;
        for (int i = 0; i < reports; ++i) {
            queueHidPlug(true, {});
        }
        QCOMPARE(wakes, 0);
    }
    QTEST(wakes, "expected");
}

void tst_HidPlugHook::pausesNest()
{
    PlugRecorder recorder;
    const auto outer = std::make_unique<HidPlugPause>();
    auto inner = std::make_unique<HidPlugPause>();
    queueHidPlug(true, {});
    inner.reset();
    deliverHidPlugs();
    QCOMPARE(recorder.plugs.size(), 0);
}

void tst_HidPlugHook::pauseInsideTheCallback()
{
    PlugRecorder recorder;
    recorder.onPlug = [&recorder] {
        const int before = recorder.plugs.size();
        const HidPlugPause pause;
        deliverHidPlugs();
        QCOMPARE(recorder.plugs.size(), before);
    };
    queueHidPlug(true, named("one"));
    queueHidPlug(true, named("two"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), QStringList({"one", "two"}));
}

void tst_HidPlugHook::callbackTurnsTheLoop()
{
    PlugRecorder recorder;
    recorder.onPlug = [] {
        deliverHidPlugs();
    };
    queueHidPlug(true, named("one"));
    queueHidPlug(true, named("two"));
    queueHidPlug(true, named("three"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), QStringList({"one", "two", "three"}));
}

void tst_HidPlugHook::callbackQueues()
{
    PlugRecorder recorder;
    recorder.onPlug = [&recorder] {
        if (recorder.plugs.size() == 1) {
            queueHidPlug(false, named("from inside"));
        }
    };
    queueHidPlug(true, named("one"));
    queueHidPlug(true, named("two"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), QStringList({"one", "two", "from inside"}));
}

void tst_HidPlugHook::stopDropsReports()
{
    PlugRecorder recorder;
    queueHidPlug(true, named("dropped"));
    stopHidPlugWatch();
    queueHidPlug(true, named("kept"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), QStringList({"kept"}));
}

QTEST_APPLESS_MAIN(tst_HidPlugHook)
#include "tst_HidPlugHook.moc"
