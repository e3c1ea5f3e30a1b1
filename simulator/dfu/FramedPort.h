// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Slip.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QVector>

/// Sends and receives frames over an open terminal or socket, with time limits.
///
/// Functions return false on failure; errorString() gives the reason. Not thread-safe.
class FramedPort
{
public:
    enum class Line { Terminal, Socket };

    /// Uses \a fd, which the caller closes.
    explicit FramedPort(int fd, Line line = Line::Terminal);

    /// Puts the line into non-blocking mode. A terminal becomes raw, and its pending data is
    /// discarded.
    bool open();

    /// Writes \a frame, at the latest until \a deadline.
    bool send(const QByteArray &frame, QDeadlineTimer deadline);

    /// Waits for the next frame until \a deadline.
    bool receive(QByteArray *frame, QDeadlineTimer deadline);

    /// The reason why the last call failed, in one line.
    QString errorString() const { return m_error; }

private:
    bool makeRaw();
    bool waitFor(short events, QDeadlineTimer deadline, const char *timeoutError);
    bool readChunk();
    bool fail(const QString &error);

    int m_fd;
    Line m_line;
    Slip m_slip;
    QVector<QByteArray> m_frames;
    QString m_error;
};
