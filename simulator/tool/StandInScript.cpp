// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/tool/StandInScript.h"

#include "simulator/tool/StandardChannel.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QThread>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <optional>

namespace {

std::optional<QByteArray> unquoted(const QByteArray &quoted)
{
    if (quoted.size() < 2 || !quoted.startsWith('"') || !quoted.endsWith('"')) {
        return std::nullopt;
    }
    QByteArray text;
    for (int i = 1; i < quoted.size() - 1; ++i) {
        if (quoted.at(i) == '"') {
            return std::nullopt;
        }
        if (quoted.at(i) != '\\') {
            text.append(quoted.at(i));
            continue;
        }
        ++i;
        const QByteArray escapes = "nt\"\\0";
        const auto index = escapes.indexOf(quoted.at(i));
        if (index < 0 || i == quoted.size() - 1) {
            return std::nullopt;
        }
        text.append(QByteArray("\n\t\"\\\0", 5).at(index));
    }
    return text;
}

std::optional<QByteArray> fromBase64(const QByteArray &base64)
{
    const QByteArray bytes = QByteArray::fromBase64(base64);
    return bytes.toBase64() == base64 ? std::optional(bytes) : std::nullopt;
}

std::optional<int> toNumber(const QByteArray &digits, int max)
{
    bool ok = false;
    const int number = digits.toInt(&ok);
    return ok && number >= 0 && number <= max ? std::optional(number) : std::nullopt;
}

std::optional<int> toSignal(const QByteArray &name)
{
    if (name == "TERM") {
        return SIGTERM;
    }
    if (name == "INT") {
        return SIGINT;
    }
    if (name == "HUP") {
        return SIGHUP;
    }
    return toNumber(name, SIGRTMAX);
}

void flood(int fd, int size)
{
    const QByteArray line = QByteArray(63, 'x') + '\n';
    const QByteArray chunk = line.repeated(64);
    for (int rest = size; rest > 0; rest -= int(chunk.size())) {
        StandardChannel::write(fd, chunk.left(rest));
    }
}

void leaveChildBehind(int seconds)
{
    if (fork() == 0) {
        QThread::sleep(static_cast<unsigned long>(seconds));
        _exit(0);
    }
}

void endBySignal(int number)
{
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

StandInScript::StandInScript(QString folder)
    : m_folder(std::move(folder))
{ }

bool StandInScript::parse(const QByteArray &text)
{
    m_steps.clear();
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        if (!line.isEmpty() && !line.startsWith('#') && !parseLine(line)) {
            m_error = QStringLiteral("line %1: %2").arg(i + 1).arg(QString::fromUtf8(line));
            return false;
        }
    }
    return true;
}

int StandInScript::run(const std::function<int()> &flash) const
{
    for (const Step &step : m_steps) {
        if (step.command == "exit") {
            return step.number;
        }
        if (step.command != "flash") {
            perform(step);
        } else if (const int code = flash(); code != 0) {
            return code;
        }
    }
    return 0;
}

bool StandInScript::parseLine(const QByteArray &line)
{
    const auto space = line.indexOf(' ');
    Step step;
    step.command = space < 0 ? line : line.left(space);
    const QByteArray argument = space < 0 ? QByteArray() : line.mid(space).trimmed();
    if (step.command == "flood") {
        step.command = "flood " + argument.left(3);
        const auto size = toNumber(argument.mid(3).trimmed(), INT_MAX);
        step.number = size.value_or(0);
        m_steps.append(step);
        return size && (step.command == "flood out" || step.command == "flood err");
    }
    m_steps.append(step);
    return parseArgument(argument, &m_steps.last());
}

bool StandInScript::parseArgument(const QByteArray &argument, Step *step)
{
    const QByteArray &command = step->command;
    if (command == "flash") {
        return argument.isEmpty();
    }
    if (command == "record") {
        step->bytes = argument;
        return !argument.isEmpty();
    }
    std::optional<QByteArray> bytes;
    std::optional<int> number;
    if (command == "out" || command == "err") {
        bytes = unquoted(argument);
    } else if (command == "out-base64" || command == "err-base64") {
        bytes = fromBase64(argument);
    } else if (command == "ignore" || command == "signal") {
        number = toSignal(argument);
    } else if (command == "exit") {
        number = toNumber(argument, 255);
    } else if (command == "sleep" || command == "fork") {
        number = toNumber(argument, INT_MAX);
    }
    step->bytes = bytes.value_or(QByteArray());
    step->number = number.value_or(0);
    return bytes || number;
}

void StandInScript::perform(const Step &step) const
{
    const int fd = step.command.contains("err") ? STDERR_FILENO : STDOUT_FILENO;
    if (step.command.startsWith("flood")) {
        flood(fd, step.number);
    } else if (step.command == "sleep") {
        QThread::msleep(static_cast<unsigned long>(step.number));
    } else if (step.command == "ignore") {
        std::signal(step.number, SIG_IGN);
    } else if (step.command == "fork") {
        leaveChildBehind(step.number);
    } else if (step.command == "record") {
        record(QDir(m_folder).filePath(QFile::decodeName(step.bytes)));
    } else if (step.command == "signal") {
        endBySignal(step.number);
    } else {
        StandardChannel::write(fd, step.bytes);
    }
}

void StandInScript::record(const QString &file) const
{
    QJsonObject environment;
    const auto variables = QProcessEnvironment::systemEnvironment();
    for (const QString &name : variables.keys()) {
        environment[name] = variables.value(name);
    }
    const QJsonObject all{
        {"argv", QJsonArray::fromStringList(QCoreApplication::arguments())},
        {"cwd", QDir::currentPath()},
        {"env", environment},
        {"pid", QCoreApplication::applicationPid()},
    };
    QSaveFile output(file);
    if (output.open(QIODevice::WriteOnly)) {
        output.write(QJsonDocument(all).toJson());
        output.commit();
    }
}
