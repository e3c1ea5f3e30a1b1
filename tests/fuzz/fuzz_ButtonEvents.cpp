// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: a class of the kit, then one byte for each event. One button gets the events directly in
// its handlers and is compared with the model. A second button gets them as Qt delivers them.

#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzBytes.h"
#include "tests/models/ModelledButton.h"

#include <QTemporaryDir>

namespace {

void act(ModelledButton &button, int event)
{
    switch (event % 8) {
    case 6:
        button.setEnabled((event & 8) != 0);
        break;
    case 7:
        button.mark((event & 8) != 0);
        break;
    default:
        button.act(PointerEvents::kAllActions[event % 8], (event & 8) == 0);
    }
}

void sendMouse(QWidget &button, QEvent::Type type, bool inside, bool left)
{
    const QPointF place = inside ? QPointF(1, 1) : QPointF(-5, -5);
    const Qt::MouseButton which = left ? Qt::LeftButton : Qt::RightButton;
    const bool isDown = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, place, type == QEvent::MouseMove ? Qt::NoButton : which,
                      isDown ? which : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &event);
}

void sendKey(QWidget &button, QEvent::Type type, bool space)
{
    QKeyEvent event(type, space ? Qt::Key_Space : Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &event);
}

void sendFocus(QWidget &button, QEvent::Type type)
{
    QFocusEvent event(type);
    QCoreApplication::sendEvent(&button, &event);
}

void send(QWidget &button, int event)
{
    constexpr QEvent::Type kMouse[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                       QEvent::MouseButtonDblClick, QEvent::MouseMove};
    const bool first = (event & 16) == 0;
    switch (event % 11) {
    case 4:
        sendKey(button, QEvent::KeyPress, first);
        break;
    case 5:
        sendKey(button, QEvent::KeyRelease, first);
        break;
    case 6:
        sendFocus(button, first ? QEvent::FocusIn : QEvent::FocusOut);
        break;
    case 7:
        button.setVisible(first);
        break;
    case 8:
        button.resize(event / 4, event / 2);
        break;
    case 9:
        PointerEvents::cross(button, first ? PointerEvents::Enter : PointerEvents::Leave);
        break;
    case 10:
        button.setEnabled(first);
        break;
    default:
        sendMouse(button, kMouse[event % 11], first, (event & 32) == 0);
    }
    button.grab();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    FuzzApplication::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QVector<ButtonRules> &classes = ButtonRules::all();

    FuzzBytes input(data, size);
    const ButtonRules &rules = classes.at(input.byte() % classes.size());
    ModelledButton modelled(rules, folder);
    const ButtonSubject sent = ButtonSubject::create(rules, folder);
    while (!input.isEmpty()) {
        const int event = input.byte();
        act(modelled, event);
        FuzzApplication::require(modelled.difference());
        send(*sent.button, event);
    }
    return 0;
}
