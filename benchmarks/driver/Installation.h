// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

#include <QTemporaryDir>

/// The program as it is shipped: stripped, in a folder with a tool of ours and a package.
///
/// The tool says nothing until it is told to succeed, and ends then.
class Installation
{
public:
    /// Copies the program at \a path; exits the process when that fails.
    explicit Installation(const QString &path);
    ~Installation();

    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;

    QString program() const { return m_folder.filePath("fw-update"); }

    /// The tool that runs, or else the next one that starts.
    void letToolSucceed();

    /// What the program's file is like.
    Rows rows() const;

private:
    QTemporaryDir m_folder;
    int m_goAhead = -1;
};
