// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSize>
#include <QString>

class QTemporaryDir;

/// Pictures in which no two pixels are alike, so that a frame or an offset that is wrong by one
/// pixel in any direction shows.
namespace StripedPicture {

/// An opaque picture of up to 1024 x 256 different colours.
QImage paint(const QSize &size);

/// The columns of paint(\a size) from \a x on: what a frame cut there must look like.
QImage columns(const QSize &size, int x, int width);

/// Saves paint(\a size) as a PNG into \a folder; gives its path.
QString save(const QTemporaryDir &folder, const QSize &size);

/// Saves a second picture of the same size with none of the colours of the first; gives its path.
QString saveOther(const QTemporaryDir &folder, const QSize &size);

/// The picture that saveOther() saves.
QImage paintOther(const QSize &size);

} // namespace StripedPicture
