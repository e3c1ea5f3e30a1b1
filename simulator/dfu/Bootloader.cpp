// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/Bootloader.h"

#include "simulator/dfu/Checksum.h"
#include "simulator/dfu/InitPacketCheck.h"
#include "simulator/dfu/LittleEndian.h"

#include <QCryptographicHash>

#include <utility>

using namespace Dfu;

namespace {

QByteArray result(Result code)
{
    return {1, static_cast<char>(code)};
}

QByteArray success(const QByteArray &payload)
{
    return result(Success) + payload;
}

QByteArray extendedError(ExtendedResult code)
{
    return result(ExtendedError) + static_cast<char>(code);
}

} // namespace

Bootloader::Bootloader(BootloaderSettings settings)
    : m_settings(std::move(settings))
    , m_slip(kMaxWriteSize + 1)
{ }

QByteArray Bootloader::receive(const QByteArray &bytes)
{
    QByteArray answers;
    const QVector<QByteArray> requests = m_slip.decode(bytes);
    for (const QByteArray &request : requests) {
        const auto opcode = static_cast<quint8>(request.at(0));
        // The echo of a terminal, which must not cause a response.
        if (opcode == Response) {
            continue;
        }
        const QByteArray answer = respond(request);
        if (!answer.isEmpty()) {
            answers += Slip::encode(static_cast<char>(Response) + answer);
        }
    }
    return answers;
}

void Bootloader::reset()
{
    m_slip.reset();
    m_receiptInterval = 0;
    forgetTransfers();
}

QByteArray Bootloader::respond(const QByteArray &request)
{
    const QByteArray opcode = request.left(1);
    const QByteArray arguments = request.mid(1);
    switch (static_cast<quint8>(opcode.at(0))) {
    case CreateObject:
        return opcode + create(arguments);
    case SetReceiptNotification:
        return opcode + setReceiptNotification(arguments);
    case CalculateChecksum:
        return arguments.isEmpty() ? checksum() : opcode + result(InvalidParameter);
    case Execute:
        return opcode + (arguments.isEmpty() ? execute() : result(InvalidParameter));
    case SelectObject:
        return opcode + select(arguments);
    case GetMtu:
        return opcode
            + (arguments.isEmpty() ? success(LittleEndian::bytes(quint16(kMtu)))
                                   : result(InvalidParameter));
    case WriteObject:
        return write(arguments);
    case Ping:
        return opcode + (arguments.size() == 1 ? success(arguments) : result(InvalidParameter));
    case Abort:
        forgetTransfers();
        return opcode + result(Success);
    default:
        return opcode + result(NotSupported);
    }
}

QByteArray Bootloader::create(const QByteArray &arguments)
{
    if (arguments.size() != 5) {
        return result(InvalidParameter);
    }
    const auto size = LittleEndian::number<quint32>(arguments, 1);
    switch (arguments.at(0)) {
    case CommandObject:
        return result(startCommand(size));
    case DataObject:
        return result(startData(size));
    default:
        return result(UnsupportedType);
    }
}

Result Bootloader::startCommand(quint32 size)
{
    if (size == 0) {
        return InvalidParameter;
    }
    if (size > kMaxCommandSize) {
        return InsufficientResources;
    }
    m_finished = false;
    m_image.clear();
    m_refusal.clear();
    forgetTransfers();
    m_command.objectEnd = static_cast<int>(size);
    return Success;
}

Result Bootloader::startData(quint32 size)
{
    if (m_command.executedSize == 0) {
        return NotPermitted;
    }
    if (size == 0) {
        return InvalidParameter;
    }
    if (size > kMaxDataSize) {
        return InsufficientResources;
    }
    const int end = m_data.executedSize + static_cast<int>(size);
    if (end > m_expectedSize) {
        return NotPermitted;
    }
    m_type = DataObject;
    m_data.bytes.truncate(m_data.executedSize);
    m_data.crc = m_data.executedCrc;
    m_data.objectEnd = end;
    m_writesSinceReceipt = 0;
    return Success;
}

