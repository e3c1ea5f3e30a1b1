// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/SystemMove_linux.h"

#include "app/MainWindow.h"
#include "widgets/QtCompat.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>

namespace {

/// A template, so that it compiles where Qt's windows have no such function.
template <typename Window> bool startSystemMove(Window &window)
{
    if constexpr (SystemMove::kIsPossible) {
        return window.startSystemMove();
    }
    return false;
}

} // namespace

SystemMove::SystemMove(MainWindow &window)
    : QObject(&window)
    , m_window(window)
{
    window.installEventFilter(this);
}

bool SystemMove::eventFilter(QObject *watched, QEvent *event)
{
    // Qt calls the second of two quick presses a double click.
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick) {
        return false;
    }
    // The window itself decides whether this press begins a drag.
    watched->event(event);
    if (m_window.isDragging() && startSystemMove(*m_window.windowHandle())) {
        release(*static_cast<QMouseEvent *>(event));
    }
    return true;
}

void SystemMove::release(const QMouseEvent &press)
{
    // From here on the compositor keeps the pointer, and the release with it. Sent to the native
    // window, this one reaches not only the widget: Qt also forgets which widget was pressed.
    const QPointF position = press.pos();
    QMouseEvent event(QEvent::MouseButtonRelease, position, position,
                      QtCompat::globalPosition(press), press.button(), Qt::NoButton,
                      press.modifiers());
    QCoreApplication::sendEvent(m_window.windowHandle(), &event);
}
