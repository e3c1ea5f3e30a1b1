// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ColorButton.h"
#include "widgets/CustomArea.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ImageButton.h"
#include "widgets/MButton.h"
#include "widgets/NinePatchPainter.h"
#include "widgets/PixmapStrip.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    CustomArea window(nullptr);
    window.resize(20, 20);
    const QWidgetList kit{new ColorButton(&window),
                          new CustomProgressBar(&window),
                          new FuncButton(&window, "title"),
                          new IconButton(&window, "title"),
                          new ImageButton(&window),
                          new MButton(&window),
                          new ProfileButton(&window, ""),
                          new SwitchButton(&window),
                          new tabButton(&window)};
    for (QWidget *widget : kit) {
        std::puts(widget->metaObject()->className());
        widget->hide();
    }

    QImage picture = window.grab().toImage();
    QPainter painter(&picture);
    const NinePatchPainter patches(PixmapStrip::load("missing", 1).at(0), 1, 1, 1, 1, true, true);
    patches.paint(&painter, picture.rect(), 1, 1, 1, 1);
    painter.end();
    std::puts(qPrintable(picture.pixelColor(10, 10).name()));
    return 0;
}
