// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "examples/gallery/Specimen.h"

#include <QFrame>

class QHBoxLayout;
class QVBoxLayout;

/// What the gallery shows of one class: its name, a sentence and rows of specimens.
class Card : public QFrame
{
    Q_OBJECT

public:
    Card(const QString &className, const QString &summary, QWidget *parent);

    QString className() const;

    /// Begins a new row; the following specimens go there.
    void addRow();

    /// Adds \a widget to the present row, at the left.
    Specimen *addLook(QWidget *widget, const QString &label);

    /// Adds \a widget at the right end of the present row, as one to play with.
    Specimen *addLive(QWidget *widget, const QString &label = "live");

private:
    QVBoxLayout *m_layout;
    QHBoxLayout *m_row = nullptr;
    QString m_className;
};
