// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QWidget>

/// A plain area of one colour, for a window's background. It shows itself on construction.
class CustomArea : public QWidget
{
    Q_OBJECT

public:
    explicit CustomArea(QWidget *parent = nullptr);

    /// Takes effect at the next paint. Does not repaint.
    void setAreaColor(QColor color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_areaColor;
};
