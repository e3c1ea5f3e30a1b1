// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// A tool that says nothing of its own. What it is to say is written into its own channels from
/// here, so that no other process has to wake up in between.
class SilentTool
{
public:
    /// Puts a tool beside the program that runs \a script when it is started.
    static void install(const QByteArray &script);

    /// The usual one: it sleeps.
    static void install() { install("exec sleep 1000"); }

    static QString path();

    /// Takes hold of the one that this process has started last; waits until it sleeps.
    SilentTool();
    /// Kills it.
    ~SilentTool();

    SilentTool(const SilentTool &) = delete;
    SilentTool &operator=(const SilentTool &) = delete;

    /// At most 64 kB on standard output or standard error.
    void say(const QByteArray &text);
    void complain(const QByteArray &text);

    /// How much of what it said on standard output nobody has read.
    int unread() const;

private:
    pid_t m_pid = 0;
    int m_output = -1;
    int m_error = -1;
};
