// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/ZipFile.h"

#include <QFile>

#include <zip.h>

bool ZipFile::write(const QString &path, const QMap<QString, QByteArray> &files)
{
    zip_t *zip = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (zip == nullptr) {
        return false;
    }
    for (auto file = files.begin(); file != files.end(); ++file) {
        zip_source_t *source
            = zip_source_buffer(zip, file->constData(), static_cast<zip_uint64_t>(file->size()), 0);
        if (zip_file_add(zip, file.key().toUtf8().constData(), source, 0) < 0) {
            return false;
        }
    }
    return zip_close(zip) == 0;
}
