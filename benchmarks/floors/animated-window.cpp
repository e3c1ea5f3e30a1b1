// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/floors/PlainBar.h"
#include "benchmarks/floors/PlainWindow.h"

#include <QApplication>
#include <QDebug>
#include <QTimer>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    PlainWindow window;
    window.show();

    int value = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&window, &value] {
        value = (value + 5) % 10005;
        window.bar()->setValue(value);
        qDebug() << "Standard Output:" << QByteArray();
    });
    timer.start(30);
    return QApplication::exec();
}
