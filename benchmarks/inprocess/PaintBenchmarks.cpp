// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/floors/PlainBar.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/NinePatchPainter.h"

#include <QList>
#include <QPixmap>

#include <array>

#include <benchmark/benchmark.h>

namespace {

constexpr int kBorder = 18;
const QSize kButton(160, 36);

QPixmap buttonPicture()
{
    const QPixmap strip(":/images/img_button.png");
    return strip.copy(0, 0, strip.width() / 2, strip.height());
}

std::array<QPixmap, 8> cut(const QPixmap &picture)
{
    const int right = picture.width() - kBorder;
    const int bottom = picture.height() - kBorder;
    return {picture.copy(0, 0, kBorder, kBorder),
            picture.copy(0, bottom, kBorder, kBorder),
            picture.copy(right, 0, kBorder, kBorder),
            picture.copy(right, bottom, kBorder, kBorder),
            picture.copy(0, kBorder, kBorder, bottom - kBorder),
            picture.copy(kBorder, 0, right - kBorder, kBorder),
            picture.copy(right, kBorder, kBorder, bottom - kBorder),
            picture.copy(kBorder, bottom, right - kBorder, kBorder)};
}

void paintCorner(QPainter &painter, const QRect &place, const QPixmap &piece)
{
    painter.drawPixmap(QRectF(place),
                       piece.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
                       QRectF());
}

void paintEdge(QPainter &painter, const QRect &place, const QPixmap &piece)
{
    painter.drawTiledPixmap(
        QRectF(place), piece.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
        QPointF(0, 0));
}

/// Creates the list of rectangles in each paint, as the painter does, which caches nothing.
void ninePatchFloor(benchmark::State &state)
{
    const std::array<QPixmap, 8> pieces = cut(buttonPicture());
    QPixmap canvas(kButton);
    QPainter painter(&canvas);
    for (auto _ : state) {
        const int right = kButton.width() - kBorder;
        const int bottom = kButton.height() - kBorder;
        const QList<QRect> places = {
            QRect(0, 0, kBorder, kBorder),
            QRect(0, bottom, kBorder, kBorder),
            QRect(right, 0, kBorder, kBorder),
            QRect(right, bottom, kBorder, kBorder),
            QRect(0, kBorder, kBorder, bottom - kBorder),
            QRect(kBorder, 0, right - kBorder, kBorder),
            QRect(right, kBorder, kBorder, bottom - kBorder),
            QRect(kBorder, bottom, right - kBorder, kBorder),
            QRect(kBorder, kBorder, right - kBorder, bottom - kBorder),
        };
        paintCorner(painter, places.at(0), pieces[0]);
        paintCorner(painter, places.at(1), pieces[1]);
        paintCorner(painter, places.at(2), pieces[2]);
        paintCorner(painter, places.at(3), pieces[3]);
        paintEdge(painter, places.at(4), pieces[4]);
        paintEdge(painter, places.at(5), pieces[5]);
        paintEdge(painter, places.at(6), pieces[6]);
        paintEdge(painter, places.at(7), pieces[7]);
    }
}

void ninePatchOurs(benchmark::State &state)
{
    const NinePatchPainter ninePatch(buttonPicture(), kBorder, kBorder, kBorder, kBorder, true,
                                     true);
    QPixmap canvas(kButton);
    QPainter painter(&canvas);
    for (auto _ : state) {
        ninePatch.paint(&painter, QRect(QPoint(0, 0), kButton), kBorder, kBorder, kBorder, kBorder);
    }
}

template <class Bar> void barPaint(benchmark::State &state)
{
    Bar bar;
    bar.resize(430, 30);
    bar.setValue(5000);
    QPixmap canvas(bar.size());
    for (auto _ : state) {
        bar.render(&canvas, QPoint(), QRegion(), QWidget::RenderFlags());
    }
}

} // namespace

BENCHMARK(ninePatchFloor)->Name("nine-patch/flat");
BENCHMARK(ninePatchOurs)->Name("nine-patch/ours");
BENCHMARK(barPaint<PlainBar>)->Name("bar/flat");
BENCHMARK(barPaint<CustomProgressBar>)->Name("bar/ours");
