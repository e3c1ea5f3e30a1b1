// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/Caption_p.h"

#include "widgets/QtCompat.h"

#include <QPainter>

void Caption::draw(QPainter &painter, const QRect &rect, int flags, const QString &text,
                   const QColor &ink)
{
    if (text.isEmpty()) {
        return;
    }
    QFont font("Arial", 12);
    // A painter fills in what a font leaves open from the widget's own font. With everything set,
    // the caption does not become bold or underlined.
    QtCompat::setAllAttributes(font);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(rect, flags, text);
}
