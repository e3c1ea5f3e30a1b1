// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A copy of the program that finds no other Qt plugins than the given ones, whatever is installed.
class InstalledProgram
{
public:
    /// \a plugins are folders or files of Qt's folder for plugins.
    explicit InstalledProgram(const QStringList &plugins);

    /// Adds all folders of \a source.
    void addPlugins(const QString &source);

    QString path() const { return m_folder.filePath("fw-update"); }

private:
    void link(const QString &source, const QStringList &plugins);

    QTemporaryDir m_folder;
};
