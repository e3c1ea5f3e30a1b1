// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/Bootloader.h"
#include "simulator/dfu/Checksum.h"
#include "simulator/dfu/DfuPackage.h"
#include "simulator/dfu/LittleEndian.h"
#include "tests/support/DfuRequests.h"

#include <QtTest>

#include <random>

using namespace DfuRequests;
using LittleEndian::bytes;
using Result = Dfu::Result;

class tst_Bootloader : public QObject
{
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
    void createsCommandsUpToTheLimit_data();
    void createsCommandsUpToTheLimit();
    void createsDataUpToTheLimit_data();
    void createsDataUpToTheLimit();
    void writesWithinTheObject_data();
    void writesWithinTheObject();
    void remembersTheInstalledVersion();
    void acceptsAnImage_data();
    void acceptsAnImage();
    void reportsChecksumsOfEverythingReceived();
    void reportsAWrongCrcOnRequest();
    void createDiscardsWhatWasNotExecuted();
    void executeMayComeTwice();
    void executesOnlyWholeObjects();
    void selectTellsWhereToResume();
    void abandonsATransfer_data();
    void abandonsATransfer();
    void keepsAFinishedImageUntilTheNextBegins();
    void survivesGarbage_data();
    void survivesGarbage();
};

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

} // namespace

void tst_Bootloader::answers_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");

    QTest::newRow("ping") << hex("09 42") << hex("09 01 42");
    QTest::newRow("ping with an end mark") << hex("09 c0") << hex("09 01 c0");
    QTest::newRow("ping without id") << hex("09") << hex("09 03");
    QTest::newRow("ping with two ids") << hex("09 01 02") << hex("09 03");
    QTest::newRow("MTU") << hex("07") << hex("07 01 03 08");
    QTest::newRow("MTU with an argument") << hex("07 00") << hex("07 03");
    QTest::newRow("receipts") << hex("02 08 00") << hex("02 01");
    QTest::newRow("receipts, too short") << hex("02 08") << hex("02 03");
    QTest::newRow("receipts, too long") << hex("02 08 00 00") << hex("02 03");
    QTest::newRow("select command") << hex("06 01") << hex("06 01 00020000 00000000 00000000");
    QTest::newRow("select data") << hex("06 02") << hex("06 01 00100000 00000000 00000000");
    QTest::newRow("select nothing") << hex("06 00") << hex("06 07");
    QTest::newRow("select a third type") << hex("06 03") << hex("06 07");
    QTest::newRow("select without type") << hex("06") << hex("06 03");
    QTest::newRow("create a command") << hex("01 01 20000000") << hex("01 01");
    QTest::newRow("create a third type") << hex("01 03 20000000") << hex("01 07");
    QTest::newRow("create, too short") << hex("01 01 200000") << hex("01 03");
    QTest::newRow("create, too long") << hex("01 01 2000000000") << hex("01 03");
    QTest::newRow("create data before an init packet") << hex("01 02 20000000") << hex("01 08");
    QTest::newRow("write before create") << hex("08 01") << hex("08 08");
    QTest::newRow("write nothing") << hex("08") << hex("08 03");
    QTest::newRow("checksum of nothing") << hex("03") << hex("03 01 00000000 00000000");
    QTest::newRow("checksum with an argument") << hex("03 00") << hex("03 03");
    QTest::newRow("execute nothing") << hex("04") << hex("04 08");
    QTest::newRow("execute with an argument") << hex("04 00") << hex("04 03");
    QTest::newRow("abort") << hex("0c") << hex("0c 01");
    QTest::newRow("unknown") << hex("05") << hex("05 02");
    QTest::newRow("unknown, the highest") << hex("ff 01 02") << hex("ff 02");
    QTest::newRow("an echoed response") << hex("60 09 01 42") << QByteArray();
}

void tst_Bootloader::answers()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);
    Bootloader bootloader;
    QCOMPARE(ask(bootloader, request), answer);
    QVERIFY(!bootloader.isFinished());
}

