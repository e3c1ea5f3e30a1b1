// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/DfuRequests.h"
#include "tests/support/GoldenPackages.h"
#include "tests/support/ProtocolFields.h"

#include <QtTest>

using namespace GoldenPackages;
using namespace ProtocolFields;
using DfuRequests::ok;
using DfuRequests::refused;

Q_DECLARE_METATYPE(BootloaderSettings)

/// The checks of an init packet, by packets that are encoded here.
class tst_GoldenPackages : public QObject
{
    Q_OBJECT

private slots:
    void acceptsAPackage_data();
    void acceptsAPackage();
    void refusesAnInitPacket_data();
    void refusesAnInitPacket();
    void namesTheFirstFault_data();
    void namesTheFirstFault();
    void refusesAnImage_data();
    void refusesAnImage();
    void readsKeys_data();
    void readsKeys();
};

namespace {

Fields with(int number, const QByteArray &field)
{
    Fields fields = initFields();
    fields[number] = field;
    return fields;
}

Fields without(int number)
{
    return with(number, {});
}

QByteArray hash(int type, int size)
{
    return bytes(8, number(1, static_cast<quint64>(type)) + bytes(2, QByteArray(size, 'h')));
}

BootloaderSettings device(const QByteArray &key = {}, bool signatureRequired = false)
{
    BootloaderSettings settings;
    settings.key = PublicKey::fromPem(key);
    settings.signatureRequired = signatureRequired;
    return settings;
}

BootloaderSettings deviceWithVersion(quint32 version)
{
    BootloaderSettings settings;
    settings.firmwareVersion = version;
    return settings;
}

BootloaderSettings deviceWithSoftDevice(quint32 id)
{
    BootloaderSettings settings;
    settings.softDeviceId = id;
    return settings;
}

QByteArray changed(QByteArray bytes, int position)
{
    bytes[position] = static_cast<char>(bytes.at(position) ^ 1);
    return bytes;
}

} // namespace

void tst_GoldenPackages::acceptsAPackage_data()
{
    QTest::addColumn<QByteArray>("packet");
    QTest::addColumn<BootloaderSettings>("settings");

    const QByteArray ed25519Packet = signedPacket(signedFields(1, ed25519Signature()));
    QTest::newRow("unsigned") << unsignedPacket() << device();
    QTest::newRow("unsigned, for a device with a key") << unsignedPacket() << device(ecdsaKey());
    QTest::newRow("signed with ECDSA") << ecdsaPacket() << device(ecdsaKey(), true);
    QTest::newRow("signed with Ed25519") << ed25519Packet << device(ed25519Key(), true);
    QTest::newRow("signed, for a device without a key") << ecdsaPacket() << device();
    QTest::newRow("any signature without a key")
        << signedPacket(signedFields(0, "x")) << device({}, true);
    QTest::newRow("the second SoftDevice") << unsignedPacket() << deviceWithSoftDevice(0x100);
    QTest::newRow("any SoftDevice") << unsignedPacket(without(3)) << deviceWithSoftDevice(0x101);
    QTest::newRow("a list of SoftDevices that is not packed")
        << unsignedPacket(with(3, number(3, 0x101) + number(3, 0x102)))
        << deviceWithSoftDevice(0x102);
    QTest::newRow("the installed version") << unsignedPacket() << deviceWithVersion(3);
    QTest::newRow("an older version for debugging")
        << unsignedPacket(with(9, number(9, 1))) << deviceWithVersion(4);
    QTest::newRow("without what is optional") << unsignedPacket({{1, number(1, 3)},
                                                                 {2, number(2, 52)},
                                                                 {4, number(4, 0)},
                                                                 {7, number(7, 5000)},
                                                                 {8, initFields().value(8)}})
                                              << device();
    QTest::newRow("with boot validation")
        << unsignedPacket(with(10, bytes(10, number(1, 1)) + bytes(10, number(1, 2)))) << device();
    QTest::newRow("with a field of the future")
        << unsignedPacket(with(99, bytes(99, "later"))) << device();
}

void tst_GoldenPackages::acceptsAPackage()
{
    QFETCH(const QByteArray, packet);
    QFETCH(const BootloaderSettings, settings);
    Bootloader bootloader(settings);

    QCOMPARE(DfuRequests::flash(bootloader, {packet, image()}), ok(Dfu::Execute));

    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), image());
    QCOMPARE(bootloader.initPacket(), packet);
}

