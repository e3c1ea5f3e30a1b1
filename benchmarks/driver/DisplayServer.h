// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>

/// An X server of the benchmarks' own that shows on no screen. It ends with this object.
class DisplayServer
{
public:
    /// Waits until programs can connect; exits the process when the server does not start.
    DisplayServer();
    ~DisplayServer();

    DisplayServer(const DisplayServer &) = delete;
    DisplayServer &operator=(const DisplayServer &) = delete;

    /// For the variable DISPLAY.
    QByteArray name() const { return m_name; }

private:
    QProcess m_process;
    QByteArray m_name;
};
