// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QWidget;

/// Counts how often a shown widget is painted.
class RepaintCounter : public QObject
{
    Q_OBJECT

public:
    /// Waits until \a widget is on the screen and all its outstanding paints are done.
    explicit RepaintCounter(QWidget *widget);

    /// Lets scheduled paints happen; the number of paints since the last call.
    int take();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_count = 0;
};
