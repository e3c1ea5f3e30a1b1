// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QtGlobal>

/// Catches the warnings of Qt and the tested code during its lifetime. Only one may exist at a
/// time.
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
