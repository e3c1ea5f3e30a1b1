// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Dfu.h"
#include "simulator/dfu/FramedPort.h"

#include <QByteArray>
#include <QString>

/// The host's side of serial DFU, over an open terminal or socket.
///
/// Calls block until their result is known. No request waits longer than the time limit. Use an
/// object for one line and in one thread only.
class DfuClient
{
public:
    /// Uses \a fd, which must be open for reading and writing. The caller closes it.
    explicit DfuClient(int fd, FramedPort::Line line = FramedPort::Line::Terminal);

    /// Sets the time limit for one response, and for sending one request.
    void setTimeout(int milliseconds) { m_timeout = milliseconds; }

    /// Requests a receipt after each \a writes writes; 0 for none.
    void setReceiptInterval(quint16 writes) { m_receiptInterval = writes; }

    /// Writes \a firmware, described by \a initPacket, to the device.
    ///
    /// Resumes an interrupted transfer of the same package. Leaves a terminal in raw mode.
    /// Returns false on failure; errorString() gives the reason.
    bool flash(const QByteArray &initPacket, const QByteArray &firmware);

    /// The reason why the last flash() failed, in one line; empty after a success.
    QString errorString() const { return m_error; }

private:
    struct Position
    {
        quint32 maxSize = 0; ///< of one object
        quint32 offset = 0;
        quint32 crc = 0;
    };

    bool handshake();
    bool sendInitPacket(const QByteArray &initPacket);
    bool sendFirmware(const QByteArray &initPacket, const QByteArray &firmware);
    bool completeObject(const QByteArray &all, int offset, int end);
    bool sendObject(Dfu::ObjectType type, const QByteArray &all, int offset, int end);
    bool stream(const QByteArray &all, int offset, int end);
    bool select(Dfu::ObjectType type, Position *position);
    bool verify(const QByteArray &all, int end, const QByteArray &checksum);
    bool request(Dfu::Opcode opcode, const QByteArray &arguments, int payloadSize = 0,
                 QByteArray *payload = nullptr);
    bool awaitAnswer(Dfu::Opcode opcode, int payloadSize, QByteArray *payload = nullptr);
    bool fail(const QString &error);

    FramedPort m_port;
    int m_timeout = 10000;
    quint16 m_receiptInterval = 0;
    int m_writeSize = 0;
    QString m_error;
};
