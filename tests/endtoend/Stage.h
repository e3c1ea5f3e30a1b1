// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/demo/ScreenUser.h"
#include "simulator/device/SimulatedDevice.h"
#include "simulator/dfu/DfuPackage.h"
#include "simulator/testbed/InsideProgram.h"
#include "simulator/testbed/Testbed.h"

#include <QJsonObject>
#include <QTemporaryDir>

/// Everything for one upgrade: the unmodified program in a folder with the vendor's two files, a
/// simulated device, and a user in front of the screen, which shows either the program's window
/// alone or a Wayland desktop with the window.
class Stage
{
public:
    /// How many pixels of the screen one of the window's is.
    static int scale();

    /// Whether the screen shows a Wayland desktop.
    static bool isOnWayland();

    explicit Stage(const DeviceBehaviour &behaviour = {});

    /// Waits for a tool that is still running. Shows the program's log if the test has failed.
    ~Stage();

    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    /// Replaces the tool's behaviour by a script for StandInScript.
    void setToolScript(const QByteArray &script);

    /// Starts the program in its own folder, or in \a directory, and waits for its window. Returns
    /// whether it appeared.
    bool open(const QString &directory = QString());

    /// Clicks the upgrade button and moves the pointer away, so that nothing is hovered.
    void click(const QPoint &position);
    void movePointerAside();

    /// Where the window is, in its own pixels.
    QPoint position();

    /// Presses and moves by \a way until the window has followed, at most \a milliseconds, without
    /// releasing; returns whether it has. A Wayland desktop only moves it once the program has
    /// asked for that.
    bool drag(const QPoint &from, const QPoint &way, Qt::MouseButton button, int milliseconds);

    /// As far as \a way, in the direction in which the window stays on the screen; desktops open
    /// it anywhere.
    QPoint inward(const QPoint &way);

    /// The status text: one of the program's own texts or of the added ones. Null for others.
    QString status();
    void addText(const QString &text) { m_toolTexts.append(text); }
    int progress();
    bool isUpgradeEnabled();

    QString path(const QString &file) const { return m_folder.filePath(file); }

    /// The program's standard output and standard error.
    QByteArray log() const;

    /// The contents of record.json, which the tool's command "record" writes; empty before.
    QJsonObject record() const;

    Testbed testbed;
    SimulatedDevice device;
    InsideProgram program;
    ScreenUser user;
    DfuPackage package;

private:
    void tellLog() const;

    QTemporaryDir m_folder;
    QStringList m_toolTexts;
};
