// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/NinePatchPainter.h"

#include <QWidget>

/// Paints a picture over its whole area with a NinePatchPainter, as a button would.
class PatchSample : public QWidget
{
    Q_OBJECT

public:
    /// Cuts \a picture by \a border pixels on each side and paints it with the same border.
    PatchSample(const QPixmap &picture, int border, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    NinePatchPainter m_painter;
    int m_border;
};
