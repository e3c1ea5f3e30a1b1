// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/SimulatedDevice.h"
#include "simulator/dfu/DfuPackage.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

namespace {

using State = SimulatedDevice::State;

const QString kKeyboard = "/dev/hidraw0";
const QString kTrigger = "/dev/hidraw1";
const QString kPort = "/dev/cu.usbmodem14201";

QByteArray enterBootloader()
{
    return QByteArray("\xAA\xBB") + QByteArray(62, '\0');
}

/// The number of bytes that a program could write to the node; -1 if it could not open it.
qint64 send(const QString &node, const QByteArray &report)
{
    const int file = ::open(qPrintable(node), O_RDWR | O_CLOEXEC);
    if (file < 0) {
        return -1;
    }
    const auto written = ::write(file, report.constData(), static_cast<std::size_t>(report.size()));
    ::close(file);
    return qMax<qint64>(written, 0);
}

QStringList ports()
{
    QStringList result;
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos) {
        result.append(info.systemLocation());
    }
    return result;
}

DeviceBehaviour with(const QStringList &faults)
{
    DeviceBehaviour behaviour;
    behaviour.returnAfter = 100;
    for (const QString &fault : faults) {
        if (!behaviour.addFault(fault)) {
            qFatal("unknown fault %s", qPrintable(fault));
        }
    }
    return behaviour;
}

/// Runs the stand-in for the vendor's tool with a package.
class Tool
{
public:
    Tool()
        : package(DfuPackage::forFirmware(QByteArray(30000, 'x')))
    {
        package.write(m_folder.filePath("dfu.zip"));
        m_process.start(STAND_IN_TOOL,
                        {"dfu", "usb-serial", "-pkg", m_folder.filePath("dfu.zip"), "-p", kPort});
    }

    bool hasEnded() const { return m_process.state() == QProcess::NotRunning; }
    int exitCode() const { return m_process.exitCode(); }

    DfuPackage package;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace

Q_DECLARE_METATYPE(SimulatedDevice::State)

class tst_SimulatedDevice : public QObject
{
    Q_OBJECT

private slots:
    void onlyItsReportMakesItLeave_data();
    void onlyItsReportMakesItLeave();
    void hasItsIdentity_data();
    void hasItsIdentity();
    void comesBackAfterAWhile();
    void doesNotComeBack();
    void cannotBeReached_data();
    void cannotBeReached();
    void hasSeveralPorts();
    void isFlashed_data();
    void isFlashed();
    void tellsWhyItRefuses();
    void isFlashedTwice();
    void isSilent();
    void canBeUnpluggedAtAnyTime_data();
    void canBeUnpluggedAtAnyTime();
};

void tst_SimulatedDevice::onlyItsReportMakesItLeave_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<bool>("leaves");
    QTest::newRow("its report") << kTrigger << enterBootloader() << true;
    QTest::newRow("another command")
        << kTrigger << QByteArray("\xAA\xBC") + QByteArray(62, '\0') << false;
    QTest::newRow("one byte short") << kTrigger << enterBootloader().left(63) << false;
    QTest::newRow("one byte long") << kTrigger << enterBootloader() + '\0' << false;
    QTest::newRow("to the keyboard") << kKeyboard << enterBootloader() << false;
}

void tst_SimulatedDevice::onlyItsReportMakesItLeave()
{
    QFETCH(const QString, node);
    QFETCH(const QByteArray, report);
    QFETCH(const bool, leaves);
    Testbed testbed;
    SimulatedDevice device(testbed, with({}));
    device.startInApplication();

    QCOMPARE(send(node, report), static_cast<qint64>(report.size()));

    QTRY_COMPARE(device.reports(), QList<QByteArray>{report});
    QCOMPARE(device.state(), leaves ? State::Absent : State::Application);
    QCOMPARE(device.isRestarting(), leaves);
}

void tst_SimulatedDevice::hasItsIdentity_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("descriptor");
    QTest::newRow("a report with an id")
        << QByteArray("\x01\x02\x03") << 5
        << QByteArray::fromHex("0634120956a10185010956150026ff00750895049102c0");
    QTest::newRow("the largest report")
        << QByteArray("\xFF") << 256
        << QByteArray::fromHex("0634120956a10185ff0956150026ff00750895ff9102c0");
    QTest::newRow("a report without an id")
        << QByteArray("\0\x02", 2) << 2
        << QByteArray::fromHex("0634120956a1010956150026ff00750895019102c0");
}