void tst_Bootloader::createsCommandsUpToTheLimit_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("result");

    QTest::newRow("0") << 0 << int(Result::InvalidParameter);
    QTest::newRow("1") << 1 << int(Result::Success);
    QTest::newRow("511") << 511 << int(Result::Success);
    QTest::newRow("512") << 512 << int(Result::Success);
    QTest::newRow("513") << 513 << int(Result::InsufficientResources);
    QTest::newRow("all bits") << -1 << int(Result::InsufficientResources);
}

void tst_Bootloader::createsCommandsUpToTheLimit()
{
    QFETCH(int, size);
    QFETCH(int, result);
    Bootloader bootloader;
    QCOMPARE(create(bootloader, Dfu::CommandObject, size),
             refused(Dfu::CreateObject, static_cast<Result>(result)));
}

void tst_Bootloader::createsDataUpToTheLimit_data()
{
    QTest::addColumn<int>("imageSize");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("result");

    QTest::newRow("0") << 10000 << 0 << int(Result::InvalidParameter);
    QTest::newRow("1") << 10000 << 1 << int(Result::Success);
    QTest::newRow("4095") << 10000 << 4095 << int(Result::Success);
    QTest::newRow("4096") << 10000 << 4096 << int(Result::Success);
    QTest::newRow("4097") << 10000 << 4097 << int(Result::InsufficientResources);
    QTest::newRow("all bits") << 10000 << -1 << int(Result::InsufficientResources);
    QTest::newRow("the whole image") << 100 << 100 << int(Result::Success);
    QTest::newRow("more than the image") << 100 << 101 << int(Result::NotPermitted);
}

void tst_Bootloader::createsDataUpToTheLimit()
{
    QFETCH(int, imageSize);
    QFETCH(int, size);
    QFETCH(int, result);
    Bootloader bootloader;
    QCOMPARE(sendInitPacket(bootloader, DfuPackage::forFirmware(firmware(imageSize)).initPacket),
             ok(Dfu::Execute));
    QCOMPARE(create(bootloader, Dfu::DataObject, size),
             refused(Dfu::CreateObject, static_cast<Result>(result)));
}

void tst_Bootloader::writesWithinTheObject_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("answer");

    const QByteArray tooMuch = refused(Dfu::WriteObject, Result::InsufficientResources);
    QTest::newRow("less than the object") << 0 << 99 << QByteArray();
    QTest::newRow("the whole object") << 0 << 100 << QByteArray();
    QTest::newRow("more than the object") << 0 << 101 << tooMuch;
    QTest::newRow("the rest") << 60 << 40 << QByteArray();
    QTest::newRow("more than the rest") << 60 << 41 << tooMuch;
    QTest::newRow("more to a full object") << 100 << 1 << tooMuch;
}

void tst_Bootloader::writesWithinTheObject()
{
    QFETCH(int, before);
    QFETCH(int, size);
    QFETCH(QByteArray, answer);
    Bootloader bootloader;
    create(bootloader, Dfu::CommandObject, 100);
    write(bootloader, QByteArray(before, 'a'));
    QCOMPARE(write(bootloader, QByteArray(size, 'b')), answer);
    const QByteArray held = QByteArray(before, 'a') + QByteArray(answer.isEmpty() ? size : 0, 'b');
    QCOMPARE(checksum(bootloader), checksumOf(held));
}

void tst_Bootloader::remembersTheInstalledVersion()
{
    BootloaderSettings newer;
    newer.firmwareVersion = 5;
    Bootloader bootloader;
    QCOMPARE(flash(bootloader, DfuPackage::forFirmware("old")), ok(Dfu::Execute));
    QCOMPARE(flash(bootloader, DfuPackage::forFirmware("new", newer)), ok(Dfu::Execute));

    QCOMPARE(sendInitPacket(bootloader, DfuPackage::forFirmware("old").initPacket),
             refused(Dfu::Execute, Dfu::FirmwareVersionTooLow));
}

