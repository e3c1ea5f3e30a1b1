// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Bootloader.h"
#include "simulator/dfu/DfuPackage.h"

/// A host's requests to a bootloader and the expected responses, both without framing. Responses
/// have no response mark either.
namespace DfuRequests {

QByteArray opcode(Dfu::Opcode code);

/// The response to one request; empty if there is none.
QByteArray ask(Bootloader &bootloader, const QByteArray &request);

QByteArray create(Bootloader &bootloader, Dfu::ObjectType type, int size);
QByteArray execute(Bootloader &bootloader);
QByteArray select(Bootloader &bootloader, Dfu::ObjectType type);
QByteArray checksum(Bootloader &bootloader);

/// Writes \a data in pieces of 1000 bytes and returns all responses, joined.
QByteArray write(Bootloader &bootloader, const QByteArray &data);

/// Creates, writes and executes one object. Returns the response to the execute request.
QByteArray sendInitPacket(Bootloader &bootloader, const QByteArray &initPacket);
QByteArray sendObject(Bootloader &bootloader, const QByteArray &data);

/// Runs a whole upgrade. Returns the response to the last execute request.
QByteArray flash(Bootloader &bootloader, const DfuPackage &package);

QByteArray ok(Dfu::Opcode code, const QByteArray &payload = {});
QByteArray refused(Dfu::Opcode code, Dfu::Result result);
QByteArray refused(Dfu::Opcode code, Dfu::ExtendedResult result);

/// The checksum response of a device that contains \a data, and the part shared with select.
QByteArray checksumOf(const QByteArray &data);
QByteArray offsetAndCrc(const QByteArray &data);

/// An image in which no two blocks of 4096 bytes are equal.
QByteArray firmware(int size);

} // namespace DfuRequests
