// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>
#include <QWindow>

#include <qpa/qwindowsysteminterface.h>

/// A click that the window system hands over once the program asks for events again.
inline void queueClick(QWidget *widget)
{
    QWindow *window = widget->window()->windowHandle();
    const QPoint place = widget->mapTo(widget->window(), widget->rect().center());
    for (const bool down : {true, false}) {
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::AsynchronousDelivery>(
            window, place, window->mapToGlobal(place), down ? Qt::LeftButton : Qt::NoButton,
            Qt::LeftButton, down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease);
    }
}
