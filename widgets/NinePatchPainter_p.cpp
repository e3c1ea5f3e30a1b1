// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter_p.h"

namespace {

/// Whether a picture needs more than half a gigabyte. Borders that lead to such a picture are a
/// mistake, and Qt would need several times as much memory to scale it.
bool isBeyondMemory(const QSize &size)
{
    constexpr qint64 kMaxPixels = 1 << 27;
    // Two negative sides would multiply to a large positive area.
    const QSize atLeastOne = size.expandedTo(QSize(1, 1));
    return qint64(atLeastOne.width()) * atLeastOne.height() > kMaxPixels;
}

} // namespace

NinePatchPainterPrivate::NinePatchPainterPrivate(const QPixmap &picture, int left, int top,
                                                 int right, int bottom, bool horizontalStretch,
                                                 bool verticalStretch)
    : m_left(left)
    , m_top(top)
    , m_right(right)
    , m_bottom(bottom)
    , m_horizontalStretch(horizontalStretch)
    , m_verticalStretch(verticalStretch)
{
    const QList<QRect> sources = calculateNinePatchRects(picture.rect(), left, top, right, bottom);
    for (int i = 0; i < kPieceCount; ++i) {
        if (!isBeyondMemory(sources.at(i).size())) {
            m_pieces.at(static_cast<std::size_t>(i)) = picture.copy(sources.at(i));
        }
    }
}

QList<QRect> NinePatchPainterPrivate::calculateNinePatchRects(const QRect &rect, int left, int top,
                                                              int right, int bottom) const
{
    // Far beyond any picture, and small enough that sums of borders do not overflow.
    constexpr int kLimit = 1 << 29;
    for (int *const border : {&left, &top, &right, &bottom}) {
        *border = qBound(-kLimit, *border, kLimit);
    }
    const int middleWidth = rect.width() - left - right;
    const int middleHeight = rect.height() - top - bottom;
    const int rightX = rect.width() - right;
    const int bottomY = rect.height() - bottom;
    return {
        QRect(0, bottomY, left, bottom), //
        QRect(0, top, left, middleHeight), //
        QRect(0, 0, left, top), //
        QRect(left, 0, middleWidth, top), //
        QRect(rightX, 0, right, top), //
        QRect(rightX, top, right, middleHeight), //
        QRect(rightX, bottomY, right, bottom), //
        QRect(left, bottomY, middleWidth, bottom), //
        QRect(left, top, middleWidth, middleHeight), //
    };
}

QPixmap NinePatchPainterPrivate::scalePixmap(const QPixmap &picture, const QSize &size) const
{
    // QPixmap::scaled would warn about a null picture, and the kit never reports one.
    if (picture.isNull() || isBeyondMemory(size)) {
        return {};
    }
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
