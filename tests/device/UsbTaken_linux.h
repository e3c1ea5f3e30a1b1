// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/testbed/Testbed.h"

#include <QStringList>

#include <pthread.h>

#include <future>
#include <mutex>

/// The devices that init_plug() and its handlers have taken since the last clear(), by their path
/// below /sys.
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

/// Has udev's events lose their action from now on, or no longer.
void hideActions(bool hidden);

/// How often somebody has asked for an action since it was hidden.
int hiddenActionsAsked();

bool hasEnded(const std::future<int> &result);

/// init_plug() on a thread of its own, which already watches.
class UsbMonitorThread
{
public:
    explicit UsbMonitorThread(Testbed &testbed);
    ~UsbMonitorThread();

    UsbMonitorThread(const UsbMonitorThread &) = delete;
    UsbMonitorThread &operator=(const UsbMonitorThread &) = delete;

    bool hasEnded() const { return ::hasEnded(m_result); }

    /// The thread itself, while it has not been stopped.
    pthread_t handle() const { return m_handle; }

    /// What init_plug() returned.
    int stop();

private:
    pthread_t m_handle = {};
    std::future<int> m_result;
};
