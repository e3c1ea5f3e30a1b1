// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/CustomArea.h"

#include <QPainter>

CustomArea::CustomArea(QWidget *parent)
    : QWidget(parent)
    , m_areaColor(46, 48, 50)
{
    show();
}

void CustomArea::setAreaColor(QColor color)
{
    m_areaColor = color;
}

void CustomArea::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(QRectF(0, 0, width(), height()), QBrush(m_areaColor, Qt::SolidPattern));
}
