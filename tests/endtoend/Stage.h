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
/// simulated device, and a user in front of the screen.
class Stage
{
public:
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

    /// The status text: one of the program's own texts or of the added ones. Null for others.
    QString status();
    void addText(const QString &text) { m_toolTexts.append(text); }
    int progress();
    bool isUpgradeEnabled();

    QString path(const QString &file) const { return m_folder.filePath(file); }

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
