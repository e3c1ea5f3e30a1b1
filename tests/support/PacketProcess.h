// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <array>

#include <sys/types.h>

/// A child process whose every write to a channel is seen as one piece.
///
/// The two pipes keep the borders between writes of up to 4096 bytes, so nothing depends on who is
/// faster. Nothing is read but in the calls that say so.
class PacketProcess
{
public:
    /// Starts \a program, which inherits everything else of ours. Its standard input is empty.
    PacketProcess(const QString &program, const QStringList &arguments);

    /// Kills the child if it is still there.
    ~PacketProcess();

    PacketProcess(const PacketProcess &) = delete;
    PacketProcess &operator=(const PacketProcess &) = delete;

    pid_t pid() const { return m_pid; }

    /// The writes that were read so far.
    QVector<QByteArray> out() const { return m_chunks.at(0); }
    QVector<QByteArray> err() const { return m_chunks.at(1); }

    /// Reads until \a count writes to standard output were seen. False when there are no more.
    bool waitForOut(int count);

    /// Nobody reads what the child writes from now on.
    void closeChannels();

    /// Waits for the child's end without reading. Returns its exit code, or minus its signal.
    int waitForEnd();

    /// Reads until nobody has the channels open any more, then does what waitForEnd() does.
    int finish();

private:
    bool readSome();

    pid_t m_pid = -1;
    std::array<int, 2> m_pipes{-1, -1};
    std::array<QVector<QByteArray>, 2> m_chunks;
};
