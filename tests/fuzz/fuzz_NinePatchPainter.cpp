// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: the picture's size, the two flags, the target's position and size, four source borders and
// four target borders.

#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzBytes.h"
#include "widgets/NinePatchPainter.h"
#include "widgets/NinePatchPainter_p.h"

#include <QPainter>
#include <QPixmap>

#include <array>

namespace {

using Borders = std::array<int, 4>;

Borders borders(FuzzBytes &input)
{
    Borders all = {};
    for (int &each : all) {
        each = input.number<qint32>();
    }
    return all;
}

/// The number of pixels in all pieces, without those that exceed the painter's limit.
qint64 pixels(const QRect &target, const Borders &borders)
{
    constexpr qint64 kPaintersLimit = 1 << 27;
    const NinePatchPainterPrivate layout(QPixmap(), 0, 0, 0, 0, true, true);
    qint64 sum = 0;
    for (const QRect &piece :
         layout.calculateNinePatchRects(target, borders[0], borders[1], borders[2], borders[3])) {
        const qint64 area = qint64(piece.width()) * piece.height();
        sum += piece.isValid() && area <= kPaintersLimit ? area : 0;
    }
    return sum;
}

/// Halves all sizes until they can be painted fast.
void makeCheap(QRect *target, Borders *borders)
{
    while (pixels(*target, *borders) > 1 << 22) {
        target->setSize({target->width() / 2, target->height() / 2});
        for (int &each : *borders) {
            each /= 2;
        }
    }
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
    const int pictureWidth = input.byte();
    QPixmap picture(pictureWidth, input.byte());
    if (!picture.isNull()) {
        picture.fill(Qt::red);
    }
    const int flags = input.byte();
    const int x = input.number<qint16>();
    const int y = input.number<qint16>();
    const int width = input.number<qint16>();
    QRect target(x, y, width, input.number<qint16>());
    const Borders source = borders(input);
    Borders shown = borders(input);
    makeCheap(&target, &shown);

    const NinePatchPainter patches(picture, source[0], source[1], source[2], source[3],
                                   (flags & 1) != 0, (flags & 2) != 0);
    QImage canvas(256, 256, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    patches.paint(&painter, target, shown[0], shown[1], shown[2], shown[3]);
    return 0;
}
