// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/Program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QtDebug>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <vector>

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The number after \a name in the \a text of a file in /proc; 0 if there is none.
double valueOf(const QByteArray &text, const QByteArray &name)
{
    const auto at = text.indexOf('\n' + name + ':');
    return at < 0 ? 0
                  : text.mid(at + name.size() + 2, 40).simplified().split(' ').first().toDouble();
}

double cpuMilliseconds(pid_t pid)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        return 0;
    }
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double pageFaults(const QString &proc)
{
    // Skips the program's name, which may contain spaces and parentheses.
    const QByteArray stat = readAll(proc + "stat");
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.value(7).toDouble() + fields.value(9).toDouble();
}

int libraries(const QString &proc)
{
    static const QRegularExpression pattern(R"(/\S+\.so\S*$)", QRegularExpression::MultilineOption);
    QSet<QString> names;
    QRegularExpressionMatchIterator matches
        = pattern.globalMatch(QString::fromLocal8Bit(readAll(proc + "maps")));
    while (matches.hasNext()) {
        names.insert(matches.next().captured());
    }
    return int(names.size());
}

double wakeUps(const QString &proc)
{
    double sum = 0;
    const QStringList threads = QDir(proc + "task").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString &thread : threads) {
        sum += valueOf(readAll(proc + "task/" + thread + "/status"), "voluntary_ctxt_switches");
    }
    return sum;
}

std::vector<QByteArray> environmentWith(Program::Variables variables)
{
    // Without an address, Qt would start a bus, which costs each program time and outlives it.
    variables.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    std::vector<QByteArray> environment;
    for (auto entry = variables.begin(); entry != variables.end(); ++entry) {
        // Qt 6 looks for a Wayland desktop even if the name of its display is empty.
        if (!entry.value().isEmpty()) {
            environment.push_back(entry.key() + '=' + entry.value());
        }
    }
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const QByteArray name = QByteArray(*entry).split('=').first();
        // The caller's settings for Qt would affect the measurements.
        if (!name.startsWith("QT_") && !variables.contains(name)) {
            environment.emplace_back(*entry);
        }
    }
    return environment;
}

} // namespace

Program::Program(const QString &path, const Variables &variables, const QString &errors)
{
    std::vector<QByteArray> environment = environmentWith(variables);
    std::vector<char *> pointers;
    pointers.reserve(environment.size() + 1);
    for (QByteArray &entry : environment) {
        pointers.push_back(entry.data());
    }
    pointers.push_back(nullptr);
    QByteArray file = QFile::encodeName(path);
    char *const arguments[] = {file.data(), nullptr};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, QFile::encodeName(errors).constData(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addchdir_np(&actions,
                                         QFile::encodeName(QFileInfo(path).path()).constData());
    m_start = Clock::now();
    const int error
        = posix_spawn(&m_pid, file.constData(), &actions, nullptr, arguments, pointers.data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        qFatal("Cannot start %s", file.constData());
    }
}

Program::~Program()
{
    ::kill(m_pid, SIGKILL);
    ::waitpid(m_pid, nullptr, 0);
}

Program::Costs Program::costs() const
{
    Costs costs;
    costs.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - m_start).count();
    costs.cpuMilliseconds = cpuMilliseconds(m_pid);
    const QString proc = QString("/proc/%1/").arg(m_pid);
    costs.pageFaults = pageFaults(proc);
    costs.wakeUps = wakeUps(proc);
    costs.residentKilobytes = valueOf(readAll(proc + "smaps_rollup"), "Rss");
    costs.libraries = libraries(proc);
    return costs;
}

void Program::hold()
{
    ::kill(m_pid, SIGSTOP);
}

void Program::release()
{
    ::kill(m_pid, SIGCONT);
}
