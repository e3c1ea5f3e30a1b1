// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/QtCompat.h"

#include <QColor>
#include <QRadioButton>

/// A colour swatch that acts as a radio button: one colour all over, with a white frame while
/// checked.
///
/// A row of swatches with one parent, or in one QButtonGroup, lets exactly one colour be selected.
/// Neither the radio indicator nor the text is drawn, and there is no hover and no disabled look.
/// The swatch shows itself on construction.
class ColorButton : public QRadioButton
{
    Q_OBJECT

public:
    explicit ColorButton(QWidget *parent = nullptr);

    /// Sets the fill and repaints, unless it is that colour already.
    void setColor(QColor color);

protected:
    void nextCheckState() override;
    void enterEvent(QtCompat::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};
