// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/InitPacketCheck.h"

#include <InitPacket.pb.h>

#include <algorithm>
#include <optional>
#include <string>

using namespace Dfu;

namespace {

constexpr std::size_t kSha256Size = 32;

using Objection = std::optional<ExtendedResult>;

bool isOfType(fwupdate::SignatureType type, const PublicKey &key)
{
    return type == fwupdate::ED25519 ? key.type() == PublicKey::Type::Ed25519
                                     : key.type() == PublicKey::Type::EcdsaP256;
}

Objection toSignature(const fwupdate::Packet &packet, const BootloaderSettings &settings)
{
    if (!packet.has_signed_command()) {
        return settings.signatureRequired ? Objection(SignatureMissing) : std::nullopt;
    }
    const fwupdate::SignedCommand &command = packet.signed_command();
    if (!command.has_signature()) {
        return SignatureMissing;
    }
    if (!command.has_signature_type()) {
        return WrongSignatureType;
    }
    if (settings.key.isNull()) {
        return std::nullopt;
    }
    if (!isOfType(command.signature_type(), settings.key)) {
        return WrongSignatureType;
    }
    const bool isGenuine = settings.key.verifies(QByteArray::fromStdString(command.command()),
                                                 QByteArray::fromStdString(command.signature()));
    return isGenuine ? std::nullopt : Objection(VerificationFailed);
}

bool suitsSoftDevice(const fwupdate::InitCommand &init, quint32 id)
{
    const auto &required = init.required_softdevices();
    return required.empty() || std::find(required.begin(), required.end(), id) != required.end();
}

Objection toVersions(const fwupdate::InitCommand &init, const BootloaderSettings &settings)
{
    if (!init.has_hardware_version()) {
        return InitCommandInvalid;
    }
    if (init.hardware_version() != settings.hardwareVersion) {
        return WrongHardwareVersion;
    }
    if (!suitsSoftDevice(init, settings.softDeviceId)) {
        return WrongSoftDevice;
    }
    if (!init.has_firmware_version()) {
        return InitCommandInvalid;
    }
    if (init.firmware_version() < settings.firmwareVersion && !init.is_debug()) {
        return FirmwareVersionTooLow;
    }
    return std::nullopt;
}

Objection toImage(const fwupdate::InitCommand &init)
{
    if (!init.has_type() || init.type() != fwupdate::APPLICATION) {
        return InitCommandInvalid;
    }
    if (init.hash().type() != fwupdate::SHA256 || init.hash().hash().size() != kSha256Size) {
        return WrongHashType;
    }
    return std::nullopt;
}

Objection toSize(const fwupdate::InitCommand &init, int maxImageSize)
{
    if (init.application_size() == 0) {
        return InitCommandInvalid;
    }
    return init.application_size() > static_cast<quint32>(maxImageSize)
        ? Objection(InsufficientSpace)
        : std::nullopt;
}

template <typename Check> Objection orElse(const Objection &objection, Check check)
{
    return objection ? objection : check();
}

InitPacketCheck::Verdict refusal(ExtendedResult reason)
{
    InitPacketCheck::Verdict verdict;
    verdict.result = ExtendedError;
    verdict.reason = reason;
    return verdict;
}

InitPacketCheck::Verdict undecodable()
{
    InitPacketCheck::Verdict verdict;
    verdict.result = InvalidObject;
    return verdict;
}

InitPacketCheck::Verdict acceptance(const fwupdate::InitCommand &init)
{
    InitPacketCheck::Verdict verdict;
    verdict.imageSize = static_cast<int>(init.application_size());
    verdict.imageHash = QByteArray::fromStdString(init.hash().hash());
    std::reverse(verdict.imageHash.begin(), verdict.imageHash.end());
    verdict.firmwareVersion = init.firmware_version();
    return verdict;
}

} // namespace

InitPacketCheck::Verdict InitPacketCheck::check(const QByteArray &bytes,
                                                const BootloaderSettings &settings,
                                                int maxImageSize)
{
    fwupdate::Packet packet;
    if (!packet.ParseFromString(bytes.toStdString())) {
        return undecodable();
    }
    if (packet.has_command() == packet.has_signed_command()) {
        return refusal(WrongCommandFormat);
    }
    fwupdate::Command command;
    if (!command.ParseFromString(packet.has_command() ? packet.command()
                                                      : packet.signed_command().command())) {
        return undecodable();
    }
    if (!command.has_op_code() || command.op_code() != fwupdate::INIT) {
        return refusal(UnknownCommand);
    }
    if (!command.has_init()) {
        return refusal(InitCommandInvalid);
    }
    const fwupdate::InitCommand &init = command.init();
    Objection objection = toSignature(packet, settings);
    objection = orElse(objection, [&] { return toImage(init); });
    objection = orElse(objection, [&] { return toVersions(init, settings); });
    objection = orElse(objection, [&] { return toSize(init, maxImageSize); });
    return objection ? refusal(*objection) : acceptance(init);
}
