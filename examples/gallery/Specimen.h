// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QVBoxLayout;

/// One kit widget on show, with a word below it that tells which look it is.
class Specimen : public QWidget
{
    Q_OBJECT

public:
    enum Kind { Still, Live };

    /// Takes \a widget, which keeps its size. A live one gets a label in the accent colour.
    Specimen(QWidget *widget, const QString &label, Kind kind, QWidget *parent);

    QWidget *widget() const;

    /// Deletes the present widget and shows \a widget in its place.
    void setWidget(QWidget *widget);

private:
    QVBoxLayout *m_layout;
    QWidget *m_widget = nullptr;
};
