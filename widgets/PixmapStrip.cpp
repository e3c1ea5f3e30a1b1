// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/PixmapStrip.h"

#include <QPainter>

QRect PixmapStrip::frameRect(const QSize &size, int index, int count)
{
    const auto x = static_cast<int>(qint64(size.width()) * index / count);
    return {x, 0, size.width() / count, size.height()};
}

QList<QPixmap> PixmapStrip::load(const QString &path, int count)
{
    const QPixmap strip(path);
    QList<QPixmap> frames;
    for (int i = 0; i < count; ++i) {
        frames.append(strip.copy(frameRect(strip.size(), i, count)));
    }
    return frames;
}

void PixmapStrip::draw(QPainter &painter, const QPoint &topLeft, const QPixmap &pixmap)
{
    painter.drawPixmap(QRect(topLeft, pixmap.size()), pixmap, pixmap.rect());
}

void PixmapStrip::drawCentred(QPainter &painter, const QSize &size, const QPixmap &pixmap)
{
    const int left = (size.width() - pixmap.width()) / 2;
    const int top = (size.height() - pixmap.height()) / 2;
    draw(painter, QPoint(left, top), pixmap);
}
