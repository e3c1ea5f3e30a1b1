// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class MainWindow;
class QMouseEvent;

/// Lets the compositor move the window while the user drags it: on Wayland a program can neither
/// place its window nor learn where it is.
class SystemMove : public QObject
{
public:
    /// Whether Qt can ask the compositor for this.
    static constexpr bool kIsPossible = QT_VERSION >= QT_VERSION_CHECK(5, 15, 0);

    /// Watches \a window, which owns it.
    explicit SystemMove(MainWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void release(const QMouseEvent &press);

    MainWindow &m_window;
};
