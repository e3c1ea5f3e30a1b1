// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ModelledButton.h"

#include "tests/support/WidgetPicture.h"

ModelledButton::ModelledButton(const ButtonRules &rules, const QTemporaryDir &folder,
                               int spareColumns)
    : m_hasMark(rules.hasMark())
    , m_subject(ButtonSubject::create(rules, folder, nullptr, spareColumns))
    , m_model(rules)
    , m_signals(m_subject.button.get())
{ }

void ModelledButton::act(PointerEvents::Action action, bool inside)
{
    const QStringList expected = m_model.act(action, inside);
    m_subject.act(action, inside ? QPoint(1, 1) : QPoint(-5, -5));
    compareSignals(expected);
}

void ModelledButton::setEnabled(bool enabled)
{
    const QStringList expected = m_model.setEnabled(enabled);
    m_subject.button->setEnabled(enabled);
    compareSignals(expected);
}

void ModelledButton::setDown(bool down)
{
    m_model.setDown(down);
    m_subject.button->setDown(down);
}

void ModelledButton::mark(bool marked)
{
    if (m_hasMark) {
        m_model.mark(marked);
        m_subject.mark(marked);
    }
}

QString ModelledButton::difference()
{
    const int look = m_model.look();
    if (WidgetPicture::of(*m_subject.button) != m_subject.looks.at(look)) {
        m_difference += QString("does not show look %1").arg(look);
    }
    return m_difference;
}

void ModelledButton::compareSignals(const QStringList &expected)
{
    const QString emitted = m_signals.take().join(' ');
    if (emitted != expected.join(' ')) {
        m_difference += QString("emits [%1], must emit [%2]").arg(emitted, expected.join(' '));
    }
}
