// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Gallery.h"

#include "examples/gallery/Card.h"
#include "examples/gallery/Cards.h"
#include "examples/gallery/Controls.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

// Each rule has a selector that does not match the specimens.
const char *const kStyle = R"(
    #page { background: #0f171d; }
    #scroll { background: #0f171d; border: none; }
    #card, #controls { background: #17212b; border: 1px solid #243240; border-radius: 12px; }
    #title { color: #ffffff; font-size: 28px; font-weight: bold; }
    #subtitle { color: #8b9aa8; font-size: 13px; }
    #className { color: #ffffff; font-size: 15px; font-weight: bold; }
    #summary { color: #8b9aa8; font-size: 12px; }
    #lookLabel { color: #6f808f; font-size: 11px; }
    #liveLabel { color: #19f0ea; font-size: 11px; }
    #heading { color: #6f808f; font-size: 10px; font-weight: bold; }
    #report { color: #19f0ea; font-size: 13px; min-height: 36px; }
    QCheckBox { color: #e6edf3; font-size: 13px; spacing: 8px; }
    QCheckBox::indicator { width: 14px; height: 14px; border: 2px solid #3a4b5a;
                           border-radius: 5px; background: #0f171d; }
    QCheckBox::indicator:checked { background: #19f0ea; border-color: #19f0ea;
                                   image: url(:/gallery/tick.png); }
    QLineEdit { color: #e6edf3; font-size: 13px; padding: 6px 8px; background: #0f171d;
                border: 1px solid #3a4b5a; border-radius: 6px;
                selection-background-color: #0ea5a8; }
    QSlider { min-height: 20px; }
    QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: #3a4b5a; }
    QSlider::sub-page:horizontal { border-radius: 2px; background: #19f0ea; }
    QSlider::handle:horizontal { width: 16px; margin: -6px 0; border-radius: 8px;
                                 background: #ffffff; }
    QScrollBar:vertical { width: 10px; background: #0f171d; }
    QScrollBar::handle:vertical { background: #3a4b5a; border-radius: 5px; min-height: 40px; }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
)";

} // namespace

Gallery::Gallery(QWidget *parent)
    : QWidget(parent)
    , m_page(new QWidget)
{
    constexpr int kMargin = 24;

    setWindowTitle("Widget kit");
    setStyleSheet(kStyle);
    m_page->setObjectName("page");
    auto *pageLayout = new QHBoxLayout(m_page);
    pageLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    pageLayout->setSpacing(kMargin);
    pageLayout->addWidget(buildSide());
    pageLayout->addWidget(buildCards());

    auto *scroll = new QScrollArea(this);
    scroll->setObjectName("scroll");
    scroll->setWidgetResizable(true);
    scroll->setWidget(m_page);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    constexpr int kScrollBar = 10;
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    resize((m_page->sizeHint() + QSize(kScrollBar, 0)).boundedTo(room));
}

QPixmap Gallery::picture()
{
    m_page->resize(m_page->sizeHint());
    return m_page->grab();
}

QVector<Card *> Gallery::cards() const
{
    return m_cards;
}

QWidget *Gallery::buildSide()
{
    auto *side = new QWidget(m_page);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto *title = new QLabel("Widget kit", side);
    title->setObjectName("title");
    auto *subtitle = new QLabel("All widgets in all looks.\nLive widgets react to the\n"
                                "pointer and these controls.",
                                side);
    subtitle->setObjectName("subtitle");
    m_controls = new Controls(side);
    layout->addWidget(title);
    layout->addWidget(subtitle);
    layout->addSpacing(14);
    layout->addWidget(m_controls);
    layout->addStretch();
    return side;
}

QWidget *Gallery::buildCards()
{
    constexpr int kGap = 16;

    auto *area = new QWidget(m_page);
    const QVector<Card *> left = {
        Cards::forMButton(area, m_controls),      Cards::forFuncButton(area, m_controls),
        Cards::forSwitchButton(area, m_controls), Cards::forCustomProgressBar(area, m_controls),
        Cards::forNinePatchPainter(area),
    };
    const QVector<Card *> right = {
        Cards::forImageButton(area, m_controls), Cards::forTabButton(area, m_controls),
        Cards::forIconButton(area, m_controls),  Cards::forProfileButton(area, m_controls),
        Cards::forColorButton(area, m_controls), Cards::forCustomArea(area),
    };
    m_cards = left + right;

    auto *layout = new QHBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap);
    for (const QVector<Card *> &cards : {left, right}) {
        auto *column = new QVBoxLayout;
        column->setSpacing(kGap);
        for (Card *card : cards) {
            column->addWidget(card);
        }
        column->setStretchFactor(cards.last(), 1);
        layout->addLayout(column);
    }
    return area;
}
