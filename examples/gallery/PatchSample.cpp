// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/PatchSample.h"

#include <QPainter>

PatchSample::PatchSample(const QPixmap &picture, int border, QWidget *parent)
    : QWidget(parent)
    , m_painter(picture, border, border, border, border, true, true)
    , m_border(border)
{ }

void PatchSample::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    m_painter.paint(&painter, rect(), m_border, m_border, m_border, m_border);
}
