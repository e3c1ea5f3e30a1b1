// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/BootloaderSettings.h"
#include "simulator/dfu/Dfu.h"
#include "simulator/dfu/Slip.h"

#include <QByteArray>

/// The simulated device's bootloader. It does no I/O itself.
///
/// It responds to any bytes or ignores them, and needs at most kMaxImageSize bytes of memory plus a
/// few kilobytes.
class Bootloader
{
public:
    static constexpr int kMaxCommandSize = 512;
    static constexpr int kMaxDataSize = 4096;
    static constexpr int kMaxImageSize = 0xC0000;
    static constexpr int kMaxWriteSize = 1024;
    /// Each byte and the opcode may need an escape. The end mark is one more byte.
    static constexpr int kMtu = 2 * (kMaxWriteSize + 1) + 1;

    explicit Bootloader(BootloaderSettings settings = {});

    /// Takes the next raw \a bytes from the host, in chunks of any size, and returns the raw bytes
    /// of the response.
    ///
    /// Once isFinished() is true, the device leaves its bootloader. The last response must reach
    /// the host first, since it confirms the success.
    QByteArray receive(const QByteArray &bytes);

    /// Whether a whole image was received, matched the hash in its init packet and was executed.
    /// Stays true until a host starts another transfer.
    bool isFinished() const { return m_finished; }

    /// The accepted image; empty while isFinished() is false.
    QByteArray image() const { return m_image; }

    /// The accepted init packet; empty if there is none.
    QByteArray initPacket() const { return m_initPacket; }

    /// Why the last executed object was refused, see Dfu::resultText(). Empty if it was not, and
    /// once a host starts another transfer.
    QByteArray refusal() const { return m_refusal; }

    /// The number of bytes of the image that have arrived and were not discarded.
    qint64 imageBytesReceived() const { return m_finished ? m_image.size() : m_data.bytes.size(); }

    /// Discards unfinished transfers, as after a power failure.
    void reset();

    /// Sets whether all reported checksums are wrong.
    void setWrongCrc(bool wrong) { m_wrongCrc = wrong; }

    /// Sets whether the hash of a received image cannot be calculated.
    void setHashFails(bool fails) { m_hashFails = fails; }

private:
    /// All objects of one type, joined.
    struct Transfer
    {
        QByteArray bytes;
        quint32 crc = 0;
        int executedSize = 0; ///< the next create discards everything after it
        quint32 executedCrc = 0;
        int objectEnd = 0; ///< the size of bytes once the current object is complete
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
    QByteArray refuse(const QByteArray &result);
    Dfu::Result startCommand(quint32 size);
    Dfu::Result startData(quint32 size);
    void forgetTransfers();
    QByteArray offsetAndCrc() const;
    Transfer &current() { return m_type == Dfu::CommandObject ? m_command : m_data; }
    const Transfer &current() const { return m_type == Dfu::CommandObject ? m_command : m_data; }

    BootloaderSettings m_settings;
    Slip m_slip;
    Transfer m_command;
    Transfer m_data;
    Dfu::ObjectType m_type = Dfu::CommandObject;
    int m_receiptInterval = 0;
    int m_writesSinceReceipt = 0;
    QByteArray m_initPacket;
    QByteArray m_image;
    QByteArray m_refusal;
    bool m_finished = false;
    int m_expectedSize = 0; ///< the size of the image in the accepted init packet
    QByteArray m_expectedHash;
    quint32 m_firmwareVersion = 0; ///< the version in the accepted init packet
    bool m_wrongCrc = false;
    bool m_hashFails = false;
};
