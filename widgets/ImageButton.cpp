// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ImageButton.h"

#include "widgets/PixmapStrip.h"

#include <QMouseEvent>
#include <QPainter>

ImageButton::ImageButton(QWidget *parent)
    : QPushButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    setStyleSheet("QPushButton {border:0px solid #000000; border-radius:0px;}");
    show();
}

void ImageButton::setPixmap(QString path)
{
    m_statePixmaps = PixmapStrip::load<4>(path);
}

void ImageButton::enterEvent(QtCompat::EnterEvent * /*event*/)
{
    if (!isEnabled()) {
        return;
    }
    m_pointer.enter();
    update();
}

void ImageButton::leaveEvent(QEvent * /*event*/)
{
    if (!isEnabled()) {
        return;
    }
    m_pointer.leave();
    update();
}

void ImageButton::mousePressEvent(QMouseEvent *event)
{
    if (!isEnabled() || event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.press();
    update();
}

void ImageButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (!isEnabled() || event->button() != Qt::LeftButton) {
        return;
    }
    m_pointer.release();
    update();
    // The base class has seen no press, so it would never click. The button clicks wherever the
    // pointer is: applications rely on one click per release.
    emit clicked(false);
}

void ImageButton::paintEvent(QPaintEvent * /*event*/)
{
    constexpr std::size_t kDisabled = 3;

    QPainter painter(this);
    const std::size_t index = isEnabled() ? static_cast<std::size_t>(m_pointer.state) : kDisabled;
    PixmapStrip::draw(painter, QPoint(0, 0), m_statePixmaps.at(index));
}
