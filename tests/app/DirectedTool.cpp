// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/DirectedTool.h"

#include <QCoreApplication>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace {

// A start is noted only once it is complete.
const char *const kNoteStart = R"(#!/bin/sh
{ printf '%s\037' "$$" "$PWD" "$@"; echo; } >> "$0.starts"
)";

// The process that was started becomes the one that copies standard output, so that its death is
// the tool's death.
const char *const kRelay = R"(cat "$0.error" >&2 &
exec cat "$0.output"
)";

QString besideTool(const char *suffix)
{
    return DirectedTool::path() + suffix;
}

/// Open at both ends, so that the tool finds a reader and a writer whenever it comes.
int openPipe(const QString &path)
{
    QFile::remove(path);
    ::mkfifo(path.toLocal8Bit().constData(), 0600);
    return ::open(path.toLocal8Bit().constData(), O_RDWR | O_CLOEXEC);
}

void write(int pipe, const QByteArray &chunk)
{
    const ssize_t written = ::write(pipe, chunk.constData(), static_cast<size_t>(chunk.size()));
    Q_ASSERT(written == chunk.size());
    Q_UNUSED(written)
}

QStringList readStarts()
{
    QFile file(besideTool(".starts"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QStringList starts = QString::fromLocal8Bit(file.readAll()).split("\037\n");
    starts.removeLast(); // what comes after the last one's end
    return starts;
}

} // namespace

DirectedTool::DirectedTool()
    : m_output(openPipe(besideTool(".output")))
    , m_error(openPipe(besideTool(".error")))
{
    QFile::remove(besideTool(".starts"));
    setScript(kRelay);
}

DirectedTool::~DirectedTool()
{
    // Both copies end with their input.
    ::close(m_output);
    ::close(m_error);
    for (const char *suffix : {"", ".output", ".error", ".starts"}) {
        QFile::remove(besideTool(suffix));
    }
}

QString DirectedTool::path()
{
    return QCoreApplication::applicationDirPath() + "/nrfutil-mac";
}

void DirectedTool::setScript(const QByteArray &script)
{
    QFile file(path());
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write(kNoteStart + script);
    file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
}

int DirectedTool::starts() const
{
    return readStarts().size();
}

qint64 DirectedTool::pid() const
{
    return lastStart().value(0).toLongLong();
}

QString DirectedTool::workingDirectory() const
{
    return lastStart().value(1);
}

QStringList DirectedTool::arguments() const
{
    return lastStart().mid(2);
}

bool DirectedTool::isRunning() const
{
    return pid() > 0 && ::kill(static_cast<pid_t>(pid()), 0) == 0;
}

void DirectedTool::say(const QByteArray &chunk)
{
    write(m_output, chunk);
}

void DirectedTool::complain(const QByteArray &chunk)
{
    write(m_error, chunk);
}

QStringList DirectedTool::lastStart() const
{
    const QStringList starts = readStarts();
    return starts.isEmpty() ? QStringList() : starts.last().split('\037');
}
