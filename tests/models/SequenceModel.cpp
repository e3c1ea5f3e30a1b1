// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/SequenceModel.h"

namespace {

/// A chunk up to its first zero byte.
QByteArray visible(const QByteArray &chunk)
{
    return {chunk.constData()};
}

} // namespace

void SequenceModel::click(bool portAtOnce, bool portLater)
{
    if (!outcome.canClick) {
        return;
    }
    m_counter = 0;
    m_unread.clear();
    logLines += 2; // chmod's output and error text
    triggers += portAtOnce ? 0 : 1;
    hasTool = portAtOnce || portLater;
    outcome = {StatusText::kNotFound, !hasTool, 0, outcome.timers, hasTool ? 1 : 0};
    if (hasTool) {
        outcome.status = StatusText::kUpgrading;
        outcome.timers.append(Outcome::Running);
        m_hasTimer = true;
    }
}

void SequenceModel::say(const QByteArray &chunk, bool noticed)
{
    m_unread += chunk;
    if (noticed) {
        ++logLines;
        search(m_unread);
        m_unread.clear();
    }
}

void SequenceModel::complain(const QByteArray &chunk)
{
    ++logLines;
    outcome.status = QString::fromUtf8(visible(chunk));
    outcome.canClick = true;
}

void SequenceModel::tick(int index)
{
    Q_ASSERT(outcome.timers.at(index) == Outcome::Running);
    m_counter = m_counter == 10000 ? 0 : m_counter + 5;
    outcome.progress = m_counter;
    if (m_counter > 9100) {
        outcome.canClick = true;
        stopTimer(Outcome::Stopped);
    }
    ++logLines; // also for an empty chunk
    search(m_unread);
    m_unread.clear();
}

void SequenceModel::close()
{
    isVisible = false;
    stopTimer(Outcome::Stopped);
}

void SequenceModel::search(const QByteArray &chunk)
{
    if (visible(chunk).contains("Device programmed")) {
        outcome.status = StatusText::kSuccess;
        outcome.progress = 10000;
        outcome.canClick = true;
        stopTimer(Outcome::Deleted);
        m_hasTimer = false;
    }
}

void SequenceModel::stopTimer(Outcome::Timer state)
{
    if (m_hasTimer) {
        outcome.timers.last() = state;
    }
}
