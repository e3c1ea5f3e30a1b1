// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Dfu.h"
#include "simulator/dfu/Slip.h"

#include <QByteArray>

/// The simulated device's bootloader, without any line of its own: bytes in, bytes out.
///
/// Whatever the bytes, they are answered or ignored, and memory stays within kMaxImageSize plus a
/// few kilobytes.
class Bootloader
{
public:
    static constexpr int kMaxCommandSize = 512;
    static constexpr int kMaxDataSize = 4096;
    static constexpr int kMaxImageSize = 0xC0000;
    static constexpr int kMaxWriteSize = 1024;
    /// Every byte of a frame may need an escape; opcode and end mark come on top.
    static constexpr int kMtu = 2 * (kMaxWriteSize + 1) + 1;
    static constexpr quint32 kHardwareVersion = 52;

    Bootloader();

    /// Takes the raw \a bytes that the host sent, cut anywhere, and returns the raw bytes to
    /// answer.
    ///
    /// The device leaves its bootloader when isFinished() has become true, but the answer returned
    /// then is the host's proof of success and has to reach it first.
    QByteArray receive(const QByteArray &bytes);

    /// Whether an image was received whole, matched its init packet's hash and was executed.
    /// Stays true, with that image, until a host begins another one.
    bool isFinished() const { return m_finished; }

    /// The image that was accepted; empty while isFinished() is false.
    QByteArray image() const { return m_image; }

    /// The init packet that was accepted; empty while there is none.
    QByteArray initPacket() const { return m_initPacket; }

    /// Bytes of the image that have arrived and were not discarded, verified or not.
    qint64 imageBytesReceived() const { return m_finished ? m_image.size() : m_data.bytes.size(); }

    /// The power fails and returns: everything unfinished is forgotten.
    void reset();

    /// Every checksum reported from now on is wrong (\a wrong) or right again.
    void setWrongCrc(bool wrong) { m_wrongCrc = wrong; }

private:
    /// All objects of one type, joined.
    struct Transfer
    {
        QByteArray bytes;
        quint32 crc = 0;
        int executedSize = 0; ///< everything behind it is discarded by the next create
        quint32 executedCrc = 0;
        int objectEnd = 0; ///< size of bytes when the current object is complete
    };

    QByteArray respond(const QByteArray &request);
    QByteArray create(const QByteArray &arguments);
    QByteArray setReceiptNotification(const QByteArray &arguments);
    QByteArray select(const QByteArray &arguments);
    QByteArray write(const QByteArray &bytes);
    QByteArray checksum() const;
    QByteArray execute();
    QByteArray executeCommand();
    QByteArray executeData();
    QByteArray finish();
    Dfu::Result startCommand(quint32 size);
    Dfu::Result startData(quint32 size);
    void forgetTransfers();
    QByteArray offsetAndCrc() const;
    Transfer &current() { return m_type == Dfu::CommandObject ? m_command : m_data; }
    const Transfer &current() const { return m_type == Dfu::CommandObject ? m_command : m_data; }

    Slip m_slip;
    Transfer m_command;
    Transfer m_data;
    Dfu::ObjectType m_type = Dfu::CommandObject;
    int m_receiptInterval = 0;
    int m_writesSinceReceipt = 0;
    QByteArray m_initPacket;
    QByteArray m_image;
    bool m_finished = false;
    int m_expectedSize = 0; ///< of the image, by the accepted init packet
    QByteArray m_expectedHash;
    quint32 m_firmwareVersion = 0; ///< of the accepted init packet
    quint32 m_installedVersion = 0;
    bool m_wrongCrc = false;
};
