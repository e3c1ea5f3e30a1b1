// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/ModelledButton.h"

#include "tests/support/WidgetPicture.h"
#include "widgets/ColorButton.h"
#include "widgets/FuncButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QTemporaryDir>

namespace {

constexpr QPoint kInside(1, 1);
constexpr QPoint kOutside(-5, -5);

} // namespace

ModelledButton::ModelledButton(const QString &name, const QTemporaryDir &folder)
    : m_subject(ButtonSubject::create(name, folder))
    , m_model(name)
    , m_signals(m_subject.button.get())
{
    m_subject.button->setEnabled(false);
    m_disabledLook = WidgetPicture::of(*m_subject.button);
    m_subject.button->setEnabled(true);
}

void ModelledButton::act(PointerEvents::Action action, bool inside)
{
    const QStringList expected = m_model.act(action, inside);
    m_subject.act(action, inside ? kInside : kOutside);
    compareSignals(expected);
}

void ModelledButton::setEnabled(bool enabled)
{
    const QStringList expected = m_model.setEnabled(enabled);
    m_subject.button->setEnabled(enabled);
    compareSignals(expected);
}

void ModelledButton::mark(bool marked)
{
    if (markButton(marked)) {
        m_model.mark(marked);
    }
}

QString ModelledButton::difference()
{
    const int look = m_model.look();
    const QImage &expected
        = look == ButtonModel::kDisabledLook ? m_disabledLook : m_subject.looks.at(look);
    if (WidgetPicture::of(*m_subject.button) != expected) {
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

bool ModelledButton::markButton(bool marked)
{
    if (auto *tab = qobject_cast<tabButton *>(m_subject.button.get())) {
        tab->setTabCheck(marked);
        return true;
    }
    if (auto *function = qobject_cast<FuncButton *>(m_subject.button.get())) {
        function->setCheck(marked);
        return true;
    }
    if (auto *onOff = qobject_cast<SwitchButton *>(m_subject.button.get())) {
        onOff->setCheck(marked);
        return true;
    }
    return false;
}
