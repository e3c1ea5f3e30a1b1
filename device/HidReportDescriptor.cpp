// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/HidReportDescriptor_p.h"

#include <array>
#include <optional>
#include <vector>

namespace {

// Item prefixes without the two bits of the data's size.
constexpr std::uint8_t kCollection = 0xA0;
constexpr std::uint8_t kUsagePage = 0x04;
constexpr std::uint8_t kPush = 0xA4;
constexpr std::uint8_t kPop = 0xB4;
constexpr std::uint8_t kUsage = 0x08;
constexpr std::uint8_t kUsageMinimum = 0x18;

constexpr std::uint8_t kLongItem = 0xFE;

struct Item
{
    std::uint8_t tag = 0;
    std::size_t dataSize = 0;
    std::uint32_t value = 0;
};

/// A main item consumes the usages before it.
bool isMainItem(const Item &item)
{
    return (item.tag & 0x0CU) == 0;
}

class ItemReader
{
public:
    ItemReader(const std::uint8_t *data, std::size_t size)
        : m_data(data)
        , m_left(size)
    { }

    /// The next short item, or nothing at the end and where an item is cut off.
    std::optional<Item> next()
    {
        while (m_left >= 3 && *m_data == kLongItem) {
            if (!skip(3U + m_data[1])) {
                return {};
            }
        }
        if (m_left == 0 || *m_data == kLongItem) {
            return {};
        }
        constexpr std::array<std::size_t, 4> kSizes = {0, 1, 2, 4};
        Item item = {static_cast<std::uint8_t>(*m_data & 0xFCU), kSizes[*m_data & 3U], 0};
        const std::uint8_t *const data = m_data + 1;
        if (!skip(1 + item.dataSize)) {
            return {};
        }
        for (std::size_t i = 0; i < item.dataSize; ++i) {
            item.value |= static_cast<std::uint32_t>(data[i]) << (8 * i);
        }
        return item;
    }

private:
    bool skip(std::size_t size)
    {
        if (size > m_left) {
            return false;
        }
        m_data += size;
        m_left -= size;
        return true;
    }

    const std::uint8_t *m_data;
    std::size_t m_left;
};

} // namespace

HidReportDescriptor::HidReportDescriptor(const std::uint8_t *data, std::size_t size)
{
    ItemReader reader(data, size);
    std::uint32_t page = 0;
    std::vector<std::uint32_t> pushedPages;
    std::optional<Item> firstUsage;

    while (const std::optional<Item> item = reader.next()) {
        if (item->tag == kCollection) {
            // A four-byte usage includes its page.
            const bool extended = firstUsage && firstUsage->dataSize == 4;
            m_usagePage = static_cast<int>((extended ? firstUsage->value >> 16U : page) & 0xFFFFU);
            m_usage = static_cast<int>(firstUsage ? firstUsage->value & 0xFFFFU : 0);
            return;
        }
        if (isMainItem(*item)) {
            firstUsage.reset();
        } else if (item->tag == kUsagePage) {
            page = item->value;
        } else if (item->tag == kPush) {
            pushedPages.push_back(page);
        } else if (item->tag == kPop && !pushedPages.empty()) {
            page = pushedPages.back();
            pushedPages.pop_back();
        } else if (!firstUsage && (item->tag == kUsage || item->tag == kUsageMinimum)) {
            firstUsage = item; // of several, the first is the collection's
        }
    }
}
