// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/app/WindowParts.h"
#include "tests/reliability/MachineDouble.h"
#include "tests/reliability/SequenceModel.h"

/// The window and the rules side by side: each step goes to both.
class ModelledWindow
{
public:
    void click(bool portAtOnce, bool portLater);
    /// These two do nothing while there is no tool.
    void say(const QByteArray &chunk, bool noticed);
    void complain(const QByteArray &chunk);
    /// Nothing unless there is a timer of that upgrade and it runs.
    void tick(int index, int times);
    void close();

    /// Where the window differs from the rules; empty when nowhere.
    QString difference() const;
    /// The same for the bar's value to the last of its 10000 steps, which takes longer.
    QString exactDifference() const;

    const SequenceModel &model() const { return m_model; }
    MainWindow &window() { return m_window; }

private:
    MachineDouble m_machine;
    MainWindow m_window;
    SequenceModel m_model;
};
