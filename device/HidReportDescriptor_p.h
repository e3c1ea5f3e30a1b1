// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

/// Finds the usage of the first top-level collection in a HID report descriptor.
///
/// Descriptors come from devices and may contain anything. One that is truncated, malformed or
/// without a collection yields zeros.
class HidReportDescriptor
{
public:
    /// Parses `size` bytes at `data`. Keeps no pointer to them.
    HidReportDescriptor(const std::uint8_t *data, std::size_t size);

    /// The collection's usage page, 0..65535.
    int usagePage() const { return m_usagePage; }
    /// The collection's usage within that page, 0..65535.
    int usage() const { return m_usage; }

private:
    int m_usagePage = 0;
    int m_usage = 0;
};
