// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Bootloader.h"
#include "simulator/dfu/DfuPackage.h"

/// What a host asks a bootloader, and the answers to expect, both without framing. Answers come
/// without the response mark as well.
namespace DfuRequests {

QByteArray opcode(Bootloader::Opcode code);

/// The answer to one request; empty for none.
QByteArray ask(Bootloader &bootloader, const QByteArray &request);

QByteArray create(Bootloader &bootloader, Bootloader::ObjectType type, int size);
QByteArray execute(Bootloader &bootloader);
QByteArray select(Bootloader &bootloader, Bootloader::ObjectType type);
QByteArray checksum(Bootloader &bootloader);

/// Every answer that writing \a data in pieces of 1000 bytes brings, joined.
QByteArray write(Bootloader &bootloader, const QByteArray &data);

/// Creates, writes and executes one object; the answer to the execute.
QByteArray sendInitPacket(Bootloader &bootloader, const QByteArray &initPacket);
QByteArray sendObject(Bootloader &bootloader, const QByteArray &data);

/// The answer to the last execute of a whole upgrade.
QByteArray flash(Bootloader &bootloader, const DfuPackage &package);

QByteArray ok(Bootloader::Opcode code, const QByteArray &payload = {});
QByteArray refused(Bootloader::Opcode code, Bootloader::Result result);
QByteArray refused(Bootloader::Opcode code, Bootloader::ExtendedResult result);

/// The checksum answer of a device that holds \a data, and the part of it that select has, too.
QByteArray checksumOf(const QByteArray &data);
QByteArray offsetAndCrc(const QByteArray &data);

/// Bytes of which no 4096 are like the next.
QByteArray firmware(int size);

} // namespace DfuRequests
