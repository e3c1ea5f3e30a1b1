// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QPixmap>
#include <QRect>
#include <QString>

#include <algorithm>
#include <array>

class QPainter;

/// Button pictures that lie side by side, left to right, in one image.
namespace PixmapStrip {

/// Where frame \a index of \a count lies in a strip of \a size pixels: x = W * index / count and
/// width W / count, each rounded down on its own. Columns that this leaves over are in no frame.
QRect frameRect(const QSize &size, int index, int count);

/// Loads the image at \a path (a file or a resource) and cuts it into \a count frames.
///
/// An unreadable image gives \a count null frames, a \a count below 1 none at all. An image
/// narrower than \a count pixels has empty frame rectangles; each frame is then the whole image.
QList<QPixmap> load(const QString &path, int count);

/// The same for a fixed number of frames.
template <std::size_t Count> std::array<QPixmap, Count> load(const QString &path)
{
    const QList<QPixmap> list = load(path, static_cast<int>(Count));
    std::array<QPixmap, Count> frames;
    std::copy(list.begin(), list.end(), frames.begin());
    return frames;
}

/// Draws \a pixmap at its own size, its top-left corner at \a topLeft.
void draw(QPainter &painter, const QPoint &topLeft, const QPixmap &pixmap);

/// Draws \a pixmap at its own size in the middle of an area of \a size pixels. A larger picture is
/// cut off on all sides alike.
void drawCentred(QPainter &painter, const QSize &size, const QPixmap &pixmap);

} // namespace PixmapStrip
