// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/fuzz/HostSession.h"

#include "tests/support/DfuRequests.h"
#include "tests/support/PtyDevice.h"

#include <QDir>
#include <QFile>
#include <QtTest>

Q_DECLARE_METATYPE(BootloaderSettings)

/// A fuzzer cannot guess a checksum, so the seeds are the answers of a real bootloader.
class tst_HostSession : public QObject
{
    Q_OBJECT

private slots:
    void seedsAreRealAnswers_data();
    void seedsAreRealAnswers();
};

namespace {

BootloaderSettings otherHardware()
{
    BootloaderSettings settings;
    settings.hardwareVersion = 1;
    return settings;
}

/// The input for the target that makes the client talk as to \a bootloader.
QByteArray record(Bootloader &bootloader, quint16 receipts)
{
    QByteArray answers(1, static_cast<char>(receipts));
    PtyDevice device([&](const QByteArray &bytes) {
        QByteArray answer = bootloader.receive(bytes);
        answers += answer;
        return answer;
    });
    DfuClient client(device.fd());
    client.setReceiptInterval(receipts);
    client.flash(HostSession::package().initPacket, HostSession::package().firmware);
    device.unplug();
    return answers;
}

} // namespace

void tst_HostSession::seedsAreRealAnswers_data()
{
    QTest::addColumn<BootloaderSettings>("settings");
    QTest::addColumn<int>("bytesThere");
    QTest::addColumn<quint16>("receipts");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const BootloaderSettings &settings, int bytesThere,
                        quint16 receipts, const char *error) {
        QTest::newRow(name) << settings << bytesThere << receipts << QString(error);
    };
    row("whole", {}, 0, 0, "");
    row("with-receipts", {}, 0, 1, "");
    row("resumed", {}, 10, 0, "");
    row("resumed-at-the-end", {}, 24, 0, "");
    row("refused", otherHardware(), 0, 0,
        "The device refused to execute the object: the firmware is for other hardware");
}

/// To recreate a seed, pass the expected value to `xxd -r -p`.
void tst_HostSession::seedsAreRealAnswers()
{
    QFETCH(const BootloaderSettings, settings);
    QFETCH(const int, bytesThere);
    QFETCH(const quint16, receipts);
    QFETCH(const QString, error);
    Bootloader bootloader(settings);
    if (bytesThere > 0) {
        DfuRequests::sendInitPacket(bootloader, HostSession::package().initPacket);
        DfuRequests::create(bootloader, Dfu::DataObject, 24);
        DfuRequests::write(bootloader, HostSession::package().firmware.left(bytesThere));
    }
    QFile file(QDir(SEEDS).filePath(QTest::currentDataTag()));
    const QByteArray seed = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();

    QCOMPARE(seed.toHex(), record(bootloader, receipts).toHex());

    FuzzBytes input(reinterpret_cast<const std::uint8_t *>(seed.constData()),
                    static_cast<std::size_t>(seed.size()));
    const HostSession::Outcome outcome = HostSession::play(input);
    QCOMPARE(outcome.error, error);
    QCOMPARE(outcome.succeeded, error.isEmpty());
}

QTEST_GUILESS_MAIN(tst_HostSession)
#include "tst_HostSession.moc"
