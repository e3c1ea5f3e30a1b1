// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/Stage.h"

#include "simulator/demo/WindowLook.h"

#include <QFile>
#include <QJsonDocument>
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

} // namespace

Stage::Stage(const DeviceBehaviour &behaviour)
    : device(testbed, behaviour)
    , program(testbed)
    , user("FW Update")
    , package(DfuPackage::forFirmware(firmware()))
{
    QFile::copy(FW_UPDATE_PROGRAM, path("fw-update"));
    QFile::copy(STAND_IN_TOOL, path("nrfutil-mac"));
    if (package.write(path("dfu.zip")) != DfuPackage::Error::None) {
        qFatal("cannot write the package");
    }
    // Users do not set this, and it changes the look of the program.
    QProcessEnvironment environment = program.environment();
    environment.remove("QT_FONT_DPI");
    program.setEnvironment(environment);
    program.setLog(path("log"));
}

Stage::~Stage()
{
    constexpr int kLongest = 20000;
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
    user.movePointerOnScreen({1000, 700});
    return program.start(path("fw-update"), {}, workingDirectory)
        && ScreenUser::waitUntil([this] { return isUpgradeEnabled(); }, kLongest);
}

void Stage::click(const QPoint &position)
{
    user.click(position);
    user.movePointerOnScreen({1000, 700});
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

void Stage::tellLog() const
{
    QFile log(path("log"));
    if (!log.open(QIODevice::ReadOnly)) {
        return;
    }
    const QList<QByteArray> lines = log.readAll().split('\n');
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
