// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QPixmap>
#include <QRect>

#include <array>

/// The nine pieces of a NinePatchPainter and the arithmetic that lays them out.
class NinePatchPainterPrivate
{
public:
    /// Up the left side, along the top, down the right side, then bottom edge and centre. Pieces
    /// and target rectangles are matched by this index, so the order must not change.
    enum Piece { BottomLeft, Left, TopLeft, Top, TopRight, Right, BottomRight, Bottom, Centre };
    static constexpr int kPieceCount = 9;

    NinePatchPainterPrivate(const QPixmap &picture, int left, int top, int right, int bottom,
                            bool horizontalStretch, bool verticalStretch);

    /// Nine rectangles in piece order, laid out from (0, 0) whatever the position of \a rect.
    /// Borders wider than \a rect give edges of negative size and corners that overlap. Nothing is
    /// fitted to \a rect; only a border beyond 2^29 pixels, either way, counts as that many.
    QList<QRect> calculateNinePatchRects(const QRect &rect, int left, int top, int right,
                                         int bottom) const;

    /// \a picture at exactly \a size, smoothly, whatever its aspect ratio; null for an empty size
    /// or one beyond half a gigabyte.
    QPixmap scalePixmap(const QPixmap &picture, const QSize &size) const;

    int m_left;
    int m_top;
    int m_right;
    int m_bottom;
    bool m_horizontalStretch;
    bool m_verticalStretch;
    std::array<QPixmap, kPieceCount> m_pieces;
};
