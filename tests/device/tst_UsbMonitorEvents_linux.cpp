// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/Testbed.h"
#include "tests/device/Patience.h"
#include "tests/device/StdoutCapture.h"
#include "tests/device/UsbTaken_linux.h"

#include <QtTest>

#include <atomic>
#include <csignal>

namespace {

const Testbed::UsbDevice kTarget = {0x7F3C, 0x0C51, "Device", "0001"};
const QByteArray kNoInterface = "Unable to create a device interface: 00000013\n";

std::atomic<int> signalsHandled = 0;

/// Installs a handler for SIGUSR1 that does nothing, during its lifetime.
class CountedSignal
{
public:
    CountedSignal()
    {
        signalsHandled = 0;
        struct sigaction counting = {};
        counting.sa_handler = [](int) {
            ++signalsHandled;
        };
        sigaction(SIGUSR1, &counting, &m_previous);
    }

    ~CountedSignal() { sigaction(SIGUSR1, &m_previous, nullptr); }

    CountedSignal(const CountedSignal &) = delete;
    CountedSignal &operator=(const CountedSignal &) = delete;

private:
    struct sigaction m_previous = {};
};

} // namespace

class tst_UsbMonitorEvents_linux : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void devicesComeAndGo();
    void otherKindsAreNotNoticed();
    void thoseLeftFromTheStartComeFirst();
    void eventWithoutAction();
    void signalsEndNothing();
    void failureIsPrintedFromTheLoop();
};

void tst_UsbMonitorEvents_linux::cleanup()
{
    Patience::loseAfterFailure();
    hideActions(false);
}

void tst_UsbMonitorEvents_linux::devicesComeAndGo()
{
    Testbed testbed;
    UsbMonitorThread monitor(testbed);
    const QString first = testbed.addUsbDevice(kTarget);
    AWAIT_COMPARE(taken.paths(), QStringList({first}));
    testbed.removeUsbDevice(first);
    AWAIT_COMPARE(taken.paths(), QStringList({first, first}));
    const QString second = testbed.addUsbDevice(kTarget);
    AWAIT_COMPARE(taken.paths(), QStringList({first, first, second}));
    QVERIFY(!monitor.hasEnded());
    QCOMPARE(monitor.stop(), 0);
}

void tst_UsbMonitorEvents_linux::otherKindsAreNotNoticed()
{
    Testbed testbed;
    const UsbMonitorThread monitor(testbed);
    // Its interfaces and their devices are announced as well.
    const QString device = testbed.addUsbDevice(kTarget);
    testbed.addHidInterface(device, {0xFF31, 0x74, {}, {}});
    testbed.addSerialPort(device, "/dev/cu.usbmodem14201");
    testbed.removeUsbDevice(device);
    const QString last = testbed.addUsbDevice(kTarget);
    AWAIT_VERIFY(taken.paths().contains(last));
    QCOMPARE(taken.paths().count(device), 2);
    QCOMPARE(taken.paths().size(), 3);
}

void tst_UsbMonitorEvents_linux::thoseLeftFromTheStartComeFirst()
{
    Testbed testbed;
    QStringList left;
    for (int i = 0; i < 4; ++i) {
        left.append(testbed.addUsbDevice(kTarget));
    }
    const UsbMonitorThread monitor(testbed);
    const QString takenAtTheStart = left.takeFirst();
    // Removed devices do not queue behind attached ones.
    testbed.removeUsbDevice(takenAtTheStart);
    AWAIT_COMPARE(taken.paths(), QStringList(takenAtTheStart));
    for (int i = 0; i < left.size(); ++i) {
        testbed.addUsbDevice(kTarget);
    }
    AWAIT_COMPARE(taken.paths(), QStringList(takenAtTheStart) + left);
}

void tst_UsbMonitorEvents_linux::eventWithoutAction()
{
    Testbed testbed;
    UsbMonitorThread monitor(testbed);
    hideActions(true);
    testbed.removeUsbDevice(testbed.addUsbDevice(kTarget));
    AWAIT_COMPARE(hiddenActionsAsked(), 4); // both monitors see both events
    hideActions(false);
    const QString device = testbed.addUsbDevice(kTarget);
    AWAIT_COMPARE(taken.paths(), QStringList({device}));
    QCOMPARE(monitor.stop(), 0);
}

void tst_UsbMonitorEvents_linux::signalsEndNothing()
{
    Testbed testbed;
    const CountedSignal counted;
    UsbMonitorThread monitor(testbed);
    // Sends several, since the first may arrive before the watch is waiting.
    for (int count = 1; count <= 10; ++count) {
        QCOMPARE(pthread_kill(monitor.handle(), SIGUSR1), 0);
        AWAIT_VERIFY(signalsHandled == count || monitor.hasEnded());
    }
    const QString device = testbed.addUsbDevice(kTarget);
    AWAIT_COMPARE(taken.paths(), QStringList({device}));
    QVERIFY(!monitor.hasEnded());
    QCOMPARE(monitor.stop(), 0);
}

void tst_UsbMonitorEvents_linux::failureIsPrintedFromTheLoop()
{
    Testbed testbed;
    StdoutCapture capture;
    const UsbMonitorThread monitor(testbed);
    QCOMPARE(capture.text(), QByteArray());
    const QString nodeless = testbed.addUsbDevice({1, 1, "Nodeless", "", {{"DEVNAME", {}}}, {}});
    AWAIT_COMPARE(capture.text(), kNoInterface);
    testbed.removeUsbDevice(nodeless);
    AWAIT_COMPARE(capture.text(), kNoInterface + kNoInterface);
}

QTEST_GUILESS_MAIN(tst_UsbMonitorEvents_linux)
#include "tst_UsbMonitorEvents_linux.moc"
