// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/DfuRequests.h"

#include "simulator/dfu/Checksum.h"
#include "simulator/dfu/LittleEndian.h"

using LittleEndian::bytes;
using Result = Dfu::Result;

namespace DfuRequests {

QByteArray opcode(Dfu::Opcode code)
{
    return {1, static_cast<char>(code)};
}

QByteArray ask(Bootloader &bootloader, const QByteArray &request)
{
    Slip slip(1024);
    const auto frames = slip.decode(bootloader.receive(Slip::encode(request)));
    if (frames.size() != 1) {
        return frames.isEmpty() ? QByteArray() : QByteArray("several answers");
    }
    return frames.first().startsWith('\x60') ? frames.first().mid(1) : QByteArray("no response");
}

QByteArray ok(Dfu::Opcode code, const QByteArray &payload)
{
    return opcode(code) + static_cast<char>(Result::Success) + payload;
}

QByteArray refused(Dfu::Opcode code, Result result)
{
    return opcode(code) + static_cast<char>(result);
}

QByteArray refused(Dfu::Opcode code, Dfu::ExtendedResult result)
{
    return refused(code, Result::ExtendedError) + static_cast<char>(result);
}

QByteArray create(Bootloader &bootloader, Dfu::ObjectType type, int size)
{
    return ask(bootloader,
               opcode(Dfu::CreateObject) + static_cast<char>(type)
                   + bytes(static_cast<quint32>(size)));
}

QByteArray write(Bootloader &bootloader, const QByteArray &data)
{
    QByteArray answers;
    for (int i = 0; i < data.size(); i += 1000) {
        answers += ask(bootloader, opcode(Dfu::WriteObject) + data.mid(i, 1000));
    }
    return answers;
}

QByteArray execute(Bootloader &bootloader)
{
    return ask(bootloader, opcode(Dfu::Execute));
}

QByteArray select(Bootloader &bootloader, Dfu::ObjectType type)
{
    return ask(bootloader, opcode(Dfu::SelectObject) + static_cast<char>(type));
}

QByteArray offsetAndCrc(const QByteArray &data)
{
    return bytes(static_cast<quint32>(data.size())) + bytes(Checksum::extended(0, data));
}

QByteArray checksum(Bootloader &bootloader)
{
    return ask(bootloader, opcode(Dfu::CalculateChecksum));
}

QByteArray checksumOf(const QByteArray &data)
{
    return ok(Dfu::CalculateChecksum, offsetAndCrc(data));
}

QByteArray sendInitPacket(Bootloader &bootloader, const QByteArray &initPacket)
{
    create(bootloader, Dfu::CommandObject, int(initPacket.size()));
    write(bootloader, initPacket);
    return execute(bootloader);
}

QByteArray sendObject(Bootloader &bootloader, const QByteArray &data)
{
    create(bootloader, Dfu::DataObject, int(data.size()));
    write(bootloader, data);
    return execute(bootloader);
}

QByteArray firmware(int size)
{
    QByteArray all;
    for (int i = 0; i < size; ++i) {
        all.append(static_cast<char>(i * 7 + i / 256));
    }
    return all;
}

QByteArray flash(Bootloader &bootloader, const DfuPackage &package)
{
    sendInitPacket(bootloader, package.initPacket);
    QByteArray answer;
    for (int i = 0; i < package.firmware.size(); i += Bootloader::kMaxDataSize) {
        answer = sendObject(bootloader, package.firmware.mid(i, Bootloader::kMaxDataSize));
    }
    return answer;
}

} // namespace DfuRequests
