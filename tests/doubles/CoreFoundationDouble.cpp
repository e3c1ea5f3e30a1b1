// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/CoreFoundationDouble.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <typeinfo>
#include <utility>

namespace {

std::atomic<int> objects = 0;

CFObject *object(CFTypeRef reference)
{
    if (reference == nullptr) {
        doubleFail("unexpected null object");
    }
    return static_cast<CFObject *>(const_cast<void *>(reference));
}

/// The referenced object, which must be of the type that the reference says.
template <typename Type> const Type &checked(const Type *reference)
{
    const CFObject &typed = *object(reference);
    if (typeid(typed) != typeid(Type)) {
        doubleFail("an object of another type");
    }
    return *reference;
}

bool isHigh(char16_t unit)
{
    return (unit & 0xFC00U) == 0xD800U;
}

bool isLow(char16_t unit)
{
    return (unit & 0xFC00U) == 0xDC00U;
}

} // namespace

CFObject::CFObject()
{
    ++objects;
}

CFObject::~CFObject()
{
    --objects;
}

CFString::CFString(std::u16string characters)
    : text(std::move(characters))
{ }

CFNumber::CFNumber(std::int64_t number)
    : value(number)
{ }

CFDictionary::CFDictionary(std::string name)
    : className(std::move(name))
{ }

CFUUID::CFUUID(std::string digits)
    : text(std::move(digits))
{ }

void doubleFail(const char *what)
{
    std::fprintf(stderr, "CoreFoundation double: %s\n", what);
    std::abort();
}

int doubleObjectCount()
{
    return objects;
}

CFStringRef doubleConstantString(const char *text)
{
    static std::map<std::string, std::unique_ptr<CFString>> strings;
    std::unique_ptr<CFString> &string = strings[text];
    if (string == nullptr) {
        string = std::make_unique<CFString>(std::u16string(text, text + std::strlen(text)));
        --objects;
    }
    return string.get();
}

CFTypeRef CFRetain(CFTypeRef reference)
{
    ++object(reference)->references;
    return reference;
}

void CFRelease(CFTypeRef reference)
{
    CFObject *const released = object(reference);
    if (--released->references < 0) {
        doubleFail("released too often");
    }
    if (released->references == 0) {
        const std::unique_ptr<CFObject> last(released);
    }
}

CFTypeID CFGetTypeID(CFTypeRef reference)
{
    const CFObject &typed = *object(reference);
    return typeid(typed).hash_code();
}

CFTypeID CFNumberGetTypeID()
{
    return typeid(CFNumber).hash_code();
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void *value)
{
    if (type != kCFNumberSInt32Type) {
        doubleFail("unsupported number type");
    }
    // If the number does not fit, Apple only promises an approximation. In practice, CoreFoundation
    // returns the low bits.
    const std::int64_t whole = checked(number).value;
    const auto cut = static_cast<SInt32>(whole);
    std::memcpy(value, &cut, sizeof cut);
    return static_cast<Boolean>(cut == whole);
}

CFIndex CFStringGetLength(CFStringRef string)
{
    return static_cast<CFIndex>(checked(string).text.size());
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8 *buffer,
                         CFIndex maxBufLen, CFIndex *usedBufLen)
{
    if (encoding != kCFStringEncodingUTF32LE || isExternalRepresentation != 0 || lossByte == 0) {
        doubleFail("unsupported conversion");
    }
    if (range.location < 0 || range.length < 0
        || range.location + range.length > CFStringGetLength(string)) {
        doubleFail("range outside the string");
    }
    const std::u16string part = string->text.substr(static_cast<std::size_t>(range.location),
                                                    static_cast<std::size_t>(range.length));
    CFIndex used = 0;
    std::size_t i = 0;
    while (i < part.size() && used + 4 <= maxBufLen) {
        char32_t character = part[i++];
        if (isHigh(part[i - 1]) && i < part.size() && isLow(part[i])) {
            character = 0x10000 + (character - 0xD800) * 0x400 + (part[i++] - 0xDC00U);
        } else if (isHigh(part[i - 1]) || isLow(part[i - 1])) {
            character = lossByte;
        }
        for (unsigned shift = 0; shift < 32; shift += 8) {
            buffer[used++] = static_cast<UInt8>(character >> shift);
        }
    }
    if (usedBufLen != nullptr) {
        *usedBufLen = used;
    }
    return static_cast<CFIndex>(i);
}

CFUUIDRef CFUUIDGetConstantUUIDWithBytes(CFAllocatorRef /*allocator*/, UInt8 byte0, UInt8 byte1,
                                         UInt8 byte2, UInt8 byte3, UInt8 byte4, UInt8 byte5,
                                         UInt8 byte6, UInt8 byte7, UInt8 byte8, UInt8 byte9,
                                         UInt8 byte10, UInt8 byte11, UInt8 byte12, UInt8 byte13,
                                         UInt8 byte14, UInt8 byte15)
{
    static std::map<std::string, std::unique_ptr<CFUUID>> uuids;
    const std::array<UInt8, 16> bytes
        = {byte0, byte1, byte2,  byte3,  byte4,  byte5,  byte6,  byte7,
           byte8, byte9, byte10, byte11, byte12, byte13, byte14, byte15};
    std::string text;
    for (const UInt8 byte : bytes) {
        constexpr std::array<char, 17> kDigits = {"0123456789abcdef"};
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xFU];
    }
    std::unique_ptr<CFUUID> &uuid = uuids[text];
    if (uuid == nullptr) {
        uuid = std::make_unique<CFUUID>(text);
        --objects;
    }
    return uuid.get();
}
