// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QVector>

/// A decoder for frames on a serial line (RFC 1055), and a function to encode them.
///
/// Frames that are too long or contain an invalid escape are discarded up to their end mark. Empty
/// frames are skipped.
class Slip
{
public:
    /// Creates a decoder for frames of up to \a maxFrameSize bytes. It never stores more than that.
    explicit Slip(int maxFrameSize);

    /// Returns \a frame with escapes and an end mark.
    static QByteArray encode(const QByteArray &frame);

    /// Takes the next \a bytes from the line, in chunks of any size, and returns the frames that
    /// are complete.
    QVector<QByteArray> decode(const QByteArray &bytes);

    /// Discards an incomplete frame.
    void reset();

private:
    void take(char byte);

    int m_maxFrameSize;
    QByteArray m_frame;
    bool m_escaped = false;
    bool m_dropping = false;
};
