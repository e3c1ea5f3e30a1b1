// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// What the stand-in for the vendor's tool does instead of flashing, for tests.
///
/// A script is a text file with one command per line. Empty lines and lines that begin with # are
/// skipped; the end of the script is exit 0.
///
///     out "text"            writes to standard output, in one piece; knows \n \t \" \\ and \0
///     err "text"            the same to standard error
///     out-base64 DATA       any bytes to standard output, in one piece
///     err-base64 DATA       any bytes to standard error
///     flood out N           N bytes to standard output, as lines of the letter x
///     flood err N           N bytes to standard error
///     sleep MS              does nothing for MS milliseconds
///     ignore SIGNAL         ignores a signal from now on: TERM, INT, HUP, or a number
///     fork SECONDS          leaves a child behind that keeps both channels open for so long
///     record FILE           writes arguments, working directory, environment and process id as
///                           JSON: argv (array), cwd, env (object), pid; the file appears whole,
///                           a relative path begins at the script's folder
///     flash                 does everything that the tool does without a script; the script goes
///                           on after a success and ends with the tool's exit code otherwise
///     exit N                ends with exit code N (0..255)
///     signal N              ends by signal N
class StandInScript
{
public:
    /// A script that writes its records relative to \a folder.
    explicit StandInScript(QString folder);

    /// Reads \a text. Returns false when any line is no command; errorString() names the first.
    bool parse(const QByteArray &text);
    QString errorString() const { return m_error; }

    /// Carries the script out and returns the exit code. \a flash does the tool's real work and
    /// returns its exit code.
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
