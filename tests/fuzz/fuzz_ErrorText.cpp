// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: the tool's text on standard error.

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
    subject.complain(input.rest());
    subject.window().grab();
    FuzzApplication::require(subject.difference());
    return 0;
}
