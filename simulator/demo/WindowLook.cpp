// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/WindowLook.h"

#include "simulator/demo/StatusText.h"

#include <QLabel>

#include <cstdlib>

namespace {

constexpr int kWidth = 500;
constexpr QRect kStatusArea(35, 100, 430, 30);
constexpr QRect kUpgradeArea(170, 200, 160, 36);

/// How many pixels of the picture \a window show one pixel of the window.
int scaleOf(const QImage &window)
{
    return window.width() / kWidth;
}

QRect scaled(const QRect &area, int scale)
{
    return {area.topLeft() * scale, area.size() * scale};
}

/// Draws the program's status line with \a text.
QImage drawStatus(const QString &text, int scale)
{
    QWidget window;
    window.setPalette(QPalette(QColor(0x0f, 0x17, 0x1d)));
    window.setFixedSize(kStatusArea.size());
    QFont font;
    font.setPointSize(16);
    QLabel label(&window);
    label.setTextFormat(Qt::PlainText);
    label.setFont(font);
    label.setStyleSheet("color:#ffffff;");
    label.setAlignment(Qt::AlignCenter);
    label.setFixedSize(kStatusArea.size());
    label.setText(text);
    QImage image(kStatusArea.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(QColor(0x0f, 0x17, 0x1d));
    window.render(&image);
    return image;
}

/// The number of pixels that clearly differ between two pictures of the same size.
int difference(const QImage &one, const QImage &other)
{
    constexpr int kClearly = 48; // some screens anti-alias glyphs differently
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const int distance = qGray(one.pixel(x, y)) - qGray(other.pixel(x, y));
            count += std::abs(distance) > kClearly ? 1 : 0;
        }
    }
    return count;
}

} // namespace

QRect WindowLook::statusArea(const QImage &window)
{
    return scaled(kStatusArea, scaleOf(window));
}

QString WindowLook::statusText(const QImage &window, const QStringList &others)
{
    constexpr int kTolerance = 4;
    const int scale = scaleOf(window);
    if (scale == 0) {
        return {};
    }
    const QImage shown = window.copy(statusArea(window));
    const QStringList candidates
        = QStringList{"", StatusText::kNotFound, StatusText::kUpgrading, StatusText::kSuccess}
        + others;
    for (const QString &candidate : candidates) {
        if (difference(shown, drawStatus(candidate, scale)) <= kTolerance) {
            return candidate.isNull() ? QString("") : candidate;
        }
    }
    return {};
}

int WindowLook::progress(const QImage &window)
{
    constexpr int kMaximum = 10000;
    const int scale = scaleOf(window);
    int filled = 0;
    for (int x = kProgressArea.left(); x <= kProgressArea.right() && scale > 0; ++x) {
        const QColor colour = window.pixelColor(QPoint(x, kProgressArea.center().y()) * scale);
        if (colour == QColor(25, 240, 234)) {
            filled = x - kProgressArea.left() + 1;
        }
    }
    return filled * kMaximum / kProgressArea.width();
}

bool WindowLook::isUpgradeEnabled(const QImage &window)
{
    constexpr int kBetween = 192; // between a white and a grey caption
    int brightest = 0;
    if (window.isNull()) {
        return false;
    }
    const QRect area = scaled(kUpgradeArea, scaleOf(window));
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            brightest = qMax(brightest, qGray(window.pixel(x, y)));
        }
    }
    return brightest > kBetween;
}