void tst_GoldenPackages::refusesAnInitPacket_data()
{
    QTest::addColumn<QByteArray>("packet");
    QTest::addColumn<BootloaderSettings>("settings");
    QTest::addColumn<int>("error");

    const auto row = [](const char *name, int error, const QByteArray &packet,
                        const BootloaderSettings &settings = {}) {
        QTest::newRow(name) << packet << settings << error;
    };
    const auto init = [row](const char *name, int error, const Fields &fields,
                            const BootloaderSettings &settings = {}) {
        row(name, error, unsignedPacket(fields), settings);
    };
    row("no command", 0x02, bytes(3, "x"));
    row("two commands", 0x02, unsignedPacket() + ecdsaPacket());
    row("no operation", 0x03, bytes(1, bytes(2, "")));
    row("the operation reset", 0x03, bytes(1, number(1, 0)));
    row("an unknown operation", 0x03, bytes(1, number(1, 2)));
    row("no init command", 0x04, bytes(1, number(1, 1)));
    init("no firmware version", 0x04, without(1));
    init("no hardware version", 0x04, without(2));
    init("no type", 0x04, without(4));
    init("a SoftDevice", 0x04, with(4, number(4, 1)));
    init("a bootloader", 0x04, with(4, number(4, 2)));
    init("a SoftDevice and a bootloader", 0x04, with(4, number(4, 3)));
    init("an external application", 0x04, with(4, number(4, 4)));
    init("an unknown type", 0x04, with(4, number(4, 5)));
    init("no size", 0x04, without(7));
    init("size 0", 0x04, with(7, number(7, 0)));
    init("an old version", 0x05, initFields(), deviceWithVersion(4));
    init("older hardware", 0x06, with(2, number(2, 51)));
    init("newer hardware", 0x06, with(2, number(2, 53)));
    init("another SoftDevice", 0x07, initFields(), deviceWithSoftDevice(0x101));
    row("no signature", 0x08, unsignedPacket(), device(ecdsaKey(), true));
    Fields unfinished = signedFields(0, {});
    unfinished[3].clear();
    row("a signed command without a signature", 0x08, signedPacket(unfinished));
    init("no hash", 0x09, without(8));
    init("a hash of type none", 0x09, with(8, hash(0, 32)));
    init("a CRC", 0x09, with(8, hash(1, 32)));
    init("a SHA-128", 0x09, with(8, hash(2, 32)));
    init("a SHA-512", 0x09, with(8, hash(4, 32)));
    init("a hash too short", 0x09, with(8, hash(3, 31)));
    init("a hash too long", 0x09, with(8, hash(3, 33)));
    row("a signature of another type", 0x0B, ecdsaPacket(), device(ed25519Key()));
    row("a signature of an unknown type", 0x0B, signedPacket(signedFields(2, ecdsaSignature())),
        device(ecdsaKey()));
    Fields untyped = signedFields(0, ecdsaSignature());
    untyped[2].clear();
    row("a signature without a type", 0x0B, signedPacket(untyped), device(ecdsaKey()));
    row("a wrong first number", 0x0C, signedPacket(signedFields(0, changed(ecdsaSignature(), 0))),
        device(ecdsaKey()));
    row("a wrong second number", 0x0C, signedPacket(signedFields(0, changed(ecdsaSignature(), 63))),
        device(ecdsaKey()));
    row("a signature of zeros", 0x0C, signedPacket(signedFields(0, QByteArray(64, '\0'))),
        device(ecdsaKey()));
    row("a signature too short", 0x0C, signedPacket(signedFields(0, ecdsaSignature().left(63))),
        device(ecdsaKey()));
    row("a wrong Ed25519 signature", 0x0C,
        signedPacket(signedFields(1, changed(ed25519Signature(), 0))), device(ed25519Key()));
    Fields another = signedFields(0, ecdsaSignature());
    another[1] = bytes(1, command(with(1, number(1, 4))));
    row("the signature of another command", 0x0C, signedPacket(another), device(ecdsaKey()));
    init("an image too large", 0x0D, with(7, number(7, Bootloader::kMaxImageSize + 1)));
    init("an image too large for an int", 0x0D, with(7, number(7, 0xFFFFFFFF)));
}

void tst_GoldenPackages::refusesAnInitPacket()
{
    QFETCH(const QByteArray, packet);
    QFETCH(const BootloaderSettings, settings);
    QFETCH(const int, error);
    Bootloader bootloader(settings);

    QCOMPARE(DfuRequests::sendInitPacket(bootloader, packet),
             refused(Dfu::Execute, static_cast<Dfu::ExtendedResult>(error)));

    QVERIFY(bootloader.initPacket().isEmpty());
    QCOMPARE(DfuRequests::create(bootloader, Dfu::DataObject, 1),
             refused(Dfu::CreateObject, Dfu::NotPermitted));
}

