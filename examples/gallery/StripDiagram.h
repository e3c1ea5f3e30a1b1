// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QStringList>
#include <QVector>

/// Draws to scale how a picture is cut: a frame's left edge above it, what it serves below.
namespace StripDiagram {

struct Strip
{
    QString title;
    QString path;
    QStringList frames; ///< what each frame serves, from left to right
};

/// The \a strips below each other, each twice as large as it is.
QImage draw(const QVector<Strip> &strips);

/// The picture at \a path with the lines along which a nine-patch of \a border pixels cuts it.
QImage drawPatch(const QString &path, int border);

} // namespace StripDiagram
