// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The vendor's tool as a test directs it: a real program beside the test program whose two
/// channels say what the test hands it, chunk by chunk, and which runs until it is told to end.
class DirectedTool
{
public:
    /// Puts the tool in place, executable.
    DirectedTool();
    /// Ends the tool, however often it was started, and takes it away.
    ~DirectedTool();
    DirectedTool(const DirectedTool &) = delete;
    DirectedTool &operator=(const DirectedTool &) = delete;

    static QString path();

    /// From the next start on does what the shell \a script says instead, where "$0.output" and
    /// "$0.error" hold what is handed to it. The process must end with its input or by itself.
    void setScript(const QByteArray &script);

    /// How often it was started, and as what the last time. The arguments leave out the program.
    int starts() const;
    qint64 pid() const;
    QString workingDirectory() const;
    QStringList arguments() const;
    bool isRunning() const;

    /// One chunk of at most 4096 bytes on standard output or standard error of the running tool.
    void say(const QByteArray &chunk);
    void complain(const QByteArray &chunk);

private:
    QStringList lastStart() const;

    int m_output = -1;
    int m_error = -1;
};
