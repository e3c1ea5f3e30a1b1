// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace ZipFile {

/// Writes a ZIP file at \a path with the given contents by name. Returns whether it succeeded.
bool write(const QString &path, const QMap<QString, QByteArray> &files);

} // namespace ZipFile
