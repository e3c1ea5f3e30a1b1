// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/PointerState.h"
#include "widgets/QtCompat.h"

#include <QPixmap>
#include <QPushButton>

#include <array>

/// A push button that consists of a picture only.
///
/// The picture is a strip of four frames of equal width: normal, hover, pressed, disabled. The
/// frame is drawn unscaled at the top left; text and icon are ignored. The geometry comes from the
/// caller, never from the picture, and the button shows itself on construction.
///
/// It clicks by itself: each release of the left mouse button that reaches it emits
/// `clicked(false)`, wherever the pointer is by then. The mouse never sets the down or the checked
/// state, so the mouse emits neither `pressed` nor `released`.
class ImageButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ImageButton(QWidget *parent = nullptr);

    /// Loads the strip at \a path (a file or a resource). An unreadable picture paints nothing.
    /// Does not repaint.
    void setPixmap(QString path);

protected:
    void enterEvent(QtCompat::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // Normal, hover, pressed, disabled.
    std::array<QPixmap, 4> m_statePixmaps;
    PointerState m_pointer;
};
