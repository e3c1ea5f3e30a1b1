// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/ButtonSignals.h"

#include <QAbstractButton>

#include <utility>

ButtonSignals::ButtonSignals(QAbstractButton *button)
{
    const auto withFlag = [](const char *name, bool flag) {
        return QString("%1(%2)").arg(name, flag ? "true" : "false");
    };
    connect(button, &QAbstractButton::pressed, this, [this] { m_names << "pressed"; });
    connect(button, &QAbstractButton::released, this, [this] { m_names << "released"; });
    connect(button, &QAbstractButton::clicked, this,
            [=](bool checked) { m_names << withFlag("clicked", checked); });
    connect(button, &QAbstractButton::toggled, this,
            [=](bool checked) { m_names << withFlag("toggled", checked); });
}

QStringList ButtonSignals::take()
{
    return std::exchange(m_names, {});
}
