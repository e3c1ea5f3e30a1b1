// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/WarningCatcher.h"

#include <utility>

namespace {

// Message handlers have no user data.
QStringList caughtWarnings;

void catchWarning(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type != QtDebugMsg && type != QtInfoMsg) {
        caughtWarnings << text;
    }
}

} // namespace

WarningCatcher::WarningCatcher()
    : m_previous(qInstallMessageHandler(catchWarning))
{
    caughtWarnings.clear();
}

WarningCatcher::~WarningCatcher()
{
    qInstallMessageHandler(m_previous);
}

QStringList WarningCatcher::take()
{
    return std::exchange(caughtWarnings, {});
}
