// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/QtPlugins.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QtDebug>

namespace {

/// The lines that dpkg-query prints.
QStringList query(const QStringList &arguments)
{
    QProcess process;
    process.start("dpkg-query", arguments);
    process.waitForFinished();
    if (process.exitCode() != 0) {
        qFatal("%s", process.readAllStandardError().constData());
    }
    return QString::fromLocal8Bit(process.readAllStandardOutput()).split('\n');
}

} // namespace

void QtPlugins::restrictTo(const QDir &folder)
{
    const QString all = QCoreApplication::libraryPaths().constFirst() + '/';
    for (const char *known : {"platforms/libqxcb.so", "imageformats/libqgif.so"}) {
        const QString package = query({"--search", all + known}).constFirst().section(": ", 0, 0);
        for (const QString &file : query({"--listfiles", package})) {
            const QString link = folder.filePath("plugins/" + file.mid(all.size()));
            if (file.startsWith(all) && file.endsWith(".so") && !QFileInfo::exists(link)) {
                QDir().mkpath(QFileInfo(link).path());
                QFile::link(file, link);
            }
        }
    }
    QSettings settings(folder.filePath("qt.conf"), QSettings::IniFormat);
    settings.setValue("Paths/Plugins", folder.filePath("plugins"));
}
