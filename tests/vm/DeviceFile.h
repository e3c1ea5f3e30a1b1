// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class QSocketNotifier;

/// A device node, open for reading and writing without blocking.
///
/// Needs a running event loop. It must not be deleted, though it may be closed, while received() is
/// being delivered.
class DeviceFile : public QObject
{
    Q_OBJECT

public:
    /// Opens \a node, a terminal in raw mode; ends the program when that fails.
    explicit DeviceFile(const QString &node, QObject *parent);
    ~DeviceFile() override;

    void close();

    /// Returns whether all \a bytes were taken.
    bool write(const QByteArray &bytes);

signals:
    /// What one read gave. Ends when the device behind the node goes.
    void received(const QByteArray &bytes);

private slots:
    void read();

private:
    int m_fd;
    QSocketNotifier *const m_notifier;
};
