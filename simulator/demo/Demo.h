// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/SimulatedDevice.h"
#include "simulator/dfu/DfuPackage.h"
#include "simulator/testbed/InsideProgram.h"
#include "simulator/testbed/Testbed.h"

#include <QStringList>

/// Shows an upgrade of the simulated device by the program that ships, and tells each step.
///
/// Everything lies in one folder: the program, the tool and the package, as they are installed.
class Demo
{
public:
    /// \a fault is the name of one, as help() lists them, or empty.
    Demo(const QString &folder, const QString &fault);

    /// Whether there is a fault of this name; nothing may be played otherwise.
    bool isValid() const { return m_isValid; }

    /// Opens the program's window for a person to use; returns the exit code once it is closed.
    int playForPerson();

    /// Opens the program's window in front of a simulated user, saves idle.png, running.png and
    /// finished.png into \a pictures, and returns the exit code. Needs a QApplication on X.
    int playWithUser(const QString &pictures);

    /// One line for each fault.
    static QString help();

    /// Asks the program to end, and the demo with it.
    void stop();

private:
    enum class Outcome { Success, NoDevice, ToolFailed };

    bool isExpected(Outcome outcome) const;
    bool openProgram();
    void awaitEnd();
    int verdict(Outcome outcome) const;
    DfuPackage readPackage() const; ///< Without firmware when there is none.
    bool isImageRight() const;

    static void say(const QString &line);

    const QString m_folder;
    const QString m_fault;
    bool m_isValid = false;
    Testbed m_testbed;
    SimulatedDevice m_device;
    InsideProgram m_program;
};
