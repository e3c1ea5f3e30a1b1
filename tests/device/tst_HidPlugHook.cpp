// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidPlugHook.h"
#include "tests/device/HidWatch.h"

#include <QtTest>

#include <limits>

namespace {

int creations = 0;
int deletions = 0;
int wakes = 0;

/// What a callback does besides recording, perhaps with another recorder.
using Deed = void (*)(PlugRecorder &recorder, PlugRecorder &other);

class CountingWatch final : public HidPlugWatch
{
public:
    ~CountingWatch() override { ++deletions; }

    void wake() override { ++wakes; }
};

HidProperties named(const QString &name)
{
    HidProperties properties;
    properties.productName = hidProductName(name.toStdU16String());
    return properties;
}

} // namespace

// Replaces the platform's watch. These tests call deliverHidPlugs() instead of running an event
// loop.
std::unique_ptr<HidPlugWatch> HidPlugWatch::create()
{
    ++creations;
    return std::make_unique<CountingWatch>();
}

Q_DECLARE_METATYPE(Deed)
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
    void withoutCallbackReportsAreUsedUp();
    void callbackDoesMore_data();
    void callbackDoesMore();
    void pauseKeepsReports();
    void pauseWakesOnlyForReports_data();
    void pauseWakesOnlyForReports();
    void pausesNest();
    void stopDropsReports();
    void startedTwice();
};

void tst_HidPlugHook::init()
{
    register_hid_plug_callback(nullptr, nullptr);
    stopHidPlugWatch();
    startHidPlugWatch();
    deletions = 0;
    wakes = 0;
}

void tst_HidPlugHook::properties_data()
{
    QTest::addColumn<HidProperties>("properties");
    QTest::addColumn<Plug>("arrival");
    const int max = std::numeric_limits<int>::max();
    const int min = std::numeric_limits<int>::min();
    QTest::newRow("all missing") << HidProperties() << Plug{1};
    QTest::newRow("the target") << HidProperties{0x7F3C, 0x0C51, 0x74, 0xFF31,
                                                 hidProductName(u"Device")}
                                << kArrival;
    QTest::newRow("ids keep their low 16 bits")
        << HidProperties{0x12345, 0x7FFF0001, 0, 0, {}} << Plug{1, 0x2345, 1};
    QTest::newRow("negative ids") << HidProperties{-1, min, 0, 0, {}} << Plug{1, 0xFFFF, 0};
    QTest::newRow("usages keep 32 bits")
        << HidProperties{0, 0, max, min, {}} << Plug{1, 0, 0, max, min};
}

void tst_HidPlugHook::properties()
{
    QFETCH(const HidProperties, properties);
    QFETCH(const Plug, arrival);
    PlugRecorder recorder;
    queueHidPlug(true, properties);
    queueHidPlug(false, properties);
    QVERIFY(recorder.plugs.isEmpty());
    deliverHidPlugs();
    QCOMPARE(recorder.plugs, QList<Plug>({arrival, removal(arrival)}));
}

void tst_HidPlugHook::name_data()
{
    QTest::addColumn<std::u16string>("name");
    QTest::addColumn<std::u32string>("expected");
    const auto row
        = [](const char *title, const std::u16string &name, const std::u32string &expected) {
              QTest::newRow(title) << name << expected;
          };
    using Text = std::u16string;
    const Text pair = u"\U0001F50C";
    const Text high = pair.substr(0, 1);
    const Text low = pair.substr(1);

    row("empty", u"", U"");
    row("255 characters", Text(255, u'x'), std::u32string(255, U'x'));
    row("256 characters", Text(256, u'x'), std::u32string(255, U'x'));
    row("other scripts", u"\u00e4\u6f22\uffff", U"\u00e4\u6f22\uffff");
    row("pair", u"a" + pair + u"b", U"a\U0001F50Cb");
    row("first pair there is", u"\U00010000", U"\U00010000");
    row("last pair there is", u"\U0010FFFF", U"\U0010FFFF");
    row("pair ends at the limit", Text(253, u'x') + pair,
        std::u32string(253, U'x') + U"\U0001F50C");
    row("pair goes through the limit", Text(254, u'x') + pair, std::u32string(254, U'x') + U"?");
    row("pair begins at the limit", Text(255, u'x') + pair, std::u32string(255, U'x'));
    row("300 pairs", QString::fromStdU16String(pair).repeated(300).toStdU16String(),
        std::u32string(127, U'\U0001F50C') + U"?");
    row("lone high surrogate", u"a" + high + u"b", U"a?b");
    row("lone low surrogate", u"a" + low + u"b", U"a?b");
    row("halves exchanged", low + high, U"??");
    row("high surrogate before a pair", high + pair, U"?\U0001F50C");
    row("high surrogate last", u"a" + high, U"a?");
    row("lone surrogate at the limit", Text(254, u'x') + high, std::u32string(254, U'x') + U"?");
    row("next to the surrogates", u"\ud7ff\ue000", U"\ud7ff\ue000");
    row("zero inside", std::u16string(u"a\0b", 3), std::u32string(U"a\0b", 3));
}

