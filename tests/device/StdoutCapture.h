// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QTemporaryFile>

#include <unistd.h>

#include <cstdio>

/// Keeps what the process prints to standard output, instead of showing it, while it lives.
class StdoutCapture
{
public:
    StdoutCapture()
    {
        std::fflush(stdout);
        m_file.open();
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

    /// Everything so far.
    QByteArray text()
    {
        std::fflush(stdout);
        m_file.seek(0); // the position is shared with the writer, who goes on at the end read
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_original = -1;
};
