// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QSocketNotifier>

/// Notices when any program first opens one of the machine's hidraw nodes.
class OpenWatch : public QObject
{
    Q_OBJECT

public:
    /// Starts watching. Needs a running event loop.
    explicit OpenWatch(QObject *parent = nullptr);
    ~OpenWatch() override;

signals:
    /// Emitted once. A slot must not delete the object; use deleteLater().
    void opened();

private slots:
    void read();

private:
    const int m_fd;
    QSocketNotifier m_notifier;
};
