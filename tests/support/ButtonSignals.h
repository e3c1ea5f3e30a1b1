// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QStringList>

class QAbstractButton;

/// Writes down which of its click signals a button emits, in their order.
class ButtonSignals : public QObject
{
    Q_OBJECT

public:
    explicit ButtonSignals(QAbstractButton *button);

    /// What was emitted since the last call: "pressed", "released", "clicked(false)",
    /// "toggled(true)" and so on.
    QStringList take();

private:
    QStringList m_names;
};
