// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"

#include <QObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

/// A program that runs inside a testbed, and the processes that it leaves behind.
///
/// It uses the output channels of this process. Only one object may exist at a time, since the
/// processes that are left behind become children of this process.
class InsideProgram : public QObject
{
    Q_OBJECT

public:
    explicit InsideProgram(const Testbed &testbed, QObject *parent = nullptr);

    /// Kills the program if it is still running, but not the processes that it started.
    ~InsideProgram() override;

    /// The program's environment. By default, it is that of this process with the testbed's
    /// variables.
    QProcessEnvironment environment() const { return m_environment; }
    void setEnvironment(const QProcessEnvironment &environment) { m_environment = environment; }

    /// Redirects both output channels to \a file.
    void setLog(const QString &file);

    /// Starts the program in \a directory, by default that of this process. Returns whether it was
    /// started.
    bool start(const QString &program, const QStringList &arguments,
               const QString &directory = QString());

    /// Asks the program to exit.
    void terminate();

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Whether the program and all processes that it left behind have exited.
    bool isAllFinished() const { return m_allFinished; }

    /// The exit code; 128 plus the signal's number after a signal, as in shells.
    int exitCode() const { return m_exitCode; }

signals:
    /// Emitted when the program has exited.
    void finished(int exitCode);

    /// Emitted when the program and all processes that it left behind have exited.
    void allFinished();

private slots:
    void takeExit(int exitCode, QProcess::ExitStatus status);
    void lookForOthers();

private:
    QProcess m_process;
    QProcessEnvironment m_environment;
    QTimer m_othersTimer;
    int m_exitCode = 0;
    bool m_allFinished = false;
};
