// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/SimulatedDevice.h"
#include "simulator/dfu/DfuPackage.h"
#include "simulator/testbed/InsideProgram.h"
#include "simulator/testbed/Testbed.h"

#include <QStringList>

/// Shows the unmodified program upgrading the simulated device, and prints each step.
///
/// As in an installation, the program, the tool and the package are in one folder.
class Demo
{
public:
    /// \a fault is the name of a fault from help(), or empty.
    Demo(const QString &folder, const QString &fault, const DeviceDescription &device);

    /// Whether the fault exists. If not, do not call the functions below.
    bool isValid() const { return m_isValid; }

    /// Checks the tool and the package. If there is no package, creates one that suits the device.
    /// Prints what is wrong and returns false if the demo cannot be played.
    bool prepare();

    /// Opens the program's window for the user. Returns the exit code once it is closed.
    int playForPerson();

    /// Opens the program's window for a simulated user, saves idle.png, running.png and
    /// finished.png in \a pictures, and returns the exit code. Needs a QApplication on X.
    int playWithUser(const QString &pictures);

    /// One line of help for each fault.
    static QString help();

    /// Asks the program to exit, which ends the demo.
    void stop();

private:
    enum class Outcome { Success, NoDevice, ToolFailed };

    bool isExpected(Outcome outcome) const;
    bool openProgram();
    void awaitEnd();
    int verdict(Outcome outcome) const;
    DfuPackage readPackage() const; ///< Without firmware if there is none.
    bool isImageRight() const;

    static void say(const QString &line);

    QString file(const QString &name) const { return m_folder + '/' + name; }
    QString disappointment(Outcome outcome) const;

    const QString m_folder;
    const QString m_fault;
    const DeviceDescription m_description;
    bool m_isValid = false;
    Testbed m_testbed;
    SimulatedDevice m_device;
    InsideProgram m_program;
};
