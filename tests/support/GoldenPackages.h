// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>

/// Init packets encoded field by field, for a device with hardware version 52.
namespace GoldenPackages {

/// Encoded fields by number. A test changes or removes some of them.
using Fields = QMap<int, QByteArray>;

/// The image of all packages, two objects long.
QByteArray image();

/// The fields of a good init command.
Fields initFields();

/// A command with the operation code 1 and the given init command.
QByteArray command(const Fields &init = initFields());

QByteArray unsignedPacket(const Fields &init = initFields());

/// A packet with command() and these fields: 1 command, 2 signature type, 3 signature.
Fields signedFields(int type, const QByteArray &signature);
QByteArray signedPacket(const Fields &fields);

/// A public key in PEM format and its signature of command().
QByteArray ecdsaKey();
QByteArray ecdsaSignature();
QByteArray ed25519Key();
QByteArray ed25519Signature();

/// A signed packet as a release has it.
QByteArray ecdsaPacket();

/// The files of a package with \a initPacket and image(), by name.
QMap<QString, QByteArray> files(const QByteArray &initPacket);

} // namespace GoldenPackages
