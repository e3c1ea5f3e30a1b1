// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/TitledFace.h"

#include "widgets/Caption_p.h"
#include "widgets/PixmapStrip.h"

// The lists are never cleared: the states keep addressing the frames of the first strip.
void TitledFace::addBackgrounds(const QString &path, int count)
{
    backgroundCount = count;
    backgrounds.append(PixmapStrip::load(path, count));
}

void TitledFace::addIcons(const QString &path, int count, const QRect &rect)
{
    iconCount = count;
    iconRect = rect;
    icons.append(PixmapStrip::load(path, count));
}

void TitledFace::drawPictures(QPainter &painter, const QSize &size, int state) const
{
    PixmapStrip::drawCentred(painter, size, backgrounds.value(state));
    PixmapStrip::draw(painter, iconRect.topLeft(), icons.value(iconCount == 1 ? 0 : state));
}

void TitledFace::drawTitle(QPainter &painter, const QRect &rect, int flags, const QString &title,
                           int state) const
{
    Caption::draw(painter, rect, flags, title, textColors.at(state));
}
