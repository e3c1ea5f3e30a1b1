// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/ModelledWindow.h"

#include <QCoreApplication>
#include <QMouseEvent>

using namespace WindowParts;

namespace {

/// As the window system does it; Qt itself keeps it from a disabled button.
void clickOn(QWidget *widget)
{
    const QPointF middle = QRectF(widget->rect()).center();
    const QPointF onScreen = widget->mapToGlobal(middle.toPoint());
    QMouseEvent press(QEvent::MouseButtonPress, middle, onScreen, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, middle, onScreen, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
    QCoreApplication::sendEvent(widget, &release);
}

SequenceModel::Timer stateOf(const QTimer *timer)
{
    if (timer == nullptr) {
        return SequenceModel::Deleted;
    }
    return timer->isActive() ? SequenceModel::Running : SequenceModel::Stopped;
}

/// A fill of one pixel is covered by its own outline.
int visibleFill(int progress)
{
    const int fill = progress * 430 / 10000;
    return fill == 1 ? 0 : fill;
}

QString unequal(const char *what, const QString &seen, const QString &expected)
{
    return seen == expected ? QString()
                            : QString("%1 is %2, must be %3\n").arg(what, seen, expected);
}

QString unequal(const char *what, int seen, int expected)
{
    return unequal(what, QString::number(seen), QString::number(expected));
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
    if (m_model.hasProcess) {
        m_model.say(chunk, noticed);
        m_machine.say(chunk, noticed);
    }
}

void ModelledWindow::complain(const QByteArray &chunk)
{
    if (m_model.hasProcess) {
        m_model.complain(chunk);
        m_machine.complain(chunk);
    }
}

void ModelledWindow::tick(int index, int times)
{
    if (index >= m_model.timers.size()) {
        return;
    }
    for (int i = 0; i < times && m_model.timers.at(index) == SequenceModel::Running; ++i) {
        m_model.tick(index);
    }
    m_machine.tick(index, times);
}

void ModelledWindow::close()
{
    m_model.close();
    clickOn(closeButton(m_window));
}

QString ModelledWindow::difference() const
{
    QString found = unequal("status", statusLabel(m_window)->text(), m_model.status)
        + unequal("button", upgradeButton(m_window)->isEnabled(), m_model.canClick)
        + unequal("bar", filledPixels(m_window), visibleFill(m_model.progress))
        + unequal("window", m_window.isVisible(), m_model.isVisible)
        + unequal("requests", m_machine.triggers, m_model.triggers)
        + unequal("log lines", m_machine.logLines, m_model.logLines)
        + unequal("tools", m_machine.tools.size(), m_model.started)
        + unequal("timers", m_machine.timers.size(), m_model.timers.size());
    if (!found.isEmpty()) {
        return found;
    }
    for (int i = 0; i < m_model.started; ++i) {
        const bool lives = m_model.hasProcess && i == m_model.started - 1;
        found += unequal("a tool", !m_machine.tools.at(i).isNull(), lives);
        found += unequal("a timer", stateOf(m_machine.timers.at(i)), m_model.timers.at(i));
    }
    return found;
}

QString ModelledWindow::exactDifference() const
{
    return unequal("exact bar", progressValue(m_window), m_model.progress);
}
