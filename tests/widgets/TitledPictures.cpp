// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/widgets/TitledPictures.h"

#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QTemporaryDir>

QImage TitledPictures::background(int state)
{
    return StripedPicture::columns(kStrip, state * 100, 100);
}

QImage TitledPictures::plain(int number, const QSize &size, int green)
{
    if (number < 0) {
        return {};
    }
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor(number * 30, green, 50));
    return picture;
}

QString TitledPictures::savePlain(const QTemporaryDir &folder, int first, int count,
                                  const QSize &size, int green)
{
    const int frames = qMax(count, 1); // a picture that a count below 1 could show if it did
    QImage strip(size.width() * frames, size.height(), QImage::Format_ARGB32);
    QPainter painter(&strip);
    for (int i = 0; i < frames; ++i) {
        painter.drawImage(i * size.width(), 0, plain(first + i, size, green));
    }
    painter.end();
    const QString path
        = folder.filePath(QString("%1-%2-%3.png").arg(first).arg(strip.width()).arg(green));
    if (!strip.save(path)) {
        qFatal("cannot save a test picture");
    }
    return path;
}

QImage TitledPictures::dressed(const QImage &background, const QImage &icon,
                               const QPoint &iconTopLeft)
{
    QImage picture = WidgetPicture::canvas(kSize);
    QPainter painter(&picture);
    painter.drawImage((kSize.width() - background.width()) / 2,
                      (kSize.height() - background.height()) / 2, background);
    painter.drawImage(iconTopLeft, icon);
    return picture;
}
