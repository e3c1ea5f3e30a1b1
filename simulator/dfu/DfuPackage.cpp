// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/DfuPackage.h"

#include <InitPacket.pb.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <zip.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <random>

namespace {

constexpr auto kManifest = "manifest.json";
constexpr auto kInitPacketFile = "firmware.dat";
constexpr auto kFirmwareFile = "firmware.bin";

// Larger files are rejected before unpacking, so that a small ZIP file cannot exhaust the memory.
constexpr zip_uint64_t kMaxEntrySize = 16UL * 1024 * 1024;

using ReadableZip = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using ZipEntry = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

std::optional<QByteArray> unpack(zip_t *zip, zip_uint64_t index, zip_uint64_t size)
{
    const ZipEntry entry(zip_fopen_index(zip, index, 0), &zip_fclose);
    if (!entry) {
        return std::nullopt;
    }
    QByteArray bytes(static_cast<int>(size), '\0');
    if (zip_fread(entry.get(), bytes.data(), size) != static_cast<zip_int64_t>(size)) {
        return std::nullopt;
    }
    // libzip compares the checksum at the end of the file only.
    char beyond = 0;
    return zip_fread(entry.get(), &beyond, 1) == 0 ? std::optional(bytes) : std::nullopt;
}

DfuPackage::Error readEntry(zip_t *zip, const QByteArray &name, DfuPackage::Error ifMissing,
                            QByteArray *bytes)
{
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (name.isEmpty() || zip_stat(zip, name.constData(), 0, &stat) != 0) {
        return ifMissing;
    }
    if ((stat.valid & ZIP_STAT_SIZE) == 0 || stat.size > kMaxEntrySize) {
        return DfuPackage::Error::Damaged;
    }
    const auto unpacked = unpack(zip, stat.index, stat.size);
    if (!unpacked) {
        return DfuPackage::Error::Damaged;
    }
    *bytes = *unpacked;
    return DfuPackage::Error::None;
}

DfuPackage::Error otherImage(const QJsonObject &images)
{
    if (images.contains("softdevice_bootloader")
        || (images.contains("softdevice") && images.contains("bootloader"))) {
        return DfuPackage::Error::HasSoftDeviceAndBootloader;
    }
    if (images.contains("softdevice")) {
        return DfuPackage::Error::HasSoftDevice;
    }
    return images.contains("bootloader") ? DfuPackage::Error::HasBootloader
                                         : DfuPackage::Error::None;
}

DfuPackage::Error readFiles(zip_t *zip, DfuPackage *package)
{
    using Error = DfuPackage::Error;
    QByteArray json;
    if (const Error error = readEntry(zip, kManifest, Error::NoManifest, &json);
        error != Error::None) {
        return error;
    }
    const QJsonObject images = QJsonDocument::fromJson(json).object()["manifest"].toObject();
    if (const Error error = otherImage(images); error != Error::None) {
        return error;
    }
    const QJsonObject application = images["application"].toObject();
    if (application.isEmpty()) {
        return Error::BadManifest;
    }
    const QByteArray initName = application["dat_file"].toString().toUtf8();
    if (const Error error = readEntry(zip, initName, Error::NoInitPacket, &package->initPacket);
        error != Error::None) {
        return error;
    }
    const QByteArray firmwareName = application["bin_file"].toString().toUtf8();
    return readEntry(zip, firmwareName, Error::NoFirmware, &package->firmware);
}

/// \a bytes must outlive \a zip.
bool addEntry(zip_t *zip, const char *name, const QByteArray &bytes)
{
    zip_source_t *source
        = zip_source_buffer(zip, bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0);
    if (source == nullptr) {
        return false;
    }
    const zip_int64_t index = zip_file_add(zip, name, source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    // A fixed time makes the file reproducible.
    constexpr zip_uint16_t kFirstJanuary1980 = 0x0021;
    return zip_file_set_dostime(zip, static_cast<zip_uint64_t>(index), 0, kFirstJanuary1980, 0)
        == 0;
}

QByteArray manifestJson()
{
    const QJsonObject application{{"bin_file", kFirmwareFile}, {"dat_file", kInitPacketFile}};
    return QJsonDocument(QJsonObject{{"manifest", QJsonObject{{"application", application}}}})
        .toJson();
}

} // namespace

DfuPackage DfuPackage::forFirmware(const QByteArray &firmware, const BootloaderSettings &device)
{
    QByteArray hash = QCryptographicHash::hash(firmware, QCryptographicHash::Sha256);
    std::reverse(hash.begin(), hash.end());

    fwupdate::Command command;
    command.set_op_code(fwupdate::INIT);
    fwupdate::InitCommand &init = *command.mutable_init();
    init.set_firmware_version(std::max(1U, device.firmwareVersion));
    init.set_hardware_version(device.hardwareVersion);
    init.add_required_softdevices(device.softDeviceId);
    init.set_type(fwupdate::APPLICATION);
    init.set_softdevice_size(0);
    init.set_bootloader_size(0);
    init.set_application_size(static_cast<quint32>(firmware.size()));
    init.mutable_hash()->set_type(fwupdate::SHA256);
    init.mutable_hash()->set_hash(hash.toStdString());
    init.set_is_debug(false);

    fwupdate::Packet packet;
    packet.set_command(command.SerializeAsString());
    return {QByteArray::fromStdString(packet.SerializeAsString()), firmware};
}

DfuPackage DfuPackage::generate(int size, quint32 seed, const BootloaderSettings &device)
{
    std::mt19937 generator(seed);
    QByteArray firmware(size, '\0');
    for (char &byte : firmware) {
        byte = static_cast<char>(generator());
    }
    return forFirmware(firmware, device);
}

DfuPackage::Error DfuPackage::read(const QString &path)
{
    if (!QFileInfo(path).isFile() || !QFileInfo(path).isReadable()) {
        return Error::Missing;
    }
    const ReadableZip zip(
        zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr),
        &zip_discard);
    if (!zip) {
        return Error::NotAZip;
    }
    DfuPackage package;
    const Error error = readFiles(zip.get(), &package);
    if (error == Error::None) {
        *this = package;
    }
    return error;
}

