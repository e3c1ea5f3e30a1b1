// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidSysfs_linux_p.h"

#include "device/HidReportDescriptor_p.h"

#include <charconv>
#include <cwchar>
#include <locale>
#include <string_view>
#include <system_error>

namespace {

int fromHexadecimal(std::string_view text)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? static_cast<int>(value) : 0;
}

/// Removes and returns the text up to the next colon, or all of it.
std::string_view takeField(std::string_view &text)
{
    const std::string_view field = text.substr(0, text.find(':'));
    text.remove_prefix(field.size() < text.size() ? field.size() + 1 : field.size());
    return field;
}

std::u16string fromUtf8(std::string_view text)
{
    using Utf8 = std::codecvt<char16_t, char, std::mbstate_t>;
    const auto &utf8 = std::use_facet<Utf8>(std::locale::classic());

    // A character never needs more UTF-16 units than UTF-8 bytes.
    std::u16string result(text.size(), u'\0');
    char16_t *to = result.data();
    const char *from = text.data();
    const char *const end = from + text.size();
    while (from != end) {
        std::mbstate_t state = {};
        const char *const start = from;
        const auto outcome
            = utf8.in(state, start, end, from, to, result.data() + result.size(), to);
        if (outcome != Utf8::ok) {
            *to++ = u'?';
            ++from;
        }
    }
    result.resize(static_cast<std::size_t>(to - result.data()));
    return result;
}

} // namespace

HidProperties HidSysfs::properties() const
{
    std::string_view fields = id;
    takeField(fields); // the bus

    HidProperties properties;
    properties.vendorId = fromHexadecimal(takeField(fields));
    properties.productId = fromHexadecimal(takeField(fields));
    const HidReportDescriptor descriptor(reportDescriptor.data(), reportDescriptor.size());
    properties.usage = descriptor.usage();
    properties.usagePage = descriptor.usagePage();
    properties.productName = hidProductName(fromUtf8(name));
    return properties;
}
