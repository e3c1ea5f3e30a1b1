// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: the picture's and the target's size, four source and four target borders.

#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzBytes.h"
#include "widgets/NinePatchPainter.h"

#include <QPainter>
#include <QPixmap>

#include <array>

namespace {

/// Small enough to be painted or so large that there is no such picture: anything between only
/// takes memory and time.
int border(FuzzBytes &input)
{
    const int number = input.number();
    const bool isSmall = number > -300 && number < 300;
    const bool isHuge = number < -0x20000000 || number > 0x20000000;
    return isSmall || isHuge ? number : number % 300;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    FuzzApplication::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzBytes input(data, size);
    QPixmap picture(input.byte(), input.byte());
    if (!picture.isNull()) {
        picture.fill(Qt::red);
    }
    const QRect target(0, 0, input.byte(), input.byte());
    std::array<int, 8> borders = {};
    for (int &each : borders) {
        each = border(input);
    }
    const NinePatchPainter patches(picture, borders[0], borders[1], borders[2], borders[3], true,
                                   true);
    QImage canvas(256, 256, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    patches.paint(&painter, target, borders[4], borders[5], borders[6], borders[7]);
    return 0;
}
