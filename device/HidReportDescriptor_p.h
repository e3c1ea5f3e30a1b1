// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

/// Reads from a HID report descriptor what its first top-level collection is for.
///
/// Descriptors come from devices and may hold anything: one that is cut off, malformed or without
/// a collection simply yields zeros.
class HidReportDescriptor
{
public:
    /// Reads `size` bytes at `data` and keeps nothing of them.
    HidReportDescriptor(const std::uint8_t *data, std::size_t size);

    /// The collection's usage page, 0..65535.
    int usagePage() const { return m_usagePage; }
    /// The collection's usage within that page, 0..65535.
    int usage() const { return m_usage; }

private:
    int m_usagePage = 0;
    int m_usage = 0;
};
