// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/LibraryHooks.h"
#include "tests/reliability/Outcome.h"

#include <QtTest>

#include <numeric>

namespace {

const char *const kPort = "/dev/cu.usbmodem14201";

const Outcome kRuns = {"Upgrading, please do not plug or unplug the device!", false, 0, 1};
const Outcome kNoPort = {"Find Upgrade Device Error!", true, 0, 0};

constexpr int kNever = -1;

const Testbed::UsbDevice kTarget = {0x7F3C, 0x0C51, "Target", "0001"};
const Testbed::HidInterface kTrigger = {0xFF31, 0x74, {}, {}};

using Setting = std::function<QStringList(UpgradeStage &)>;

/// A device with one interface.
Setting oneInterface(int vendorId, int productId, int usagePage, int usage)
{
    return [=](UpgradeStage &stage) {
        const QString usb = stage.testbed->addUsbDevice({vendorId, productId, "Device", "2"});
        return QStringList(stage.testbed->addHidInterface(usb, {usagePage, usage, {}, {}}));
    };
}

/// The target with two interfaces, of which some cannot be opened.
Setting twoInterfaces(bool firstFails, bool secondFails)
{
    return [=](UpgradeStage &stage) {
        const QString usb = stage.testbed->addUsbDevice(kTarget);
        QStringList nodes = {stage.testbed->addHidInterface(usb, kTrigger),
                             stage.testbed->addHidInterface(usb, kTrigger)};
        stage.testbed->setOpenFails(nodes.at(0), firstFails);
        stage.testbed->setOpenFails(nodes.at(1), secondFails);
        return nodes;
    };
}

QStringList writeFails(UpgradeStage &stage)
{
    const QString usb = stage.testbed->addUsbDevice(kTarget);
    const QString node = stage.testbed->addHidInterface(usb, kTrigger);
    stage.testbed->setWriteFails(node, true);
    return {node};
}

QStringList goneBeforeOpen(UpgradeStage &stage)
{
    const QString usb = stage.testbed->addUsbDevice(kTarget);
    stage.testbed->addHidInterface(usb, kTrigger);
    LibraryHooks::beforeHidOpen = [&stage, usb] {
        stage.testbed->removeUsbDevice(usb);
    };
    return {};
}

} // namespace

Q_DECLARE_METATYPE(Setting)

/// What is wrong with the device, and what one click then leads to.
class tst_DeviceFaults : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_stage = std::make_unique<UpgradeStage>(); }
    void cleanup();
    void port_data();
    void port();
    void trigger_data();
    void trigger();

private:
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_DeviceFaults::cleanup()
{
    LibraryHooks::insteadOfSleep = {};
    LibraryHooks::beforeHidOpen = {};
    m_stage.reset();
}

void tst_DeviceFaults::port_data()
{
    QTest::addColumn<QStringList>("early");
    QTest::addColumn<int>("lateAfter");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("chosen");

    const QStringList none;
    QTest::newRow("no port") << none << kNever << kNoPort << "";
    QTest::newRow("late port, 0.5 s") << none << 500 << kRuns << kPort;
    QTest::newRow("late port, 1 s") << none << 1000 << kRuns << kPort;
    QTest::newRow("late port, 1.9 s") << none << 1900 << kRuns << kPort;
    QTest::newRow("too late, 2.5 s") << none << 2500 << kNoPort << "";
    QTest::newRow("early port") << QStringList(kPort) << kNever << kRuns << kPort;
    QTest::newRow("two ports") << QStringList{"/dev/cu.usbmodem1", "/dev/cu.usbmodem2"} << kNever
                               << kRuns << "/dev/cu.usbmodem1";
    QTest::newRow("upper-case name")
        << QStringList("/dev/CU.USBMODEM14201") << kNever << kNoPort << "";
}

