// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/DesktopSession.h"

#include <QtDebug>

DesktopSession::DesktopSession(const QStringList &options)
{
    // Prints its variables and then lasts until it is ended.
    const QString script
        = "echo \"$DISPLAY,$WAYLAND_DISPLAY,$XDG_RUNTIME_DIR\"; exec sleep infinity";
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(WITH_SCREEN, options + QStringList{"bash", "-c", script});
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(60000)) {
            qFatal("Cannot start a session with \"%s\"", qPrintable(options.join(' ')));
        }
    }
    const QList<QByteArray> values = m_process.readLine().trimmed().split(',');
    const bool isWayland = !values.value(1).isEmpty();
    m_variables = {{"DISPLAY", isWayland ? QByteArray() : values.value(0)},
                   {"WAYLAND_DISPLAY", values.value(1)},
                   {"XDG_RUNTIME_DIR", values.value(2)},
                   {"XDG_SESSION_TYPE", isWayland ? "wayland" : "x11"}};
}

DesktopSession::~DesktopSession()
{
    m_process.terminate();
    m_process.waitForFinished();
}
