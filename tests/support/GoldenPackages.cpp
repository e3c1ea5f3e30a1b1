// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/GoldenPackages.h"

#include "tests/support/DfuRequests.h"
#include "tests/support/ProtocolFields.h"

#include <QCryptographicHash>

#include <algorithm>

using namespace ProtocolFields;

namespace {

QByteArray joined(const GoldenPackages::Fields &fields)
{
    QByteArray result;
    for (const QByteArray &field : fields) {
        result += field;
    }
    return result;
}

} // namespace

QByteArray GoldenPackages::image()
{
    return DfuRequests::firmware(5000);
}

GoldenPackages::Fields GoldenPackages::initFields()
{
    QByteArray hash = QCryptographicHash::hash(image(), QCryptographicHash::Sha256);
    std::reverse(hash.begin(), hash.end());
    return {
        {1, number(1, 3)}, // firmware version
        {2, number(2, 52)}, // hardware version
        {3, packed(3, {0, 0x100})}, // required SoftDevices
        {4, number(4, 0)}, // type: application
        {5, number(5, 0)}, // size of the SoftDevice
        {6, number(6, 0)}, // size of the bootloader
        {7, number(7, 5000)}, // size of the application
        {8, bytes(8, number(1, 3) + bytes(2, hash))}, // type of hash: SHA-256; hash
        {9, number(9, 0)}, // for debugging
    };
}

QByteArray GoldenPackages::command(const Fields &init)
{
    return number(1, 1) + bytes(2, joined(init));
}

QByteArray GoldenPackages::unsignedPacket(const Fields &init)
{
    return bytes(1, command(init));
}

GoldenPackages::Fields GoldenPackages::signedFields(int type, const QByteArray &signature)
{
    return {{1, bytes(1, command())},
            {2, number(2, static_cast<quint64>(type))},
            {3, bytes(3, signature)}};
}

QByteArray GoldenPackages::signedPacket(const Fields &fields)
{
    return bytes(2, joined(fields));
}

// If command() changes, sign it with new keys and replace keys and signatures:
//     openssl ecparam -name prime256v1 -genkey -noout -out KEY; openssl genpkey -algorithm ed25519
//     openssl pkey -in KEY -pubout
//     openssl dgst -sha256 -sign KEY COMMAND | openssl asn1parse -inform DER
//     openssl pkeyutl -sign -inkey KEY -rawin -in COMMAND | xxd -p
// The two numbers that asn1parse prints are written here with their bytes in reverse order.

QByteArray GoldenPackages::ecdsaKey()
{
    return "-----BEGIN PUBLIC KEY-----\n"
           "MFkwEwYHKoZIzj0CAQYIKoZIzj0DAQcDQgAEJOHuEMaW6m57tMpvXOQb+wkj7WDM\n"
           "LWXpJ0XwD5cIDeisHziDCzp2xuNqZm0La4O0/vSfYw7RdteDO9X7e+vPSQ==\n"
           "-----END PUBLIC KEY-----\n";
}

QByteArray GoldenPackages::ecdsaSignature()
{
    return QByteArray::fromHex("d5564ce12dd17889cc1de260550d8adc9bb6ac380ab109459793eadc0af94b25"
                               "cdf55dd0b39107ee42992767a9e9aefad8a9908d8c37880fe80d8148cb22fcce");
}

QByteArray GoldenPackages::ed25519Key()
{
    return "-----BEGIN PUBLIC KEY-----\n"
           "MCowBQYDK2VwAyEAf4v9bEGFY6Lv0mmgImIHmDXLT5u5J+/3co9QTGqp+2o=\n"
           "-----END PUBLIC KEY-----\n";
}

QByteArray GoldenPackages::ed25519Signature()
{
    return QByteArray::fromHex("fc8b8540740bfd1477585c11b65655402c38ca1272dae0f21710ff8ae0b57bcd"
                               "0910c9995f5f25449a85b89960702bf6e718fd02aeb758a0468e93440ee9570b");
}

QByteArray GoldenPackages::ecdsaPacket()
{
    return signedPacket(signedFields(0, ecdsaSignature()));
}

QMap<QString, QByteArray> GoldenPackages::files(const QByteArray &initPacket)
{
    return {{"manifest.json",
             R"({"manifest": {"application": {"bin_file": "app.bin", "dat_file": "app.dat"}}})"},
            {"app.bin", image()},
            {"app.dat", initPacket}};
}
