// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/demo/ScreenUser.h"
#include "simulator/dfu/DfuPackage.h"

#include <QPoint>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// The program in a folder with its two files, on the machine's own devices, with a user in front
/// of the screen.
class RealStage
{
public:
    enum class Who { Root, OrdinaryUser };

    explicit RealStage(Who who = Who::Root);

    /// Ends the program when the test has not.
    ~RealStage();

    RealStage(const RealStage &) = delete;
    RealStage &operator=(const RealStage &) = delete;

    /// Starts the program and waits for its window. Returns whether it came.
    bool open();

    /// Clicks "Start Upgrade" and moves the pointer away again.
    void clickUpgrade();

    /// What the window shows: one of the program's own texts or the last of the tool's words. Null
    /// for another.
    QString status();
    int progress();
    bool isUpgradeEnabled();

    /// What the tool wrote to its standard error, all of it and what the program read of it last.
    QString errorText() const;
    QString lastErrorText() const;

    /// Closes the window by its button; returns whether the program then ended properly.
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
