// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/InsideProgram.h"

#include <QFile>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Whether this process has a child in its own session. Daemons have other sessions.
bool hasChildren()
{
    while (waitpid(-1, nullptr, WNOHANG) > 0) { }
    QFile file(QString("/proc/self/task/%1/children").arg(getpid()));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QList<QByteArray> children = file.readAll().simplified().split(' ');
    return std::any_of(children.begin(), children.end(), [](const QByteArray &child) {
        return !child.isEmpty() && getsid(child.toInt()) == getsid(0);
    });
}

} // namespace

InsideProgram::InsideProgram(const Testbed &testbed, QObject *parent)
    : QObject(parent)
    , m_environment(QProcessEnvironment::systemEnvironment())
{
    constexpr int kLookEach = 50;
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const Testbed::Values variables = testbed.childEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
        m_environment.insert(QString::fromLatin1(variable.key()),
                             QFile::decodeName(variable.value()));
    }
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.setInputChannelMode(QProcess::ForwardedInputChannel);
    m_othersTimer.setInterval(kLookEach);
    connect(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &InsideProgram::takeExit);
    connect(&m_othersTimer, &QTimer::timeout, this, &InsideProgram::lookForOthers);
}

InsideProgram::~InsideProgram()
{
    m_process.disconnect(this);
}

void InsideProgram::setLog(const QString &file)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(file);
}

bool InsideProgram::start(const QString &program, const QStringList &arguments,
                          const QString &directory)
{
    m_process.setProcessEnvironment(m_environment);
    m_process.setWorkingDirectory(directory);
    m_process.start(program, arguments);
    return m_process.waitForStarted();
}

void InsideProgram::terminate()
{
    m_process.terminate();
}

void InsideProgram::takeExit(int exitCode, QProcess::ExitStatus status)
{
    constexpr int kSignalled = 128;
    m_exitCode = status == QProcess::NormalExit ? exitCode : kSignalled + exitCode;
    emit finished(m_exitCode);
    m_othersTimer.start();
}

void InsideProgram::lookForOthers()
{
    if (hasChildren()) {
        return;
    }
    m_othersTimer.stop();
    m_allFinished = true;
    emit allFinished();
}
