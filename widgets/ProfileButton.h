// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/PointerState.h"
#include "widgets/QtCompat.h"
#include "widgets/TitledFace.h"

#include <QPushButton>
#include <QString>

/// A push button with a background picture, an icon and a title in the middle of the button.
///
/// Background and icon come from strips of three frames of equal width: normal, hover, pressed. The
/// background stands in the middle of the button, nothing is scaled, and a frame that was never set
/// is left out. A long title reaches over the icon. The geometry
/// comes from the caller. The button shows itself on construction; it has no disabled look.
class ProfileButton : public QPushButton
{
    Q_OBJECT

public:
    /// The \a title is shown until SetTitle changes it. Forms omit it. text() stays empty.
    explicit ProfileButton(QWidget *parent, QString title = QString());

    /// The title.
    QString title() const;

    /// Appends the \a count frames of the background strip at \a path (a file or a resource). Call
    /// it once: after a second call the frames of the first strip are still shown. A count below 1
    /// appends nothing; an unreadable picture paints nothing. Does not repaint.
    void setBkgPixmap(QString path, int count);

    /// The same for the icon strip, drawn at the top left of \a rect. With a \a count of 1 one icon
    /// serves every state.
    void setIconPixmap(QString path, int count, QRect rect);

    /// Replaces the title and repaints.
    void SetTitle(QString title);

protected:
    void enterEvent(QtCompat::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    TitledFace m_face;
    PointerState m_pointer;
    QString m_title;
};
