// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/BootloaderSettings.h"

#include <QByteArray>
#include <QString>

/// A firmware package: a ZIP file with a manifest, an init packet (.dat) and an image (.bin).
struct DfuPackage
{
    enum class Error {
        None,
        Missing, ///< no such file, or not readable
        NotAZip,
        NoManifest,
        BadManifest, ///< not JSON, or without an application
        HasSoftDevice, ///< the simulated device accepts only an application
        HasBootloader,
        HasSoftDeviceAndBootloader,
        NoInitPacket, ///< the init packet in the manifest is not in the ZIP file
        NoFirmware,
        Damaged, ///< a file in it cannot be unpacked or is too large
        NotWritable
    };

    QByteArray initPacket;
    QByteArray firmware;

    /// An unsigned package with \a firmware that \a device accepts.
    static DfuPackage forFirmware(const QByteArray &firmware,
                                  const BootloaderSettings &device = {});

    /// The same for \a size pseudo-random bytes, which depend on the \a seed only.
    static DfuPackage generate(int size, quint32 seed = 1, const BootloaderSettings &device = {});

    /// Reads the package from the file at \a path. Changes nothing on failure.
    Error read(const QString &path);

    /// Writes the package to the file at \a path. The same package always gives the same bytes. An
    /// existing file is replaced only on success.
    Error write(const QString &path) const;

    /// A one-line message, without a file name.
    static QString errorText(Error error);
};
