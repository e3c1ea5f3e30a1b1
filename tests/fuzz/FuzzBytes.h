// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Reads the fuzzer's input from the front. Returns zeros at its end.
class FuzzBytes
{
public:
    FuzzBytes(const std::uint8_t *data, std::size_t size)
        : m_bytes(reinterpret_cast<const char *>(data), static_cast<int>(size))
    { }

    bool isEmpty() const { return m_bytes.isEmpty(); }
    int byte() { return static_cast<std::uint8_t>(take(1).front()); }
    /// Reads a number in the byte order of the processor.
    template <class Number> Number number()
    {
        Number result = 0;
        std::memcpy(&result, take(int(sizeof result)).constData(), sizeof result);
        return result;
    }
    /// Reads a length of one byte and as many bytes.
    QByteArray chunk() { return take(byte()).left(m_taken); }
    QByteArray rest() { return take(int(m_bytes.size())).left(m_taken); }

private:
    /// Pads the result with zeros to \a size, and to at least one byte.
    QByteArray take(int size)
    {
        m_taken = std::min(size, int(m_bytes.size()));
        QByteArray result = m_bytes.left(m_taken);
        m_bytes.remove(0, m_taken);
        result.append(std::max(size, 1) - m_taken, '\0');
        return result;
    }

    QByteArray m_bytes;
    int m_taken = 0;
};
