// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/Udev_linux_p.h"
#include "device/UsbMonitor.h"
#include "device/UsbMonitor_linux.h"
#include "simulator/testbed/Testbed.h"
#include "tests/device/Patience.h"
#include "tests/device/StdoutCapture.h"
#include "tests/device/UsbTaken_linux.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QtTest>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <future>
#include <memory>

namespace {

const Testbed::UsbDevice kTarget = {0x7F3C, 0x0C51, "Device", "0001"};

int openHandles()
{
    const QDir handles("/proc/self/fd");
    return int(handles.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size());
}

/// Runs init_plug() with room for only a few more open files.
int runShortOfFiles(int files)
{
    stop_plug(); // makes sure that it returns
    const int next = dup(STDIN_FILENO);
    close(next);
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit limits = {static_cast<rlim_t>(next) + static_cast<rlim_t>(files), before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &limits);
    const int result = init_plug();
    setrlimit(RLIMIT_NOFILE, &before);
    std::printf("%d\n", result);
    return 0;
}

} // namespace

class tst_UsbMonitor_linux : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Patience::loseAfterFailure(); }
    void nothingToTake_data();
    void nothingToTake();
    void oneOfTheIteratorIsTaken_data();
    void oneOfTheIteratorIsTaken();
    void plugInCountsReferences();
    void deviceWithoutNode();
    void oneAttachedDeviceIsTaken_data();
    void oneAttachedDeviceIsTaken();
    void stoppedBeforehand();
    void oneStopEndsOne();
    void fiftyStartsAndStops();
    void registrationFails_data();
    void registrationFails();
};

void tst_UsbMonitor_linux::init()
{
    taken.clear();
}

void tst_UsbMonitor_linux::nothingToTake_data()
{
    QTest::addColumn<bool>("iteratorGiven");
    QTest::newRow("no iterator") << false;
    QTest::newRow("empty iterator") << true;
}

void tst_UsbMonitor_linux::nothingToTake()
{
    QFETCH(const bool, iteratorGiven);
    UsbDeviceIterator empty;
    const io_iterator_t iterator = iteratorGiven ? &empty : nullptr;
    QVERIFY(getUSBDeviceInterface(iterator) == nullptr);
    usbDeviceAdded(nullptr, iterator);
    usbDeviceRemoved(nullptr, iterator);
    QCOMPARE(taken.paths(), QStringList());
}

void tst_UsbMonitor_linux::oneOfTheIteratorIsTaken_data()
{
    QTest::addColumn<bool>("arrival");
    QTest::newRow("arrival") << true;
    QTest::newRow("removal") << false;
}

void tst_UsbMonitor_linux::oneOfTheIteratorIsTaken()
{
    QFETCH(const bool, arrival);
    Testbed testbed;
    const Udev udev(udev_new());
    UsbDeviceIterator iterator;
    QStringList paths;
    for (int i = 0; i < 3; ++i) {
        paths.append(testbed.addUsbDevice(kTarget));
        iterator.devices.emplace_back(
            udev_device_new_from_syspath(udev.get(), qPrintable("/sys" + paths.last())));
    }
    for (int i = 0; i < 2; ++i) {
        (arrival ? usbDeviceAdded : usbDeviceRemoved)(this, &iterator);
        QCOMPARE(iterator.devices.size(), std::size_t(2 - i));
        QCOMPARE(taken.paths(), paths.mid(0, i + 1));
    }
}

void tst_UsbMonitor_linux::plugInCountsReferences()
{
    Testbed testbed;
    const Udev udev(udev_new());
    UsbDeviceIterator iterator;
    iterator.devices.emplace_back(udev_device_new_from_syspath(
        udev.get(), qPrintable("/sys" + testbed.addUsbDevice(kTarget))));
    IOCFPlugInInterface **const plugIn = getUSBDeviceInterface(&iterator);
    QVERIFY(plugIn != nullptr);
    QCOMPARE((*plugIn)->AddRef(plugIn), 2U);
    QCOMPARE((*plugIn)->Release(plugIn), 1U);
    QCOMPARE((*plugIn)->Release(plugIn), 0U);
}

