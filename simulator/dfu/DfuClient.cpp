// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/DfuClient.h"

#include "simulator/dfu/Checksum.h"
#include "simulator/dfu/LittleEndian.h"
#include "simulator/dfu/ResultText.h"

namespace {

constexpr int kChecksumSize = 8;

/// The request, for error messages.
QString requestText(quint8 opcode)
{
    switch (opcode) {
    case Dfu::CreateObject:
        return "create an object";
    case Dfu::SetReceiptNotification:
        return "send receipts";
    case Dfu::CalculateChecksum:
        return "report its checksum";
    case Dfu::Execute:
        return "execute the object";
    case Dfu::SelectObject:
        return "select an object";
    case Dfu::GetMtu:
        return "report its MTU";
    case Dfu::WriteObject:
        return "take data";
    case Dfu::Ping:
        return "answer a ping";
    default:
        return QStringLiteral("carry out request %1").arg(opcode);
    }
}

} // namespace

DfuClient::DfuClient(int fd, FramedPort::Line line)
    : m_port(fd, line)
{ }

bool DfuClient::flash(const QByteArray &initPacket, const QByteArray &firmware)
{
    m_error.clear();
    if (initPacket.isEmpty() || firmware.isEmpty()) {
        return fail("The package is empty");
    }
    // A single end mark terminates a frame that an earlier program may have left unfinished.
    if (!m_port.open() || !m_port.send({}, QDeadlineTimer(m_timeout))) {
        return fail(m_port.errorString());
    }
    Position command;
    if (!handshake() || !select(Dfu::CommandObject, &command)) {
        return false;
    }
    const auto size = static_cast<quint32>(initPacket.size());
    if (size > command.maxSize) {
        return fail("The init packet is too large for the device");
    }
    const bool alreadyThere
        = command.offset == size && command.crc == Checksum::ofFirst(int(size), initPacket);
    const bool described = alreadyThere ? request(Dfu::Execute, {}) : sendInitPacket(initPacket);
    return described && sendFirmware(initPacket, firmware);
}

bool DfuClient::handshake()
{
    const QByteArray id(1, '\x2A');
    QByteArray payload;
    if (!request(Dfu::Ping, id, 1, &payload)) {
        return false;
    }
    if (payload != id) {
        return fail("The device answered another ping");
    }
    if (!request(Dfu::SetReceiptNotification, LittleEndian::bytes(m_receiptInterval))
        || !request(Dfu::GetMtu, {}, sizeof(quint16), &payload)) {
        return false;
    }
    // Leaves half of the frame for escapes, and room for the opcode and the end mark.
    m_writeSize = (LittleEndian::number<quint16>(payload) - 1) / 2 - 1;
    return m_writeSize > 0 || fail("The device takes no data");
}

bool DfuClient::sendInitPacket(const QByteArray &initPacket)
{
    return sendObject(Dfu::CommandObject, initPacket, 0, int(initPacket.size()));
}

bool DfuClient::sendFirmware(const QByteArray &initPacket, const QByteArray &firmware)
{
    Position position;
    if (!select(Dfu::DataObject, &position)) {
        return false;
    }
    const auto total = static_cast<quint32>(firmware.size());
    const auto objectSize = static_cast<int>(qMin(position.maxSize, total));
    if (objectSize == 0) {
        return fail("The device takes no data");
    }
    int offset = 0;
    if (position.offset > 0 && position.offset <= total
        && position.crc == Checksum::ofFirst(static_cast<int>(position.offset), firmware)) {
        const auto done = static_cast<int>(position.offset);
        const int objects = (done + objectSize - 1) / objectSize;
        offset = qMin(objects * objectSize, int(firmware.size()));
        if (!completeObject(firmware, done, offset)) {
            return false;
        }
    } else if (position.offset > 0 && !sendInitPacket(initPacket)) {
        // The device has other data, which a new init packet discards.
        return false;
    }
    while (offset < firmware.size()) {
        const int end = qMin(offset + objectSize, int(firmware.size()));
        if (!sendObject(Dfu::DataObject, firmware, offset, end)) {
            return false;
        }
        offset = end;
    }
    return true;
}

