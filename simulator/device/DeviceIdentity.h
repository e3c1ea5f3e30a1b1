// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/HidDescriptor.h"

#include <QByteArray>
#include <QString>

/// The ids and reports of the device that FW Update upgrades.
struct DeviceIdentity
{
    int vendorId = 0x7F3C;
    int applicationId = 0x0C51; ///< The product id while the application runs.
    int bootloaderId = 0x0C52; ///< The product id while the bootloader runs.
    QString serialNumber = "0001";
    int usagePage = 0xFF31; ///< The usage page of the second HID interface.
    int usage = 0x74;

    QByteArray enterBootloader = "\xAA\xBB"; ///< The report that makes it leave begins like this.
    int reportSize = 64; ///< The size of that report, including its id.

    QByteArray reportDescriptor() const
    {
        return HidDescriptor::output(usagePage, usage, static_cast<uchar>(enterBootloader.at(0)),
                                     reportSize - 1);
    }

    /// Whether \a report asks the device to restart into its bootloader.
    bool isEnterBootloader(const QByteArray &report) const
    {
        return report.size() == reportSize && report.startsWith(enterBootloader);
    }
};
