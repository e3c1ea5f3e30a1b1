// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "device/HidPlugHook.h"
#include "device/HidPlugHook_p.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace {

void countDevice(int /*arrived*/, int /*vendorId*/, int /*productId*/, int /*usage*/,
                 int /*usagePage*/, const wchar_t * /*productName*/, void *count)
{
    ++*static_cast<int *>(count);
}

void request(benchmark::State &state)
{
    DeviceComm &device = DeviceComm::GetInst();
    for (auto _ : state) {
        device.startUpdate(0x7F3C, 0x0C51);
    }
}

/// Until all attached devices have been reported, which a single turn of the event loop does.
void watch(benchmark::State &state)
{
    int count = 0;
    stopHidPlugWatch();
    register_hid_plug_callback(countDevice, &count);
    for (auto _ : state) {
        startHidPlugWatch();
        QCoreApplication::processEvents();
    }
    stopHidPlugWatch();
    register_hid_plug_callback(nullptr, nullptr);
    if (count == 0) {
        state.SkipWithError("no device was reported");
    }
}

} // namespace

BENCHMARK(request)->Name("request/ours")->Iterations(1);
BENCHMARK(watch)->Name("watch/ours")->Iterations(1);
