// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ButtonModel.h"

#include <utility>

using PointerEvents::Action;

ButtonModel::ButtonModel(ButtonRules rules)
    : m_rules(std::move(rules))
{ }

bool ButtonModel::heeds(Action action) const
{
    switch (action) {
    case PointerEvents::Enter:
    case PointerEvents::Leave:
        return m_enabled || !m_rules.crossingNeedsEnabled;
    case PointerEvents::LeftPress:
    case PointerEvents::LeftRelease:
        return m_enabled || !m_rules.mouseNeedsEnabled;
    case PointerEvents::RightPress:
    case PointerEvents::RightRelease:
        return m_enabled && m_rules.isRadio;
    }
    return false;
}

QStringList ButtonModel::act(Action action, bool inside)
{
    if (!heeds(action)) {
        return {};
    }
    switch (action) {
    case PointerEvents::Enter:
        m_state = 1;
        return {};
    case PointerEvents::Leave:
        m_state = 0;
        return {};
    case PointerEvents::LeftPress:
        m_state = 2;
        m_marked = m_marked != m_rules.flips;
        m_down = m_down || (inside && !m_rules.clicksByItself);
        return inside && !m_rules.clicksByItself ? QStringList("pressed") : QStringList();
    case PointerEvents::LeftRelease:
        m_state = 1;
        if (m_rules.clicksByItself) {
            return {"clicked(false)"};
        }
        return std::exchange(m_down, false) && inside ? click() : QStringList();
    default:
        return {}; // the base class ignores other mouse buttons
    }
}

QStringList ButtonModel::click()
{
    if (!m_rules.isRadio) {
        return {"released", "clicked(false)"};
    }
    const QStringList toggled = m_marked ? QStringList() : QStringList("toggled(true)");
    m_marked = true;
    return toggled + QStringList{"released", "clicked(true)"};
}

QStringList ButtonModel::setEnabled(bool enabled)
{
    const bool letsGo = m_enabled && !enabled && std::exchange(m_down, false);
    m_enabled = enabled;
    return letsGo ? QStringList("released") : QStringList();
}

int ButtonModel::look() const
{
    if (!m_enabled && m_rules.lookWhenDisabled) {
        return *m_rules.lookWhenDisabled;
    }
    if (m_marked && m_rules.lookWhenMarked) {
        return *m_rules.lookWhenMarked;
    }
    const int position = m_marked && m_rules.flips ? ButtonRules::kLooksOfPosition : 0;
    return m_rules.isRadio ? 0 : position + m_state;
}
