// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/MainWindow.h"
#include "tests/models/MachineDouble.h"
#include "tests/models/SequenceModel.h"

/// The window and its model side by side: each step goes to both.
class ModelledWindow
{
public:
    void click(bool portAtOnce, bool portLater);
    /// These two do nothing while there is no tool.
    void say(const QByteArray &chunk, bool noticed);
    void complain(const QByteArray &chunk);
    /// Does nothing unless there is a timer of that upgrade and it runs.
    void tick(int index, int times);
    void close();

    /// Where the window differs from its model; empty if nowhere.
    QString difference() const;

    const SequenceModel &model() const { return m_model; }
    MainWindow &window() { return m_window; }

private:
    Outcome outcome() const;

    MachineDouble m_machine;
    MainWindow m_window;
    SequenceModel m_model;
};
