// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/StripedPicture.h"

#include <QTemporaryDir>
#include <QtGlobal>

namespace {

// With odd steps, each of the 256 values occurs once, and neighbours differ clearly.
constexpr int kColumnStep = 37;
constexpr int kRowStep = 53;

QImage paintWith(const QSize &size, int blue)
{
    QImage picture(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            picture.setPixel(x, y,
                             qRgb(x * kColumnStep % 256, y * kRowStep % 256, blue + x / 256 * 16));
        }
    }
    return picture;
}

QString saveAs(const QTemporaryDir &folder, const QString &prefix, const QImage &picture)
{
    QString path = folder.filePath(
        QString("%1-%2x%3.png").arg(prefix).arg(picture.width()).arg(picture.height()));
    if (!picture.save(path)) {
        qFatal("cannot save a test picture");
    }
    return path;
}

} // namespace

QImage StripedPicture::paint(const QSize &size)
{
    return paintWith(size, 64);
}

QImage StripedPicture::columns(const QSize &size, int x, int width)
{
    return paint(size).copy(x, 0, width, size.height());
}

QString StripedPicture::save(const QTemporaryDir &folder, const QSize &size)
{
    return saveAs(folder, "strip", paint(size));
}

QImage StripedPicture::paintOther(const QSize &size)
{
    return paintWith(size, 160);
}

QString StripedPicture::saveOther(const QTemporaryDir &folder, const QSize &size)
{
    return saveAs(folder, "other", paintOther(size));
}
