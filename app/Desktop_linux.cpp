// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <utility>

namespace {

// Without the second one Qt loads the graphics driver for every window on X11, also for one that is
// painted by the processor alone, and that is most of what the program would cost.
const std::array<std::pair<const char *, const char *>, 2> kSettings
    = {{{"QT_FONT_DPI", "72"}, {"QT_XCB_GL_INTEGRATION", "none"}}};

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
    for (const auto &[name, value] : kSettings) {
        if (!qEnvironmentVariableIsSet(name)) {
            qputenv(name, value);
            m_added.append(name);
        }
    }
    if (!userScales()) {
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    }
}

void Desktop::restoreEnvironment()
{
    for (const QByteArray &name : m_added) {
        qunsetenv(name.constData());
    }
    m_added.clear();
}
