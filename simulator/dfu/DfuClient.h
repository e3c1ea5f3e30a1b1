// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Dfu.h"
#include "simulator/dfu/FramedPort.h"

#include <QByteArray>
#include <QString>

/// The host's side of serial DFU, over an open terminal.
///
/// Every call blocks until its outcome is known; no request waits longer than the time limit.
/// One object serves one terminal and one thread.
class DfuClient
{
public:
    /// Talks over \a fd, which stays the caller's to close and has to be open for both directions.
    explicit DfuClient(int fd);

    /// How long the device may take for one answer, or for taking the bytes of one request.
    void setTimeout(int milliseconds) { m_timeout = milliseconds; }

    /// The device acknowledges every \a writes writes; 0 asks for no receipts.
    void setReceiptInterval(quint16 writes) { m_receiptInterval = writes; }

    /// Brings \a firmware, described by \a initPacket, into the device.
    ///
    /// Goes on where an earlier attempt with the same package was interrupted. The terminal is in
    /// raw mode afterwards. On failure returns false, and errorString() says why.
    bool flash(const QByteArray &initPacket, const QByteArray &firmware);

    /// Why the last flash() failed, as one line; empty after a success.
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
