// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/reliability/ButtonModel.h"
#include "tests/support/ButtonSignals.h"
#include "tests/widgets/ButtonSubject.h"

/// One of the kit's buttons and its rules side by side: each step goes to both.
class ModelledButton
{
public:
    /// A button of the class \a name, its pictures saved in \a folder.
    ModelledButton(const QString &name, const QTemporaryDir &folder);

    void act(PointerEvents::Action action, bool inside);
    void setEnabled(bool enabled);
    /// Nothing where the class knows no mark.
    void mark(bool marked);

    /// Where the button has differed from the rules so far; empty when nowhere.
    QString difference();

private:
    void compareSignals(const QStringList &expected);
    bool markButton(bool marked);

    ButtonSubject m_subject;
    ButtonModel m_model;
    ButtonSignals m_signals;
    QImage m_disabledLook;
    QString m_difference;
};
