// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/SimulatedDevice.h"
#include "simulator/testbed/InsideProgram.h"
#include "simulator/testbed/Testbed.h"
#include "tests/support/ProgramStage.h"

#include <QJsonObject>

/// Everything for one upgrade: the unmodified program, a simulated device and a user.
class Stage final : public ProgramStage
{
public:
    /// The name of the program's folder may begin with \a folder.
    explicit Stage(const DeviceBehaviour &behaviour = {}, const QString &folder = QString());

    /// Waits for a tool that is still running. Shows the program's log if the test has failed.
    ~Stage();

    /// Replaces the tool's behaviour by a script for StandInScript.
    void setToolScript(const QByteArray &script);

    /// Lets \a launcher, a program and its arguments, start the program.
    void setLauncher(const QStringList &launcher) { m_launcher = launcher; }

    /// Starts the program in its own folder, or in \a directory, and waits for its window. Returns
    /// whether it appeared.
    bool open(const QString &directory = QString());

    /// Where the window is, in its own pixels.
    QPoint position();

    /// Presses and moves by \a way until the window has followed, at most \a milliseconds, without
    /// releasing; returns whether it has. A Wayland desktop only moves it once the program has
    /// asked for that.
    bool drag(const QPoint &from, const QPoint &way, Qt::MouseButton button, int milliseconds);

    /// As far as \a way, in the direction in which the window stays on the screen; desktops open
    /// it anywhere.
    QPoint inward(const QPoint &way);

    /// Lets status() recognise \a text.
    void addText(const QString &text) { m_toolTexts.append(text); }

    /// The contents of record.json, which the tool's command "record" writes; empty before.
    QJsonObject record() const;

    Testbed testbed;
    SimulatedDevice device;
    InsideProgram program;

private:
    QStringList toolTexts() const override { return m_toolTexts; }
    void tellLog() const;

    QStringList m_toolTexts;
    QStringList m_launcher;
};
