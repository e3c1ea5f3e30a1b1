// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"

#include <QStringList>

/// A hub whose devices have a HID interface and a serial port each.
class Hub
{
public:
    explicit Hub(Testbed &testbed)
        : m_testbed(testbed)
    { }

    /// Plugs in the next device, or unplugs one once the hub is full.
    void change()
    {
        constexpr int kPlaces = 4;
        m_isFilling = m_devices.isEmpty() || (m_isFilling && m_devices.size() < kPlaces);
        if (!m_isFilling) {
            m_testbed.removeUsbDevice(m_devices.takeFirst());
            return;
        }
        m_devices.append(m_testbed.addUsbDevice({0x7F3C, 0x0C52, "Other device", "1"}));
        m_testbed.addHidInterface(m_devices.last(), {1, 6, {}, {}});
        m_testbed.addSerialPort(m_devices.last(), QString("/dev/ttyACM%1").arg(m_devices.size()));
    }

private:
    Testbed &m_testbed;
    QStringList m_devices;
    bool m_isFilling = true;
};
