// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/DeviceBehaviour.h"
#include "simulator/device/DeviceIdentity.h"
#include "simulator/dfu/BootloaderSettings.h"

/// Everything that distinguishes one simulated device from another.
struct DeviceDescription
{
    enum class Start { Application, Bootloader, Absent };

    DeviceBehaviour behaviour;
    DeviceIdentity identity = {};
    BootloaderSettings bootloader = {};
    Start start = Start::Application; ///< Its state when it is plugged in.
};
