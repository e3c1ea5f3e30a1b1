// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/NinePatchPainter.h"
#include "widgets/PointerState.h"
#include "widgets/QtCompat.h"

#include <QColor>
#include <QPixmap>
#include <QPushButton>

#include <array>
#include <memory>

/// A push button drawn from a picture, with its text centred on top.
///
/// The picture is a strip of two frames of equal width. The left one is the normal and the pressed
/// look, the right one the hover and the disabled look. Its geometry comes from the caller, never
/// from the picture, and it shows itself on construction. Only the left mouse button clicks it.
class MButton : public QPushButton
{
    Q_OBJECT

public:
    explicit MButton(QWidget *parent = nullptr);
    ~MButton() override;

    /// Loads the strip at \a path (a file or a resource). With a \a border above 0 each frame is
    /// stretched over the button with corners of that many pixels and an unpainted centre; else it
    /// is drawn unscaled at the top left. An unreadable picture paints nothing. Does not
    /// repaint.
    void setPixmap(QString path, int border);

    /// Text colours for the three pointer states; the disabled text is always grey. Does not
    /// repaint.
    void setColor(QColor normal, QColor hover, QColor pressed);

protected:
    void enterEvent(QtCompat::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    static constexpr std::size_t kDisabled = 3;

    std::size_t look() const;

    // Normal, hover, pressed, disabled.
    std::array<QPixmap, 4> m_statePixmaps;
    std::array<QColor, 4> m_textColors;
    PointerState m_pointer;
    int m_border = 0;
    std::array<std::unique_ptr<NinePatchPainter>, 4> m_painters;
};
