// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PointerEvents.h"

#include <QHash>
#include <QString>
#include <QStringList>

/// The rules of one of the kit's buttons as a machine without widget, to hold the button against.
class ButtonModel
{
public:
    static constexpr int kDisabledLook = -1; ///< none of ButtonSubject::looks

    /// The rules of the class \a name.
    explicit ButtonModel(const QString &name);

    static QStringList names();

    /// One event at a place inside the button or outside; returns the signals that it must emit.
    QStringList act(PointerEvents::Action action, bool inside);
    /// The same for the owner's switch.
    QStringList setEnabled(bool enabled);
    /// The owner selects the button, where it can be selected.
    void mark(bool marked);

    /// The look that must be seen, as ButtonSubject::looks counts them.
    int look() const;

private:
    struct Rules
    {
        bool crossingNeedsEnabled; ///< enter and leave
        bool mouseNeedsEnabled; ///< press and release
        bool passesOn; ///< press and release, to the base class
        bool clicksByItself;
        bool flips; ///< on each press
        bool isRadio; ///< checked by a click, and no pointer look
        int lookWhenDisabled; ///< kOwnLook for that of its state
        int lookWhenMarked; ///< kOwnLook for that of its state, kOffset for the second three
    };
    static constexpr int kOwnLook = -2;
    static constexpr int kOffset = -3;

    static const QHash<QString, Rules> &all();
    QStringList press(bool left, bool inside);
    QStringList release(bool left, bool inside);

    Rules m_rules;
    int m_state = 0;
    bool m_enabled = true;
    bool m_marked = false;
    bool m_down = false; // of the base class
};
