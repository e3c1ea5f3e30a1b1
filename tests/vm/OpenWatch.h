// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QSocketNotifier>

/// Notices the first time that any program opens one of the machine's hidraw nodes.
class OpenWatch : public QObject
{
    Q_OBJECT

public:
    /// Begins at once; needs a running event loop.
    explicit OpenWatch(QObject *parent = nullptr);
    ~OpenWatch() override;

signals:
    /// Comes once. The watch may be deleted later, but not while this is being delivered.
    void opened();

private slots:
    void read();

private:
    const int m_fd;
    QSocketNotifier m_notifier;
};
