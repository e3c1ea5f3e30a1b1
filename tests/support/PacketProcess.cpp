// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/PacketProcess.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <vector>

PacketProcess::PacketProcess(const QString &program, const QStringList &arguments)
{
    std::array<int, 2> out{};
    std::array<int, 2> err{};
    if (pipe2(out.data(), O_DIRECT | O_CLOEXEC) != 0
        || pipe2(err.data(), O_DIRECT | O_CLOEXEC) != 0) {
        qFatal("cannot create pipes");
    }
    m_pipes = {out[0], err[0]};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);

    std::vector<QByteArray> words{QFile::encodeName(program)};
    for (const QString &argument : arguments) {
        words.push_back(QFile::encodeName(argument));
    }
    std::vector<char *> argv;
    argv.reserve(words.size() + 1);
    for (QByteArray &word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    if (posix_spawn(&m_pid, argv.front(), &actions, nullptr, argv.data(), environ) != 0) {
        qFatal("cannot start %s", argv.front());
    }
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    close(err[1]);
}

PacketProcess::~PacketProcess()
{
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitForEnd();
    }
    closeChannels();
}

bool PacketProcess::waitForOut(int count)
{
    while (m_chunks[0].size() < count) {
        if (!readSome()) {
            return false;
        }
    }
    return true;
}

void PacketProcess::closeChannels()
{
    for (int &fd : m_pipes) {
        if (fd >= 0) {
            close(fd);
        }
        fd = -1;
    }
}

int PacketProcess::waitForEnd()
{
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

int PacketProcess::finish()
{
    while (readSome()) { }
    return waitForEnd();
}

bool PacketProcess::readSome()
{
    if (m_pipes == std::array<int, 2>{-1, -1}) {
        return false;
    }
    std::array<pollfd, 2> ends{pollfd{m_pipes[0], POLLIN, 0}, pollfd{m_pipes[1], POLLIN, 0}};
    poll(ends.data(), ends.size(), -1);
    for (size_t i = 0; i < ends.size(); ++i) {
        if (ends.at(i).revents == 0) {
            continue;
        }
        std::array<char, 4096> chunk{};
        const ssize_t size = read(m_pipes.at(i), chunk.data(), chunk.size());
        if (size > 0) {
            m_chunks.at(i).append(QByteArray(chunk.data(), static_cast<int>(size)));
            continue;
        }
        close(m_pipes.at(i));
        m_pipes.at(i) = -1;
    }
    return true;
}
