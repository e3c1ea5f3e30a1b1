// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/DisplayServer.h"

#include <QtDebug>

DisplayServer::DisplayServer()
{
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // The server picks a free display and writes its number to standard output.
    m_process.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(30000)) {
            qFatal("Cannot start Xvfb");
        }
    }
    m_name = ':' + m_process.readLine().trimmed();
}

DisplayServer::~DisplayServer()
{
    m_process.terminate();
    m_process.waitForFinished();
}
