// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

enum class UsbFailure { RegisterAdded, RegisterRemoved, CreateInterface, ReleaseDevice };

/// Prints a failure with the system's status for it to standard output; returns printf's result.
int printUsbFailure(UsbFailure failure, std::uint32_t status);
