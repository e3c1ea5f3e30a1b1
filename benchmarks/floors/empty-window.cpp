// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.setWindowFlags(Qt::FramelessWindowHint);
    window.setFixedSize(500, 260);
    window.show();
    return QApplication::exec();
}
