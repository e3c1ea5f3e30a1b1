// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// How a simulated device behaves: as a sound one does, or with faults.
class DeviceBehaviour
{
public:
    /// How long the device is away between application and bootloader, in milliseconds.
    int returnAfter = 1000;
    bool returns = true;
    QStringList ports = {"/dev/cu.usbmodem14201"}; ///< The bootloader answers on the first one.
    bool openFails = false; ///< Its HID interfaces cannot be opened.
    bool writeFails = false; ///< Writing to its HID interfaces fails.
    qint64 dropOutAfter = -1; ///< Bytes of the image after which its cable is pulled, or -1.
    bool wrongCrc = false; ///< The bootloader reports wrong checksums.
    int answerDelay = 0; ///< Milliseconds that the bootloader takes for each answer.
    bool silent = false; ///< The bootloader never answers.

    /// Adds the fault of the given name, or "name=value" for one with a number. Returns whether
    /// there is such a fault.
    bool addFault(const QString &fault);

    /// The names of all faults.
    static QStringList faultNames();

    /// One line for each fault: its name and what it does.
    static QString help();
};
