// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidPlugHook.h"

#include "device/HidPlugHook_p.h"

#include <algorithm>
#include <deque>

namespace {

struct Report
{
    int arrived;
    int vendorId;
    int productId;
    int usage;
    int usagePage;
    HidProductName productName;
};

HidPlugCallback plugCallback = nullptr;
void *plugContext = nullptr;

// Created before DeviceComm, so that they still exist when it is destroyed at the end of the
// process.
std::deque<Report> waiting;
HidPlugWatch *watch = nullptr; // bare, since nobody deletes it while it calls the callback
int pauses = 0;
int callbacks = 0; // that have not returned

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

int lowBits(int id)
{
    return static_cast<int>(static_cast<unsigned>(id) & 0xFFFFU);
}

} // namespace

void register_hid_plug_callback(HidPlugCallback callback, void *context)
{
    plugCallback = callback;
    plugContext = context;
}

std::size_t hidNameUnits(std::size_t units)
{
    return std::min(units, kHidNameLength);
}

HidProductName hidProductName(std::u16string_view name)
{
    // The cut may split a pair; its first half then counts as a lone surrogate.
    const std::u16string_view kept = name.substr(0, hidNameUnits(name.size()));
    HidProductName result = {};
    std::size_t length = 0;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const char16_t unit = kept[i];
        if (isHighSurrogate(unit) && i + 1 < kept.size() && isLowSurrogate(kept[i + 1])) {
            ++i;
            result[length++]
                = static_cast<wchar_t>(0x10000 + (unit - 0xD800) * 0x400 + (kept[i] - 0xDC00));
        } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
            result[length++] = L'?';
        } else {
            result[length++] = static_cast<wchar_t>(unit);
        }
    }
    return result;
}

void queueHidPlug(bool arrived, const HidProperties &properties)
{
    waiting.push_back({arrived ? 1 : 0, lowBits(properties.vendorId), lowBits(properties.productId),
                       properties.usage, properties.usagePage, properties.productName});
}

void deliverHidPlugs()
{
    while (pauses == 0 && !waiting.empty()) {
        // Removed first: the callback may run the event loop, which calls this function again.
        const Report report = waiting.front();
        waiting.pop_front();
        if (plugCallback != nullptr) {
            ++callbacks;
            plugCallback(report.arrived, report.vendorId, report.productId, report.usage,
                         report.usagePage, report.productName.data(), plugContext);
            --callbacks;
        }
    }
}

HidPlugPause::HidPlugPause()
{
    ++pauses;
}

HidPlugPause::~HidPlugPause()
{
    --pauses;
    // The call that paused has not returned yet, so the event loop delivers later.
    if (!waiting.empty() && watch != nullptr) {
        watch->wake();
    }
}

void startHidPlugWatch()
{
    if (watch == nullptr) {
        watch = HidPlugWatch::create().release();
    }
}

void stopHidPlugWatch()
{
    waiting.clear();
    if (callbacks > 0) {
        // The callback exits the process, and what called it still uses the watch.
        return;
    }
    delete watch;
    watch = nullptr;
}