void tst_Bootloader::acceptsAnImage_data()
{
    QTest::addColumn<int>("size");

    QTest::newRow("one byte") << 1;
    QTest::newRow("one byte less than an object") << 4095;
    QTest::newRow("an object") << 4096;
    QTest::newRow("one byte more than an object") << 4097;
    QTest::newRow("two objects") << 8192;
    QTest::newRow("the largest") << Bootloader::kMaxImageSize;
}

void tst_Bootloader::acceptsAnImage()
{
    QFETCH(int, size);
    const DfuPackage package = DfuPackage::forFirmware(firmware(size));
    Bootloader bootloader;
    QCOMPARE(flash(bootloader, package), ok(Dfu::Execute));
    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), package.firmware);
    QCOMPARE(bootloader.initPacket(), package.initPacket);
    QCOMPARE(bootloader.imageBytesReceived(), qint64(size));
}

void tst_Bootloader::reportsChecksumsOfEverythingReceived()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    sendInitPacket(bootloader, package.initPacket);
    QCOMPARE(checksum(bootloader), checksumOf(package.initPacket));
    sendObject(bootloader, package.firmware.left(4096));
    QCOMPARE(checksum(bootloader), checksumOf(package.firmware.left(4096)));
    create(bootloader, Dfu::DataObject, 904);
    write(bootloader, package.firmware.mid(4096, 500));
    QCOMPARE(checksum(bootloader), checksumOf(package.firmware.left(4596)));
    QCOMPARE(bootloader.imageBytesReceived(), qint64(4596));
}

void tst_Bootloader::reportsAWrongCrcOnRequest()
{
    Bootloader bootloader;
    create(bootloader, Dfu::CommandObject, 100);
    write(bootloader, firmware(100));
    bootloader.setWrongCrc(true);
    const QByteArray wrong = checksum(bootloader);
    QCOMPARE(wrong.left(6), checksumOf(firmware(100)).left(6));
    QVERIFY(wrong.mid(6) != checksumOf(firmware(100)).mid(6));
    bootloader.setWrongCrc(false);
    QCOMPARE(checksum(bootloader), checksumOf(firmware(100)));
}

void tst_Bootloader::createDiscardsWhatWasNotExecuted()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    sendInitPacket(bootloader, package.initPacket);
    sendObject(bootloader, package.firmware.left(4096));
    create(bootloader, Dfu::DataObject, 904);
    write(bootloader, QByteArray(904, 'x'));
    create(bootloader, Dfu::DataObject, 904);
    QCOMPARE(checksum(bootloader), checksumOf(package.firmware.left(4096)));
    write(bootloader, package.firmware.mid(4096));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    QVERIFY(bootloader.isFinished());
}

void tst_Bootloader::executeMayComeTwice()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    sendInitPacket(bootloader, package.initPacket);
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    sendObject(bootloader, package.firmware.left(4096));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    create(bootloader, Dfu::DataObject, 904);
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    QCOMPARE(checksum(bootloader), checksumOf(package.firmware.left(4096)));
    QVERIFY(!bootloader.isFinished());
}

void tst_Bootloader::executesOnlyWholeObjects()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(100));
    const QByteArray notPermitted = refused(Dfu::Execute, Result::NotPermitted);
    Bootloader bootloader;
    create(bootloader, Dfu::CommandObject, int(package.initPacket.size()));
    QCOMPARE(execute(bootloader), notPermitted);
    write(bootloader, package.initPacket.left(10));
    QCOMPARE(execute(bootloader), notPermitted);
    write(bootloader, package.initPacket.mid(10));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    QCOMPARE(write(bootloader, "x"), refused(Dfu::WriteObject, Result::NotPermitted));
    create(bootloader, Dfu::DataObject, 100);
    write(bootloader, package.firmware.left(99));
    QCOMPARE(execute(bootloader), notPermitted);
    write(bootloader, package.firmware.mid(99));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    QVERIFY(bootloader.isFinished());
}

