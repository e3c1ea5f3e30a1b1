// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/OneProcessor.h"

#include <cstddef>

OneProcessor::OneProcessor()
{
    ::sched_getaffinity(0, sizeof m_all, &m_all);
    std::size_t first = 0;
    while (first < CPU_SETSIZE && !CPU_ISSET(first, &m_all)) {
        ++first;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(first, &one);
    ::sched_setaffinity(0, sizeof one, &one);
}

OneProcessor::~OneProcessor()
{
    ::sched_setaffinity(0, sizeof m_all, &m_all);
}
