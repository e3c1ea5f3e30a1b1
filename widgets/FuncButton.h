// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/PointerState.h"

#include <QPixmap>
#include <QPushButton>
#include <QString>

/// A tool bar's function button: a picture in its middle and a caption near its bottom edge.
///
/// It has two whole pictures, one at rest and one for hovered, pressed or selected. The geometry
/// comes from the caller, never from the pictures. The selected mark is the owner's to set:
/// clicking does not, and a row of such buttons is kept exclusive by its owner. Only screen readers
/// are told of it. The button shows itself on construction; it has no disabled look.
class FuncButton : public QPushButton
{
    Q_OBJECT

public:
    /// The \a title is the caption, fixed for good; a form leaves it out. text() stays empty.
    explicit FuncButton(QWidget *parent, QString title = QString());

    /// What the caption reads.
    QString title() const;

    /// Loads the pictures at \a normalPath and \a activePath (files or resources). An unreadable
    /// one paints as nothing. Does not repaint.
    void setPixmap(QString normalPath, QString activePath);

    /// Sets the selected mark and repaints.
    void setCheck(bool check);

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    friend class AccessibleKitButton;

    QPixmap m_normalPixmap;
    QPixmap m_activePixmap;
    PointerState m_pointer;
    bool m_checked = false;
    QString m_title;
};
