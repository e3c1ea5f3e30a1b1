// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/LittleEndian.h"
#include "tests/fuzz/BootloaderHost.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

QByteArray request(Dfu::Opcode opcode, const QByteArray &arguments = {})
{
    const QByteArray bytes = static_cast<char>(opcode) + arguments;
    return QByteArray() + static_cast<char>(BootloaderHost::kFramed)
        + static_cast<char>(bytes.size()) + bytes;
}

QByteArray object(Dfu::ObjectType type, const QByteArray &bytes)
{
    constexpr int kMost = 250; // a chunk's length is one byte
    const QByteArray size = LittleEndian::bytes(static_cast<quint32>(bytes.size()));
    QByteArray result = request(Dfu::CreateObject, static_cast<char>(type) + size);
    for (int i = 0; i < bytes.size(); i += kMost) {
        result += request(Dfu::WriteObject, bytes.mid(i, kMost));
    }
    return result + request(Dfu::Execute);
}

QByteArray seed(const QString &name)
{
    QFile file(QDir(SEEDS).filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// A fuzzer cannot guess a hash or a signature, so some seeds transfer a whole image to the
/// bootloader.
class tst_WholeTransfer : public QObject
{
    Q_OBJECT

private slots:
    void isTheSeed_data();
    void isTheSeed();
    void finishes_data();
    void finishes();
};

void tst_WholeTransfer::isTheSeed_data()
{
    QTest::addColumn<QByteArray>("initPacket");

    QTest::newRow("whole-transfer") << GoldenPackages::unsignedPacket();
    QTest::newRow("whole-transfer-signed") << GoldenPackages::ecdsaPacket();
}

/// To recreate the seed, pass the expected value to `xxd -r -p`.
void tst_WholeTransfer::isTheSeed()
{
    QFETCH(const QByteArray, initPacket);
    const QByteArray image = GoldenPackages::image();
    const QByteArray transfer = object(Dfu::CommandObject, initPacket)
        + object(Dfu::DataObject, image.left(Bootloader::kMaxDataSize))
        + object(Dfu::DataObject, image.mid(Bootloader::kMaxDataSize));

    QVERIFY2(seed(QTest::currentDataTag()) == transfer, transfer.toHex().constData());
}

void tst_WholeTransfer::finishes_data()
{
    isTheSeed_data();
}

void tst_WholeTransfer::finishes()
{
    const QByteArray bytes = seed(QTest::currentDataTag());
    FuzzBytes input(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                    static_cast<std::size_t>(bytes.size()));
    Bootloader bootloader = BootloaderHost::bootloader();
    while (!input.isEmpty()) {
        QVERIFY(!bootloader.isFinished());
        BootloaderHost::sendNext(bootloader, input);
    }
    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), GoldenPackages::image());
}

QTEST_GUILESS_MAIN(tst_WholeTransfer)
#include "tst_WholeTransfer.moc"