bool DfuClient::sendObject(Dfu::ObjectType type, const QByteArray &all, int offset, int end)
{
    const QByteArray arguments
        = static_cast<char>(type) + LittleEndian::bytes(static_cast<quint32>(end - offset));
    return request(Dfu::CreateObject, arguments) && completeObject(all, offset, end);
}

bool DfuClient::completeObject(const QByteArray &all, int offset, int end)
{
    QByteArray checksum;
    return stream(all, offset, end) && request(Dfu::CalculateChecksum, {}, kChecksumSize, &checksum)
        && verify(all, end, checksum) && request(Dfu::Execute, {});
}

bool DfuClient::stream(const QByteArray &all, int offset, int end)
{
    int writes = 0;
    while (offset < end) {
        const int size = qMin(m_writeSize, end - offset);
        const QByteArray frame = static_cast<char>(Dfu::WriteObject) + all.mid(offset, size);
        if (!m_port.send(frame, QDeadlineTimer(m_timeout))) {
            return fail(m_port.errorString());
        }
        offset += size;
        ++writes;
        QByteArray receipt;
        if (m_receiptInterval > 0 && writes % m_receiptInterval == 0
            && (!awaitAnswer(Dfu::CalculateChecksum, kChecksumSize, &receipt)
                || !verify(all, offset, receipt))) {
            return false;
        }
    }
    return true;
}

bool DfuClient::select(Dfu::ObjectType type, Position *position)
{
    QByteArray payload;
    if (!request(Dfu::SelectObject, QByteArray(1, static_cast<char>(type)), 4 + kChecksumSize,
                 &payload)) {
        return false;
    }
    position->maxSize = LittleEndian::number<quint32>(payload);
    position->offset = LittleEndian::number<quint32>(payload, 4);
    position->crc = LittleEndian::number<quint32>(payload, 8);
    return true;
}

bool DfuClient::verify(const QByteArray &all, int end, const QByteArray &checksum)
{
    const auto offset = LittleEndian::number<quint32>(checksum);
    if (offset != static_cast<quint32>(end)) {
        return fail(QStringLiteral("The device received %1 of %2 bytes").arg(offset).arg(end));
    }
    if (LittleEndian::number<quint32>(checksum, 4) != Checksum::ofFirst(end, all)) {
        return fail(QStringLiteral("The device reports a wrong CRC after %1 bytes").arg(end));
    }
    return true;
}

bool DfuClient::request(Dfu::Opcode opcode, const QByteArray &arguments, int payloadSize,
                        QByteArray *payload)
{
    if (!m_port.send(static_cast<char>(opcode) + arguments, QDeadlineTimer(m_timeout))) {
        return fail(m_port.errorString());
    }
    return awaitAnswer(opcode, payloadSize, payload);
}

bool DfuClient::awaitAnswer(Dfu::Opcode opcode, int payloadSize, QByteArray *payload)
{
    const QDeadlineTimer deadline(m_timeout);
    QByteArray answer;
    while (m_port.receive(&answer, deadline)) {
        const bool complete
            = answer.size() >= 3 && static_cast<quint8>(answer.at(0)) == Dfu::Response;
        const auto answered = complete ? static_cast<quint8>(answer.at(1)) : quint8(0);
        // Only a failed write gets a response. The response to this request will not arrive then.
        if (answered != opcode && answered != Dfu::WriteObject) {
            continue;
        }
        if (static_cast<quint8>(answer.at(2)) != Dfu::Success || answered != opcode) {
            return fail(QStringLiteral("The device refused to %1: %2")
                            .arg(requestText(answered), Dfu::resultText(answer.mid(2))));
        }
        if (answer.size() != 3 + payloadSize) {
            return fail("The device sent a malformed answer when asked to "
                        + requestText(answered));
        }
        if (payload != nullptr) {
            *payload = answer.mid(3);
        }
        return true;
    }
    return fail(m_port.errorString());
}

bool DfuClient::fail(const QString &error)
{
    m_error = error;
    return false;
}
