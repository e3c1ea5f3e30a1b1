// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ModelledWindow.h"

#include "tests/support/WindowParts.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMouseEvent>

using namespace WindowParts;

namespace {

/// Sends the events of the window system. Qt does not deliver them to a disabled button.
void clickOn(QWidget *widget)
{
    const QPointF middle = QRectF(widget->rect()).center();
    const QPointF onScreen = widget->mapToGlobal(middle.toPoint());
    for (const bool down : {true, false}) {
        QMouseEvent event(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, middle,
                          onScreen, Qt::LeftButton, down ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    }
}

} // namespace

void ModelledWindow::click(bool portAtOnce, bool portLater)
{
    m_machine.hasPort = portAtOnce;
    m_machine.hasPortAfterWait = portLater;
    m_model.click(portAtOnce, portLater);
    clickOn(upgradeButton(m_window));
}

void ModelledWindow::say(const QByteArray &chunk, bool noticed)
{
    if (m_model.hasTool) {
        m_model.say(chunk, noticed);
        m_machine.say(chunk, noticed);
    }
}

void ModelledWindow::complain(const QByteArray &chunk)
{
    if (m_model.hasTool) {
        m_model.complain(chunk);
        m_machine.complain(chunk);
    }
}

void ModelledWindow::tick(int index, int times)
{
    const auto &timers = m_model.outcome.timers;
    for (int i = 0; i < times && timers.value(index, Outcome::Deleted) == Outcome::Running; ++i) {
        m_model.tick(index);
    }
    if (index < m_machine.timers.size()) {
        m_machine.tick(index, times);
    }
}

void ModelledWindow::close()
{
    m_model.close();
    clickOn(closeButton(m_window));
}

Outcome ModelledWindow::outcome() const
{
    Outcome outcome = {statusLabel(m_window)->text(),
                       upgradeButton(m_window)->isEnabled(),
                       progressBar(m_window)->value(),
                       {},
                       0};
    for (const QPointer<QTimer> &timer : m_machine.timers) {
        outcome.timers.append(Outcome::stateOf(timer));
    }
    for (const QPointer<QProcess> &tool : m_machine.tools) {
        outcome.processes += tool.isNull() ? 0 : 1;
    }
    return outcome;
}

QString ModelledWindow::difference() const
{
    using Counts = QVector<int>;
    const Counts seen = {m_window.isVisible(), m_machine.triggers, m_machine.logLines,
                         int(m_machine.tools.size())};
    const Counts expected = {m_model.isVisible, m_model.triggers, m_model.logLines,
                             int(m_model.outcome.timers.size())};
    if (outcome() == m_model.outcome && seen == expected) {
        return {};
    }
    QString text;
    QDebug(&text) << "window:" << outcome().text() << "visible, requests, log lines, tools:" << seen
                  << "\nmodel:" << m_model.outcome.text() << expected << '\n';
    return text;
}
