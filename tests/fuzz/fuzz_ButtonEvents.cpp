// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: a class of the kit, then one byte for each event that its button gets.

#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzBytes.h"
#include "tests/reliability/ModelledButton.h"

#include <QTemporaryDir>

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    FuzzApplication::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QStringList names = ButtonModel::names();

    FuzzBytes input(data, size);
    ModelledButton button(names.at(input.byte() % names.size()), folder);
    while (!input.isEmpty()) {
        const int event = input.byte();
        switch (event % 8) {
        case 6:
            button.setEnabled((event & 8) != 0);
            break;
        case 7:
            button.mark((event & 8) != 0);
            break;
        default:
            button.act(PointerEvents::kAllActions[event % 8], (event & 8) == 0);
        }
        FuzzApplication::require(button.difference());
    }
    return 0;
}
