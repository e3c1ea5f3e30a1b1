// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "tests/device/HidWatch_linux.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTimer>
#include <QtTest>

#include <dlfcn.h>
#include <libudev.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>

namespace {

bool filesAreShort = false;

/// Runs this program in another role. Returns its output, or an error text if it failed.
QByteArray runAs(const QString &role)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--as", role});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        return "failed: " + process.readAllStandardError();
    }
    return process.readAllStandardOutput() + process.readAllStandardError();
}

void printPlug(int arrived, int vendorId, int productId, int /*usage*/, int /*usagePage*/,
               const wchar_t * /*productName*/, void * /*context*/)
{
    std::printf("%d %x:%x\n", arrived, static_cast<unsigned>(vendorId),
                static_cast<unsigned>(productId));
}

/// A program whose DeviceComm is destroyed after the application object.
int outliveTheApplication(int argc, char *argv[])
{
    register_hid_plug_callback(printPlug, nullptr);
    QCoreApplication application(argc, argv);
    DeviceComm::GetInst();
    QTimer::singleShot(0, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}

/// A program that exits with pending reports.
int leaveReportsBehind(int argc, char *argv[])
{
    register_hid_plug_callback(printPlug, nullptr);
    const QCoreApplication application(argc, argv);
    DeviceComm::GetInst().startUpdate(0, 0);
    return 0;
}

/// A program without an application object.
int doWithoutApplication()
{
    register_hid_plug_callback(printPlug, nullptr);
    DeviceComm::GetInst().startUpdate(0, 0);
    return 0;
}

/// A program in which the watch cannot start.
int doWithoutWatch(int argc, char *argv[])
{
    filesAreShort = true;
    return outliveTheApplication(argc, argv);
}

} // namespace

// Replaces the first call of a watch, to leave it no file descriptors.
extern "C" udev_monitor *udev_monitor_new_from_netlink(udev *udev, const char *name)
{
    using Function = udev_monitor *(*)(struct udev *, const char *);
    static const auto original
        = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "udev_monitor_new_from_netlink"));
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    if (filesAreShort) {
        const int next = dup(STDIN_FILENO);
        close(next);
        const rlimit none = {static_cast<rlim_t>(next), before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    udev_monitor *const monitor = original(udev, name);
    setrlimit(RLIMIT_NOFILE, &before);
    return monitor;
}

class tst_HidPlugWatch_linux : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void fiftyStartsAndStops();
    void endOfTheProcess_data();
    void endOfTheProcess();
};

void tst_HidPlugWatch_linux::cleanup()
{
    Patience::loseAfterFailure();
    stopHidPlugWatch();
    register_hid_plug_callback(nullptr, nullptr);
}

void tst_HidPlugWatch_linux::fiftyStartsAndStops()
{
    Testbed testbed;
    testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);
    PlugRecorder recorder;
    const auto handles = [] {
        return QDir("/proc/self/fd")
            .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
            .size();
    };
    const auto before = handles();
    const auto children = QCoreApplication::instance()->children().size();
    QList<Plug> expected;
    for (int round = 0; round < 50; ++round) {
        const Watch watch;
        expected.append(kArrival);
        AWAIT_COMPARE(recorder.plugs, expected);
    }
    // GLib, which the simulated devices use, opens one handle whenever its thread comes to it.
    QVERIFY(handles() <= before + 1);
    QCOMPARE(QCoreApplication::instance()->children().size(), children);
}

void tst_HidPlugWatch_linux::endOfTheProcess_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QByteArray>("printed");
    QTest::newRow("application object is destroyed first")
        << "outlive" << QByteArray("1 7f3c:c51\n");
    QTest::newRow("pending reports") << "leave" << QByteArray();
    QTest::newRow("no application object") << "without" << QByteArray();
    QTest::newRow("watch cannot start") << "short" << QByteArray();
}

void tst_HidPlugWatch_linux::endOfTheProcess()
{
    QFETCH(const QString, role);
    Testbed testbed;
    testbed.addHidInterface(testbed.addUsbDevice(kTarget), kTrigger);
    QTEST(runAs(role), "printed");
}

int main(int argc, char *argv[])
{
    const QString role = argc == 3 && qstrcmp(argv[1], "--as") == 0 ? argv[2] : "";
    if (role == "outlive") {
        return outliveTheApplication(argc, argv);
    }
    if (role == "leave") {
        return leaveReportsBehind(argc, argv);
    }
    if (role == "without") {
        return doWithoutApplication();
    }
    if (role == "short") {
        return doWithoutWatch(argc, argv);
    }
    QCoreApplication application(argc, argv);
    tst_HidPlugWatch_linux test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_HidPlugWatch_linux.moc"
