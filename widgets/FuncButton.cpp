// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/FuncButton.h"

#include "widgets/Caption_p.h"
#include "widgets/PixmapStrip.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

FuncButton::FuncButton(QWidget *parent, QString title)
    : QPushButton(parent)
    , m_title(std::move(title))
{
    setCursor(Qt::PointingHandCursor);
    show();
}

QString FuncButton::title() const
{
    return m_title;
}

void FuncButton::setPixmap(QString normalPath, QString activePath)
{
    m_normalPixmap.load(normalPath);
    m_activePixmap.load(activePath);
}

void FuncButton::setCheck(bool check)
{
    m_checked = check;
    update();
}

// No handler looks at the enabled flag, since Qt sends no mouse events to a disabled button. Only
// the left mouse button reaches the base class, so only it can click.
void FuncButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    m_pointer.enter();
    update();
}

void FuncButton::leaveEvent(QEvent * /*event*/)
{
    m_pointer.leave();
    update();
}

void FuncButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.press();
    update();
    QPushButton::mousePressEvent(event);
}

void FuncButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    QPushButton::mouseReleaseEvent(event);
}

void FuncButton::paintEvent(QPaintEvent * /*event*/)
{
    constexpr int kBandHeight = 25;
    constexpr int kBandRise = 36; // from the button's bottom edge up to the band's top

    QPainter painter(this);
    const bool active = m_checked || m_pointer.state != PointerState::Normal;
    PixmapStrip::drawCentred(painter, size(), active ? m_activePixmap : m_normalPixmap);
    Caption::draw(painter, QRect(0, height() - kBandRise, width(), kBandHeight), Qt::AlignCenter,
                  m_title, active ? QColor(30, 30, 30) : QColor(100, 100, 100));
}
