// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "tests/device/HidWatch_linux.h"

#include <QtTest>

class tst_HidPlugHook_linux : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void attachedBeforehand_data();
    void attachedBeforehand();
    void comesAndGoes();
    void goesBeforeItsArrivalIsLookedAt();
    void severalComeAndGo();
    void comesBackAnotherOne();
    void propertiesAreRead_data();
    void propertiesAreRead();
    void descriptorIsRead_data();
    void descriptorIsRead();
    void announcedOnceMore_data();
    void announcedOnceMore();
    void goneBeforeItIsLookedAt();
    void burst();
    void nothingDuringStartUpdate();
    void withoutCallback();
};

void tst_HidPlugHook_linux::cleanup()
{
    Patience::loseAfterFailure();
    stopHidPlugWatch();
    register_hid_plug_callback(nullptr, nullptr);
}

void tst_HidPlugHook_linux::attachedBeforehand_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
}

void tst_HidPlugHook_linux::attachedBeforehand()
{
    QFETCH(const int, count);
    Testbed testbed;
    for (int i = 0; i < count; ++i) {
        testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);
    }
    PlugRecorder recorder;
    const Watch watch;
    QCOMPARE(recorder.plugs.size(), 0); // the event loop has not run yet
    settle(testbed, recorder);
    QCOMPARE(recorder.plugs, QList<Plug>(QVector<Plug>(count, kArrival).toList()));
    QVERIFY(recorder.wasCalledHere());
}

void tst_HidPlugHook_linux::comesAndGoes()
{
    Testbed testbed;
    PlugRecorder recorder;
    const Watch watch;
    const QString device = testbed.addUsbDevice(kTarget);
    testbed.addHidInterface(device, kTrigger);
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({kArrival}));
    testbed.removeUsbDevice(device);
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({kArrival, removal(kArrival)}));
    QVERIFY(recorder.wasCalledHere());
}

void tst_HidPlugHook_linux::goesBeforeItsArrivalIsLookedAt()
{
    Testbed testbed;
    PlugRecorder recorder;
    const Watch watch;
    const QString device = testbed.addUsbDevice(kTarget);
    testbed.addHidInterface(device, kTrigger);
    testbed.removeUsbDevice(device);
    settle(testbed, recorder);
    QCOMPARE(recorder.plugs, QList<Plug>({kUnknown, removal(kUnknown)}));
}

void tst_HidPlugHook_linux::severalComeAndGo()
{
    Testbed testbed;
    const QString before = testbed.addUsbDevice({0x1111, 1, "Before", ""});
    testbed.addHidInterface(before, {1, 6, {}, {}});
    const Plug beforeArrival = {1, 0x1111, 1, 6, 1, "Before"};
    PlugRecorder recorder;
    const Watch watch;

    const QString device = testbed.addUsbDevice(kTarget);
    testbed.addHidInterface(device, kTrigger);
    const QString second = testbed.addHidInterface(device, {1, 2, {}, {}});
    testbed.removeNode(second);
    testbed.removeUsbDevice(before);
    testbed.removeUsbDevice(device);
    settle(testbed, recorder);

    // The new interfaces were removed before their properties were read.
    QCOMPARE(recorder.plugs,
             QList<Plug>({beforeArrival, kUnknown, kUnknown, removal(kUnknown),
                          removal(beforeArrival), removal(kUnknown)}));
}

void tst_HidPlugHook_linux::comesBackAnotherOne()
{
    Testbed testbed;
    PlugRecorder recorder;
    const Watch watch;
    QList<Plug> expected;
    for (int round = 0; round < 5; ++round) {
        const Plug arrival = {1, 0x7F3C, 0x0C51, 0x70 + round, 0xFF31, QString::number(round)};
        const QString device = testbed.addUsbDevice({0x7F3C, 0x0C51, arrival.name, ""});
        testbed.addHidInterface(device, {arrival.usagePage, arrival.usage, {}, {}});
        expected.append(arrival);
        AWAIT_COMPARE(recorder.plugs, expected);
        testbed.removeUsbDevice(device);
        expected.append(removal(arrival));
        AWAIT_COMPARE(recorder.plugs, expected);
    }
}

void tst_HidPlugHook_linux::propertiesAreRead_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<QByteArray>("hidName");
    QTest::addColumn<Plug>("arrival");
    const QByteArray id = "0003:00007F3C:00000C51";
    const QByteArray name = "Device";
    const QByteArray other = "Other";
    const auto named = [](const QString &reported) {
        Plug plug = kArrival;
        plug.name = reported;
        return plug;
    };
    Plug unknown = kArrival;
    unknown.vendorId = 0;
    unknown.productId = 0;
    QTest::newRow("plain") << id << name << name << kArrival;
    QTest::newRow("ids are no numbers") << QByteArray("what?") << name << name << unknown;
    QTest::newRow("product goes before the HID name") << id << name << other << kArrival;
    QTest::newRow("HID name only") << id << QByteArray() << other << named("Other");
    QTest::newRow("no name at all") << id << QByteArray() << QByteArray() << named("");
    QTest::newRow("keyboard behind a Bluetooth adapter")
        << QByteArray("0005:0000046D:0000B342") << QByteArray("Dongle") << QByteArray("Keyboard")
        << Plug{1, 0x046D, 0xB342, 0x74, 0xFF31, "Keyboard"};
    QTest::newRow("bus of other digits")
        << QByteArray("00030:00007F3C:00000C51") << other << name << kArrival;
    QTest::newRow("bus is unknown") << QByteArray() << other << name << unknown;
    QTest::newRow("several scripts")
        << id << QByteArray("デバイス جهاز") << name << named(QString("デバイス جهاز"));
    QTest::newRow("invalid UTF-8") << id << QByteArray("a\xFF\x62") << name << named("a?b");
    QTest::newRow("two lines") << id << QByteArray("one\ntwo") << name << named("one\ntwo");
    QTest::newRow("endless product")
        << id << QByteArray(10000, 'x') << name << named(QString(255, 'x'));
    QTest::newRow("endless HID name")
        << id << QByteArray() << QByteArray(10000, 'x') << named(QString(255, 'x'));
}

