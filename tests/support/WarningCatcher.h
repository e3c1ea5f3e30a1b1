// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QtGlobal>

/// Catches the warnings that Qt or the tested code prints while it lives. One at a time.
class WarningCatcher
{
public:
    WarningCatcher();
    ~WarningCatcher();
    Q_DISABLE_COPY(WarningCatcher)

    QStringList take();

private:
    QtMessageHandler m_previous;
};
