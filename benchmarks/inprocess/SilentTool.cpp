// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/inprocess/SilentTool.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>
#include <QtDebug>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

pid_t lastChild()
{
    const QString file = QString("/proc/self/task/%1/children").arg(::getpid());
    return readAll(file).trimmed().split(' ').last().toInt();
}

void write(int channel, const QByteArray &text)
{
    if (::write(channel, text.constData(), static_cast<size_t>(text.size())) != text.size()) {
        qFatal("Cannot write to the tool's output channel");
    }
}

} // namespace

void SilentTool::install(const QByteArray &script)
{
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        qFatal("Cannot write %s", qUtf8Printable(path()));
    }
    file.write("#!/bin/sh\n" + script + '\n');
    file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
}

QString SilentTool::path()
{
    return QCoreApplication::applicationDirPath() + "/nrfutil-mac";
}

SilentTool::SilentTool()
    : m_pid(lastChild())
{
    const QString proc = QString("/proc/%1/").arg(m_pid);
    while (!readAll(proc + "cmdline").startsWith("sleep")) {
        QThread::msleep(1);
    }
    m_output = ::open(QFile::encodeName(proc + "fd/1").constData(), O_WRONLY | O_CLOEXEC);
    m_error = ::open(QFile::encodeName(proc + "fd/2").constData(), O_WRONLY | O_CLOEXEC);
}

SilentTool::~SilentTool()
{
    ::close(m_output);
    ::close(m_error);
    ::kill(m_pid, SIGKILL);
}

void SilentTool::say(const QByteArray &text)
{
    write(m_output, text);
}

void SilentTool::complain(const QByteArray &text)
{
    write(m_error, text);
}

int SilentTool::unread() const
{
    int bytes = 0;
    ::ioctl(m_output, FIONREAD, &bytes);
    return bytes;
}
