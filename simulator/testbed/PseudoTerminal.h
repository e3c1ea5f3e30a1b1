// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// A pseudo terminal in raw mode that stands for a serial line.
///
/// It keeps its program's end open itself, so that the line survives programs that open and close
/// it one after the other.
class PseudoTerminal
{
public:
    PseudoTerminal();
    ~PseudoTerminal();

    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    /// The device's end; reading and writing do not block.
    int deviceDescriptor() const { return m_device; }

    /// Whether a program has read everything that the device wrote.
    bool isHeard() const;

    /// The file that a program opens, such as "/dev/pts/3".
    QByteArray path() const { return m_path; }

private:
    int m_device = -1;
    int m_program = -1;
    QByteArray m_path;
};
