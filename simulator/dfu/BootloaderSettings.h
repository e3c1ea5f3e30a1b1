// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/PublicKey.h"

#include <QtGlobal>

/// The properties of a device that decide which packages its bootloader accepts.
struct BootloaderSettings
{
    quint32 hardwareVersion = 52;
    quint32 firmwareVersion = 0; ///< The version of the installed application.
    quint32 softDeviceId = 0; ///< 0 if the device has no SoftDevice.
    PublicKey key; ///< Checks signatures. If it is null, all signatures are accepted.
    bool signatureRequired = false; ///< Unsigned packages are refused.
};
