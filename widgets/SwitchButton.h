// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/PointerState.h"
#include "widgets/QtCompat.h"

#include <QPixmap>
#include <QPushButton>

#include <array>

/// An on/off switch drawn from two strips, one per position.
///
/// Each strip holds four frames of equal width: normal, hover, pressed and one that is never shown.
/// The frame is drawn unscaled at the top left; the geometry comes from the caller. The switch
/// flips when the left mouse button goes down, so a press that is released elsewhere flips it
/// without a click. QAbstractButton's checked state and `toggled` are not used. The switch shows
/// itself on construction; it has no text and no disabled look.
class SwitchButton : public QPushButton
{
    Q_OBJECT

public:
    explicit SwitchButton(QWidget *parent = nullptr);

    /// Loads the strips at \a onPath and \a offPath (files or resources). An unreadable one
    /// paints nothing. Does not repaint.
    void setPixmap(QString onPath, QString offPath);

    /// Puts the switch on or off, and repaints.
    void setCheck(bool check);
    /// Whether the switch is on.
    bool isCheck() const;

protected:
    void enterEvent(QtCompat::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // Normal, hover, pressed, and one that is cut but never drawn.
    std::array<QPixmap, 4> m_onPixmaps;
    std::array<QPixmap, 4> m_offPixmaps;
    PointerState m_pointer;
    bool m_checked = false;
};
