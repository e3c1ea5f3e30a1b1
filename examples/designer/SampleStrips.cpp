// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/designer/SampleStrips.h"

#include <QFile>
#include <QImage>
#include <QPainter>

QString SampleStrips::path(const QSize &frame, int count)
{
    const QString name = QString("%1x%2-%3.png").arg(frame.width()).arg(frame.height()).arg(count);
    QString path = m_folder.filePath(name);
    if (QFile::exists(path)) {
        return path;
    }
    // Slate blue, lighter from frame to frame.
    constexpr int kHue = 210;
    constexpr int kSaturation = 70;
    constexpr int kDarkest = 110;
    constexpr int kStep = 30;
    constexpr int kRadius = 6;
    QImage strip(frame.width() * count, frame.height(), QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::transparent);
    QPainter painter(&strip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < count; ++i) {
        painter.setBrush(QColor::fromHsv(kHue, kSaturation, kDarkest + i * kStep));
        painter.drawRoundedRect(QRect(QPoint(i * frame.width(), 0), frame), kRadius, kRadius);
    }
    painter.end();
    strip.save(path);
    return path;
}
