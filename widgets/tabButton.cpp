// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/tabButton.h"

#include "widgets/PixmapStrip.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

tabButton::tabButton(QWidget *parent)
    : QPushButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    show();
}

void tabButton::setPixmap(QString path)
{
    m_statePixmaps = PixmapStrip::load<4>(path);
}

void tabButton::setTabCheck(bool check)
{
    m_tabChecked = check;
    update();
}

bool tabButton::isCheck() const
{
    return m_tabChecked;
}

void tabButton::setTabText(QString text)
{
    tabText = std::move(text);
    update();
}

void tabButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    if (!isEnabled()) {
        return;
    }
    m_pointer.enter();
    update();
}

void tabButton::leaveEvent(QEvent * /*event*/)
{
    if (!isEnabled()) {
        return;
    }
    m_pointer.leave();
    update();
}

// Unlike enter and leave, press and release ignore the enabled flag. Qt sends no mouse events to a
// disabled button, so only events that a program sends itself notice the difference.
void tabButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.press();
    update();
    QPushButton::mousePressEvent(event);
}

void tabButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    QPushButton::mouseReleaseEvent(event);
}

void tabButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const int look = m_tabChecked ? PointerState::Pressed : m_pointer.state;
    PixmapStrip::drawCentred(painter, size(), m_statePixmaps.at(static_cast<std::size_t>(look)));
    if (!tabText.isEmpty()) {
        drawCaption(painter);
    }
}

void tabButton::drawCaption(QPainter &painter) const
{
    constexpr qreal kBaseline = 32.0;

    painter.setPen(QColor(51, 51, 51));
    // The caption is measured in the application's font although the widget's font draws it, so its
    // place does not depend on the widget's font.
    const int advance = QFontMetrics(QFont()).horizontalAdvance(tabText);
    const int left = (width() - advance) / 2;
    painter.drawText(QPointF(left, kBaseline), tabText);
}
