// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class QSocketNotifier;

/// A device node, open for non-blocking reading and writing.
///
/// Needs a running event loop. A slot of received() may close the object, but must not delete it.
class DeviceFile : public QObject
{
    Q_OBJECT

public:
    /// Opens \a node, a terminal in raw mode; aborts the program if that fails.
    explicit DeviceFile(const QString &node, QObject *parent);
    ~DeviceFile() override;

    void close();

    /// Returns whether all \a bytes were written.
    bool write(const QByteArray &bytes);

signals:
    /// Emitted for each read, until the device behind the node disappears.
    void received(const QByteArray &bytes);

private slots:
    void read();

private:
    int m_fd;
    QSocketNotifier *const m_notifier;
};
