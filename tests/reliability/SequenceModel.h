// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// The rules of the upgrade as a machine without window, process or time, to hold the program
/// against: it takes the same events and tells what must be seen after each.
struct SequenceModel
{
    enum Timer { Running, Stopped, Deleted };

    QString status;
    bool canClick = true;
    int progress = 0; ///< what the bar shows, of 10000
    bool isVisible = true;
    bool hasProcess = false;
    int started = 0; ///< tools so far
    int triggers = 0; ///< requests to the device so far
    int logLines = 0; ///< debug lines so far
    QVector<Timer> timers; ///< of each upgrade that came as far, oldest first

    /// A click while the port is there at once, and once the device had its two seconds.
    void click(bool portAtOnce, bool portLater);
    /// A chunk on standard output; \a noticed when the window is told before the next tick.
    void say(const QByteArray &chunk, bool noticed);
    void complain(const QByteArray &chunk);
    /// A tick of the timer of this upgrade, which must be running.
    void tick(int index);
    void close();

private:
    void search(const QByteArray &chunk);

    int m_counter = 0;
    bool m_hasTimer = false; // of the newest upgrade
    QByteArray m_unread;
};
