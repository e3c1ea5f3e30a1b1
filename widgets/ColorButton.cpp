// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ColorButton.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

ColorButton::ColorButton(QWidget *parent)
    : QRadioButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    setStyleSheet("QRadioButton {border:0px solid #000000; border-radius:0px;}");
    m_color = QColor(0, 255, 255);
    show();
}

void ColorButton::setColor(QColor color)
{
    if (color == m_color) {
        return;
    }
    m_color = color;
    update();
}

void ColorButton::nextCheckState()
{
    QRadioButton::nextCheckState();
    update();
}

void ColorButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    if (isEnabled()) {
        update();
    }
}

void ColorButton::leaveEvent(QEvent * /*event*/)
{
    if (isEnabled()) {
        update();
    }
}

// All mouse buttons reach the base class, which reacts to the left one only. It emits signals, and
// a slot may delete the swatch.
void ColorButton::mousePressEvent(QMouseEvent *event)
{
    if (!isEnabled()) {
        return;
    }
    const QPointer<ColorButton> self(this);
    QRadioButton::mousePressEvent(event);
    if (!self.isNull()) {
        update();
    }
}

void ColorButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (!isEnabled()) {
        return;
    }
    const QPointer<ColorButton> self(this);
    QRadioButton::mouseReleaseEvent(event);
    if (!self.isNull()) {
        update();
    }
}

void ColorButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(QRectF(0, 0, width(), height()), QBrush(m_color, Qt::SolidPattern));
    if (!isChecked()) {
        return;
    }
    painter.setPen(QPen(QBrush(QColor(255, 255, 255), Qt::SolidPattern), 2.0, Qt::SolidLine,
                        Qt::SquareCap, Qt::BevelJoin));
    painter.drawRect(QRect(1, 1, width() - 2, height() - 2));
}
