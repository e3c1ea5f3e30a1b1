// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/SystemMove_linux.h"

#include "app/MainWindow.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>

SystemMove::SystemMove(MainWindow &window)
    : QObject(&window)
    , m_window(window)
{
    window.installEventFilter(this);
}

bool SystemMove::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress) {
        return false;
    }
    // The window itself decides whether this press begins a drag.
    watched->event(event);
    if (m_window.isDragging() && m_window.windowHandle()->startSystemMove()) {
        release(*static_cast<QMouseEvent *>(event));
    }
    return true;
}

void SystemMove::release(const QMouseEvent &press)
{
    // From here on the compositor keeps the pointer, and the release with it. Sent to the native
    // window, this one reaches not only the widget: Qt also forgets which widget was pressed.
    QMouseEvent event(QEvent::MouseButtonRelease, press.windowPos(), press.windowPos(),
                      press.screenPos(), press.button(), Qt::NoButton, press.modifiers());
    QCoreApplication::sendEvent(m_window.windowHandle(), &event);
}
