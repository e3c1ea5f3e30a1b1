// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/MainWindow.h"
#include "tests/models/MachineDouble.h"
#include "tests/models/SequenceModel.h"

/// The window and its model, which both take the same steps.
class ModelledWindow
{
public:
    void click(bool portAtOnce, bool portLater);
    /// These do nothing while there is no tool.
    void say(const QByteArray &chunk, bool noticed);
    void complain(const QByteArray &chunk);
    /// Does nothing unless the timer of that upgrade runs.
    void tick(int index, int times);
    void close();

    /// How the window differs from its model; empty if it does not.
    QString difference() const;

    const SequenceModel &model() const { return m_model; }
    MainWindow &window() { return m_window; }

private:
    Outcome outcome() const;

    MachineDouble m_machine;
    MainWindow m_window;
    SequenceModel m_model;
};
