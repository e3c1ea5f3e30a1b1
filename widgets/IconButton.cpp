// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/IconButton.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

IconButton::IconButton(QWidget *parent, QString title)
    : QPushButton(parent)
    , m_title(std::move(title))
{
    setCursor(Qt::PointingHandCursor);
    show();
}

QString IconButton::title() const
{
    return m_title;
}

void IconButton::setBkgPixmap(QString path, int count)
{
    m_face.addBackgrounds(path, count);
}

void IconButton::setIconPixmap(QString path, int count, QRect rect)
{
    m_face.addIcons(path, count, rect);
}

// No handler looks at the enabled flag, since Qt sends no mouse events to a disabled button. Only
// the left mouse button reaches the base class, so only it can click.
void IconButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    m_pointer.enter();
    update();
}

void IconButton::leaveEvent(QEvent * /*event*/)
{
    m_pointer.leave();
    update();
}

void IconButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.press();
    update();
    QPushButton::mousePressEvent(event);
}

void IconButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    QPushButton::mouseReleaseEvent(event);
}

void IconButton::paintEvent(QPaintEvent * /*event*/)
{
    constexpr int kTitleGap = 10;

    QPainter painter(this);
    m_face.drawPictures(painter, size(), m_pointer.state);
    QRect titleRect = rect();
    titleRect.setLeft(m_face.iconRect.right() + kTitleGap);
    m_face.drawTitle(painter, titleRect, Qt::AlignLeft | Qt::AlignVCenter, m_title,
                     m_pointer.state);
}
