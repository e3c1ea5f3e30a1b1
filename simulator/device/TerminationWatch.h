// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Converts the signals that terminate a process to a Qt signal, so that it can clean up first.
///
/// Only one may exist in a process. The signals still terminate child processes.
class TerminationWatch : public QObject
{
    Q_OBJECT

public:
    explicit TerminationWatch(QObject *parent = nullptr);
    ~TerminationWatch() override;

signals:
    void requested();
};
