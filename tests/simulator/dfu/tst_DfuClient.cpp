// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/DfuClient.h"

#include "simulator/dfu/DfuPackage.h"
#include "simulator/dfu/LittleEndian.h"
#include "tests/support/DfuRequests.h"
#include "tests/support/PtyDevice.h"

#include <QTemporaryFile>
#include <QtTest>

using DfuRequests::firmware;

class tst_DfuClient : public QObject
{
    Q_OBJECT

private slots:
    void flashes_data();
    void flashes();
    void keepsToASmallMtu();
    void startsOverALineWithLeftovers();
    void resumes_data();
    void resumes();
    void replacesAnotherImageThatWasBegun();
    void reportsTheDevicesRefusal_data();
    void reportsTheDevicesRefusal();
    void reportsAWrongCrc_data();
    void reportsAWrongCrc();
    void timesOut_data();
    void timesOut();
    void timesOutWhenTheDeviceTakesNothing();
    void timesOutWhileTheDeviceTalksOfOtherThings();
    void noticesThatThePortIsClosed_data();
    void noticesThatThePortIsClosed();
    void refusesStrangeAnswers_data();
    void refusesStrangeAnswers();
    void explainsAnExtendedError_data();
    void explainsAnExtendedError();
    void refusesAFileThatIsNoTerminal();
    void refusesAnEmptyPackage_data();
    void refusesAnEmptyPackage();
};

namespace {

constexpr int kShortTimeout = 100;

/// A device with \a bootloader.
auto playedBy(Bootloader &bootloader)
{
    return [&bootloader](const QByteArray &bytes) {
        return bootloader.receive(bytes);
    };
}

/// A device with \a bootloader that responds until it has received \a limit bytes.
auto silentAfter(int limit, Bootloader &bootloader)
{
    return [&bootloader, limit, received = 0](const QByteArray &bytes) mutable {
        const QByteArray heard = bytes.left(limit - received);
        received += int(heard.size());
        return bootloader.receive(heard);
    };
}

/// A device with \a bootloader, except that the response to \a opcode is \a payload.
auto answering(quint8 opcode, const QByteArray &payload, Bootloader &bootloader)
{
    return [&bootloader, opcode, payload, slip = Slip(2000)](const QByteArray &bytes) mutable {
        QByteArray answers;
        for (const QByteArray &request : slip.decode(bytes)) {
            const bool replaced = static_cast<quint8>(request.at(0)) == opcode;
            const QByteArray answer = bootloader.receive(Slip::encode(request));
            answers += replaced
                ? Slip::encode(static_cast<char>(Dfu::Response) + request.left(1) + payload)
                : answer;
        }
        return answers;
    };
}

} // namespace

void tst_DfuClient::flashes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<quint16>("receipts");

    QTest::newRow("one byte") << 1 << quint16(0);
    QTest::newRow("one byte less than an object") << 4095 << quint16(0);
    QTest::newRow("an object") << 4096 << quint16(0);
    QTest::newRow("one byte more than an object") << 4097 << quint16(0);
    QTest::newRow("two objects") << 8192 << quint16(0);
    QTest::newRow("many objects") << 200000 << quint16(0);
    QTest::newRow("a receipt for every write") << 20000 << quint16(1);
    QTest::newRow("a receipt for every third write") << 20000 << quint16(3);
    QTest::newRow("receipts for more writes than an object has") << 20000 << quint16(1000);
}

void tst_DfuClient::flashes()
{
    QFETCH(int, size);
    QFETCH(quint16, receipts);
    const DfuPackage package = DfuPackage::forFirmware(firmware(size));
    Bootloader bootloader;
    PtyDevice device(playedBy(bootloader));
    DfuClient client(device.fd());
    client.setReceiptInterval(receipts);
    QVERIFY2(client.flash(package.initPacket, package.firmware), qPrintable(client.errorString()));
    QVERIFY(client.errorString().isEmpty());
    device.unplug();
    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), package.firmware);
    QCOMPARE(bootloader.initPacket(), package.initPacket);
}

