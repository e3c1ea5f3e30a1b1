// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/app/fixtures/Outcome.h"

#include <QByteArray>

/// A model of the upgrade without window, processes or time. It takes the events that the window
/// takes, and has the outcome that the window must have after each.
struct SequenceModel
{
    Outcome outcome;
    bool isVisible = true;
    bool hasTool = false; ///< the process object exists, even if the process has ended
    int triggers = 0; ///< requests to the device so far
    int logLines = 0; ///< debug lines so far

    /// A click, with the port there at the first search or only at the second.
    void click(bool portAtOnce, bool portLater);
    /// A chunk on standard output. Unless \a noticed, it waits for the next tick.
    void say(const QByteArray &chunk, bool noticed);
    void complain(const QByteArray &chunk);
    /// The tool ends.
    void end() { outcome.processes = 0; }
    /// A tick of the timer of an upgrade, which must be running.
    void tick(int index);
    void close();

private:
    void search(const QByteArray &chunk);
    void stopTimer(Outcome::Timer state);

    int m_counter = 0;
    bool m_hasTimer = false; // of the newest upgrade
    QByteArray m_unread;
};
