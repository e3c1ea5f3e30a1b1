// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <sched.h>

/// Restricts this process to one processor during the object's lifetime. Processes that it starts
/// meanwhile stay on that processor.
///
/// On two processors, the order in which threads go to sleep is random, and the number of wake-ups
/// differs by a tenth between runs.
class OneProcessor
{
public:
    OneProcessor();
    ~OneProcessor();

    OneProcessor(const OneProcessor &) = delete;
    OneProcessor &operator=(const OneProcessor &) = delete;

private:
    cpu_set_t m_all = {};
};