void tst_DfuClient::keepsToASmallMtu()
{
    constexpr quint16 kMtu = 23;
    const DfuPackage package = DfuPackage::forFirmware(QByteArray(5000, '\xC0'));
    Bootloader bootloader;
    Slip slip(2000);
    int longest = 0;
    auto answer = answering(Dfu::GetMtu, "\x01" + LittleEndian::bytes(kMtu), bootloader);
    PtyDevice device([&](const QByteArray &bytes) {
        for (const QByteArray &request : slip.decode(bytes)) {
            longest = qMax(longest, int(Slip::encode(request).size()));
        }
        return answer(bytes);
    });
    DfuClient client(device.fd());
    QVERIFY2(client.flash(package.initPacket, package.firmware), qPrintable(client.errorString()));
    device.unplug();
    QCOMPARE(bootloader.image(), package.firmware);
    // Ten escaped bytes of data, the opcode and the end mark.
    QCOMPARE(longest, 22);
}

void tst_DfuClient::startsOverALineWithLeftovers()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    bool first = true;
    PtyDevice device([&](const QByteArray &bytes) {
        const QByteArray leftovers = first ? Slip::encode("\x60\x03\x01 left over") : QByteArray();
        first = false;
        return leftovers + bootloader.receive(bytes);
    });
    DfuClient client(device.fd());
    QVERIFY2(client.flash(package.initPacket, package.firmware), qPrintable(client.errorString()));
}

void tst_DfuClient::resumes_data()
{
    QTest::addColumn<int>("interruptedAfter");
    QTest::addColumn<int>("bytesSaved");

    QTest::newRow("before the init packet") << 30 << 0;
    QTest::newRow("within the init packet") << 70 << 0;
    QTest::newRow("within the first object") << 3000 << 1000;
    QTest::newRow("half-way") << 100000 << 95000;
    QTest::newRow("shortly before the end") << 199000 << 190000;
}

void tst_DfuClient::resumes()
{
    QFETCH(int, interruptedAfter);
    QFETCH(int, bytesSaved);
    const DfuPackage package = DfuPackage::forFirmware(firmware(200000));
    Bootloader bootloader;
    {
        PtyDevice device(silentAfter(interruptedAfter, bootloader));
        DfuClient client(device.fd());
        client.setTimeout(kShortTimeout);
        QVERIFY(!client.flash(package.initPacket, package.firmware));
    }
    PtyDevice device(playedBy(bootloader));
    DfuClient client(device.fd());
    QVERIFY2(client.flash(package.initPacket, package.firmware), qPrintable(client.errorString()));
    device.unplug();
    QCOMPARE(bootloader.image(), package.firmware);
    QVERIFY2(device.received() < 203000 - bytesSaved, QByteArray::number(device.received()));
}

void tst_DfuClient::replacesAnotherImageThatWasBegun()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(200000));
    const QByteArray otherFirmware = "other" + package.firmware.mid(5);
    Bootloader bootloader;
    {
        PtyDevice device(silentAfter(100000, bootloader));
        DfuClient client(device.fd());
        client.setTimeout(kShortTimeout);
        QVERIFY(!client.flash(package.initPacket, otherFirmware));
    }
    QVERIFY(bootloader.imageBytesReceived() > 90000);
    PtyDevice device(playedBy(bootloader));
    DfuClient client(device.fd());
    QVERIFY2(client.flash(package.initPacket, package.firmware), qPrintable(client.errorString()));
    device.unplug();
    QCOMPARE(bootloader.image(), package.firmware);
}

void tst_DfuClient::reportsTheDevicesRefusal_data()
{
    QTest::addColumn<QByteArray>("initPacket");
    QTest::addColumn<QByteArray>("firmware");
    QTest::addColumn<QString>("error");

    const QByteArray image = firmware(5000);
    const QByteArray initPacket = DfuPackage::forFirmware(image).initPacket;
    QTest::newRow("an invalid init packet")
        << QByteArray("\xFF\xFF") << image
        << "The device refused to execute the object: invalid object";
    QTest::newRow("an init packet that is too large")
        << QByteArray(513, 'x') << image << "The init packet is too large for the device";
    QTest::newRow("firmware that does not match its hash")
        << initPacket << QByteArray(5000, 'x')
        << "The device refused to execute the object: the signature or the firmware's hash is "
           "wrong";
    QTest::newRow("more firmware than announced")
        << initPacket << image + "x"
        << "The device refused to create an object: not permitted";
}

void tst_DfuClient::reportsTheDevicesRefusal()
{
    QFETCH(QByteArray, initPacket);
    QFETCH(QByteArray, firmware);
    QFETCH(QString, error);
    Bootloader bootloader;
    PtyDevice device(playedBy(bootloader));
    DfuClient client(device.fd());
    QVERIFY(!client.flash(initPacket, firmware));
    QCOMPARE(client.errorString(), error);
    device.unplug();
    QVERIFY(!bootloader.isFinished());
}

