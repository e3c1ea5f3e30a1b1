// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Slip.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QVector>

/// Whole frames over an open terminal, each with a time limit.
///
/// A call that fails returns false, and errorString() says why. One thread at a time.
class FramedPort
{
public:
    /// Uses \a fd, which stays the caller's to close.
    explicit FramedPort(int fd);

    /// Puts the terminal into raw, non-blocking mode and discards what was in it.
    bool open();

    /// Writes \a frame out, unless \a deadline comes first.
    bool send(const QByteArray &frame, QDeadlineTimer deadline);

    /// Waits for the next frame until \a deadline.
    bool receive(QByteArray *frame, QDeadlineTimer deadline);

    /// Why the last call failed, as one line.
    QString errorString() const { return m_error; }

private:
    bool waitFor(short events, QDeadlineTimer deadline, const char *timeoutError);
    bool readChunk();
    bool fail(const QString &error);

    int m_fd;
    Slip m_slip;
    QVector<QByteArray> m_frames;
    QString m_error;
};
