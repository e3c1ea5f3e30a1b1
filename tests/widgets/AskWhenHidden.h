// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QWidget>

#include <functional>
#include <utility>

/// Asks as soon as a widget hides. A window that is deleted hides after its own destructor, when
/// only a plain QWidget is left of it.
class AskWhenHidden : public QObject
{
public:
    AskWhenHidden(QWidget *widget, std::function<void()> ask)
        : m_ask(std::move(ask))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Hide) {
            asked = true;
            m_ask();
        }
        return false;
    }

    bool asked = false;

private:
    std::function<void()> m_ask;
};
