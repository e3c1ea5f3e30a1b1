// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/SwitchButton.h"

#include "widgets/PixmapStrip.h"

#include <QMouseEvent>
#include <QPainter>

SwitchButton::SwitchButton(QWidget *parent)
    : QPushButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    show();
}

void SwitchButton::setPixmap(QString onPath, QString offPath)
{
    m_onPixmaps = PixmapStrip::load<4>(onPath);
    m_offPixmaps = PixmapStrip::load<4>(offPath);
}

void SwitchButton::setCheck(bool check)
{
    m_checked = check;
    update();
}

bool SwitchButton::isCheck() const
{
    return m_checked;
}

// No handler looks at the enabled flag, since Qt sends no mouse events to a disabled button. Only
// the left mouse button reaches the base class, so only it can click.
void SwitchButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    m_pointer.enter();
    update();
}

void SwitchButton::leaveEvent(QEvent * /*event*/)
{
    m_pointer.leave();
    update();
}

void SwitchButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    // The press flips the switch, so its position changes even if no click follows.
    m_checked = !m_checked;
    m_pointer.press();
    update();
    QPushButton::mousePressEvent(event);
}

void SwitchButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    QPushButton::mouseReleaseEvent(event);
}

void SwitchButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const std::array<QPixmap, 4> &pixmaps = m_checked ? m_onPixmaps : m_offPixmaps;
    PixmapStrip::draw(painter, QPoint(0, 0), pixmaps.at(static_cast<std::size_t>(m_pointer.state)));
}
