// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/PointerState.h"
#include "widgets/QtCompat.h"

#include <QPixmap>
#include <QPushButton>
#include <QString>

/// A tool bar's function button: a picture in its middle and a caption near its bottom edge.
///
/// It has two whole pictures, one at rest and one for hovered, pressed or selected. The geometry
/// comes from the caller, never from the pictures. The owner sets the selected mark and keeps a row
/// of such buttons exclusive; a click does not change the mark, and only screen readers read it.
/// The button shows itself on construction; it has no disabled look.
class FuncButton : public QPushButton
{
    Q_OBJECT

public:
    /// The \a title is the caption and cannot be changed. Forms omit it. text() stays empty.
    explicit FuncButton(QWidget *parent, QString title = QString());

    /// The caption.
    QString title() const;

    /// Loads the pictures at \a normalPath and \a activePath (files or resources). An unreadable
    /// picture paints nothing. Does not repaint.
    void setPixmap(QString normalPath, QString activePath);

    /// Sets the selected mark and repaints.
    void setCheck(bool check);

protected:
    void enterEvent(QtCompat::EnterEvent *event) override;
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
