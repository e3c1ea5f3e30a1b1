// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// A pseudo terminal in raw mode, in place of a serial line.
///
/// It keeps the program's end open, so that programs can open and close the line several times.
class PseudoTerminal
{
public:
    PseudoTerminal();
    ~PseudoTerminal();

    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    /// The device's end, for non-blocking reading and writing.
    int deviceDescriptor() const { return m_device; }

    /// Whether programs have read everything that the device has written.
    bool isHeard() const;

    /// The file that a program opens, such as "/dev/pts/3".
    QByteArray path() const { return m_path; }

private:
    int m_device = -1;
    int m_program = -1;
    QByteArray m_path;
};
