// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/MButton.h"

#include "widgets/PixmapStrip.h"

#include <QMouseEvent>
#include <QPainter>

MButton::MButton(QWidget *parent)
    : QPushButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    setStyleSheet("QPushButton {border:0px solid #000000; border-radius:0px;}");
    m_textColors = {QColor(255, 255, 255), QColor(255, 255, 255), QColor(255, 255, 255),
                    QColor(128, 128, 128)};
    show();
}

MButton::~MButton()
{
    // In the order of creation; an array would delete the last painter first.
    for (std::unique_ptr<NinePatchPainter> &painter : m_painters) {
        painter.reset();
    }
}

void MButton::setPixmap(QString path, int border)
{
    const auto [left, right] = PixmapStrip::load<2>(path);
    m_statePixmaps = {left, right, left, right};
    m_border = border;
    if (border <= 0) {
        return;
    }
    for (std::size_t i = 0; i < m_painters.size(); ++i) {
        m_painters.at(i).reset();
        m_painters.at(i) = std::make_unique<NinePatchPainter>(m_statePixmaps.at(i), border, border,
                                                              border, border, true, true);
    }
}

void MButton::setColor(QColor normal, QColor hover, QColor pressed)
{
    m_textColors.at(PointerState::Normal) = normal;
    m_textColors.at(PointerState::Hover) = hover;
    m_textColors.at(PointerState::Pressed) = pressed;
}

void MButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    if (!isEnabled()) {
        return;
    }
    m_pointer.enter();
    update();
}

void MButton::leaveEvent(QEvent * /*event*/)
{
    if (!isEnabled()) {
        return;
    }
    m_pointer.leave();
    update();
}

void MButton::mousePressEvent(QMouseEvent *event)
{
    if (!isEnabled() || event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.press();
    update();
    QPushButton::mousePressEvent(event);
}

void MButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (!isEnabled() || event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    QPushButton::mouseReleaseEvent(event);
}

void MButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const std::size_t index = look();
    if (m_border > 0 && m_painters.at(index)) {
        m_painters.at(index)->paint(&painter, rect(), m_border, m_border, m_border, m_border);
    } else {
        PixmapStrip::draw(painter, QPoint(0, 0), m_statePixmaps.at(index));
    }
    if (text().isEmpty()) {
        return;
    }
    painter.setPen(m_textColors.at(index));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

std::size_t MButton::look() const
{
    return isEnabled() ? static_cast<std::size_t>(m_pointer.state) : kDisabled;
}