void tst_SimulatedDevice::hasItsIdentity()
{
    QFETCH(const QByteArray, begin);
    QFETCH(const int, size);
    QFETCH(const QByteArray, descriptor);
    DeviceDescription description{with({})};
    description.identity = {0x1111, 0x2222, 0x3333, "7", 0x1234, 0x56, begin, size};
    Testbed testbed;
    SimulatedDevice device(testbed, description);
    device.start();
    QFile node("/sys/class/hidraw/hidraw1/device/report_descriptor");
    QVERIFY(node.open(QIODevice::ReadOnly));
    QCOMPARE(node.readAll().toHex(), descriptor.toHex());
    QFile id("/sys/class/hidraw/hidraw1/device/uevent");
    QVERIFY(id.open(QIODevice::ReadOnly));
    QVERIFY(id.readAll().contains("HID_ID=0003:00001111:00002222\n"));

    send(kTrigger, begin + QByteArray(size - int(begin.size()), 'x'));

    QTRY_COMPARE(ports(), QStringList{kPort});
    const QSerialPortInfo port = QSerialPortInfo::availablePorts().constFirst();
    QCOMPARE(port.vendorIdentifier(), quint16(0x1111));
    QCOMPARE(port.productIdentifier(), quint16(0x3333));
    QCOMPARE(port.serialNumber(), QString("7"));
}

void tst_SimulatedDevice::comesBackAfterAWhile()
{
    constexpr int kWhile = 300;
    DeviceBehaviour behaviour;
    behaviour.returnAfter = kWhile;
    Testbed testbed;
    SimulatedDevice device(testbed, behaviour);
    device.startInApplication();
    QCOMPARE(ports(), QStringList());
    send(kTrigger, enterBootloader());
    QTRY_COMPARE(device.state(), State::Absent);
    QElapsedTimer sinceLeft;
    sinceLeft.start();
    QCOMPARE(send(kTrigger, enterBootloader()), -1);

    QTRY_COMPARE(ports(), QStringList{kPort});

    QVERIFY(sinceLeft.elapsed() >= kWhile - 5);
    QCOMPARE(device.state(), State::Bootloader);
}

void tst_SimulatedDevice::doesNotComeBack()
{
    Testbed testbed;
    SimulatedDevice device(testbed, with({"never-return"}));
    device.startInApplication();

    send(kTrigger, enterBootloader());

    QTRY_COMPARE(device.state(), State::Absent);
    QVERIFY(!device.isRestarting());
}

void tst_SimulatedDevice::cannotBeReached_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<qint64>("sent");
    QTest::addColumn<QList<QByteArray>>("failedReports");
    QTest::newRow("cannot be opened") << "open-fails" << qint64(-1) << QList<QByteArray>();
    QTest::newRow("cannot be written to")
        << "write-fails" << qint64(0) << QList<QByteArray>{enterBootloader()};
}

void tst_SimulatedDevice::cannotBeReached()
{
    QFETCH(const QString, fault);
    QFETCH(const qint64, sent);
    Testbed testbed;
    SimulatedDevice device(testbed, with({fault}));
    device.startInApplication();

    QCOMPARE(send(kTrigger, enterBootloader()), sent);

    QCoreApplication::processEvents();
    QCOMPARE(device.reports(), QList<QByteArray>());
    QTEST(device.failedReports(), "failedReports");
    QCOMPARE(device.state(), State::Application);
}

void tst_SimulatedDevice::hasSeveralPorts()
{
    Testbed testbed;
    SimulatedDevice device(testbed, with({"several-ports"}));

    device.startInBootloader();

    QCOMPARE(ports().size(), 3);
    QCOMPARE(ports().constFirst(), kPort);
}

