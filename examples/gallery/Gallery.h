// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>
#include <QWidget>

class Card;
class Controls;

/// One window that shows every class of the kit in every look, with live ones to play with.
class Gallery : public QWidget
{
    Q_OBJECT

public:
    explicit Gallery(QWidget *parent = nullptr);

    /// A picture of the whole window, also of what the screen has no room for.
    QPixmap picture();

    /// One card per class, in the order in which they stand.
    QVector<Card *> cards() const;

private:
    QWidget *buildSide();
    QWidget *buildCards();

    Controls *m_controls = nullptr;
    QWidget *m_page = nullptr;
    QVector<Card *> m_cards;
};
