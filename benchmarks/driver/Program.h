// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <sys/types.h>

#include <chrono>

/// A running program and its resource usage so far. Its output is discarded, and it is killed when
/// this object is destroyed.
class Program
{
public:
    using Clock = std::chrono::steady_clock;
    /// An empty value hides that of the caller.
    using Variables = QMap<QByteArray, QByteArray>;

    struct Costs
    {
        double milliseconds = 0; ///< since it was started
        double cpuMilliseconds = 0;
        double pageFaults = 0;
        double residentKilobytes = 0;
        double libraries = 0; ///< mapped shared objects, including plugins
        double wakeUps = 0; ///< how often its threads have gone to sleep
    };

    /// Starts the file at \a path in its own folder, with \a variables added to the environment.
    /// Writes its standard error to the file \a errors.
    Program(const QString &path, const Variables &variables, const QString &errors = "/dev/null");
    ~Program();

    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    Costs costs() const;

    /// Stops the program while it is inspected, and lets it continue.
    void hold();
    void release();

private:
    Clock::time_point m_start;
    pid_t m_pid = 0;
};
