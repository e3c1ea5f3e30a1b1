// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/Installation.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QtDebug>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char *const kTool = R"(#!/bin/sh
read line < "$0.go"
echo "Device programmed."
)";

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("Cannot write %s", qUtf8Printable(path));
    }
}

Series one(double value)
{
    Series series;
    series.add(value);
    return series;
}

} // namespace

Installation::Installation(const QString &path)
{
    if (QProcess::execute("strip", {"-o", program(), path}) != 0) {
        qFatal("Cannot strip %s", qUtf8Printable(path));
    }
    const QString tool = m_folder.filePath("nrfutil-mac");
    writeFile(tool, kTool);
    writeFile(m_folder.filePath("dfu.zip"), QByteArray());
    const QByteArray pipe = QFile::encodeName(tool + ".go");
    ::mkfifo(pipe.constData(), 0600);
    // Opened for reading and writing, so that neither side waits for the other to open it.
    m_goAhead = ::open(pipe.constData(), O_RDWR | O_CLOEXEC);
}

Installation::~Installation()
{
    ::close(m_goAhead);
}

void Installation::letToolSucceed()
{
    if (::write(m_goAhead, "\n", 1) != 1) {
        qFatal("Cannot write to the tool");
    }
}

Rows Installation::rows() const
{
    constexpr double kLargestFile = 172; // kB
    constexpr double kMostLibraries = 8;

    QProcess readelf;
    readelf.start("readelf", {"-d", program()});
    readelf.waitForFinished();
    const double needed = int(readelf.readAllStandardOutput().count("(NEEDED)"));
    const double size = static_cast<double>(QFileInfo(program()).size()) / 1000;
    return {
        {"Size of the stripped program", "kB", "", one(size), {}, Row::Gate, kLargestFile},
        {"Directly linked libraries", "", "", one(needed), {}, Row::Gate, kMostLibraries},
    };
}
