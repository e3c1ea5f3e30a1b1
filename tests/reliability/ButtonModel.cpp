// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/ButtonModel.h"

using PointerEvents::Action;

const QHash<QString, ButtonModel::Rules> &ButtonModel::all()
{
    static const QHash<QString, Rules> rules = {
        {"MButton", {true, true, true, false, false, false, 1, kOwnLook}},
        {"ImageButton", {true, true, false, true, false, false, kDisabledLook, kOwnLook}},
        {"tabButton", {true, false, true, false, false, false, kOwnLook, 2}},
        {"ColorButton", {true, true, true, false, false, true, kOwnLook, 1}},
        {"FuncButton", {false, false, true, false, false, false, kOwnLook, 1}},
        {"IconButton", {false, false, true, false, false, false, kOwnLook, kOwnLook}},
        {"SwitchButton", {false, false, true, false, true, false, kOwnLook, kOffset}},
        {"ProfileButton", {false, false, true, false, false, false, kOwnLook, kOwnLook}},
    };
    return rules;
}

ButtonModel::ButtonModel(const QString &name)
    : m_rules(all().value(name))
{ }

QStringList ButtonModel::names()
{
    QStringList names = all().keys();
    names.sort();
    return names;
}

QStringList ButtonModel::act(Action action, bool inside)
{
    switch (action) {
    case PointerEvents::Enter:
        m_state = m_enabled || !m_rules.crossingNeedsEnabled ? 1 : m_state;
        return {};
    case PointerEvents::Leave:
        m_state = m_enabled || !m_rules.crossingNeedsEnabled ? 0 : m_state;
        return {};
    case PointerEvents::LeftPress:
    case PointerEvents::RightPress:
        return press(action == PointerEvents::LeftPress, inside);
    case PointerEvents::LeftRelease:
    case PointerEvents::RightRelease:
        return release(action == PointerEvents::LeftRelease, inside);
    }
    return {};
}

QStringList ButtonModel::setEnabled(bool enabled)
{
    const bool letsGo = m_enabled && !enabled && m_down;
    m_enabled = enabled;
    m_down = m_down && !letsGo;
    return letsGo ? QStringList("released") : QStringList();
}

void ButtonModel::mark(bool marked)
{
    m_marked = marked;
}

int ButtonModel::look() const
{
    if (!m_enabled && m_rules.lookWhenDisabled != kOwnLook) {
        return m_rules.lookWhenDisabled;
    }
    const int look = m_rules.isRadio ? 0 : m_state;
    if (!m_marked || m_rules.lookWhenMarked == kOwnLook) {
        return look;
    }
    return m_rules.lookWhenMarked == kOffset ? look + 3 : m_rules.lookWhenMarked;
}

QStringList ButtonModel::press(bool left, bool inside)
{
    if (!left || (m_rules.mouseNeedsEnabled && !m_enabled)) {
        return {};
    }
    m_state = 2;
    m_marked = m_marked != m_rules.flips;
    if (!m_rules.passesOn || !inside) {
        return {};
    }
    m_down = true;
    return {"pressed"};
}

QStringList ButtonModel::release(bool left, bool inside)
{
    if (!left || (m_rules.mouseNeedsEnabled && !m_enabled)) {
        return {};
    }
    m_state = 1;
    if (m_rules.clicksByItself) {
        return {"clicked(false)"};
    }
    const bool clicks = m_down && inside;
    m_down = false;
    if (!clicks) {
        return {};
    }
    if (!m_rules.isRadio) {
        return {"released", "clicked(false)"};
    }
    const QStringList toggled = m_marked ? QStringList() : QStringList("toggled(true)");
    m_marked = true;
    return toggled + QStringList{"released", "clicked(true)"};
}