DfuPackage::Error DfuPackage::write(const QString &path) const
{
    const QByteArray manifest = manifestJson();
    ReadableZip zip(
        zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr),
        &zip_discard);
    if (!zip || !addEntry(zip.get(), kManifest, manifest)
        || !addEntry(zip.get(), kInitPacketFile, initPacket)
        || !addEntry(zip.get(), kFirmwareFile, firmware) || zip_close(zip.get()) != 0) {
        return Error::NotWritable;
    }
    // zip_close() has freed it.
    static_cast<void>(zip.release());
    return Error::None;
}

QString DfuPackage::errorText(Error error)
{
    switch (error) {
    case Error::None:
        return {};
    case Error::Missing:
        return "the file does not exist or cannot be read";
    case Error::NotAZip:
        return "the file is not a zip archive";
    case Error::NoManifest:
        return "the archive has no manifest.json";
    case Error::BadManifest:
        return "manifest.json does not describe an application";
    case Error::HasSoftDevice:
        return "the package contains a SoftDevice, but the device accepts only an application";
    case Error::HasBootloader:
        return "the package contains a bootloader, but the device accepts only an application";
    case Error::HasSoftDeviceAndBootloader:
        return "the package contains a SoftDevice and a bootloader, but the device accepts only "
               "an application";
    case Error::NoInitPacket:
        return "the archive lacks the init packet that its manifest names";
    case Error::NoFirmware:
        return "the archive lacks the firmware that its manifest names";
    case Error::Damaged:
        return "a file in the archive is damaged or too large";
    case Error::NotWritable:
        return "the file cannot be written";
    }
    return {};
}