void tst_Bootloader::selectTellsWhereToResume()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(9000));
    Bootloader bootloader;
    sendInitPacket(bootloader, package.initPacket);
    sendObject(bootloader, package.firmware.left(4096));
    create(bootloader, Dfu::DataObject, 4096);
    write(bootloader, package.firmware.mid(4096, 1000));

    QCOMPARE(select(bootloader, Dfu::CommandObject),
             ok(Dfu::SelectObject, bytes(quint32(512)) + offsetAndCrc(package.initPacket)));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    QCOMPARE(
        select(bootloader, Dfu::DataObject),
        ok(Dfu::SelectObject, bytes(quint32(4096)) + offsetAndCrc(package.firmware.left(5096))));
    QCOMPARE(write(bootloader, package.firmware.mid(5096, 3096)), QByteArray());
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    QCOMPARE(sendObject(bootloader, package.firmware.mid(8192)), ok(Dfu::Execute));
    QCOMPARE(bootloader.image(), package.firmware);
}

void tst_Bootloader::abandonsATransfer_data()
{
    QTest::addColumn<bool>("byPower");

    QTest::newRow("the host aborts") << false;
    QTest::newRow("the power fails") << true;
}

void tst_Bootloader::abandonsATransfer()
{
    QFETCH(bool, byPower);
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    Bootloader bootloader;
    sendInitPacket(bootloader, package.initPacket);
    sendObject(bootloader, package.firmware.left(4096));
    if (byPower) {
        bootloader.receive("half a frame");
        bootloader.reset();
    } else {
        QCOMPARE(ask(bootloader, opcode(Dfu::Abort)), ok(Dfu::Abort));
    }
    QVERIFY(bootloader.initPacket().isEmpty());
    QCOMPARE(bootloader.imageBytesReceived(), qint64(0));
    const QByteArray nothing = bytes(quint32(4096)) + offsetAndCrc({});
    QCOMPARE(select(bootloader, Dfu::DataObject), ok(Dfu::SelectObject, nothing));
    QCOMPARE(flash(bootloader, package), ok(Dfu::Execute));
}

void tst_Bootloader::keepsAFinishedImageUntilTheNextBegins()
{
    const DfuPackage package = DfuPackage::forFirmware(firmware(100));
    Bootloader bootloader;
    flash(bootloader, package);
    bootloader.reset();
    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), package.firmware);
    QCOMPARE(bootloader.initPacket(), package.initPacket);
    create(bootloader, Dfu::CommandObject, 10);
    QVERIFY(!bootloader.isFinished());
    QVERIFY(bootloader.image().isEmpty());
    QVERIFY(bootloader.initPacket().isEmpty());
}

void tst_Bootloader::survivesGarbage_data()
{
    QTest::addColumn<bool>("framed");

    QTest::newRow("random bytes") << false;
    QTest::newRow("frames with a known opcode") << true;
}

void tst_Bootloader::survivesGarbage()
{
    QFETCH(bool, framed);
    std::mt19937 random(1);
    Bootloader bootloader;
    for (int i = 0; i < 20000; ++i) {
        QByteArray garbage(static_cast<int>(random() % 20), '\0');
        for (char &byte : garbage) {
            byte = static_cast<char>(random() % (framed ? 4 : 256));
        }
        const QByteArray request = static_cast<char>(random() % 13) + garbage;
        bootloader.receive(framed ? Slip::encode(request) : garbage);
    }
    QVERIFY(!bootloader.isFinished());
    bootloader.reset();
    const DfuPackage package = DfuPackage::forFirmware(firmware(5000));
    QCOMPARE(flash(bootloader, package), ok(Dfu::Execute));
    QCOMPARE(bootloader.image(), package.firmware);
}

QTEST_GUILESS_MAIN(tst_Bootloader)
#include "tst_Bootloader.moc"
