// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/Slip.h"

namespace {

constexpr char kEnd = '\xC0';
constexpr char kEsc = '\xDB';
constexpr char kEscapedEnd = '\xDC';
constexpr char kEscapedEsc = '\xDD';

} // namespace

Slip::Slip(int maxFrameSize)
    : m_maxFrameSize(maxFrameSize)
{ }

QByteArray Slip::encode(const QByteArray &frame)
{
    QByteArray encoded;
    encoded.reserve(frame.size() + 1);
    for (const char byte : frame) {
        if (byte == kEnd) {
            encoded.append(kEsc).append(kEscapedEnd);
        } else if (byte == kEsc) {
            encoded.append(kEsc).append(kEscapedEsc);
        } else {
            encoded.append(byte);
        }
    }
    return encoded.append(kEnd);
}

QVector<QByteArray> Slip::decode(const QByteArray &bytes)
{
    QVector<QByteArray> frames;
    for (const char byte : bytes) {
        if (byte != kEnd) {
            take(byte);
            continue;
        }
        const bool whole = !m_dropping && !m_escaped && !m_frame.isEmpty();
        if (whole) {
            frames.append(m_frame);
        }
        reset();
    }
    return frames;
}

void Slip::reset()
{
    m_frame.clear();
    m_escaped = false;
    m_dropping = false;
}

void Slip::take(char byte)
{
    if (m_dropping) {
        return;
    }
    if (byte == kEsc && !m_escaped) {
        m_escaped = true;
        return;
    }
    if (m_escaped) {
        m_dropping = byte != kEscapedEnd && byte != kEscapedEsc;
        byte = byte == kEscapedEnd ? kEnd : kEsc;
        m_escaped = false;
    }
    m_dropping = m_dropping || m_frame.size() >= m_maxFrameSize;
    if (m_dropping) {
        m_frame.clear();
        return;
    }
    m_frame.append(byte);
}
