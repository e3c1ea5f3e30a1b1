// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/ProgramStage.h"

#include <QProcess>
#include <QStringList>

/// Runs the program on the machine's devices, and operates its window.
class RealStage final : public ProgramStage
{
public:
    enum class Who { Root, OrdinaryUser };

    explicit RealStage(Who who = Who::Root);

    /// Kills the program if it is still running.
    ~RealStage();

    /// Starts the program and waits for its window. Returns whether it appeared.
    bool open();

    /// The tool's error text: all of it, and the last chunk that the program has read.
    QString errorText() const;
    QString lastErrorText() const;

    /// Closes the window by its button. Returns whether the program exited normally.
    bool close();

    /// The SHA-256 of the package's image, as hexadecimal digits.
    QByteArray imageHash() const;

private:
    QStringList toolTexts() const override { return {lastErrorText()}; }
    QStringList errorChunks() const;

    const Who m_who;
    QProcess m_process;
};
