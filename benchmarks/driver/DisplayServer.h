// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>

/// A virtual X server. It is terminated with this object.
class DisplayServer
{
public:
    /// Waits until programs can connect; exits the process if the server does not start.
    DisplayServer();
    ~DisplayServer();

    DisplayServer(const DisplayServer &) = delete;
    DisplayServer &operator=(const DisplayServer &) = delete;

    /// The value for the variable DISPLAY.
    QByteArray name() const { return m_name; }

private:
    QProcess m_process;
    QByteArray m_name;
};
