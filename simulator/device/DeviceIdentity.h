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

    static constexpr int kReportSize = 64;

    QByteArray reportDescriptor() const { return HidDescriptor::output(usagePage, usage); }

    /// Whether \a report asks the device to restart into its bootloader.
    static bool isEnterBootloader(const QByteArray &report)
    {
        return report.size() == kReportSize && report.startsWith("\xAA\xBB");
    }
};
