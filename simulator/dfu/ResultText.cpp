// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/ResultText.h"

#include "simulator/dfu/Dfu.h"

namespace {

QString extendedResultText(quint8 result)
{
    switch (result) {
    case Dfu::WrongCommandFormat:
        return "the init packet contains no single command";
    case Dfu::UnknownCommand:
        return "the command in the init packet is unknown";
    case Dfu::InitCommandInvalid:
        return "the init packet does not describe an application";
    case Dfu::FirmwareVersionTooLow:
        return "the firmware version is too low";
    case Dfu::WrongHardwareVersion:
        return "the firmware is for other hardware";
    case Dfu::WrongSoftDevice:
        return "the firmware needs another SoftDevice";
    case Dfu::SignatureMissing:
        return "the package is not signed";
    case Dfu::WrongHashType:
        return "the type of the hash is wrong";
    case Dfu::HashFailed:
        return "the hash cannot be calculated";
    case Dfu::WrongSignatureType:
        return "the type of the signature is wrong";
    case Dfu::VerificationFailed:
        return "the signature or the firmware's hash is wrong";
    case Dfu::InsufficientSpace:
        return "the firmware is too large";
    default:
        return QStringLiteral("extended error %1").arg(result);
    }
}

} // namespace

QString Dfu::resultText(const QByteArray &result)
{
    const auto code = static_cast<quint8>(result.at(0));
    switch (code) {
    case NotSupported:
        return "not supported";
    case InvalidParameter:
        return "invalid parameter";
    case InsufficientResources:
        return "insufficient resources";
    case InvalidObject:
        return "invalid object";
    case UnsupportedType:
        return "unsupported type";
    case NotPermitted:
        return "not permitted";
    case OperationFailed:
        return "operation failed";
    case ExtendedError:
        return extendedResultText(result.size() > 1 ? static_cast<quint8>(result.at(1)) : 0);
    default:
        return QStringLiteral("result %1").arg(code);
    }
}
