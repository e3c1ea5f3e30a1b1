// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSize>
#include <QString>

class QTemporaryDir;

/// Pictures in which no two pixels have the same colour, so that tests notice a frame or an offset
/// that is wrong by one pixel.
namespace StripedPicture {

/// An opaque picture of up to 1024 x 256 pixels.
QImage paint(const QSize &size);

/// The columns of paint(\a size) from \a x: the expected look of a frame that is cut there.
QImage columns(const QSize &size, int x, int width);

/// Saves paint(\a size) as a PNG file in \a folder and returns its path.
QString save(const QTemporaryDir &folder, const QSize &size);

/// The same for a second picture, with none of the colours of the first.
QString saveOther(const QTemporaryDir &folder, const QSize &size);

/// The picture from saveOther().
QImage paintOther(const QSize &size);

} // namespace StripedPicture
