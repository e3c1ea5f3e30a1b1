// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <array>

#include <sys/types.h>

/// A child process, with each write to an output channel as a separate chunk.
///
/// The pipes preserve the boundaries between writes of up to 4096 bytes, so the result does not
/// depend on timing. Only the functions that say so read from the pipes.
class PacketProcess
{
public:
    /// Starts \a program in this process's environment, with an empty standard input.
    PacketProcess(const QString &program, const QStringList &arguments);

    /// Kills the child if it is still running.
    ~PacketProcess();

    PacketProcess(const PacketProcess &) = delete;
    PacketProcess &operator=(const PacketProcess &) = delete;

    pid_t pid() const { return m_pid; }

    /// The writes that have been read so far.
    QVector<QByteArray> out() const { return m_chunks.at(0); }
    QVector<QByteArray> err() const { return m_chunks.at(1); }

    /// Reads until there were \a count writes to standard output. Returns false at its end.
    bool waitForOut(int count);

    /// Closes the read ends of both pipes.
    void closeChannels();

    /// Waits until the child exits, without reading. Returns its exit code, or the negative signal.
    int waitForEnd();

    /// Reads to the end of both channels, then does the same as waitForEnd().
    int finish();

private:
    bool readSome();

    pid_t m_pid = -1;
    std::array<int, 2> m_pipes{-1, -1};
    std::array<QVector<QByteArray>, 2> m_chunks;
};
