// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/HidDescriptor.h"

#include <QByteArray>
#include <QString>

/// By what programs recognise the device that FW Update upgrades, and what they send it.
struct DeviceIdentity
{
    int vendorId = 0x7F3C;
    int applicationId = 0x0C51; ///< The product while its application runs.
    int bootloaderId = 0x0C52; ///< The product while its bootloader runs.
    QString serialNumber = "0001";
    int usagePage = 0xFF31; ///< Of its HID interface beside the keyboard.
    int usage = 0x74;

    static constexpr int kReportSize = 64;

    QByteArray reportDescriptor() const { return HidDescriptor::output(usagePage, usage); }

    /// Whether \a report asks the device to restart into its bootloader.
    static bool isEnterBootloader(const QByteArray &report)
    {
        return report.size() == kReportSize && report.startsWith("\xAA\xBB");
    }
};
