// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <functional>
#include <utility>

/// Stands in for a screen reader during its lifetime: calls \a listen with each event. Only one may
/// exist at a time.
class ScreenReader
{
public:
    explicit ScreenReader(std::function<void(QAccessibleEvent *event)> listen)
        : m_previous(QAccessible::installUpdateHandler(handle))
    {
        s_listen = std::move(listen);
        setPresent(true);
    }

    ~ScreenReader()
    {
        setPresent(false);
        QAccessible::installUpdateHandler(m_previous);
        s_listen = nullptr;
    }

    Q_DISABLE_COPY(ScreenReader)

private:
    static void handle(QAccessibleEvent *event) { s_listen(event); }

    static void setPresent(bool present)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(present);
    }

    static inline std::function<void(QAccessibleEvent *event)> s_listen;
    QAccessible::UpdateHandler m_previous;
};
