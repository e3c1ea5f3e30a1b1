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

/// Everything of one upgrade: the program as it ships in a folder with its two files, a device
/// beside it and a user in front of the screen.
class Stage
{
public:
    explicit Stage(const DeviceBehaviour &behaviour = {});

    /// Waits for a tool that is still running, and tells what the program logged when the test
    /// has failed.
    ~Stage();

    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    /// Replaces what the tool does, see StandInScript.
    void setToolScript(const QByteArray &script);

    /// Starts the program in the folder's own directory, or in \a directory, and waits for its
    /// window. Returns whether it came.
    bool open(const QString &directory = QString());

    /// Clicks and moves the pointer away again, so that nothing looks hovered.
    void click(const QPoint &position);

    /// What the window shows: one of the program's own texts, or of those added. Null for another.
    QString status();
    void addText(const QString &text) { m_toolTexts.append(text); }
    int progress();
    bool isUpgradeEnabled();

    QString path(const QString &file) const { return m_folder.filePath(file); }

    /// What the tool wrote by its command "record", into the file record.json; empty before.
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
