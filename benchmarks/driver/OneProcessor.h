// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <sched.h>

/// While one lives, what is started gets a single processor, and keeps it. Threads that hand
/// something over then do so in the same way every time; on two processors it is a race who sleeps
/// first, and how often they sleep differs by a tenth from run to run.
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
