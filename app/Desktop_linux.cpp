// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include "app/MainWindow.h"
#include "app/SystemMove_linux.h"

#include <QApplication>
#include <QLibrary>

#include <algorithm>
#include <vector>

namespace {

bool runsOnWayland()
{
    return QGuiApplication::platformName().startsWith("wayland");
}

/// How much larger than usual the user of an X screen wants everything: 1, 2, 3…
///
/// Qt scales by the same measure, but takes it from QT_FONT_DPI where that is set.
int screenScale()
{
    constexpr double kUsualDpi = 96;

    // Qt loads this library for X anyway; linked, it would be needed without X, too.
    QLibrary x11("X11", 6);
    using Open = void *(*)(const char *name);
    using GetDefault = const char *(*)(void *display, const char *program, const char *option);
    using Close = int (*)(void *display);
    const auto open = reinterpret_cast<Open>(x11.resolve("XOpenDisplay"));
    const auto getDefault = reinterpret_cast<GetDefault>(x11.resolve("XGetDefault"));
    const auto close = reinterpret_cast<Close>(x11.resolve("XCloseDisplay"));
    if (open == nullptr || getDefault == nullptr || close == nullptr) {
        return 1;
    }
    void *const display = open(nullptr);
    if (display == nullptr) {
        return 1;
    }
    const double dpi = QByteArray(getDefault(display, "Xft", "dpi")).toDouble();
    close(display);
    return qBound(1, qRound(dpi / kUsualDpi), 8);
}

/// Whether the user wants Wayland's windows to be painted by the graphics driver.
bool asksForWaylandGraphics()
{
    return qEnvironmentVariableIsSet("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION");
}

bool userScales()
{
    const QList<QByteArray> settings
        = {"QT_ENABLE_HIGHDPI_SCALING", "QT_AUTO_SCREEN_SCALE_FACTOR", "QT_SCALE_FACTOR",
           "QT_SCREEN_SCALE_FACTORS", "QT_DEVICE_PIXEL_RATIO"};
    return std::any_of(settings.begin(), settings.end(), [](const QByteArray &name) {
        return qEnvironmentVariableIsSet(name.constData());
    });
}

} // namespace

Desktop::Desktop()
{
    // The window paints itself and takes no text: a desktop's theme, style and input method would
    // change nothing but what it costs.
    QGuiApplication::setDesktopSettingsAware(false);
    QGuiApplication::setDesktopFileName(FW_UPDATE_APPLICATION_ID);
    addSetting("QT_IM_MODULE", "none");
    // Without these two Qt loads the graphics driver also for a window that is painted by the
    // processor alone, and that is most of what the program would cost.
    addSetting("QT_XCB_GL_INTEGRATION", "none");
    if (!asksForWaylandGraphics()) {
        addSetting("QT_WAYLAND_DISABLE_WINDOWDECORATION", "1");
    }
    m_makesPointPixel = addSetting("QT_FONT_DPI", "72");
    if (!m_makesPointPixel && !userScales()) {
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    }
}

std::unique_ptr<QApplication> Desktop::startQt(int &argc, char **argv)
{
    const std::vector<char *> arguments(argv, argv + argc);
    auto application = std::make_unique<QApplication>(argc, argv);
    if (m_makesPointPixel && !userScales() && QGuiApplication::platformName() == "xcb") {
        const int scale = screenScale();
        if (scale > 1) {
            // Qt takes the scale only when it starts, and only then is known that it starts on X.
            application.reset();
            addSetting("QT_SCALE_FACTOR", QByteArray::number(scale));
            argc = int(arguments.size()); // without those that Qt has taken out
            std::copy(arguments.begin(), arguments.end(), argv);
            application = std::make_unique<QApplication>(argc, argv);
        }
    }
    if (runsOnWayland() && !asksForWaylandGraphics()) {
        QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
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
    // Qt looks for other plugins, such as that for Wayland's shells, as late as a window is shown.
    QCoreApplication::setLibraryPaths(m_libraryPaths);
    if (runsOnWayland()) {
        new SystemMove(window);
    }
}

void Desktop::restoreEnvironment()
{
    for (const QByteArray &name : qAsConst(m_added)) {
        qunsetenv(name.constData());
    }
    m_added.clear();
}

bool Desktop::addSetting(const QByteArray &name, const QByteArray &value)
{
    if (qEnvironmentVariableIsSet(name.constData())) {
        return false;
    }
    m_added.append(name);
    return qputenv(name.constData(), value);
}
