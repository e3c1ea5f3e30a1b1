// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Slip.h"

#include <QByteArray>

/// The simulated device's bootloader, without any line of its own: bytes in, bytes out.
///
/// It speaks the serial DFU protocol. A request is its opcode and its arguments, a response the
/// mark 0x60, the opcode, a Result and a payload; all numbers are little-endian and each is one
/// Slip frame. Two kinds of objects are created, written, checked and executed: first the command
/// object, an init packet that describes the image, then data objects, the image piece by piece.
///
/// Whatever the bytes, they are answered or ignored, and memory stays within kMaxImageSize plus a
/// few kilobytes.
class Bootloader
{
public:
    enum Opcode : quint8 {
        CreateObject = 0x01, ///< type (u8), size (u32)
        SetReceiptNotification = 0x02, ///< writes per receipt (u16), 0 for none
        CalculateChecksum = 0x03, ///< answers offset (u32), crc (u32)
        Execute = 0x04,
        SelectObject = 0x06, ///< type (u8); answers greatest size, offset, crc (u32 each)
        GetMtu = 0x07, ///< answers the longest encoded frame (u16)
        WriteObject = 0x08, ///< bytes; answered only by a failure or by a receipt (a checksum)
        Ping = 0x09, ///< id (u8); answers the id
        Abort = 0x0C, ///< forgets what is not finished
        Response = 0x60
    };

    enum Result : quint8 {
        Success = 0x01,
        NotSupported = 0x02,
        InvalidParameter = 0x03,
        InsufficientResources = 0x04,
        InvalidObject = 0x05,
        UnsupportedType = 0x07,
        NotPermitted = 0x08,
        OperationFailed = 0x0A,
        ExtendedError = 0x0B ///< one byte follows, an ExtendedResult
    };

    enum ExtendedResult : quint8 {
        InitPacketInvalid = 0x04,
        FirmwareVersionTooLow = 0x05,
        WrongHardwareVersion = 0x06,
        WrongHashType = 0x09,
        VerificationFailed = 0x0C,
        InsufficientSpace = 0x0D
    };

    enum ObjectType : quint8 { CommandObject = 0x01, DataObject = 0x02 };

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
    Result startCommand(quint32 size);
    Result startData(quint32 size);
    void forgetTransfers();
    QByteArray offsetAndCrc() const;
    Transfer &current() { return m_type == CommandObject ? m_command : m_data; }
    const Transfer &current() const { return m_type == CommandObject ? m_command : m_data; }

    Slip m_slip;
    Transfer m_command;
    Transfer m_data;
    ObjectType m_type = CommandObject;
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