void tst_UsbMonitor_linux::deviceWithoutNode()
{
    Testbed testbed;
    const Udev udev(udev_new());
    UsbDeviceIterator iterator;
    const QString path = testbed.addUsbDevice({1, 1, "Nodeless", "", {{"DEVNAME", {}}}, {}});
    iterator.devices.emplace_back(
        udev_device_new_from_syspath(udev.get(), qPrintable("/sys" + path)));
    StdoutCapture capture;
    QVERIFY(getUSBDeviceInterface(&iterator) == nullptr);
    QCOMPARE(capture.text(), QByteArray("Unable to create a device interface: 00000013\n"));
    QVERIFY(iterator.devices.empty());
}

void tst_UsbMonitor_linux::oneAttachedDeviceIsTaken_data()
{
    QTest::addColumn<int>("attached");
    QTest::addColumn<int>("expected");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("three") << 3 << 1;
}

void tst_UsbMonitor_linux::oneAttachedDeviceIsTaken()
{
    QFETCH(const int, attached);
    QFETCH(const int, expected);
    Testbed testbed;
    QStringList paths;
    for (int i = 0; i < attached; ++i) {
        paths.append(testbed.addUsbDevice(kTarget));
        // Interfaces do not count as devices.
        testbed.addHidInterface(paths.last(), {0xFF31, 0x74, {}, {}});
    }
    stop_plug();
    QCOMPARE(init_plug(), 0);
    QCOMPARE(taken.paths(), paths.mid(0, expected));
}

void tst_UsbMonitor_linux::stoppedBeforehand()
{
    Testbed testbed;
    stop_plug();
    stop_plug();
    QCOMPARE(init_plug(), 0);
    QCOMPARE(init_plug(), 0);
    // The next watch waits for another stop.
    UsbMonitorThread next(testbed);
    const QString device = testbed.addUsbDevice(kTarget);
    AWAIT_COMPARE(taken.paths(), QStringList({device}));
    QVERIFY(!next.hasEnded());
    QCOMPARE(next.stop(), 0);
}

void tst_UsbMonitor_linux::oneStopEndsOne()
{
    Testbed testbed;
    testbed.addUsbDevice(kTarget);
    std::array<std::future<int>, 2> monitors;
    for (auto &monitor : monitors) {
        monitor = std::async(std::launch::async, init_plug);
    }
    AWAIT_COMPARE(taken.paths().size(), 2);
    const auto ended = [&monitors] {
        return std::count_if(monitors.begin(), monitors.end(), hasEnded);
    };
    stop_plug();
    AWAIT_COMPARE(ended(), 1);
    // The other watch still takes devices.
    taken.clear();
    const QString device = testbed.addUsbDevice(kTarget);
    AWAIT_COMPARE(taken.paths(), QStringList({device}));
    QCOMPARE(ended(), 1);
    stop_plug();
    AWAIT_COMPARE(ended(), 2);
}

void tst_UsbMonitor_linux::fiftyStartsAndStops()
{
    Testbed testbed;
    testbed.addUsbDevice(kTarget);
    testbed.addUsbDevice(kTarget);
    stop_plug();
    init_plug(); // opens the files that stay open
    const int before = openHandles();
    for (int round = 0; round < 50; ++round) {
        stop_plug();
        QCOMPARE(init_plug(), 0);
    }
    QCOMPARE(openHandles(), before);
    QCOMPARE(taken.paths().size(), 51);
}

void tst_UsbMonitor_linux::registrationFails_data()
{
    QTest::addColumn<QString>("files");
    QTest::addColumn<QByteArray>("printed");
    // 0x18 is EMFILE.
    QTest::newRow("arrivals") << "0"
                              << QByteArray("Unable to register device added notification: "
                                            "00000018\n55\n");
    QTest::newRow("removals") << "1"
                              << QByteArray("Unable to register device removed notification: "
                                            "00000018\n57\n");
    QTest::newRow("none") << "20" << QByteArray("0\n");
}

void tst_UsbMonitor_linux::registrationFails()
{
    QFETCH(const QString, files);
    const Testbed testbed;
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--files", files});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    QTEST(process.readAllStandardOutput(), "printed");
}

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--files") == 0) {
        return runShortOfFiles(QByteArray(argv[2]).toInt());
    }
    QCoreApplication application(argc, argv);
    tst_UsbMonitor_linux test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_UsbMonitor_linux.moc"
