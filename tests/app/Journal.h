// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <functional>

class QLabel;

/// Writes down, in order, each text that a label takes on and each debug line, from construction
/// to destruction. Texts are seen the moment they are set, also while the GUI thread is busy,
/// since they are learnt as a screen reader learns them. One at a time.
class Journal
{
public:
    explicit Journal(const QLabel *label);
    ~Journal();
    Journal(const Journal &) = delete;
    Journal &operator=(const Journal &) = delete;

    /// "status: …" and "log: …" lines.
    QStringList lines() const;
    QStringList statusTexts() const;
    QStringList logLines() const;
    void clear();

    /// Called with each text at the moment when it is set.
    std::function<void(const QString &text)> onStatus;
    /// The same for each debug line.
    std::function<void()> onLog;

private:
    QStringList withPrefix(const QString &prefix) const;
};
