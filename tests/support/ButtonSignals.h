// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QStringList>

class QAbstractButton;

/// Records the click signals of a button, in order.
class ButtonSignals : public QObject
{
    Q_OBJECT

public:
    explicit ButtonSignals(QAbstractButton *button);

    /// The signals since the last call: "pressed", "released", "clicked(false)", "toggled(true)"
    /// and so on.
    QStringList take();

private:
    QStringList m_names;
};
