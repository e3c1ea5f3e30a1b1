// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// A tool that prints nothing. This class writes to its output channels instead, so that no other
/// process has to wake up in between.
class SilentTool
{
public:
    /// Writes a tool that runs \a script to the application directory.
    static void install(const QByteArray &script);

    /// The same for the usual tool, which sleeps.
    static void install() { install("exec sleep 1000"); }

    static QString path();

    /// Takes over the tool that this process started last; waits until it sleeps.
    SilentTool();
    /// Kills the tool.
    ~SilentTool();

    SilentTool(const SilentTool &) = delete;
    SilentTool &operator=(const SilentTool &) = delete;

    /// Writes at most 64 kB to standard output or standard error.
    void say(const QByteArray &text);
    void complain(const QByteArray &text);

    /// The number of bytes on standard output that have not been read.
    int unread() const;

private:
    pid_t m_pid = 0;
    int m_output = -1;
    int m_error = -1;
};