void tst_DfuClient::reportsAWrongCrc_data()
{
    QTest::addColumn<quint16>("receipts");
    QTest::addColumn<int>("after");

    QTest::newRow("of an object") << quint16(0) << 4096;
    QTest::newRow("in a receipt") << quint16(1) << 1024;
}

void tst_DfuClient::reportsAWrongCrc()
{
    QFETCH(quint16, receipts);
    QFETCH(int, after);
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    PtyDevice device([&](const QByteArray &bytes) {
        bootloader.setWrongCrc(!bootloader.initPacket().isEmpty());
        return bootloader.receive(bytes);
    });
    DfuClient client(device.fd());
    client.setReceiptInterval(receipts);
    QVERIFY(!client.flash(package.initPacket, package.firmware));
    QCOMPARE(client.errorString(),
             QStringLiteral("The device reports a wrong CRC after %1 bytes").arg(after));
}

void tst_DfuClient::timesOut_data()
{
    QTest::addColumn<int>("silentAfter");

    QTest::newRow("silent from the first byte on") << 0;
    QTest::newRow("silent within the init packet") << 60;
    QTest::newRow("silent half-way") << 2500;
}

void tst_DfuClient::timesOut()
{
    QFETCH(int, silentAfter);
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    PtyDevice device(::silentAfter(silentAfter, bootloader));
    DfuClient client(device.fd());
    client.setTimeout(kShortTimeout);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!client.flash(package.initPacket, package.firmware));
    QVERIFY(timer.elapsed() >= kShortTimeout);
    QCOMPARE(client.errorString(), QString("The device did not answer in time"));
}

void tst_DfuClient::timesOutWhenTheDeviceTakesNothing()
{
    const QByteArray huge(1000000, 'x');
    const QByteArray hugeObjects = LittleEndian::bytes(0x7FFFFFFFU) + QByteArray(8, '\0');
    Bootloader bootloader;
    QSemaphore hostHasGivenUp;
    auto answer = answering(Dfu::SelectObject, "\x01" + hugeObjects, bootloader);
    PtyDevice device([&](const QByteArray &bytes) {
        if (bytes.startsWith(static_cast<char>(Dfu::CreateObject))) {
            return Slip::encode("\x60\x01\x01");
        }
        if (bytes.startsWith(static_cast<char>(Dfu::WriteObject))) {
            hostHasGivenUp.tryAcquire(1, 5000);
        }
        return answer(bytes);
    });
    DfuClient client(device.fd());
    client.setTimeout(kShortTimeout);
    const bool flashed = client.flash(huge, huge);
    hostHasGivenUp.release();
    QVERIFY(!flashed);
    QCOMPARE(client.errorString(), QString("The device did not take the data in time"));
}

void tst_DfuClient::timesOutWhileTheDeviceTalksOfOtherThings()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(100));
    const QByteArray other = Slip::encode(QByteArray::fromHex("600c01"));
    PtyDevice device([&](const QByteArray &) { return QByteArray(other); }, PtyDevice::Talkative);
    DfuClient client(device.fd());
    client.setTimeout(kShortTimeout);
    QVERIFY(!client.flash(package.initPacket, package.firmware));
    QCOMPARE(client.errorString(), QString("The device did not answer in time"));
}

void tst_DfuClient::noticesThatThePortIsClosed_data()
{
    QTest::addColumn<int>("closedAfter");

    QTest::newRow("at the first request") << 1;
    QTest::newRow("after the init packet") << 150;
    QTest::newRow("half-way") << 100000;
}

void tst_DfuClient::noticesThatThePortIsClosed()
{
    QFETCH(int, closedAfter);
    const DfuPackage package = DfuPackage::forFirmware(firmware(200000));
    Bootloader bootloader;
    PtyDevice device(playedBy(bootloader));
    device.unplugAfter(closedAfter);
    DfuClient client(device.fd());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!client.flash(package.initPacket, package.firmware));
    QVERIFY2(client.errorString().startsWith("The port"), qPrintable(client.errorString()));
    // Far below the time limit for a response.
    QVERIFY(timer.elapsed() < 5000);
    device.unplug();
    QVERIFY(!bootloader.isFinished());
}

