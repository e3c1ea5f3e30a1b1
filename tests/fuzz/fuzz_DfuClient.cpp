// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: a device's answers, in the format of HostSession.

#include "tests/fuzz/HostSession.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzBytes input(data, size);
    const HostSession::Outcome outcome = HostSession::play(input);
    const bool isExplained = outcome.succeeded == outcome.error.isEmpty();
    const bool isExecuted = !outcome.requests.isEmpty()
        && outcome.requests.last() == QByteArray(1, static_cast<char>(Dfu::Execute));
    if (!isExplained || (outcome.succeeded && !isExecuted)) {
        std::abort();
    }
    return 0;
}
