// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/PointerState.h"
#include "widgets/QtCompat.h"

#include <QPixmap>
#include <QPushButton>
#include <QString>

#include <array>

/// A picture button that acts as one tab of a row of tabs.
///
/// The picture is a strip of four frames of equal width: normal, hover, pressed and one that is
/// never shown. The frame is drawn unscaled in the middle of the button, whose geometry comes from
/// the caller. A selected tab shows its pressed frame whatever the pointer does. Clicking does not
/// select it: the row's owner does, and keeps the row exclusive. The button shows itself on
/// construction; it has no disabled look.
class tabButton : public QPushButton
{
    Q_OBJECT

public:
    explicit tabButton(QWidget *parent = nullptr);

    /// Loads the strip at \a path (a file or a resource). An unreadable picture paints as nothing.
    /// Does not repaint.
    void setPixmap(QString path);

    /// Selects the tab or not, and repaints.
    void setTabCheck(bool check);
    /// Whether the tab is the selected one.
    bool isCheck() const;

    /// Sets the caption and repaints.
    void setTabText(QString text);

protected:
    void enterEvent(QtCompat::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void drawCaption(QPainter &painter) const;

    // Normal, hover, pressed (and selected), and one that is cut but never drawn.
    std::array<QPixmap, 4> m_statePixmaps;
    PointerState m_pointer;
    bool m_tabChecked = false;

public:
    /// The caption, dark grey on a baseline 32 pixels below the top whatever the button's height.
    /// Public, so that an owner can assign it; the owner then repaints the button.
    QString tabText;
};
