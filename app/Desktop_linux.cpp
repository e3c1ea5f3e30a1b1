// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include "app/MainWindow.h"
#include "app/ReaderConnection_linux.h"
#include "app/SystemMove_linux.h"
#include "widgets/QtCompat.h"

#include <QApplication>
#include <QLibrary>

#include <algorithm>
#include <array>
#include <vector>

namespace {

/// By these a user asks for the graphics driver to paint windows.
constexpr const char *kGraphicsOnX = "QT_XCB_GL_INTEGRATION";
constexpr const char *kGraphicsOnWayland = "QT_WAYLAND_CLIENT_BUFFER_INTEGRATION";

bool runsOnWayland()
{
    return QGuiApplication::platformName().startsWith("wayland");
}

/// Whether the user has chosen a scale, which may be none.
bool choosesScale()
{
    const auto isFactor = [](const char *name) {
        return qEnvironmentVariableIsSet(name) && qgetenv(name) != "auto";
    };
    const auto isOff = [](const char *name) {
        return qgetenv(name) == "0";
    };
    const std::array factors
        = {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_DEVICE_PIXEL_RATIO"};
    const std::array switches = {"QT_ENABLE_HIGHDPI_SCALING", "QT_AUTO_SCREEN_SCALE_FACTOR"};
    return std::any_of(factors.begin(), factors.end(), isFactor)
        || std::any_of(switches.begin(), switches.end(), isOff);
}

/// Whether the user lets Qt scale by the density of the screen.
bool switchesScalingOn()
{
    return qEnvironmentVariableIntValue("QT_ENABLE_HIGHDPI_SCALING") > 0
        || qEnvironmentVariableIntValue("QT_AUTO_SCREEN_SCALE_FACTOR") > 0;
}

/// The name of the X screen that Qt uses when it is given \a arguments; null for the default one.
const char *screenName(const std::vector<char *> &arguments)
{
    const auto isOption = [](const char *argument) {
        return qstrcmp(argument, "-display") == 0 || qstrcmp(argument, "--display") == 0;
    };
    const auto option = std::find_if(arguments.begin(), arguments.end(), isOption);
    return arguments.end() - option > 1 ? option[1] : nullptr;
}

/// How much larger than usual the user of the X screen \a name wants everything: 1, 2, 3…
///
/// Qt itself would take this measure, were it not for QT_FONT_DPI.
int screenScale(const char *name)
{
    constexpr double kUsualDpi = 96;

    // Qt has loaded this library for X; linked, it would be loaded on Wayland, too.
    QLibrary x11("X11", 6);
    if (!x11.load()) {
        return 1;
    }
    using Open = void *(*)(const char *name);
    using GetDefault = const char *(*)(void *display, const char *program, const char *option);
    using Close = int (*)(void *display);
    const auto open = reinterpret_cast<Open>(x11.resolve("XOpenDisplay"));
    const auto getDefault = reinterpret_cast<GetDefault>(x11.resolve("XGetDefault"));
    const auto close = reinterpret_cast<Close>(x11.resolve("XCloseDisplay"));
    void *const display = open(name);
    if (display == nullptr) {
        return 1;
    }
    const double dpi = QByteArray(getDefault(display, "Xft", "dpi")).toDouble();
    close(display);
    return qBound(1, qRound(dpi / kUsualDpi), 8);
}

} // namespace

void ApplicationDeleter::operator()(QApplication *application) const
{
    // Qt 5.15 sometimes waits forever for its thread that reads from the compositor, and a process
    // without a window would stay behind.
    if (!runsOnWayland()) {
        delete application;
    }
}

Desktop::Desktop()
{
    QGuiApplication::setDesktopFileName(FW_UPDATE_APPLICATION_ID);
    // The window paints itself and takes no text: the desktop's theme and style and an input method
    // would only take memory.
    QGuiApplication::setDesktopSettingsAware(false);
    addSetting("QT_IM_MODULE", "none");
    // To draw a frame, Qt would load the graphics driver, which is most of what a start costs.
    if (!qEnvironmentVariableIsSet(kGraphicsOnWayland)) {
        addSetting("QT_WAYLAND_DISABLE_WINDOWDECORATION", "1");
    }
    if (!SystemMove::kIsPossible) {
        addSetting("QT_QPA_PLATFORM", "xcb;wayland");
    }
    m_makesPointPixel = addSetting("QT_FONT_DPI", "72");
    m_findsScale = !choosesScale();
    // Scaling by itself, Qt would undo the 72.
    const bool scales = m_findsScale ? !m_makesPointPixel : switchesScalingOn();
    QtCompat::setScaling(scales);
    changeSetting("QT_ENABLE_HIGHDPI_SCALING", scales ? "1" : "0");
    // Where it rounds the scale up, Qt 6 would make texts smaller.
    addSetting("QT_DPI_ADJUSTMENT_POLICY", "AdjustUpOnly");
}

ApplicationPointer Desktop::startQt(int &argc, char **argv)
{
    // Qt removes from both what it has read.
    const std::vector<char *> arguments(argv, argv + argc);
    const QByteArray startupId = qgetenv("DESKTOP_STARTUP_ID");
    ApplicationPointer application(new QApplication(argc, argv));
    // It would also load the driver for any window that the program might paint with it.
    const char *const graphics = runsOnWayland() ? kGraphicsOnWayland : kGraphicsOnX;
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, !qEnvironmentVariableIsSet(graphics));
    if (runsOnWayland()) {
        new ReaderConnection(*application);
    }
    if (QGuiApplication::platformName() != "xcb" || !m_makesPointPixel || !m_findsScale) {
        return application;
    }
    const int scale = screenScale(screenName(arguments));
    if (scale > 1) {
        // Only a started Qt can tell that it uses X, and only a starting one takes a scale.
        application.reset();
        addSetting("QT_SCALE_FACTOR", QByteArray::number(scale));
        if (!startupId.isEmpty()) {
            qputenv("DESKTOP_STARTUP_ID", startupId);
        }
        argc = int(arguments.size());
        std::copy(arguments.begin(), arguments.end(), argv);
        application.reset(new QApplication(argc, argv));
    }
    return application;
}

void Desktop::leaveOutPicturePlugins()
{
    // Asked for a picture of any format, Qt loads and keeps every plugin that it finds, and a
    // desktop brings a dozen. PNG it reads by itself.
    m_libraryPaths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
}

void Desktop::adopt(MainWindow &window)
{
    // Other plugins, such as the one for Wayland's shells, are loaded when the window is shown.
    QCoreApplication::setLibraryPaths(m_libraryPaths);
    if (runsOnWayland()) {
        new SystemMove(window);
    }
}

void Desktop::restoreEnvironment()
{
    for (auto setting = m_before.cbegin(); setting != m_before.cend(); ++setting) {
        const char *const name = setting.key().constData();
        setting->isNull() ? qunsetenv(name) : qputenv(name, *setting);
    }
    m_before.clear();
}

bool Desktop::addSetting(const QByteArray &name, const QByteArray &value)
{
    if (qEnvironmentVariableIsSet(name.constData())) {
        return false;
    }
    return changeSetting(name, value);
}

bool Desktop::changeSetting(const QByteArray &name, const QByteArray &value)
{
    const bool isSet = qEnvironmentVariableIsSet(name.constData());
    m_before.insert(name, isSet ? qgetenv(name.constData()) : QByteArray());
    return qputenv(name.constData(), value);
}