void tst_HidPlugHook::name()
{
    QFETCH(const std::u16string, name);
    QFETCH(std::u32string, expected);
    expected.resize(kHidNameLength + 1);
    const HidProductName result = hidProductName(name);
    QCOMPARE(std::u32string(result.begin(), result.end()), expected);
}

void tst_HidPlugHook::withoutCallbackReportsAreUsedUp()
{
    queueHidPlug(true, {});
    deliverHidPlugs();
    PlugRecorder recorder;
    deliverHidPlugs();
    QCOMPARE(recorder.plugs.size(), 0);
}

void tst_HidPlugHook::callbackDoesMore_data()
{
    QTest::addColumn<Deed>("deed");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("expectedOfOther");

    const auto row = [](const char *name, Deed deed, const QStringList &expected,
                        const QStringList &expectedOfOther = {}) {
        QTest::newRow(name) << deed << expected << expectedOfOther;
    };
    const QStringList all{"one", "two", "three"};
    row("registers another one",
        [](PlugRecorder &, PlugRecorder &other) {
            register_hid_plug_callback(PlugRecorder::record, &other);
        },
        {"one"}, {"two", "three"});
    row("registers none",
        [](PlugRecorder &, PlugRecorder &) { register_hid_plug_callback(nullptr, nullptr); },
        {"one"});
    row(
        "runs the event loop", [](PlugRecorder &, PlugRecorder &) { deliverHidPlugs(); }, all);
    row(
        "runs the event loop during a pause",
        [](PlugRecorder &recorder, PlugRecorder &) {
            const auto before = recorder.plugs.size();
            const HidPlugPause pause;
            deliverHidPlugs();
            QCOMPARE(recorder.plugs.size(), before);
        },
        all);
    row("stops the watch",
        [](PlugRecorder &, PlugRecorder &) {
            stopHidPlugWatch();
            QCOMPARE(deletions, 0); // its caller still uses it
        },
        {"one"});
    row(
        "queues one more",
        [](PlugRecorder &recorder, PlugRecorder &) {
            if (recorder.plugs.size() == 1) {
                queueHidPlug(false, named("from inside"));
            }
        },
        all + QStringList("from inside"));
}

void tst_HidPlugHook::callbackDoesMore()
{
    QFETCH(const Deed, deed);
    QFETCH(const QStringList, expected);
    QFETCH(const QStringList, expectedOfOther);
    PlugRecorder other;
    PlugRecorder recorder;
    recorder.onPlug = [&] {
        deed(recorder, other);
    };
    for (const char *const name : {"one", "two", "three"}) {
        queueHidPlug(true, named(name));
    }
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), expected);
    QCOMPARE(namesOf(other.plugs), expectedOfOther);
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
    const HidPlugPause outer;
    {
        const HidPlugPause inner;
        queueHidPlug(true, {});
    }
    deliverHidPlugs();
    QCOMPARE(recorder.plugs.size(), 0);
}

void tst_HidPlugHook::stopDropsReports()
{
    PlugRecorder recorder;
    queueHidPlug(true, named("dropped"));
    stopHidPlugWatch();
    QCOMPARE(deletions, 1);
    queueHidPlug(true, named("kept"));
    deliverHidPlugs();
    QCOMPARE(namesOf(recorder.plugs), QStringList({"kept"}));
}

void tst_HidPlugHook::startedTwice()
{
    creations = 0;
    startHidPlugWatch();
    QCOMPARE(creations, 0);
    stopHidPlugWatch();
    startHidPlugWatch();
    QCOMPARE(creations, 1);
}

QTEST_APPLESS_MAIN(tst_HidPlugHook)
#include "tst_HidPlugHook.moc"
