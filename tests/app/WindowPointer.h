// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

/// The pointer as the window system reports it.
namespace WindowPointer {

/// Sends an event for a pointer at \a global on the screen while \a held are held down. Returns
/// whether it was accepted.
inline bool send(QWidget &widget, QEvent::Type type, const QPointF &global, Qt::MouseButton button,
                 Qt::MouseButtons held)
{
    const QPointF local = global - QPointF(widget.mapToGlobal(QPoint(0, 0)));
    QMouseEvent event(type, local, local, global, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

/// The same while no other button is held.
inline bool send(QWidget &widget, QEvent::Type type, const QPointF &global, Qt::MouseButton button)
{
    return send(widget, type, global, button, button);
}

} // namespace WindowPointer
