// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace {

/// The share of ink in one pixel, or a negative number if it is not a mix of the two colours.
double inkShare(QRgb ink, QRgb ground, QRgb seen)
{
    if (seen == ground) {
        return 0;
    }
    using Channels = std::array<int, 3>;
    const Channels grounds{qRed(ground), qGreen(ground), qBlue(ground)};
    const Channels seens{qRed(seen), qGreen(seen), qBlue(seen)};
    const Channels steps{qRed(ink) - grounds[0], qGreen(ink) - grounds[1], qBlue(ink) - grounds[2]};

    // The channel in which the two colours differ most is the most precise.
    const auto widest = static_cast<std::size_t>(
        std::distance(steps.begin(), std::max_element(steps.begin(), steps.end(), [](int a, int b) {
                          return std::abs(a) < std::abs(b);
                      })));
    if (steps.at(widest) == 0) {
        return -1;
    }
    const double share
        = static_cast<double>(seens.at(widest) - grounds.at(widest)) / steps.at(widest);
    constexpr double kRounding = 4;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (std::abs(grounds.at(i) + share * steps.at(i) - seens.at(i)) > kRounding) {
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
    QImage picture = canvas(widget.size().expandedTo(QSize(1, 1)), ground);
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
