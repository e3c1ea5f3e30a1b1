// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/models/ButtonRules.h"
#include "tests/support/PointerEvents.h"

#include <QStringList>

/// A state machine without a widget that follows the rules of one of the kit's buttons.
class ButtonModel
{
public:
    explicit ButtonModel(ButtonRules rules);

    /// Whether the handler of \a action changes the state and repaints.
    bool heeds(PointerEvents::Action action) const;

    /// Handles \a action, inside the button or outside; returns the signals that it must emit.
    QStringList act(PointerEvents::Action action, bool inside = true);

    /// Enables or disables the button; returns the signals that it must emit.
    QStringList setEnabled(bool enabled);
    /// What QAbstractButton::setDown() does.
    void setDown(bool down) { m_down = down; }
    void mark(bool marked) { m_marked = marked; }
    bool isMarked() const { return m_marked; }

    /// The look that must be seen, as an index of ButtonSubject::looks.
    int look() const;

private:
    QStringList click();

    const ButtonRules m_rules;
    int m_state = 0;
    bool m_enabled = true;
    bool m_marked = false;
    bool m_down = false; // of the base class
};
