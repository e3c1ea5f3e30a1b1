// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: the file of a firmware package.

#include "simulator/dfu/DfuPackage.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath("package.zip");

    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::abort();
    }
    file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    file.close();

    DfuPackage package{"init", "image"};
    const DfuPackage::Error error = package.read(path);
    const bool isUnchanged = package.initPacket == "init" && package.firmware == "image";
    const bool isNamed
        = DfuPackage::errorText(error).isEmpty() == (error == DfuPackage::Error::None);
    if (!isNamed || (error != DfuPackage::Error::None && !isUnchanged)) {
        std::abort();
    }
    return 0;
}
