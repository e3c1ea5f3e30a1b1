// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/demo/ScreenUser.h"
#include "simulator/dfu/DfuPackage.h"

#include <QImage>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

/// The unmodified program in a folder with the vendor's two files, and a user in front of the
/// screen, which shows either the program's window alone or a Wayland desktop with the window.
class ProgramStage
{
public:
    /// How many pixels of the screen one of the window's is.
    static int scale();

    /// Whether the screen shows a Wayland desktop.
    static bool isOnWayland();

    /// The user of the program's window on this screen.
    static ScreenUser makeUser();

    /// What the program finds if its user starts it, made from \a environment.
    static QProcessEnvironment usersEnvironment(QProcessEnvironment environment);

    /// Copies the files \a program and \a tool to a new folder, whose name may begin with
    /// \a folder.
    ProgramStage(const QString &program, const QString &tool, const QString &folder = QString());

    ProgramStage(const ProgramStage &) = delete;
    ProgramStage &operator=(const ProgramStage &) = delete;

    /// Clicks and moves the pointer away, so that nothing is hovered.
    void click(const QPoint &position);
    void movePointerAside();

    /// The status text: one of the program's own texts or of toolTexts(). Null for others.
    QString status();
    int progress();
    bool isUpgradeEnabled();

    QString path(const QString &file) const { return m_folder.filePath(file); }

    /// The program's standard output and standard error, as far as they were sent to the file log.
    QByteArray log() const;

    ScreenUser user;
    DfuPackage package;

protected:
    ~ProgramStage() = default;

    /// Returns whether the window appeared.
    bool waitForWindow();

    /// The texts of the tool that status() recognises.
    virtual QStringList toolTexts() const = 0;

private:
    QTemporaryDir m_folder;
    QImage m_lastLine;
    QString m_lastStatus;
};