void tst_DfuClient::refusesStrangeAnswers_data()
{
    QTest::addColumn<int>("opcode");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("error");

    const QByteArray success("\x01");
    const auto mtu = [&](quint16 value) {
        return success + LittleEndian::bytes(value);
    };
    const QByteArray twelve(12, '\0');
    const auto row = [](const char *name, int opcode, const QByteArray &answer, const char *error) {
        QTest::newRow(name) << opcode << answer << QString(error);
    };
    row("another ping's id", Dfu::Ping, success + "x", "The device answered another ping");
    row("no id", Dfu::Ping, success,
        "The device sent a malformed answer when asked to answer a ping");
    row("no MTU", Dfu::GetMtu, success,
        "The device sent a malformed answer when asked to report its MTU");
    row("MTU 0", Dfu::GetMtu, mtu(0), "The device takes no data");
    row("MTU 4", Dfu::GetMtu, mtu(4), "The device takes no data");
    row("a result without a name", Dfu::GetMtu, QByteArray::fromHex("42"),
        "The device refused to report its MTU: result 66");
    row("an error without its extension", Dfu::SelectObject, "\x0B",
        "The device refused to select an object: extended error 0");
    row("objects of no size", Dfu::SelectObject, success + twelve,
        "The init packet is too large for the device");
    row("a select answer that is too short", Dfu::SelectObject, success + "x",
        "The device sent a malformed answer when asked to select an object");
    row("a checksum of nothing", Dfu::CalculateChecksum, success + QByteArray(8, '\0'),
        "The device received 0 of 62 bytes");
    row("a write refused", Dfu::WriteObject, "\x0A",
        "The device refused to take data: operation failed");
    row("a write answered without cause", Dfu::WriteObject, success,
        "The device refused to take data: result 1");
}

void tst_DfuClient::refusesStrangeAnswers()
{
    QFETCH(int, opcode);
    QFETCH(QByteArray, answer);
    QFETCH(QString, error);
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    PtyDevice device(answering(static_cast<quint8>(opcode), answer, bootloader));
    DfuClient client(device.fd());
    client.setTimeout(1000);
    QVERIFY(!client.flash(package.initPacket, package.firmware));
    QCOMPARE(client.errorString(), error);
}

void tst_DfuClient::explainsAnExtendedError_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");

    const auto row = [](int code, const char *text) {
        QTest::addRow("%02x", code) << code << QString(text);
    };
    row(0x01, "extended error 1");
    row(0x02, "the init packet contains no single command");
    row(0x03, "the command in the init packet is unknown");
    row(0x04, "the init packet does not describe an application");
    row(0x05, "the firmware version is too low");
    row(0x06, "the firmware is for other hardware");
    row(0x07, "the firmware needs another SoftDevice");
    row(0x08, "the package is not signed");
    row(0x09, "the type of the hash is wrong");
    row(0x0A, "the hash cannot be calculated");
    row(0x0B, "the type of the signature is wrong");
    row(0x0C, "the signature or the firmware's hash is wrong");
    row(0x0D, "the firmware is too large");
    row(0x0E, "extended error 14");
}

void tst_DfuClient::explainsAnExtendedError()
{
    QFETCH(const int, code);
    QFETCH(const QString, text);
    Bootloader bootloader;
    PtyDevice device(
        answering(Dfu::Execute, QByteArray("\x0B") + static_cast<char>(code), bootloader));
    DfuClient client(device.fd());

    QVERIFY(!client.flash(DfuPackage::forFirmware("image").initPacket, "image"));

    QCOMPARE(client.errorString(), "The device refused to execute the object: " + text);
}

void tst_DfuClient::refusesAFileThatIsNoTerminal()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    DfuClient client(file.handle());
    QVERIFY(!client.flash("init", "image"));
    QVERIFY(client.errorString().startsWith("The port is not a serial port"));
}

void tst_DfuClient::refusesAnEmptyPackage_data()
{
    QTest::addColumn<QByteArray>("initPacket");
    QTest::addColumn<QByteArray>("firmware");

    QTest::newRow("no init packet") << QByteArray() << QByteArray("image");
    QTest::newRow("no firmware") << QByteArray("init") << QByteArray();
}

void tst_DfuClient::refusesAnEmptyPackage()
{
    QFETCH(QByteArray, initPacket);
    QFETCH(QByteArray, firmware);
    Bootloader bootloader;
    PtyDevice device(playedBy(bootloader));
    DfuClient client(device.fd());
    QVERIFY(!client.flash(initPacket, firmware));
    QCOMPARE(client.errorString(), QString("The package is empty"));
    QCOMPARE(device.received(), 0);
}

QTEST_GUILESS_MAIN(tst_DfuClient)
#include "tst_DfuClient.moc"
