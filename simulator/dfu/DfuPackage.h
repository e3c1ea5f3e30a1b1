// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// A firmware package: a zip of a manifest, an init packet (.dat) and a firmware image (.bin).
struct DfuPackage
{
    enum class Error {
        None,
        Missing, ///< no such file, or not readable
        NotAZip,
        NoManifest,
        BadManifest, ///< not JSON, or it names no application
        NoInitPacket, ///< the manifest names one that is not in the zip
        NoFirmware,
        Damaged, ///< a file inside cannot be unpacked, or is larger than any device takes
        NotWritable
    };

    QByteArray initPacket;
    QByteArray firmware;

    /// The package that brings \a firmware into the simulated device.
    static DfuPackage forFirmware(const QByteArray &firmware);

    /// The same for \a size pseudo-random bytes, which depend on the \a seed and on nothing else.
    static DfuPackage generate(int size, quint32 seed = 1);

    /// Replaces this package by the one in the file at \a path. Changes nothing on failure.
    Error read(const QString &path);

    /// Writes this package to the file at \a path, always in the same bytes for the same package.
    /// A file that is there already is replaced, but only on success.
    Error write(const QString &path) const;

    /// One line for a person to read, without a file name.
    static QString errorText(Error error);
};
