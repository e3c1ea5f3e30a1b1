// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPainter>
#include <QWidget>

/// A minimal custom-painted progress bar, for comparison with the kit's.
class PlainBar : public QWidget
{
public:
    using QWidget::QWidget;

    void setValue(int value)
    {
        m_value = value;
        update();
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setBrush(QBrush(QColor(81, 81, 81), Qt::SolidPattern));
        painter.drawRect(QRect(0, 0, width(), height()));
        painter.setBrush(QBrush(QColor(25, 240, 234), Qt::SolidPattern));
        painter.drawRect(QRect(0, 0, static_cast<int>(m_value / 10000.0 * width()), height()));
    }

private:
    int m_value = 0;
};
