// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ProfileButton.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

ProfileButton::ProfileButton(QWidget *parent, QString title)
    : QPushButton(parent)
    , m_title(std::move(title))
{
    setCursor(Qt::PointingHandCursor);
    show();
}

QString ProfileButton::title() const
{
    return m_title;
}

void ProfileButton::setBkgPixmap(QString path, int count)
{
    m_face.addBackgrounds(path, count);
}

void ProfileButton::setIconPixmap(QString path, int count, QRect rect)
{
    m_face.addIcons(path, count, rect);
}

void ProfileButton::SetTitle(QString title)
{
    m_title = std::move(title);
    update();
}

// No handler looks at the enabled flag, since Qt sends no mouse events to a disabled button. Only
// the left mouse button reaches the base class, so only it can click.
void ProfileButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    m_pointer.enter();
    update();
}

void ProfileButton::leaveEvent(QEvent * /*event*/)
{
    m_pointer.leave();
    update();
}

void ProfileButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.press();
    update();
    QPushButton::mousePressEvent(event);
}

void ProfileButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    QPushButton::mouseReleaseEvent(event);
}

void ProfileButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    m_face.drawPictures(painter, size(), m_pointer.state);
    m_face.drawTitle(painter, rect(), Qt::AlignCenter, m_title, m_pointer.state);
}
