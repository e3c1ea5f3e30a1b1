// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"

#include <QStringList>

#include <pthread.h>

#include <future>
#include <mutex>

/// The paths below /sys of the devices that init_plug() and its handlers have taken since the last
/// clear().
class UsbTaken
{
public:
    void add(const QString &path);
    QStringList paths() const;
    void clear();

private:
    mutable std::mutex m_mutex;
    QStringList m_paths;
};

extern UsbTaken taken;

/// Sets whether udev's events lose their action from now on.
void hideActions(bool hidden);

/// The number of queries for an action since it was hidden.
int hiddenActionsAsked();

bool hasEnded(const std::future<int> &result);

/// Runs init_plug() in a separate thread. The constructor waits until it is watching.
class UsbMonitorThread
{
public:
    explicit UsbMonitorThread(Testbed &testbed);
    ~UsbMonitorThread();

    UsbMonitorThread(const UsbMonitorThread &) = delete;
    UsbMonitorThread &operator=(const UsbMonitorThread &) = delete;

    bool hasEnded() const { return ::hasEnded(m_result); }

    /// The thread, unless it has been stopped.
    pthread_t handle() const { return m_handle; }

    /// The return value of init_plug().
    int stop();

private:
    pthread_t m_handle = {};
    std::future<int> m_result;
};