void tst_HidPlugHook_linux::propertiesAreRead()
{
    QFETCH(const QByteArray, id);
    QFETCH(const QByteArray, product);
    QFETCH(const QByteArray, hidName);
    QFETCH(const Plug, arrival);
    Testbed testbed;
    PlugRecorder recorder;
    const Watch watch;
    const QString device
        = testbed.addUsbDevice({0x7F3C, 0x0C51, "", "0001", {}, {{"product", product}}});
    testbed.addHidInterface(device, {0xFF31, 0x74, {}, {{"HID_ID", id}, {"HID_NAME", hidName}}});
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({arrival}));
    testbed.removeUsbDevice(device);
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({arrival, removal(arrival)}));
}

void tst_HidPlugHook_linux::descriptorIsRead_data()
{
    QTest::addColumn<QByteArray>("descriptor");
    QTest::addColumn<Plug>("arrival");
    const QByteArray keyboard = QByteArray::fromHex("05010906a101c0");
    const Plug read = {1, 0x7F3C, 0x0C51, 6, 1, "Device"};
    const Plug unread = {1, 0x7F3C, 0x0C51, 0, 0, "Device"};
    QTest::newRow("keyboard") << keyboard << read;
    QTest::newRow("missing") << QByteArray() << unread;
    QTest::newRow("one byte") << QByteArray(1, '\0') << unread;
    QTest::newRow("collection just before the kernel's limit")
        << QByteArray(4090, '\0') + keyboard << read;
    QTest::newRow("collection behind the kernel's limit")
        << QByteArray(4096, '\0') + keyboard << unread;
}

void tst_HidPlugHook_linux::descriptorIsRead()
{
    QFETCH(const QByteArray, descriptor);
    QFETCH(const Plug, arrival);
    Testbed testbed;
    PlugRecorder recorder;
    const Watch watch;
    testbed.addHidInterface(testbed.addUsbDevice(kTarget),
                            {0, 0, {}, {}, {{"report_descriptor", descriptor}}});
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({arrival}));
}

void tst_HidPlugHook_linux::announcedOnceMore_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::newRow("arrival") << QByteArray("add");
    QTest::newRow("change") << QByteArray("change");
    QTest::newRow("binding") << QByteArray("bind");
    QTest::newRow("unknown") << QByteArray("dance");
}

void tst_HidPlugHook_linux::announcedOnceMore()
{
    QFETCH(const QByteArray, action);
    Testbed testbed;
    const QString node = testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);
    PlugRecorder recorder;
    const Watch watch;
    testbed.announce(node, action);
    settle(testbed, recorder);
    QCOMPARE(recorder.plugs, QList<Plug>({kArrival}));
}

void tst_HidPlugHook_linux::goneBeforeItIsLookedAt()
{
    Testbed testbed;
    const QString node = testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);
    PlugRecorder recorder;
    const Watch watch;
    testbed.announce(node, "remove");
    testbed.announce(node, "remove"); // the device is no longer known
    settle(testbed, recorder);
    QCOMPARE(recorder.plugs, QList<Plug>({kArrival, removal(kArrival)}));
}

void tst_HidPlugHook_linux::burst()
{
    Testbed testbed;
    PlugRecorder recorder;
    const Watch watch;
    QStringList expected;
    for (int i = 0; i < 60; ++i) {
        expected.append(QString::number(i));
        testbed.addHidInterface(testbed.addUsbDevice({1, 1, expected.last(), ""}), kTrigger);
    }
    settle(testbed, recorder);
    QCOMPARE(namesOf(recorder.plugs), expected);
}

void tst_HidPlugHook_linux::nothingDuringStartUpdate()
{
    Testbed testbed;
    const QString device = testbed.addUsbDevice(kTarget);
    const QString node = testbed.addHidInterface(device, kTrigger);
    PlugRecorder recorder;
    const Watch watch;
    DeviceComm &deviceComm = DeviceComm::GetInst();
    testbed.addHidInterface(device, {1, 6, {}, {}});

    QVERIFY(deviceComm.startUpdate(0x7F3C, 0x0C51));
    QCOMPARE(testbed.reports(node).size(), 1);
    QCOMPARE(recorder.plugs.size(), 0);

    Plug second = kArrival;
    second.usagePage = 1;
    second.usage = 6;
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({kArrival, second}));
}

void tst_HidPlugHook_linux::withoutCallback()
{
    Testbed testbed;
    testbed.addHidInterface(testbed.addUsbDevice({3, 3, "first", ""}), kTrigger);
    const QString second = testbed.addUsbDevice({4, 4, "second", ""});
    testbed.addHidInterface(second, kTrigger);
    PlugRecorder recorder;
    recorder.onPlug = [] {
        register_hid_plug_callback(nullptr, nullptr);
    };
    const Watch watch;
    AWAIT_COMPARE(recorder.plugs.size(), 1);
    recorder.plugs.clear();

    // The second arrival was not reported, but the properties are known.
    register_hid_plug_callback(PlugRecorder::record, &recorder);
    testbed.removeUsbDevice(second);
    AWAIT_COMPARE(recorder.plugs, QList<Plug>({{0, 4, 4, 0x74, 0xFF31, "second"}}));
}

QTEST_GUILESS_MAIN(tst_HidPlugHook_linux)
#include "tst_HidPlugHook_linux.moc"
