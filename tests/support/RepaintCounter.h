// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QWidget;

/// Counts the paint events of a visible widget.
class RepaintCounter : public QObject
{
    Q_OBJECT

public:
    /// Waits until \a widget is visible and has no pending paint events.
    explicit RepaintCounter(QWidget *widget);

    /// Processes pending paint events. Returns the number of paint events since the last call.
    int take();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_count = 0;
};