void tst_DeviceFaults::port()
{
    QFETCH(QStringList, early);
    QFETCH(int, lateAfter);
    QFETCH(Outcome, outcome);
    QFETCH(QString, chosen);

    for (const QString &node : early) {
        m_stage->addPort(node);
    }
    // The wait goes by at once: what would have come in its time is there at its end.
    int waited = 0;
    LibraryHooks::insteadOfSleep = [&](unsigned long secs) {
        const int before = waited;
        waited += static_cast<int>(secs) * 1000;
        if (before < lateAfter && lateAfter <= waited) {
            m_stage->addPort(kPort);
        }
    };
    m_stage->click();
    if (lateAfter > waited) {
        m_stage->addPort(kPort);
    }
    QTRY_COMPARE(m_stage->tool->starts(), outcome.processes);
    QCOMPARE(Outcome::of(*m_stage), outcome);
    QCOMPARE(m_stage->tool->arguments().value(5), chosen);
}

void tst_DeviceFaults::trigger_data()
{
    QTest::addColumn<Setting>("setting");
    QTest::addColumn<QList<int>>("tries"); // to open each interface
    QTest::addColumn<int>("reports");
    QTest::addColumn<Outcome>("outcome");

    using L = QList<int>;
    QTest::newRow("nothing wrong")
        << oneInterface(0x7F3C, 0x0C51, 0xFF31, 0x74) << L{1} << 1 << kRuns;
    QTest::newRow("wrong vendor") << oneInterface(0x7F3D, 0x0C51, 0xFF31, 0x74) << L{0} << 0
                                  << kNoPort;
    QTest::newRow("wrong product")
        << oneInterface(0x7F3C, 0x0C50, 0xFF31, 0x74) << L{0} << 0 << kNoPort;
    QTest::newRow("wrong usage page")
        << oneInterface(0x7F3C, 0x0C51, 0xFF32, 0x74) << L{0} << 0 << kNoPort;
    QTest::newRow("wrong usage") << oneInterface(0x7F3C, 0x0C51, 0xFF31, 0x73) << L{0} << 0
                                 << kNoPort;
    QTest::newRow("two interfaces") << twoInterfaces(false, false) << L{1, 1} << 2 << kRuns;
    QTest::newRow("first open fails") << twoInterfaces(true, false) << L{1, 1} << 1 << kRuns;
    QTest::newRow("second open fails") << twoInterfaces(false, true) << L{1, 1} << 1 << kRuns;
    QTest::newRow("all opens fail") << twoInterfaces(true, true) << L{1, 1} << 0 << kNoPort;
    QTest::newRow("write fails") << Setting(writeFails) << L{1} << 0 << kNoPort;
    QTest::newRow("gone between search and open")
        << Setting(goneBeforeOpen) << L{1} << 0 << kNoPort;
}

void tst_DeviceFaults::trigger()
{
    QFETCH(Setting, setting);
    QFETCH(QList<int>, tries);
    QFETCH(int, reports);
    QFETCH(Outcome, outcome);

    const QStringList nodes = setting(*m_stage);
    int tried = 0;
    LibraryHooks::beforeHidOpen = [&tried, then = LibraryHooks::beforeHidOpen] {
        ++tried;
        if (then) {
            then();
        }
    };
    int seen = 0;
    LibraryHooks::insteadOfSleep = [&](unsigned long /*secs*/) {
        for (const QString &node : nodes) {
            seen += m_stage->testbed->reports(node).size();
        }
        if (seen > 0) {
            m_stage->addPort(kPort); // the device restarts
        }
    };
    m_stage->click();
    QCOMPARE(tried, std::accumulate(tries.begin(), tries.end(), 0));
    for (int i = 0; i < nodes.size(); ++i) {
        QCOMPARE(m_stage->testbed->handlesSoFar(nodes.at(i)), tries.at(i)); // failed ones, too
    }
    QCOMPARE(seen, reports);
    QTRY_COMPARE(m_stage->tool->starts(), outcome.processes);
    QCOMPARE(Outcome::of(*m_stage), outcome);
}

QTEST_MAIN(tst_DeviceFaults)
#include "tst_DeviceFaults.moc"
