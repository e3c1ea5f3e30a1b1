// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/SequenceModel.h"

namespace {

/// What a zero byte cuts off is not seen.
QByteArray visible(const QByteArray &chunk)
{
    return {chunk.constData()};
}

} // namespace

void SequenceModel::click(bool portAtOnce, bool portLater)
{
    if (!canClick) {
        return;
    }
    m_counter = 0;
    progress = 0;
    logLines += 2; // chmod's two channels
    hasProcess = false;
    m_unread.clear();
    if (!portAtOnce) {
        ++triggers;
    }
    if (!portAtOnce && !portLater) {
        status = "Find Upgrade Device Error!";
        return;
    }
    status = "Upgrading, please do not plug or unplug the device!";
    canClick = false;
    hasProcess = true;
    ++started;
    timers.append(Running);
    m_hasTimer = true;
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
    status = QString::fromUtf8(visible(chunk));
    canClick = true;
}

void SequenceModel::tick(int index)
{
    Q_ASSERT(timers.at(index) == Running);
    m_counter = m_counter == 10000 ? 0 : m_counter + 5;
    progress = m_counter;
    if (m_counter > 9100) {
        canClick = true;
        if (m_hasTimer) {
            timers.last() = Stopped;
        }
    }
    ++logLines; // also when nothing has come
    search(m_unread);
    m_unread.clear();
}

void SequenceModel::close()
{
    isVisible = false;
    if (m_hasTimer) {
        timers.last() = Stopped;
    }
}

void SequenceModel::search(const QByteArray &chunk)
{
    if (visible(chunk).indexOf("Device programmed") < 0) {
        return;
    }
    status = "Upgrade Successfully";
    progress = 10000;
    canClick = true;
    if (m_hasTimer) {
        timers.last() = Deleted;
        m_hasTimer = false;
    }
}
