// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: events of an upgrade, one byte each. A chunk follows some of them: a length and its bytes,
// or all remaining bytes.

#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzBytes.h"
#include "tests/models/ModelledWindow.h"

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    FuzzApplication::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzBytes input(data, size);
    ModelledWindow subject;
    subject.window().show();
    subject.click(true, true);
    while (!input.isEmpty()) {
        const int event = input.byte();
        const auto chunk = [&] {
            return (event & 8) != 0 ? input.rest() : input.chunk();
        };
        switch (event % 8) {
        case 0:
        case 1:
        case 2:
            subject.say(chunk(), event % 8 != 0);
            break;
        case 3:
            subject.complain(chunk());
            break;
        case 4:
            subject.tick(event / 32, input.byte());
            break;
        case 5:
            subject.tick(event / 32, 10 * input.byte());
            break;
        case 6:
            subject.click((event & 8) != 0, (event & 16) != 0);
            break;
        default:
            subject.close();
        }
        FuzzApplication::require(subject.difference());
    }
    return 0;
}
