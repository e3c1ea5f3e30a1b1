// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QVector>

/// Frames on a serial line (RFC 1055). An object is a decoder; encoding needs none.
///
/// A frame that is too long or holds an invalid escape is dropped whole, up to its end mark, since
/// what is left of it could only be misunderstood. Empty frames are skipped.
class Slip
{
public:
    /// A decoder of frames of up to \a maxFrameSize bytes; it never holds more than that.
    explicit Slip(int maxFrameSize);

    /// \a frame with its special bytes escaped, closed by an end mark.
    static QByteArray encode(const QByteArray &frame);

    /// Takes the next \a bytes of the line, cut anywhere, and returns the frames that they
    /// complete.
    QVector<QByteArray> decode(const QByteArray &bytes);

    /// Forgets a frame that has only begun.
    void reset();

private:
    void take(char byte);

    int m_maxFrameSize;
    QByteArray m_frame;
    bool m_escaped = false;
    bool m_dropping = false;
};
