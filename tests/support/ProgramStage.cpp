// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/ProgramStage.h"

#include "simulator/demo/WindowLook.h"

#include <QDir>
#include <QFile>

namespace {

constexpr int kFirmwareSize = 50000;
constexpr QRgb kBackground = 0xFF0F171D; // of the program's window

} // namespace

int ProgramStage::scale()
{
    return qMax(1, qEnvironmentVariableIntValue("SCREEN_SCALE"));
}

bool ProgramStage::isOnWayland()
{
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

ScreenUser ProgramStage::makeUser()
{
    return isOnWayland() ? ScreenUser::onWayland(QColor(kBackground), scale())
                         : ScreenUser("FW Update");
}

ProgramStage::ProgramStage(const QString &program, const QString &tool, const QString &folder)
    : user(makeUser())
    , package(DfuPackage::generate(kFirmwareSize))
    , m_folder(QDir::temp().filePath((folder.isEmpty() ? "stage" : folder) + "-XXXXXX"))
{
    QFile::copy(program, path("fw-update"));
    QFile::copy(tool, path("nrfutil-mac"));
    if (package.write(path("dfu.zip")) != DfuPackage::Error::None) {
        qFatal("cannot write the package");
    }
}

void ProgramStage::click(const QPoint &position)
{
    user.click(position);
    movePointerAside();
}

void ProgramStage::movePointerAside()
{
    user.movePointerOnScreen(QPoint(1000, 700) * scale());
}

QString ProgramStage::status()
{
    const QImage window = user.look();
    const QImage line = window.copy(WindowLook::statusArea(window));
    // Recognising a text takes long in an emulated machine, and tests ask again and again.
    if (line != m_lastLine) {
        m_lastLine = line;
        m_lastStatus = WindowLook::statusText(window, toolTexts());
    }
    return m_lastStatus;
}

int ProgramStage::progress()
{
    return WindowLook::progress(user.look());
}

bool ProgramStage::isUpgradeEnabled()
{
    return WindowLook::isUpgradeEnabled(user.look());
}

QByteArray ProgramStage::log() const
{
    QFile file(path("log"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QProcessEnvironment ProgramStage::usersEnvironment(QProcessEnvironment environment)
{
    environment.remove("QT_FONT_DPI");
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("SCREEN_SCALE");
    environment.insert("XDG_SESSION_TYPE", isOnWayland() ? "wayland" : "x11");
    if (isOnWayland()) {
        environment.remove("DISPLAY");
    }
    return environment;
}

bool ProgramStage::waitForWindow()
{
    constexpr int kLongest = 20000;
    if (!ScreenUser::waitUntil([this] { return user.seesWindow(); }, kLongest)) {
        return false;
    }
    movePointerAside();
    return ScreenUser::waitUntil([this] { return isUpgradeEnabled(); }, kLongest);
}
