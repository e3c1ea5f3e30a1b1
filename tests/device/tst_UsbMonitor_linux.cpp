// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/UsbMonitor.h"
#include "device/UsbMonitor_linux.h"
#include "device/UsbMonitor_linux_p.h"
#include "simulator/Testbed.h"
#include "tests/device/StdoutCapture.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QtTest>

#include <dlfcn.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <future>
#include <memory>
#include <mutex>

namespace {

const Testbed::UsbDevice kTarget = {0x7F3C, 0x0C51, "Device", "0001"};
const QByteArray kNoInterface = "Unable to create a device interface: 00000013\n";

/// The devices that have been taken since the last clear(), by their path below /sys.
class Taken
{
public:
    void add(const QString &path)
    {
        const std::lock_guard lock(m_mutex);
        m_paths.append(path);
    }

    QStringList paths() const
    {
        const std::lock_guard lock(m_mutex);
        return m_paths;
    }

    void clear()
    {
        const std::lock_guard lock(m_mutex);
        m_paths.clear();
    }

private:
    mutable std::mutex m_mutex;
    QStringList m_paths;
};

Taken taken;

bool hasEnded(const std::future<int> &result)
{
    return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// init_plug on a thread of its own, which already watches.
class Monitor
{
public:
    explicit Monitor(Testbed &testbed)
    {
        taken.clear();
        testbed.addUsbDevice({1, 1, "Probe", ""});
        // It takes an attached device when everything after that is going to be noticed.
        m_result = std::async(std::launch::async, init_plug);
        QTRY_COMPARE(taken.paths().size(), 1);
        taken.clear();
    }

    ~Monitor()
    {
        if (m_result.valid() && !hasEnded()) {
            stop();
        }
    }

    Monitor(const Monitor &) = delete;
    Monitor &operator=(const Monitor &) = delete;

    bool hasEnded() const { return ::hasEnded(m_result); }

    /// What init_plug returned.
    int stop()
    {
        stop_plug();
        return m_result.get();
    }

private:
    std::future<int> m_result;
};

int openHandles()
{
    return QDir("/proc/self/fd")
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}

/// Runs init_plug where only so many more files can be opened.
int runShortOfFiles(int files)
{
    stop_plug(); // it must come back, whatever happens
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

// Each device that is taken is asked for its node, which goes through here.
extern "C" const char *udev_device_get_devnode(udev_device *device)
{
    using Function = const char *(*)(udev_device *);
    static const auto original
        = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "udev_device_get_devnode"));
    taken.add(QString(udev_device_get_devpath(device)));
    return original(device);
}

class tst_UsbMonitor_linux : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void nothingToTake_data();
    void nothingToTake();
    void oneOfTheIteratorIsTaken_data();
    void oneOfTheIteratorIsTaken();
    void plugInCountsReferences();
    void deviceWithoutNode();
    void devicesComeAndGo();
    void otherKindsAreNotNoticed();
    void oneAttachedDeviceIsTaken_data();
    void oneAttachedDeviceIsTaken();
    void failureIsPrintedFromTheLoop();
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
    QCOMPARE(capture.text(), kNoInterface);
    QVERIFY(iterator.devices.empty());
}

void tst_UsbMonitor_linux::devicesComeAndGo()
{
    Testbed testbed;
    Monitor monitor(testbed);
    const QString first = testbed.addUsbDevice(kTarget);
    QTRY_COMPARE(taken.paths(), QStringList({first}));
    testbed.removeUsbDevice(first);
    QTRY_COMPARE(taken.paths(), QStringList({first, first}));
    const QString second = testbed.addUsbDevice(kTarget);
    QTRY_COMPARE(taken.paths(), QStringList({first, first, second}));
    QVERIFY(!monitor.hasEnded());
    QCOMPARE(monitor.stop(), 0);
}

void tst_UsbMonitor_linux::otherKindsAreNotNoticed()
{
    Testbed testbed;
    Monitor monitor(testbed);
    // Its interfaces and what hangs on them are announced, too.
    const QString device = testbed.addUsbDevice(kTarget);
    testbed.addHidInterface(device, {0xFF31, 0x74, {}, {}});
    testbed.addSerialPort(device, "/dev/cu.usbmodem14201");
    testbed.removeUsbDevice(device);
    const QString last = testbed.addUsbDevice(kTarget);
    QTRY_VERIFY(taken.paths().contains(last));
    QCOMPARE(taken.paths().count(device), 2);
    QCOMPARE(taken.paths().size(), 3);
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
        // Interfaces are no devices.
        testbed.addHidInterface(paths.last(), {0xFF31, 0x74, {}, {}});
    }
    stop_plug();
    QCOMPARE(init_plug(), 0);
    QCOMPARE(taken.paths(), paths.mid(0, expected));
}

void tst_UsbMonitor_linux::failureIsPrintedFromTheLoop()
{
    Testbed testbed;
    StdoutCapture capture;
    const Monitor monitor(testbed);
    QCOMPARE(capture.text(), QByteArray());
    const QString nodeless = testbed.addUsbDevice({1, 1, "Nodeless", "", {{"DEVNAME", {}}}, {}});
    QTRY_COMPARE(capture.text(), kNoInterface);
    testbed.removeUsbDevice(nodeless);
    QTRY_COMPARE(capture.text(), kNoInterface + kNoInterface);
}

void tst_UsbMonitor_linux::stoppedBeforehand()
{
    Testbed testbed;
    stop_plug();
    stop_plug();
    QCOMPARE(init_plug(), 0);
    QCOMPARE(init_plug(), 0);
    // The next one has a stop of its own to wait for.
    Monitor next(testbed);
    const QString device = testbed.addUsbDevice(kTarget);
    QTRY_COMPARE(taken.paths(), QStringList({device}));
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
    QTRY_COMPARE(taken.paths().size(), 2);
    const auto ended = [&monitors] {
        return std::count_if(monitors.begin(), monitors.end(), hasEnded);
    };
    stop_plug();
    QTRY_COMPARE(ended(), 1);
    // The other one still takes devices.
    taken.clear();
    const QString device = testbed.addUsbDevice(kTarget);
    QTRY_COMPARE(taken.paths(), QStringList({device}));
    QCOMPARE(ended(), 1);
    stop_plug();
    QTRY_COMPARE(ended(), 2);
}

void tst_UsbMonitor_linux::fiftyStartsAndStops()
{
    Testbed testbed;
    testbed.addUsbDevice(kTarget);
    testbed.addUsbDevice(kTarget);
    stop_plug();
    init_plug(); // what is opened once and for all
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
    // The number is that of "too many open files".
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
