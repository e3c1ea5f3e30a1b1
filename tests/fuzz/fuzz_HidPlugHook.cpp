// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: a line with the ids as in sysfs and a line with the name, then a report descriptor. The
// bytes of the descriptor are also used as numbers and as a name of 16-bit units.

#include "device/HidPlugHook.h"
#include "device/HidPlugHook_p.h"
#include "device/HidSysfs_linux_p.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

namespace {

int calls = 0;
HidProperties expected;

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void checkName(const HidProductName &name)
{
    require(name.back() == L'\0');
    require(std::all_of(name.begin(), name.end(), [](wchar_t character) {
        const auto value = static_cast<char32_t>(character);
        return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    }));
}

void check(int arrived, int vendorId, int productId, int usage, int usagePage,
           const wchar_t *productName, void *context)
{
    ++calls;
    require(context == &calls);
    require(arrived == calls % 2);
    require(vendorId == (expected.vendorId & 0xFFFF));
    require(productId == (expected.productId & 0xFFFF));
    require(usage == expected.usage);
    require(usagePage == expected.usagePage);
    require(std::equal(expected.productName.begin(), expected.productName.end(), productName));
}

void report(const HidProperties &properties)
{
    checkName(properties.productName);
    expected = properties;
    calls = 0;
    {
        const HidPlugPause pause;
        queueHidPlug(true, properties);
        deliverHidPlugs();
        require(calls == 0);
    }
    queueHidPlug(false, properties);
    deliverHidPlugs();
    require(calls == 2);
}

std::string takeLine(std::string_view &text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return std::string(line);
}

HidProperties propertiesFromBytes(std::string_view bytes)
{
    HidProperties properties;
    int *const numbers[]
        = {&properties.vendorId, &properties.productId, &properties.usage, &properties.usagePage};
    for (int *const number : numbers) {
        const std::size_t size = std::min(bytes.size(), sizeof *number);
        std::memcpy(number, bytes.data(), size);
        bytes.remove_prefix(size);
    }
    std::u16string name(bytes.size() / sizeof(char16_t), u'\0');
    std::memcpy(name.data(), bytes.data(), name.size() * sizeof(char16_t));
    properties.productName = hidProductName(name);
    return properties;
}

} // namespace

// In place of the platform's own.
std::unique_ptr<HidPlugWatch> HidPlugWatch::create()
{
    return nullptr;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::string_view input(reinterpret_cast<const char *>(data), size);
    HidSysfs sysfs;
    sysfs.id = takeLine(input);
    sysfs.name = takeLine(input);
    sysfs.reportDescriptor.assign(input.begin(), input.end());

    register_hid_plug_callback(check, &calls);
    report(sysfs.properties());
    report(propertiesFromBytes(input));
    return 0;
}