QByteArray Bootloader::setReceiptNotification(const QByteArray &arguments)
{
    if (arguments.size() != 2) {
        return result(InvalidParameter);
    }
    m_receiptInterval = LittleEndian::number<quint16>(arguments);
    m_writesSinceReceipt = 0;
    return result(Success);
}

QByteArray Bootloader::select(const QByteArray &arguments)
{
    if (arguments.size() != 1) {
        return result(InvalidParameter);
    }
    const auto type = static_cast<quint8>(arguments.at(0));
    if (type != CommandObject && type != DataObject) {
        return result(UnsupportedType);
    }
    m_type = static_cast<ObjectType>(type);
    const int maxSize = m_type == CommandObject ? kMaxCommandSize : kMaxDataSize;
    return success(LittleEndian::bytes(quint32(maxSize)) + offsetAndCrc());
}

QByteArray Bootloader::write(const QByteArray &bytes)
{
    const QByteArray opcode(1, static_cast<char>(WriteObject));
    if (bytes.isEmpty()) {
        return opcode + result(InvalidParameter);
    }
    Transfer &transfer = current();
    if (transfer.objectEnd == transfer.executedSize) {
        return opcode + result(NotPermitted);
    }
    if (bytes.size() > transfer.objectEnd - transfer.bytes.size()) {
        return opcode + result(InsufficientResources);
    }
    transfer.bytes += bytes;
    transfer.crc = Checksum::extended(transfer.crc, bytes);
    ++m_writesSinceReceipt;
    if (m_receiptInterval == 0 || m_writesSinceReceipt < m_receiptInterval) {
        return {};
    }
    m_writesSinceReceipt = 0;
    return checksum();
}

QByteArray Bootloader::checksum() const
{
    return static_cast<char>(CalculateChecksum) + success(offsetAndCrc());
}

QByteArray Bootloader::execute()
{
    const Transfer &transfer = current();
    // A host that resumes does not know whether its last execute arrived, and may repeat it.
    if (transfer.executedSize > 0 && transfer.bytes.size() == transfer.executedSize) {
        return result(Success);
    }
    if (transfer.objectEnd == 0 || transfer.bytes.size() != transfer.objectEnd) {
        return result(NotPermitted);
    }
    return m_type == CommandObject ? executeCommand() : executeData();
}

QByteArray Bootloader::executeCommand()
{
    const auto verdict = InitPacketCheck::check(m_command.bytes, m_settings, kMaxImageSize);
    if (verdict.result != Success) {
        return refuse(verdict.result == ExtendedError ? extendedError(verdict.reason)
                                                      : result(verdict.result));
    }
    m_command.executedSize = m_command.objectEnd;
    m_initPacket = m_command.bytes;
    m_expectedSize = verdict.imageSize;
    m_expectedHash = verdict.imageHash;
    m_firmwareVersion = verdict.firmwareVersion;
    return result(Success);
}

QByteArray Bootloader::executeData()
{
    m_data.executedSize = m_data.objectEnd;
    m_data.executedCrc = m_data.crc;
    return m_data.executedSize == m_expectedSize ? finish() : result(Success);
}

QByteArray Bootloader::finish()
{
    if (m_hashFails) {
        return refuse(extendedError(HashFailed));
    }
    if (QCryptographicHash::hash(m_data.bytes, QCryptographicHash::Sha256) != m_expectedHash) {
        return refuse(extendedError(VerificationFailed));
    }
    m_finished = true;
    m_image = m_data.bytes;
    m_settings.firmwareVersion = m_firmwareVersion;
    forgetTransfers();
    return result(Success);
}

QByteArray Bootloader::refuse(const QByteArray &result)
{
    forgetTransfers();
    m_refusal = result;
    return result;
}

void Bootloader::forgetTransfers()
{
    m_command = {};
    m_data = {};
    m_type = CommandObject;
    m_writesSinceReceipt = 0;
    if (!m_finished) {
        m_initPacket.clear();
    }
}

QByteArray Bootloader::offsetAndCrc() const
{
    const quint32 crc = m_wrongCrc ? ~current().crc : current().crc;
    return LittleEndian::bytes(quint32(current().bytes.size())) + LittleEndian::bytes(crc);
}
