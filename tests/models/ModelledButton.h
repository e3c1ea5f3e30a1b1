// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/models/ButtonModel.h"
#include "tests/models/ButtonSubject.h"
#include "tests/support/ButtonSignals.h"

/// One of the kit's buttons beside its model. Each step goes to both of them.
class ModelledButton
{
public:
    /// Saves the button's pictures in \a folder, each strip with \a spareColumns at its end.
    ModelledButton(const ButtonRules &rules, const QTemporaryDir &folder, int spareColumns = 0);

    void act(PointerEvents::Action action, bool inside = true);
    void setEnabled(bool enabled);
    void setDown(bool down);
    /// Does nothing in a class without a mark.
    void mark(bool marked);

    /// How the button has differed from its model so far; empty if it has not.
    QString difference();

private:
    void compareSignals(const QStringList &expected);

    const bool m_hasMark;
    ButtonSubject m_subject;
    ButtonModel m_model;
    ButtonSignals m_signals;
    QString m_difference;
};
