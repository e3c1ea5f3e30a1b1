// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/Stage.h"

#include "simulator/demo/WindowLook.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QScreen>
#include <QTest>

Stage::Stage(const DeviceBehaviour &behaviour, const QString &folder)
    : ProgramStage(FW_UPDATE_PROGRAM, STAND_IN_TOOL, folder)
    , device(testbed, behaviour)
    , program(testbed)
{
    program.setEnvironment(usersEnvironment(program.environment()));
    program.setLog(path("log"));
}

Stage::~Stage()
{
    constexpr int kSoon = 2000;
    constexpr int kLongest = 20000;
    user.release(); // a failed test may have left it pressed
    if (program.isRunning()) {
        // A program that exits by itself reports leaks and coverage.
        user.click(WindowLook::kCloseButton);
        ScreenUser::waitUntil([this] { return !program.isRunning(); }, kSoon);
    }
    if (program.isRunning()) {
        program.terminate();
    }
    ScreenUser::waitUntil([this] { return program.isAllFinished(); }, kLongest);
    if (QTest::currentTestFailed()) {
        tellLog();
    }
}

void Stage::setToolScript(const QByteArray &script)
{
    QFile file(path("nrfutil-mac.script"));
    if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size()) {
        qFatal("cannot write the script");
    }
}

bool Stage::open(const QString &directory)
{
    QStringList command = m_launcher + QStringList{path("fw-update")};
    const QString first = command.takeFirst();
    return program.start(first, command, directory.isEmpty() ? path("") : directory)
        && waitForWindow();
}

QPoint Stage::position()
{
    return user.windowGeometry().topLeft() / scale();
}

bool Stage::drag(const QPoint &from, const QPoint &way, Qt::MouseButton button, int milliseconds)
{
    const QPoint before = position();
    const auto follows = [&] {
        user.movePointerOnScreen((before + from + way) * scale());
        return position() == before + way;
    };
    user.drag(from, from + way, button);
    return ScreenUser::waitUntil(follows, milliseconds);
}

QPoint Stage::inward(const QPoint &way)
{
    const QPoint centre = user.windowGeometry().center();
    const QPoint middle = QGuiApplication::primaryScreen()->geometry().center();
    return {centre.x() > middle.x() ? -way.x() : way.x(),
            centre.y() > middle.y() ? -way.y() : way.y()};
}

void Stage::tellLog() const
{
    const QList<QByteArray> lines = log().split('\n');
    for (const QByteArray &line : lines) {
        if (line != "Standard Output: \"\"") { // each tick writes one
            qInfo("fw-update: %s", line.constData());
        }
    }
}

QJsonObject Stage::record() const
{
    QFile file(path("record.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}
