// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QEventLoop>
#include <QObject>

class QApplication;

/// Lets screen readers find the program on Wayland with the Qt 5 of Debian 13. This Qt is patched
/// to register the program with them as soon as events are handled, and on Wayland it has not
/// connected to their bus by then. It does not try again, and the program would stay silent.
///
/// Holds the registration back until Qt is connected. Other events are handled in the meantime.
class ReaderConnection : public QObject, private QAccessible::ActivationObserver
{
public:
    /// Watches \a application, which owns it.
    explicit ReaderConnection(QApplication &application);
    ~ReaderConnection() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void accessibilityActiveChanged(bool active) override;

    bool m_isEarly = false;
    QEventLoop m_connecting;
};
