// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPainter>
#include <QWidget>

/// A flat horizontal progress bar: a grey trough that fills with cyan from the left.
///
/// Its value runs from 0 to a fixed maximum of 10000. Unlike the rest of the kit it does not show
/// itself; the owner does.
class CustomProgressBar : public QWidget
{
    Q_OBJECT

public:
    /// Starts at value 0.
    explicit CustomProgressBar(QWidget *parent = nullptr)
        : QWidget(parent)
    { }

    /// Clamps \a value to 0..10000 and schedules a repaint, even if nothing changes.
    void setValue(int value)
    {
        // The upper bound is applied last, so that it wins if the maximum is ever negative.
        m_value = qMin(qMax(value, 0), m_maximum);
        update();
    }

    /// The current value, from 0 to maximum().
    int value() const { return m_value; }

    /// The value of a full bar.
    int maximum() const { return m_maximum; }

protected:
    /// The painter's default pen strokes both rectangles; this is the bar's one-pixel outline.
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setBrush(QBrush(QColor(81, 81, 81), Qt::SolidPattern));
        painter.drawRect(QRect(0, 0, width(), height()));
        painter.setBrush(QBrush(QColor(25, 240, 234), Qt::SolidPattern));
        painter.drawRect(QRect(0, 0, fillWidth(), height()));
    }

private:
    int fillWidth() const
    {
        const double share = static_cast<double>(m_value) / static_cast<double>(m_maximum);
        return static_cast<int>(share * width());
    }

    int m_value = 0;
    int m_maximum = 10000;
};
