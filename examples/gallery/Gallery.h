// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>
#include <QWidget>

class Card;
class Controls;

/// The gallery's window: all classes of the kit in all looks, with live specimens.
class Gallery : public QWidget
{
    Q_OBJECT

public:
    explicit Gallery(QWidget *parent = nullptr);

    /// A picture of the whole page, even if the screen is too small for it.
    QPixmap picture();

    /// The cards of all classes, in the order on the page.
    QVector<Card *> cards() const;

private:
    QWidget *buildSide();
    QWidget *buildCards();

    Controls *m_controls = nullptr;
    QWidget *m_page = nullptr;
    QVector<Card *> m_cards;
};
