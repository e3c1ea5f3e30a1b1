// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

#include <QTemporaryDir>

/// The program as it is shipped: stripped, in a folder with a stand-in for the tool and a package.
///
/// The tool is silent until it is told to succeed, and then exits.
class Installation
{
public:
    /// Copies the program at \a path; exits the process if that fails.
    explicit Installation(const QString &path);
    ~Installation();

    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;

    QString program() const { return m_folder.filePath("fw-update"); }

    /// The folder of the program and its companions.
    const QTemporaryDir &folder() const { return m_folder; }

    /// Lets the running tool succeed, or the next one if none is running.
    void letToolSucceed();

    /// The size of the program and the number of its libraries.
    Rows rows() const;

private:
    QTemporaryDir m_folder;
    int m_goAhead = -1;
};
