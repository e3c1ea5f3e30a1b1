// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/demo/ScreenUser.h"
#include "simulator/dfu/DfuPackage.h"

#include <QPoint>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// Runs the program with the vendor's two files, on the machine's devices, and operates its window.
class RealStage
{
public:
    enum class Who { Root, OrdinaryUser };

    explicit RealStage(Who who = Who::Root);

    /// Kills the program if it is still running.
    ~RealStage();

    RealStage(const RealStage &) = delete;
    RealStage &operator=(const RealStage &) = delete;

    /// Starts the program and waits for its window. Returns whether it appeared.
    bool open();

    /// Clicks "Start Upgrade" and moves the pointer away again.
    void clickUpgrade();

    /// The status text: one of the program's own texts or the last error text of the tool. Null if
    /// it is neither.
    QString status();
    int progress();
    bool isUpgradeEnabled();

    /// The tool's error text: all of it, and the last chunk that the program has read.
    QString errorText() const;
    QString lastErrorText() const;

    /// Closes the window by its button. Returns whether the program exited normally.
    bool close();

    DfuPackage package;

    /// The SHA-256 of the package's image, as hexadecimal digits.
    QByteArray imageHash() const;

private:
    QString path(const QString &file) const { return m_folder.filePath(file); }
    QStringList errorChunks() const;

    const Who m_who;
    QTemporaryDir m_folder;
    QProcess m_process;
    ScreenUser m_user;
    QImage m_lastLine;
    QString m_lastStatus;
};
