// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

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
    if (!qEnvironmentVariableIsSet("QT_FONT_DPI")) {
        qputenv("QT_FONT_DPI", "72");
        m_added.append("QT_FONT_DPI");
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