void tst_SimulatedDevice::isFlashed_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<State>("endsAs");
    QTest::newRow("no fault") << QString() << true << State::Application;
    QTest::newRow("slow") << "slow=5" << true << State::Application;
    QTest::newRow("cable pulled") << "drop-out=9000" << false << State::Absent;
    QTest::newRow("wrong checksums") << "wrong-crc" << false << State::Bootloader;
    QTest::newRow("hash not calculated") << "no-hash" << false << State::Bootloader;
}

void tst_SimulatedDevice::isFlashed()
{
    QFETCH(const QString, fault);
    QFETCH(const bool, succeeds);
    QFETCH(const State, endsAs);
    Testbed testbed;
    SimulatedDevice device(testbed, with(fault.isEmpty() ? QStringList() : QStringList{fault}));
    device.startInBootloader();

    const Tool tool;
    QTRY_VERIFY_WITH_TIMEOUT(tool.hasEnded(), 30000);

    QCOMPARE(tool.exitCode() == 0, succeeds);
    QCOMPARE(device.image(), succeeds ? tool.package.firmware : QByteArray());
    QTRY_VERIFY(!device.isRestarting());
    QCOMPARE(device.state(), endsAs);
}

void tst_SimulatedDevice::tellsWhyItRefuses()
{
    DeviceDescription description{with({})};
    description.bootloader.hardwareVersion = 53;
    Testbed testbed;
    SimulatedDevice device(testbed, description);
    QList<QByteArray> refusals;
    connect(&device, &SimulatedDevice::happened, this, [&refusals](const DeviceEvent &event) {
        if (event.name == "refused") {
            refusals.append(event.toJson());
        }
    });
    device.startInBootloader();
    const QByteArray refusal
        = R"({"code":"0b06","event":"refused","reason":"the firmware is for other hardware"})";

    for (int i = 1; i <= 2; ++i) {
        const Tool tool;
        QTRY_VERIFY_WITH_TIMEOUT(tool.hasEnded(), 20000);
        QTRY_COMPARE(refusals, QVector<QByteArray>(i, refusal).toList());
        QCOMPARE(device.refusal(), QString("the firmware is for other hardware"));
    }
}

void tst_SimulatedDevice::isFlashedTwice()
{
    Testbed testbed;
    SimulatedDevice device(testbed, with({}));
    device.startInBootloader();
    for (int i = 0; i < 2; ++i) {
        Tool tool;
        QTRY_VERIFY_WITH_TIMEOUT(tool.hasEnded(), 20000);
        QCOMPARE(tool.exitCode(), 0);
        QCOMPARE(device.image(), tool.package.firmware);
        QTRY_COMPARE(device.state(), SimulatedDevice::State::Application);
        device.unplug();
        device.startInBootloader();
    }
}

void tst_SimulatedDevice::isSilent()
{
    constexpr int kLongEnough = 300;
    const QByteArray ping = QByteArray::fromHex("0901c0");
    for (const bool silent : {false, true}) {
        Testbed testbed;
        SimulatedDevice device(testbed, silent ? with({"silent"}) : with({}));
        device.startInBootloader();
        QSerialPort port(kPort);
        QVERIFY(port.open(QIODevice::ReadWrite));
        QSignalSpy answered(&port, &QSerialPort::readyRead);

        port.write(ping);

        QCOMPARE(answered.wait(kLongEnough), !silent);
    }
}

void tst_SimulatedDevice::canBeUnpluggedAtAnyTime_data()
{
    QTest::addColumn<State>("state");
    QTest::newRow("absent already") << State::Absent;
    QTest::newRow("in its application") << State::Application;
    QTest::newRow("in its bootloader") << State::Bootloader;
}

void tst_SimulatedDevice::canBeUnpluggedAtAnyTime()
{
    QFETCH(const State, state);
    Testbed testbed;
    SimulatedDevice device(testbed, with({}));
    if (state == State::Application) {
        device.startInApplication();
    } else if (state == State::Bootloader) {
        device.startInBootloader();
    }
    QCOMPARE(device.state(), state);

    device.unplug();

    QCOMPARE(device.state(), State::Absent);
    QCOMPARE(ports(), QStringList());
    QCOMPARE(send(kTrigger, enterBootloader()), -1);
}

QTEST_GUILESS_MAIN(tst_SimulatedDevice)
#include "tst_SimulatedDevice.moc"
