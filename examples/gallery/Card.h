// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "examples/gallery/Specimen.h"

#include <QFrame>

class QHBoxLayout;
class QVBoxLayout;

/// The gallery's card for one class: its name, a summary and rows of specimens.
class Card : public QFrame
{
    Q_OBJECT

public:
    Card(const QString &className, const QString &summary, QWidget *parent);

    QString className() const;

    /// Starts a new row for the specimens that follow.
    void addRow();

    /// Adds \a widget to the current row, at the left.
    Specimen *addLook(QWidget *widget, const QString &label);

    /// Adds \a widget at the right end of the current row, for interaction.
    Specimen *addLive(QWidget *widget, const QString &label = "live");

private:
    QVBoxLayout *m_layout;
    QHBoxLayout *m_row = nullptr;
    QString m_className;
};
