// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/Stage.h"

#include "simulator/demo/WindowLook.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QScreen>
#include <QTest>

#include <random>

namespace {

QByteArray firmware()
{
    constexpr int kSize = 50000;
    std::mt19937 generator(1);
    QByteArray bytes(kSize, '\0');
    for (char &byte : bytes) {
        byte = static_cast<char>(generator());
    }
    return bytes;
}

ScreenUser userInFrontOfTheScreen()
{
    constexpr QRgb kBackground = 0xFF0F171D; // of the program's window
    return Stage::isOnWayland() ? ScreenUser::onWayland(QColor(kBackground), Stage::scale())
                                : ScreenUser("FW Update");
}

/// What the program would find if its user had started it.
QProcessEnvironment usersEnvironment(QProcessEnvironment environment)
{
    environment.remove("QT_FONT_DPI");
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("SCREEN_SCALE");
    environment.insert("XDG_SESSION_TYPE", Stage::isOnWayland() ? "wayland" : "x11");
    if (Stage::isOnWayland()) {
        environment.remove("DISPLAY");
    }
    return environment;
}

} // namespace

int Stage::scale()
{
    return qMax(1, qEnvironmentVariableIntValue("SCREEN_SCALE"));
}

bool Stage::isOnWayland()
{
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

Stage::Stage(const DeviceBehaviour &behaviour)
    : device(testbed, behaviour)
    , program(testbed)
    , user(userInFrontOfTheScreen())
    , package(DfuPackage::forFirmware(firmware()))
{
    QFile::copy(FW_UPDATE_PROGRAM, path("fw-update"));
    QFile::copy(STAND_IN_TOOL, path("nrfutil-mac"));
    if (package.write(path("dfu.zip")) != DfuPackage::Error::None) {
        qFatal("cannot write the package");
    }
    program.setEnvironment(usersEnvironment(program.environment()));
    program.setLog(path("log"));
}

Stage::~Stage()
{
    constexpr int kLongest = 20000;
    user.release(); // a failed test may have left it pressed
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
    constexpr int kLongest = 20000;
    const QString workingDirectory = directory.isEmpty() ? m_folder.path() : directory;
    if (!program.start(path("fw-update"), {}, workingDirectory)
        || !ScreenUser::waitUntil([this] { return user.seesWindow(); }, kLongest)) {
        return false;
    }
    movePointerAside();
    return ScreenUser::waitUntil([this] { return isUpgradeEnabled(); }, kLongest);
}

void Stage::click(const QPoint &position)
{
    user.click(position);
    movePointerAside();
}

void Stage::movePointerAside()
{
    user.movePointerOnScreen(QPoint(1000, 700) * scale());
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

QString Stage::status()
{
    return WindowLook::statusText(user.look(), m_toolTexts);
}

int Stage::progress()
{
    return WindowLook::progress(user.look());
}

bool Stage::isUpgradeEnabled()
{
    return WindowLook::isUpgradeEnabled(user.look());
}

QByteArray Stage::log() const
{
    QFile file(path("log"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
