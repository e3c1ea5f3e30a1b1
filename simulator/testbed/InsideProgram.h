// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"

#include <QObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

/// A program that runs inside a testbed, together with what it leaves running when it ends.
///
/// Its channels are this process's own. There can be one at a time in a process: processes that it
/// leaves behind become this process's children.
class InsideProgram : public QObject
{
    Q_OBJECT

public:
    explicit InsideProgram(const Testbed &testbed, QObject *parent = nullptr);

    /// Kills the program when it still runs; what it started is left alone.
    ~InsideProgram() override;

    /// What the program will find in its environment; this process's own and the testbed's
    /// variables to begin with.
    QProcessEnvironment environment() const { return m_environment; }
    void setEnvironment(const QProcessEnvironment &environment) { m_environment = environment; }

    /// Writes what it says on its two channels into \a file.
    void setLog(const QString &file);

    /// Starts it in \a directory, or in this process's own when that is empty. Returns whether it
    /// could be started.
    bool start(const QString &program, const QStringList &arguments,
               const QString &directory = QString());

    /// Asks it to end.
    void terminate();

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Whether it and everything that it left running have ended.
    bool isAllFinished() const { return m_allFinished; }

    /// 128 and the signal's number for one that a signal ended, as shells say it.
    int exitCode() const { return m_exitCode; }

signals:
    /// The program has ended.
    void finished(int exitCode);

    /// It and everything that it left running have ended.
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
