// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// The codes of the serial DFU protocol.
///
/// A request consists of an opcode and its arguments. A response consists of the mark 0x60, the
/// opcode, a Result and a payload. Each is one Slip frame; numbers are little-endian.
///
/// The host creates, writes, checks and executes objects of two types: first the command object, an
/// init packet that describes the image, then data objects, which contain the parts of the image.
namespace Dfu {

enum Opcode : quint8 {
    CreateObject = 0x01, ///< type (u8), size (u32)
    SetReceiptNotification = 0x02, ///< writes per receipt (u16), 0 for none
    CalculateChecksum = 0x03, ///< responds offset (u32), crc (u32)
    Execute = 0x04,
    SelectObject = 0x06, ///< type (u8); responds maximum size, offset, crc (u32 each)
    GetMtu = 0x07, ///< responds the maximum size of an encoded frame (u16)
    WriteObject = 0x08, ///< bytes; responds only with an error or a receipt (a checksum)
    Ping = 0x09, ///< id (u8); responds the id
    Abort = 0x0C, ///< discards unfinished transfers
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
    WrongCommandFormat = 0x02,
    UnknownCommand = 0x03,
    InitCommandInvalid = 0x04,
    FirmwareVersionTooLow = 0x05,
    WrongHardwareVersion = 0x06,
    WrongSoftDevice = 0x07,
    SignatureMissing = 0x08,
    WrongHashType = 0x09,
    HashFailed = 0x0A, ///< the hash cannot be calculated
    WrongSignatureType = 0x0B,
    VerificationFailed = 0x0C, ///< of the signature or the image's hash
    InsufficientSpace = 0x0D
};

enum ObjectType : quint8 { CommandObject = 0x01, DataObject = 0x02 };

} // namespace Dfu
