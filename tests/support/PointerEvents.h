// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QObject>

/// Pointer events for a button, for use in table-driven tests.
namespace PointerEvents {

Q_NAMESPACE

enum Action { Enter, Leave, LeftPress, LeftRelease, RightPress, RightRelease };
Q_ENUM_NS(Action)

constexpr Action kAllActions[] = {Enter, Leave, LeftPress, LeftRelease, RightPress, RightRelease};

/// Makes the handlers of a button public. Qt does not deliver mouse events to disabled widgets, so
/// only a direct call shows whether a handler checks the enabled flag itself.
template <class Button> class Open : public Button
{
public:
    using Button::Button;
    using Button::enterEvent;
    using Button::leaveEvent;
    using Button::mousePressEvent;
    using Button::mouseReleaseEvent;
};

/// Calls the handler for \a action directly, with the pointer at \a position in the button.
template <class Button>
void call(Open<Button> &button, Action action, const QPoint &position = QPoint(1, 1))
{
    QEnterEvent enter(position, position, position);
    QEvent leave(QEvent::Leave);
    const bool press = action == LeftPress || action == RightPress;
    const bool left = action == LeftPress || action == LeftRelease;
    const Qt::MouseButton mouseButton = left ? Qt::LeftButton : Qt::RightButton;
    QMouseEvent click(press ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, position,
                      position, mouseButton, press ? mouseButton : Qt::NoButton, Qt::NoModifier);
    switch (action) {
    case Enter:
        button.enterEvent(&enter);
        break;
    case Leave:
        button.leaveEvent(&leave);
        break;
    case LeftPress:
    case RightPress:
        button.mousePressEvent(&click);
        break;
    case LeftRelease:
    case RightRelease:
        button.mouseReleaseEvent(&click);
        break;
    }
}

/// Sends an enter or leave event, as Qt does when the pointer crosses the button's edge.
inline void cross(QObject &button, Action action)
{
    const QPointF position(1, 1);
    QEnterEvent enter(position, position, position);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&button, action == Enter ? static_cast<QEvent *>(&enter) : &leave);
}

} // namespace PointerEvents
