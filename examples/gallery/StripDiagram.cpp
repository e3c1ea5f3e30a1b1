// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/StripDiagram.h"

#include "widgets/PixmapStrip.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace {

constexpr int kScale = 2;
constexpr int kMargin = 20;
constexpr int kTitle = 24;
constexpr int kRuler = 18;
constexpr int kCaption = 22;
constexpr int kGap = 16;
constexpr int kLeastFrame = 96; // leaves room for the text below a narrow frame

const QColor kGround(0x17, 0x21, 0x2b);
const QColor kDark(0x26, 0x34, 0x41);
const QColor kLight(0x2f, 0x3f, 0x4e);
const QColor kAccent(0x19, 0xf0, 0xea);
const QColor kWords(0xc5, 0xd0, 0xd9);

QFont font(int pixels, bool bold = false)
{
    QFont result;
    result.setPixelSize(pixels);
    result.setBold(bold);
    return result;
}

/// A chequered background that shows transparency.
void fillChequers(QPainter &painter, const QRect &rect)
{
    constexpr int kField = 8;
    painter.save();
    painter.setClipRect(rect);
    painter.fillRect(rect, kDark);
    for (int y = 0; y * kField < rect.height(); ++y) {
        for (int x = y % 2; x * kField < rect.width(); x += 2) {
            painter.fillRect(rect.left() + x * kField, rect.top() + y * kField, kField, kField,
                             kLight);
        }
    }
    painter.restore();
}

int scaleOf(const QSize &strip, int count)
{
    const int frame = strip.width() / count;
    return std::max(kScale, (kLeastFrame + frame - 1) / frame);
}

int heightOf(const StripDiagram::Strip &strip)
{
    const QSize size = QPixmap(strip.path).size();
    return kTitle + kRuler + size.height() * scaleOf(size, int(strip.frames.size())) + kCaption;
}

int widthOf(const StripDiagram::Strip &strip)
{
    const QSize size = QPixmap(strip.path).size();
    return size.width() * scaleOf(size, int(strip.frames.size()));
}

void drawStrip(QPainter &painter, const StripDiagram::Strip &strip, int top)
{
    const QPixmap picture(strip.path);
    const int count = int(strip.frames.size());
    const int scale = scaleOf(picture.size(), count);
    const QRect area(QPoint(kMargin, top + kTitle + kRuler), picture.size() * scale);

    painter.setFont(font(13, true));
    painter.setPen(kWords);
    painter.drawText(kMargin, top, area.width() * 2, kTitle, Qt::AlignLeft | Qt::AlignTop,
                     QString("%1, %2 × %3, drawn %4 : 1")
                         .arg(strip.title)
                         .arg(picture.width())
                         .arg(picture.height())
                         .arg(scale));
    fillChequers(painter, area);
    painter.drawPixmap(area, picture);
    painter.setFont(font(11));
    for (int i = 0; i < count; ++i) {
        const QRect cut = PixmapStrip::frameRect(picture.size(), i, count);
        const QRect frame(area.topLeft() + cut.topLeft() * scale, cut.size() * scale);
        painter.setPen(kAccent);
        painter.drawRect(frame.adjusted(0, 0, -1, -1));
        painter.drawText(frame.adjusted(0, -kRuler, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                         QString("x %1").arg(cut.left()));
        painter.setPen(kWords);
        painter.drawText(frame.adjusted(0, 0, 0, kCaption), Qt::AlignHCenter | Qt::AlignBottom,
                         strip.frames.at(i));
    }
}

} // namespace

QImage StripDiagram::draw(const QVector<Strip> &strips)
{
    int width = 0;
    int height = 2 * kMargin - kGap;
    for (const Strip &strip : strips) {
        width = std::max(width, widthOf(strip));
        height += heightOf(strip) + kGap;
    }
    QImage image(std::max(width, 280) + 2 * kMargin, height, QImage::Format_RGB32);
    image.fill(kGround);
    QPainter painter(&image);
    int top = kMargin;
    for (const Strip &strip : strips) {
        drawStrip(painter, strip, top);
        top += heightOf(strip) + kGap;
    }
    return image;
}

QImage StripDiagram::drawPatch(const QString &path, int border)
{
    constexpr int kPatchScale = 5;

    const QPixmap picture(path);
    const QRect area(QPoint(kMargin, kMargin), picture.size() * kPatchScale);
    QImage image(area.size() + QSize(2 * kMargin, 2 * kMargin), QImage::Format_RGB32);
    image.fill(kGround);
    QPainter painter(&image);
    fillChequers(painter, area);
    painter.drawPixmap(area, picture);
    painter.setPen(kAccent);
    for (const int cut : {border * kPatchScale, (picture.width() - border) * kPatchScale}) {
        painter.drawLine(area.left() + cut, area.top(), area.left() + cut, area.bottom());
    }
    for (const int cut : {border * kPatchScale, (picture.height() - border) * kPatchScale}) {
        painter.drawLine(area.left(), area.top() + cut, area.right(), area.top() + cut);
    }
    return image;
}
