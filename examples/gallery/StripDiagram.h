// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QStringList>
#include <QVector>

/// Draws to scale how a picture is cut. Each frame has its left edge above it and its use below.
namespace StripDiagram {

struct Strip
{
    QString title;
    QString path;
    QStringList frames; ///< the use of each frame, from left to right
};

/// Draws the \a strips below each other, at twice their size.
QImage draw(const QVector<Strip> &strips);

/// Draws the picture at \a path with the lines along which a nine-patch with \a border cuts it.
QImage drawPatch(const QString &path, int border);

} // namespace StripDiagram
