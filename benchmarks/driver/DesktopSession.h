// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Program.h"

#include <QProcess>
#include <QStringList>

/// A virtual screen, or a Wayland desktop on one, for as long as it lives.
class DesktopSession
{
public:
    /// Starts the session with the \a options of with-screen. Ends the benchmarks if that fails.
    explicit DesktopSession(const QStringList &options);
    ~DesktopSession();

    DesktopSession(const DesktopSession &) = delete;
    DesktopSession &operator=(const DesktopSession &) = delete;

    /// What a program needs to open a window there.
    const Program::Variables &variables() const { return m_variables; }

private:
    QProcess m_process;
    Program::Variables m_variables;
};
