// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/DfuPackage.h"

#include "tests/support/DfuRequests.h"
#include "tests/support/GoldenPackages.h"
#include "tests/support/ProtocolFields.h"
#include "tests/support/ZipFile.h"

#include <QTemporaryDir>
#include <QtTest>

#include <zip.h>

using Error = DfuPackage::Error;
using Entries = QMap<QString, QByteArray>;

Q_DECLARE_METATYPE(DfuPackage::Error)

class tst_DfuPackage : public QObject
{
    Q_OBJECT

private slots:
    void describesTheFirmware();
    void suitsTheDevice_data();
    void suitsTheDevice();
    void readsWhatItWrote();
    void writesTheSameBytesTwice();
    void replacesAFile();
    void readsAnyFileNames();
    void refuses_data();
    void refuses();
    void refusesWhatIsNoFile();
    void refusesADamagedFile();
    void refusesAFileThatUnpacksTooLarge();
    void reportsAFileThatCannotBeWritten();
    void namesEveryError();

private:
    QString path(const char *name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

namespace {

const QByteArray kManifest
    = R"({"manifest": {"application": {"bin_file": "a.bin", "dat_file": "a.dat"}}})";

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

} // namespace

void tst_DfuPackage::describesTheFirmware()
{
    BootloaderSettings device;
    device.firmwareVersion = 3;
    GoldenPackages::Fields init = GoldenPackages::initFields();
    init[3] = ProtocolFields::packed(3, {0});

    const DfuPackage package = DfuPackage::forFirmware(GoldenPackages::image(), device);

    QCOMPARE(package.initPacket.toHex(), GoldenPackages::unsignedPacket(init).toHex());
    QCOMPARE(package.firmware, GoldenPackages::image());
}

void tst_DfuPackage::suitsTheDevice_data()
{
    QTest::addColumn<quint32>("hardware");
    QTest::addColumn<quint32>("firmware");
    QTest::addColumn<quint32>("softDevice");

    QTest::newRow("a new device") << 52U << 0U << 0U;
    QTest::newRow("with the largest numbers") << 0xFFFFFFFFU << 0xFFFFFFFFU << 0xFFFFFFFFU;
}

void tst_DfuPackage::suitsTheDevice()
{
    QFETCH(const quint32, hardware);
    QFETCH(const quint32, firmware);
    QFETCH(const quint32, softDevice);
    const BootloaderSettings device = {hardware, firmware, softDevice, {}, false};
    Bootloader bootloader(device);

    DfuRequests::flash(bootloader, DfuPackage::forFirmware("image", device));

    QCOMPARE(bootloader.image(), QByteArray("image"));
}

void tst_DfuPackage::readsWhatItWrote()
{
    const DfuPackage written = DfuPackage::forFirmware(QByteArray("\0\1\2\xFF", 4).repeated(5000));
    QCOMPARE(written.write(path("good.zip")), Error::None);
    DfuPackage read;
    QCOMPARE(read.read(path("good.zip")), Error::None);
    QCOMPARE(read.initPacket, written.initPacket);
    QCOMPARE(read.firmware, written.firmware);
}

void tst_DfuPackage::writesTheSameBytesTwice()
{
    const DfuPackage package = DfuPackage::forFirmware("firmware");
    QCOMPARE(package.write(path("first.zip")), Error::None);
    QCOMPARE(package.write(path("second.zip")), Error::None);
    QVERIFY(!contents(path("first.zip")).isEmpty());
    QCOMPARE(contents(path("first.zip")), contents(path("second.zip")));
    // Times in a ZIP file have a resolution of two seconds, so this checks the date as well.
    zip_t *zip = zip_open(QFile::encodeName(path("first.zip")).constData(), ZIP_RDONLY, nullptr);
    zip_stat_t stat;
    QCOMPARE(zip_stat_index(zip, 0, 0, &stat), 0);
    zip_discard(zip);
    QCOMPARE(QDateTime::fromSecsSinceEpoch(stat.mtime).date(), QDate(1980, 1, 1));
}

void tst_DfuPackage::replacesAFile()
{
    QCOMPARE(DfuPackage::forFirmware("old").write(path("replaced.zip")), Error::None);
    QCOMPARE(DfuPackage::forFirmware("new").write(path("replaced.zip")), Error::None);
    DfuPackage package;
    QCOMPARE(package.read(path("replaced.zip")), Error::None);
    QCOMPARE(package.firmware, QByteArray("new"));
}

void tst_DfuPackage::readsAnyFileNames()
{
    QVERIFY(ZipFile::write(
        path("names.zip"),
        {{"manifest.json", kManifest}, {"a.bin", "image"}, {"a.dat", "init"}, {"b", "more"}}));
    DfuPackage package;
    QCOMPARE(package.read(path("names.zip")), Error::None);
    QCOMPARE(package.firmware, QByteArray("image"));
    QCOMPARE(package.initPacket, QByteArray("init"));
}

void tst_DfuPackage::refuses_data()
{
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<DfuPackage::Error>("error");

    const auto row = [](const char *name, const QByteArray &manifest, Error error) {
        QTest::newRow(name) << Entries{{"manifest.json", manifest}, {"a.bin", "x"}, {"a.dat", "x"}}
                            << error;
    };
    row("a good one", kManifest, Error::None);
    row("an empty manifest", "", Error::BadManifest);
    row("a manifest that is no JSON", "{", Error::BadManifest);
    row("a manifest that is a list", "[1, 2]", Error::BadManifest);
    row("a manifest without an application", R"({"manifest": {}})", Error::BadManifest);
    row("an application that is no object", R"({"manifest": {"application": 1}})",
        Error::BadManifest);
    const QByteArray application = R"("application": {"bin_file": "a.bin", "dat_file": "a.dat"})";
    const auto withImages = [&application](const QByteArray &images) {
        return R"({"manifest": {)" + images + application + "}}";
    };
    row("a SoftDevice", R"({"manifest": {"softdevice": {}}})", Error::HasSoftDevice);
    row("a bootloader", R"({"manifest": {"bootloader": {}}})", Error::HasBootloader);
    row("both in one image", R"({"manifest": {"softdevice_bootloader": {}}})",
        Error::HasSoftDeviceAndBootloader);
    row("a SoftDevice besides", withImages(R"("softdevice": {}, )"), Error::HasSoftDevice);
    row("a bootloader besides", withImages(R"("bootloader": {}, )"), Error::HasBootloader);
    row("both besides", withImages(R"("bootloader": {}, "softdevice": {}, )"),
        Error::HasSoftDeviceAndBootloader);
    row("an image of an unknown kind besides", withImages(R"("cable": {}, )"), Error::None);
    row("an init packet that is not named",
        R"({"manifest": {"application": {"bin_file": "a.bin"}}})", Error::NoInitPacket);
    row("firmware that is not named", R"({"manifest": {"application": {"dat_file": "a.dat"}}})",
        Error::NoFirmware);
    QTest::newRow("no manifest") << Entries{{"a.bin", "x"}, {"a.dat", "x"}} << Error::NoManifest;
    QTest::newRow("no init packet")
        << Entries{{"manifest.json", kManifest}, {"a.bin", "x"}} << Error::NoInitPacket;
    QTest::newRow("no firmware") << Entries{{"manifest.json", kManifest}, {"a.dat", "x"}}
                                 << Error::NoFirmware;
}

void tst_DfuPackage::refuses()
{
    QFETCH(Entries, entries);
    QFETCH(DfuPackage::Error, error);
    QVERIFY(ZipFile::write(path("refused.zip"), entries));
    DfuPackage package{"init", "image"};
    QCOMPARE(package.read(path("refused.zip")), error);
    QCOMPARE(package.initPacket, QByteArray(error == Error::None ? "x" : "init"));
    QCOMPARE(package.firmware, QByteArray(error == Error::None ? "x" : "image"));
}

void tst_DfuPackage::refusesWhatIsNoFile()
{
    DfuPackage package;
    QCOMPARE(package.read(path("missing.zip")), Error::Missing);
    QCOMPARE(package.read(m_folder.path()), Error::Missing);
    writeFile(path("text.zip"), "not a zip");
    QCOMPARE(package.read(path("text.zip")), Error::NotAZip);
    writeFile(path("empty.zip"), "");
    QVERIFY(package.read(path("empty.zip")) != Error::None);
}

void tst_DfuPackage::refusesADamagedFile()
{
    const DfuPackage good = DfuPackage::forFirmware("firmware");
    QCOMPARE(good.write(path("damaged.zip")), Error::None);
    QByteArray bytes = contents(path("damaged.zip"));
    const auto begin = bytes.indexOf(good.initPacket);
    QVERIFY(begin > 0);
    bytes[begin] = static_cast<char>(bytes.at(begin) ^ 1);
    writeFile(path("damaged.zip"), bytes);
    DfuPackage package;
    QCOMPARE(package.read(path("damaged.zip")), Error::Damaged);
    writeFile(path("damaged.zip"), bytes.left(bytes.size() / 2));
    QCOMPARE(package.read(path("damaged.zip")), Error::NotAZip);
}

void tst_DfuPackage::refusesAFileThatUnpacksTooLarge()
{
    const QByteArray zeros(16 * 1024 * 1024, '\0');
    Entries entries{{"manifest.json", kManifest}, {"a.bin", zeros}, {"a.dat", "x"}};
    QVERIFY(ZipFile::write(path("large.zip"), entries));
    DfuPackage package;
    QCOMPARE(package.read(path("large.zip")), Error::None);
    entries["a.bin"] = zeros + '\0';
    QVERIFY(ZipFile::write(path("large.zip"), entries));
    QCOMPARE(package.read(path("large.zip")), Error::Damaged);
}

void tst_DfuPackage::reportsAFileThatCannotBeWritten()
{
    const DfuPackage package = DfuPackage::forFirmware("firmware");
    QCOMPARE(package.write(path("no/such/folder.zip")), Error::NotWritable);
    QCOMPARE(package.write(m_folder.path()), Error::NotWritable);
}

void tst_DfuPackage::namesEveryError()
{
    QVERIFY(DfuPackage::errorText(Error::None).isEmpty());
    QSet<QString> texts;
    for (int error = int(Error::Missing); error <= int(Error::NotWritable); ++error) {
        texts.insert(DfuPackage::errorText(static_cast<Error>(error)));
    }
    QCOMPARE(texts.size(), int(Error::NotWritable));
    QVERIFY(!texts.contains(QString()));
}

QTEST_GUILESS_MAIN(tst_DfuPackage)
#include "tst_DfuPackage.moc"
