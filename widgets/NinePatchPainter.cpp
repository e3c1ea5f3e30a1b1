// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter.h"

#include "widgets/NinePatchPainter_p.h"

#include <QPainter>

NinePatchPainter::NinePatchPainter(const QPixmap &picture, int left, int top, int right, int bottom,
                                   bool horizontalStretch, bool verticalStretch)
    : d(std::make_unique<NinePatchPainterPrivate>(picture, left, top, right, bottom,
                                                  horizontalStretch, verticalStretch))
{ }

NinePatchPainter::~NinePatchPainter() = default;

void NinePatchPainter::paint(QPainter *painter, const QRect &target, int left, int top, int right,
                             int bottom) const
{
    using Piece = NinePatchPainterPrivate::Piece;

    const QList<QRect> targets = d->calculateNinePatchRects(target, left, top, right, bottom);

    // Where borders overlap, the later corner covers the earlier one.
    for (const Piece piece :
         {Piece::TopLeft, Piece::BottomLeft, Piece::TopRight, Piece::BottomRight}) {
        const QRect &place = targets.at(piece);
        painter->drawPixmap(QRectF(place), d->scalePixmap(d->m_pieces.at(piece), place.size()),
                            QRectF());
    }
    for (const Piece piece : {Piece::Left, Piece::Top, Piece::Right, Piece::Bottom}) {
        const QRect &place = targets.at(piece);
        painter->drawTiledPixmap(QRectF(place), d->scalePixmap(d->m_pieces.at(piece), place.size()),
                                 QPointF(0, 0));
    }
    // The centre stays unpainted, so that the button's background shows through.
}
