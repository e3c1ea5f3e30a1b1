// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QTemporaryFile>

#include <unistd.h>

#include <cstdio>

/// Captures the standard output of the process during its lifetime.
class StdoutCapture
{
public:
    StdoutCapture()
    {
        std::fflush(stdout);
        if (!m_file.open()) {
            qFatal("cannot create a temporary file");
        }
        m_original = dup(STDOUT_FILENO);
        dup2(m_file.handle(), STDOUT_FILENO);
    }

    ~StdoutCapture()
    {
        std::fflush(stdout);
        dup2(m_original, STDOUT_FILENO);
        ::close(m_original);
    }

    StdoutCapture(const StdoutCapture &) = delete;
    StdoutCapture &operator=(const StdoutCapture &) = delete;

    /// The output so far.
    QByteArray text()
    {
        std::fflush(stdout);
        m_file.seek(0); // the writer shares the position, which readAll() leaves at the end
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_original = -1;
};

/// What \a action prints to standard output.
template <typename Action> QByteArray printedBy(const Action &action)
{
    StdoutCapture capture;
    action();
    return capture.text();
}
