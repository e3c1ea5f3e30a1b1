// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/floors/PlainWindow.h"

#include "benchmarks/floors/PlainBar.h"

#include <QLabel>
#include <QPushButton>

PlainWindow::PlainWindow()
    : m_statusLabel(new QLabel(this))
    , m_bar(new PlainBar(this))
{
    QFont font;
    font.setPointSize(16);

    setWindowFlags(Qt::FramelessWindowHint);
    setFixedSize(500, 260);
    setPalette(QPalette(QColor(0x0f, 0x17, 0x1d)));

    auto *title = new QLabel("Firmware Upgrade", this);
    title->setFont(font);
    title->setStyleSheet("color:#f0f0f0;");
    title->setAlignment(Qt::AlignCenter);
    title->setGeometry(170, 20, 160, 30);

    m_statusLabel->setTextFormat(Qt::PlainText);
    m_statusLabel->setFont(font);
    m_statusLabel->setStyleSheet("color:#ffffff;");
    m_statusLabel->setAlignment(Qt::AlignCenter);
    m_statusLabel->setGeometry(35, 100, 430, 30);

    m_bar->setGeometry(35, 150, 430, 30);

    auto *close = new QPushButton("x", this);
    close->setStyleSheet("QPushButton {border:0px; color:#ffffff;}");
    close->setGeometry(455, 12, 30, 30);

    auto *upgrade = new QPushButton("Start Upgrade", this);
    upgrade->setFont(font);
    upgrade->setStyleSheet("QPushButton {border:1px solid #ffffff; color:#ffffff;}");
    upgrade->setGeometry(170, 200, 160, 36);
}
