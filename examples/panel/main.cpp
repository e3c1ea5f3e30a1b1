// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// A panel of the widget kit: a click on a colour fills the area and moves the bar.

#include "widgets/ColorButton.h"
#include "widgets/CustomArea.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/KitAccessibility.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    KitAccessibility::install();

    QWidget window;
    window.setFixedSize(200, 120);
    CustomArea area(&window);
    area.setGeometry(10, 10, 180, 50);
    CustomProgressBar bar(&window);
    bar.setGeometry(10, 70, 180, 8);

    const QList<QColor> colors = {Qt::darkRed, Qt::darkGreen, Qt::darkBlue};
    for (int i = 0; i < colors.size(); ++i) {
        auto *const button = new ColorButton(&window);
        button->setColor(colors.at(i));
        button->setToolTip(colors.at(i).name()); // its name for screen readers
        button->setGeometry(10 + 30 * i, 90, 20, 20);
        // The captured objects live as long as the window. clazy:excludeall=lambda-in-connect
        QObject::connect(button, &ColorButton::toggled, &window, [&, i] {
            area.setAreaColor(colors.at(i));
            area.update();
            bar.setValue(bar.maximum() * (i + 1) / int(colors.size()));
        });
    }
    window.show();
    return QApplication::exec();
}
