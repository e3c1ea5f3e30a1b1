// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/InstalledProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

InstalledProgram::InstalledProgram(const QStringList &plugins)
{
    link(QCoreApplication::libraryPaths().constFirst(), plugins);
    QFile::copy(FW_UPDATE_PROGRAM, path());
    QSettings settings(m_folder.filePath("qt.conf"), QSettings::IniFormat);
    settings.setValue("Paths/Plugins", m_folder.filePath("plugins"));
}

void InstalledProgram::addPlugins(const QString &source)
{
    link(source, QDir(source).entryList(QDir::Dirs | QDir::NoDotAndDotDot));
}

void InstalledProgram::link(const QString &source, const QStringList &plugins)
{
    for (const QString &plugin : plugins) {
        const QString link = m_folder.filePath("plugins/" + plugin);
        if (!QDir().mkpath(QFileInfo(link).path()) || !QFile::link(source + '/' + plugin, link)) {
            qFatal("cannot link a plugin");
        }
    }
}
