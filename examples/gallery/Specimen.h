// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QVBoxLayout;

/// One widget of the kit with a label below it that names its look.
class Specimen : public QWidget
{
    Q_OBJECT

public:
    enum Kind { Still, Live };

    /// Takes ownership of \a widget, which keeps its size. Live ones have a coloured label.
    Specimen(QWidget *widget, const QString &label, Kind kind, QWidget *parent);

    QWidget *widget() const;

    /// Deletes the current widget and shows \a widget instead.
    void setWidget(QWidget *widget);

private:
    QVBoxLayout *m_layout;
    QWidget *m_widget = nullptr;
};
