// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/app/fixtures/Outcome.h"

#include <QByteArray>

/// How an upgrade must proceed, without window, process or time: it takes the events that the
/// window takes and says what must be seen after each.
struct SequenceModel
{
    Outcome outcome;
    bool isVisible = true;
    bool hasTool = false; ///< its process object exists, also when the process has ended
    int triggers = 0; ///< requests to the device so far
    int logLines = 0; ///< debug lines so far

    /// A click when the port is there at once, or once the device has had its two seconds.
    void click(bool portAtOnce, bool portLater);
    /// A chunk on standard output; \a noticed when the window is told before the next tick.
    void say(const QByteArray &chunk, bool noticed);
    void complain(const QByteArray &chunk);
    /// The tool ends.
    void end() { outcome.processes = 0; }
    /// A tick of the timer of this upgrade, which must be running.
    void tick(int index);
    void close();

private:
    void search(const QByteArray &chunk);
    void stopTimer(Outcome::Timer state);

    int m_counter = 0;
    bool m_hasTimer = false; // of the newest upgrade
    QByteArray m_unread;
};
