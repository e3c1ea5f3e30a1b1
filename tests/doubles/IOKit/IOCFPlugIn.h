// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <IOKit/IOKitLib.h>

extern "C" {

using ULONG = UInt32;
using HRESULT = SInt32;
using LPVOID = void *;

struct REFIID
{
    UInt8 bytes[16];
};

struct IOCFPlugInInterface
{
    void *_reserved;
    HRESULT (*QueryInterface)(void *self, REFIID interfaceId, LPVOID *result);
    ULONG (*AddRef)(void *self);
    ULONG (*Release)(void *self);
};

#define kIOCFPlugInInterfaceID                                                                     \
    CFUUIDGetConstantUUIDWithBytes(nullptr, 0xC2, 0x44, 0xE8, 0x58, 0x10, 0x9C, 0x11, 0xD4, 0x91,  \
                                   0xD4, 0x00, 0x50, 0xE4, 0xC6, 0x42, 0x6F)

kern_return_t IOCreatePlugInInterfaceForService(io_service_t service, CFUUIDRef pluginType,
                                                CFUUIDRef interfaceType,
                                                IOCFPlugInInterface ***theInterface,
                                                SInt32 *theScore);
}