void tst_GoldenPackages::namesTheFirstFault_data()
{
    QTest::addColumn<QByteArray>("packet");
    QTest::addColumn<QByteArray>("answer");

    const auto row = [](const char *name, int error, const QByteArray &packet) {
        QTest::newRow(name) << packet
                            << refused(Dfu::Execute, static_cast<Dfu::ExtendedResult>(error));
    };
    // Each packet has the fault of its row and all faults of the rows below.
    Fields init = with(7, number(7, 0));
    init.insert(1, number(1, 1));
    init.insert(3, packed(3, {0x101}));
    init.insert(2, number(2, 51));
    init.insert(8, hash(4, 64));
    init.insert(4, number(4, 2));
    const auto wrapped = [](const QByteArray &command) {
        return signedPacket({{1, bytes(1, command)}, {2, number(2, 0)}, {3, bytes(3, "x")}});
    };
    const QByteArray damaged = QByteArray::fromHex("ffffffff");
    QTest::newRow("the packet cannot be decoded")
        << damaged << refused(Dfu::Execute, Dfu::InvalidObject);
    row("the packet has two commands", 0x02, bytes(1, damaged) + wrapped(damaged));
    QTest::newRow("the command cannot be decoded")
        << wrapped(damaged) << refused(Dfu::Execute, Dfu::InvalidObject);
    row("the operation", 0x03, wrapped(number(1, 0)));
    row("no init command", 0x04, wrapped(number(1, 1)));
    row("the signature", 0x0C, wrapped(command(init)));
    row("the type of image", 0x04, unsignedPacket(init));
    init.insert(4, number(4, 0));
    row("the type of hash", 0x09, unsignedPacket(init));
    init.insert(8, initFields().value(8));
    row("the hardware version", 0x06, unsignedPacket(init));
    init.insert(2, number(2, 52));
    row("the SoftDevice", 0x07, unsignedPacket(init));
    init.insert(3, packed(3, {0}));
    row("the firmware version", 0x05, unsignedPacket(init));
    init.insert(1, number(1, 3));
    row("the size", 0x04, unsignedPacket(init));
}

void tst_GoldenPackages::namesTheFirstFault()
{
    QFETCH(const QByteArray, packet);
    QFETCH(const QByteArray, answer);
    BootloaderSettings settings = device(ecdsaKey());
    settings.firmwareVersion = 2;
    Bootloader bootloader(settings);

    QCOMPARE(DfuRequests::sendInitPacket(bootloader, packet), answer);
}

void tst_GoldenPackages::refusesAnImage_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<bool>("hashFails");
    QTest::addColumn<int>("error");

    QTest::newRow("the hash cannot be calculated") << image() << true << 0x0A;
    QTest::newRow("another image") << changed(image(), 4999) << false << 0x0C;
}

void tst_GoldenPackages::refusesAnImage()
{
    QFETCH(const QByteArray, image);
    QFETCH(const bool, hashFails);
    QFETCH(const int, error);
    Bootloader bootloader;
    bootloader.setHashFails(hashFails);

    QCOMPARE(DfuRequests::flash(bootloader, {unsignedPacket(), image}),
             refused(Dfu::Execute, static_cast<Dfu::ExtendedResult>(error)));

    QVERIFY(!bootloader.isFinished());
    QVERIFY(bootloader.image().isEmpty());
    QVERIFY(bootloader.initPacket().isEmpty());
    QCOMPARE(bootloader.imageBytesReceived(), qint64(0));
}

void tst_GoldenPackages::readsKeys_data()
{
    QTest::addColumn<QByteArray>("pem");
    QTest::addColumn<int>("type");

    QTest::newRow("ECDSA") << ecdsaKey() << int(PublicKey::Type::EcdsaP256);
    QTest::newRow("Ed25519") << ed25519Key() << int(PublicKey::Type::Ed25519);
    QTest::newRow("another type") << QByteArray(
        "-----BEGIN PUBLIC KEY-----\n"
        "MCowBQYDK2VuAyEAhSDwCYkwp1R0i33ctD73Wg2/Og0mOBr066SpjqqbTmo=\n"
        "-----END PUBLIC KEY-----\n")
                                  << int(PublicKey::Type::None);
    QTest::newRow("another curve")
        << QByteArray("-----BEGIN PUBLIC KEY-----\n"
                      "MFYwEAYHKoZIzj0CAQYFK4EEAAoDQgAEzx/7CJGzcrSThth1fvl03w32sD9sNOyN\n"
                      "DIn7hB+x8C0vuMcW9vitKWjG7drUb6lGgYeyxRxLlI6Dix6MWW6YIg==\n"
                      "-----END PUBLIC KEY-----\n")
        << int(PublicKey::Type::None);
    QTest::newRow("no key") << QByteArray("key") << int(PublicKey::Type::None);
    QTest::newRow("nothing") << QByteArray() << int(PublicKey::Type::None);
}

void tst_GoldenPackages::readsKeys()
{
    QFETCH(const QByteArray, pem);
    QFETCH(const int, type);

    const PublicKey key = PublicKey::fromPem(pem);

    QCOMPARE(int(key.type()), type);
    QCOMPARE(key.isNull(), key.type() == PublicKey::Type::None);
}

QTEST_GUILESS_MAIN(tst_GoldenPackages)
#include "tst_GoldenPackages.moc"
