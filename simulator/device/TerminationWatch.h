// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Turns the signals that ask a process to end into a Qt signal, so that it can clean up first.
///
/// There can be one in a process. Child processes are ended by these signals as ever.
class TerminationWatch : public QObject
{
    Q_OBJECT

public:
    explicit TerminationWatch(QObject *parent = nullptr);
    ~TerminationWatch() override;

signals:
    void requested();
};
