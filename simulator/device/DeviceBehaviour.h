// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// The behaviour of a simulated device, with or without faults.
class DeviceBehaviour
{
public:
    /// The duration of the restart into the bootloader, in milliseconds.
    int returnAfter = 1000;
    bool returns = true;
    QStringList ports = {"/dev/cu.usbmodem14201"}; ///< The bootloader uses the first one.
    bool openFails = false; ///< Its HID interfaces cannot be opened.
    bool writeFails = false; ///< Writing to its HID interfaces fails.
    qint64 dropOutAfter = -1; ///< Pulls the cable after this number of bytes; never if -1.
    bool wrongCrc = false; ///< The bootloader reports wrong checksums.
    bool hashFails = false; ///< The bootloader cannot calculate the hash of an image.
    int answerDelay = 0; ///< The bootloader's delay before each response, in milliseconds.
    bool silent = false; ///< The bootloader never responds.

    /// Adds the fault with the given name, or "name=value" for one with a number. Returns whether
    /// the fault exists.
    bool addFault(const QString &fault);

    /// The names of all faults.
    static QStringList faultNames();

    /// One line of help for each fault.
    static QString help();
};
