// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QLibraryInfo>

#include <algorithm>

namespace {

/// Whether Qt is going to draw on an X server.
bool drawsOnX()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty()) {
        return platform.startsWith("xcb");
    }
    // Without its plugin for Wayland Qt draws on the X server that such a session has, too.
    const QDir platforms(QLibraryInfo::location(QLibraryInfo::PluginsPath) + "/platforms");
    return qgetenv("XDG_SESSION_TYPE") != "wayland"
        || platforms.entryList({"libqwayland*"}).isEmpty();
}

/// How much larger than usual the user of an X screen wants everything: 1, 2, 3…
///
/// Qt scales by the same measure, but takes it from QT_FONT_DPI where that is set.
int screenScale()
{
    constexpr double kUsualDpi = 96;

    if (!drawsOnX() || !qEnvironmentVariableIsSet("DISPLAY")) {
        return 1;
    }
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
    // Without this Qt loads the graphics driver for every window on X11, also for one that is
    // painted by the processor alone, and that is most of what the program would cost.
    addSetting("QT_XCB_GL_INTEGRATION", "none");
    const bool pointIsPixel = addSetting("QT_FONT_DPI", "72");
    if (userScales()) {
        return;
    }
    if (pointIsPixel) {
        // Asked to scale by itself as well, Qt would make a point larger again.
        addSetting("QT_SCALE_FACTOR", QByteArray::number(screenScale()));
    } else {
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    }
}

void Desktop::leaveOutPicturePlugins()
{
    // Asked for a picture of any format, Qt loads and keeps every plugin that it finds, and a
    // desktop brings a dozen. PNG it reads by itself.
    QCoreApplication::setLibraryPaths({});
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
