// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

/// How much of \a ink covers \a ground in a channel: 0 none, 1 all.
double coverage(int ink, int ground, int seen)
{
    return static_cast<double>(seen - ground) / (ink - ground);
}

/// The share of ink in one pixel, or a negative number if it is no mix of the two colours.
double inkShare(QRgb ink, QRgb ground, QRgb seen)
{
    const int inks[] = {qRed(ink), qGreen(ink), qBlue(ink)};
    const int grounds[] = {qRed(ground), qGreen(ground), qBlue(ground)};
    const int seens[] = {qRed(seen), qGreen(seen), qBlue(seen)};
    constexpr double kRounding = 3;
    double share = 0;
    for (int i = 0; i < 3; ++i) {
        if (std::abs(inks[i] - grounds[i]) > kRounding) {
            share = std::max(share, coverage(inks[i], grounds[i], seens[i]));
        }
    }
    for (int i = 0; i < 3; ++i) {
        const double expected = grounds[i] + share * (inks[i] - grounds[i]);
        if (std::abs(expected - seens[i]) > kRounding) {
            return -1;
        }
    }
    return share;
}

} // namespace

QImage WidgetPicture::canvas(const QSize &size, QRgb ground)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(ground);
    return picture;
}

QImage WidgetPicture::of(QWidget &widget, QRgb ground)
{
    QImage picture = canvas(widget.size(), ground);
    widget.render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
    return picture;
}

QImage WidgetPicture::with(const QSize &size, const QPoint &topLeft, const QImage &picture,
                           QRgb ground)
{
    QImage result = canvas(size, ground);
    QPainter(&result).drawImage(topLeft, picture);
    return result;
}

QRect WidgetPicture::changedRegion(const QImage &before, const QImage &after)
{
    QRect region;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y)) {
                region |= QRect(x, y, 1, 1);
            }
        }
    }
    return region;
}

bool WidgetPicture::isWrittenIn(const QColor &ink, const QImage &before, const QImage &after)
{
    constexpr double kPrevails = 0.6;
    double strongest = 0;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            const double share = inkShare(ink.rgb(), before.pixel(x, y), after.pixel(x, y));
            if (share < 0 || share > 1.02) {
                return false;
            }
            strongest = std::max(strongest, share);
        }
    }
    return strongest >= kPrevails;
}
