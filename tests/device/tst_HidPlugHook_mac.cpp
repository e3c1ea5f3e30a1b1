// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "tests/device/HidWatch_mac.h"
#include "tests/doubles/CoreFoundationDouble.h"
#include "tests/doubles/HidapiDouble.h"

#include <QtTest>

namespace {

/// Arrivals as "1" and removals as "0", each with the name.
QStringList reports(const PlugRecorder &recorder)
{
    QStringList result;
    for (const Plug &plug : recorder.plugs) {
        result.append(QString::number(plug.arrived) + plug.name);
    }
    return result;
}

const QStringList kStart = {"create 0", "match all", "register matching null",
                            "register removal null", "schedule kCFRunLoopDefaultMode"};
const QStringList kEnd = {"unschedule kCFRunLoopDefaultMode", "manager is gone"};

} // namespace

class tst_HidPlugHook_mac : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void watchFromStartToEnd();
    void attachedBeforehand_data();
    void attachedBeforehand();
    void comesAndGoes();
    void noDeviceIsIgnored();
    void nothingDuringStartUpdate_data();
    void nothingDuringStartUpdate();
    void startUpdateWithoutEvents();
    void startUpdateFromTheCallback();
    void managerCannotBeMade();
    void fiftyStartsAndStops();
};

void tst_HidPlugHook_mac::cleanup()
{
    stopHidPlugWatch();
    HidapiDouble::setTimer([] {});
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
    QTest::addColumn<QStringList>("names");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList("first");
    QTest::newRow("two") << QStringList{"first", "second"};
}

void tst_HidPlugHook_mac::attachedBeforehand()
{
    QFETCH(const QStringList, names);
    const HidManagerDouble hid;
    for (const QString &name : names) {
        HidManagerDouble::attach(named(name.toStdU16String()));
    }
    PlugRecorder recorder;
    const Watch watch;
    QCOMPARE(recorder.plugs.size(), 0);
    turnRunLoop();
    QStringList arrived = reports(recorder);
    arrived.sort(); // they arrive in any order
    QCOMPARE(arrived, QStringList(names).replaceInStrings(QRegularExpression("^"), "1"));
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

void tst_HidPlugHook_mac::nothingDuringStartUpdate_data()
{
    QTest::addColumn<bool>("duringTheSearch");
    QTest::addColumn<bool>("oneMoreComes");
    QTest::newRow("events before it") << false << false;
    QTest::newRow("events before it, and a later arrival") << false << true;
    QTest::newRow("events while it searches for devices") << true << false;
    QTest::newRow("events while it searches, and a later arrival") << true << true;
}

void tst_HidPlugHook_mac::nothingDuringStartUpdate()
{
    QFETCH(const bool, duringTheSearch);
    QFETCH(const bool, oneMoreComes);
    const HidManagerDouble hid;
    PlugRecorder recorder;
    const Watch watch;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    turnRunLoop();
    const auto before = calls().size();

    const auto come = [] {
        HidManagerDouble::detach(HidManagerDouble::attach(named(u"first")));
        HidManagerDouble::attach(named(u"second"));
    };
    if (duringTheSearch) {
        HidapiDouble::setTimer(come);
    } else {
        come();
    }
    QVERIFY(!deviceComm.startUpdate(0x7F3C, 0x0C51));
    QCOMPARE(calls().mid(before),
             QStringList({"enumerate 0 0", "matching handler", "removal handler",
                          "matching handler", "free null"}));
    QCOMPARE(recorder.plugs.size(), 0);
    QVERIFY(doubleIsAwake(CFRunLoopGetCurrent()));

    QStringList expected = {"1first", "0first", "1second"};
    if (oneMoreComes) {
        HidManagerDouble::attach(named(u"third"));
        expected.append("1third");
    }
    turnRunLoop();
    QCOMPARE(reports(recorder), expected);
}

void tst_HidPlugHook_mac::startUpdateWithoutEvents()
{
    const HidManagerDouble hid;
    const Watch watch;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    turnRunLoop();
    deviceComm.startUpdate(0x7F3C, 0x0C51);
    QVERIFY(!doubleIsAwake(CFRunLoopGetCurrent()));
    // Nothing is reported afterwards.
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

QTEST_GUILESS_MAIN(tst_HidPlugHook_mac)
#include "tst_HidPlugHook_mac.moc"
