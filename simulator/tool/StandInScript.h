// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// A script for the stand-in for the vendor's tool, for tests.
///
/// A script is a text file with one command per line. Empty lines and lines that start with # are
/// skipped. At its end, the tool exits with code 0.
///
///     out "text"            writes to standard output, in one chunk; escapes: \n \t \" \\ \0
///     err "text"            the same to standard error
///     out-base64 DATA       writes any bytes to standard output, in one chunk
///     err-base64 DATA       the same to standard error
///     flood out N           writes N bytes to standard output, as lines of the letter x
///     flood err N           the same to standard error
///     sleep MS              waits for MS milliseconds
///     ignore SIGNAL         ignores a signal from now on: TERM, INT, HUP, or a number
///     fork SECONDS          starts a child that keeps both channels open for this time
///     record FILE           writes arguments, working directory, environment and process id as
///                           JSON: argv (array), cwd, env (object), pid; the file is written
///                           atomically, its path is relative to the script's folder
///     flash                 does the same as the tool without a script; continues the script on
///                           success, otherwise exits with the tool's exit code
///     exit N                exits with code N (0..255)
///     signal N              kills itself with signal N
class StandInScript
{
public:
    /// Creates a script in \a folder, to which the paths of records are relative.
    explicit StandInScript(QString folder);

    /// Parses \a text. Returns false if a line is invalid; errorString() gives the first one.
    bool parse(const QByteArray &text);
    QString errorString() const { return m_error; }

    /// Runs the script and returns the exit code. \a flash does the tool's real work and returns
    /// its exit code.
    int run(const std::function<int()> &flash) const;

private:
    struct Step
    {
        QByteArray command;
        QByteArray bytes;
        int number = 0;
    };

    bool parseLine(const QByteArray &line);
    static bool parseArgument(const QByteArray &argument, Step *step);
    void perform(const Step &step) const;
    void record(const QString &file) const;

    QString m_folder;
    QVector<Step> m_steps;
    QString m_error;
};
