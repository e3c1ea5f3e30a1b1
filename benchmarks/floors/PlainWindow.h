// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class PlainBar;
class QLabel;

/// A frameless window with two styled labels, a bar and two styled buttons, without a program
/// behind it.
class PlainWindow : public QWidget
{
public:
    PlainWindow();

    QLabel *statusLabel() const { return m_statusLabel; }
    PlainBar *bar() const { return m_bar; }

private:
    QLabel *m_statusLabel;
    PlainBar *m_bar;
};
