// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/DeviceDescription.h"

#include <QMap>
#include <QString>
#include <QStringList>

class QCommandLineParser;

/// Reads the description of a device from the command line and from a JSON file.
///
/// The file contains an object; its keys are the names of the options. An option on the command
/// line replaces the value in the file.
class DeviceSettings
{
public:
    /// Uses the options with these \a names only, and the option "device" for the file.
    explicit DeviceSettings(QStringList names = allNames());

    static QStringList allNames();

    void addOptions(QCommandLineParser &parser) const;

    /// Changes \a description by the options that are set. Returns false if a value is wrong;
    /// errorString() gives the reason in one line.
    bool read(const QCommandLineParser &parser, DeviceDescription *description);

    QString errorString() const { return m_error; }

private:
    using Values = QMap<QString, QStringList>;

    bool readFile(const QString &path, Values *values);
    bool fail(const QString &error);

    const QStringList m_names;
    QString m_error;
};
