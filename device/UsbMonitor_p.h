// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

enum class UsbFailure { RegisterAdded, RegisterRemoved, CreateInterface, ReleaseDevice };

/// Prints a failure and its system status to standard output. Returns printf's result.
int printUsbFailure(UsbFailure failure, std::uint32_t status);
