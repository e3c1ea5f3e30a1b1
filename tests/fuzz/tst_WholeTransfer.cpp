// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/DfuPackage.h"
#include "simulator/dfu/LittleEndian.h"
#include "tests/fuzz/BootloaderHost.h"

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
    const QByteArray size = LittleEndian::bytes(static_cast<quint32>(bytes.size()));
    return request(Dfu::CreateObject, static_cast<char>(type) + size)
        + request(Dfu::WriteObject, bytes) + request(Dfu::Execute);
}

} // namespace

/// A fuzzer cannot guess a hash, so one seed transfers a whole image to the bootloader.
class tst_WholeTransfer : public QObject
{
    Q_OBJECT

private slots:
    void isTheSeed();
    void finishes();
};

/// To recreate the seed, pass the expected value to `xxd -r -p`.
void tst_WholeTransfer::isTheSeed()
{
    const DfuPackage package = DfuPackage::forFirmware("abcd");
    QFile seed(SEED);
    QVERIFY(seed.open(QIODevice::ReadOnly));
    QCOMPARE(
        seed.readAll().toHex(),
        (object(Dfu::CommandObject, package.initPacket) + object(Dfu::DataObject, package.firmware))
            .toHex());
}

void tst_WholeTransfer::finishes()
{
    QFile seed(SEED);
    QVERIFY(seed.open(QIODevice::ReadOnly));
    const QByteArray bytes = seed.readAll();
    FuzzBytes input(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                    static_cast<std::size_t>(bytes.size()));
    Bootloader bootloader;
    while (!input.isEmpty()) {
        QVERIFY(!bootloader.isFinished());
        BootloaderHost::sendNext(bootloader, input);
    }
    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), QByteArray("abcd"));
}

QTEST_GUILESS_MAIN(tst_WholeTransfer)
#include "tst_WholeTransfer.moc"
