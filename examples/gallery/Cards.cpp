// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Cards.h"

#include "examples/gallery/Card.h"
#include "examples/gallery/Controls.h"
#include "examples/gallery/PatchSample.h"
#include "examples/gallery/Specimens.h"
#include "widgets/ColorButton.h"
#include "widgets/CustomArea.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ImageButton.h"
#include "widgets/MButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QHBoxLayout>
#include <QLabel>

using Specimens::Look;

namespace {

const QString kStillCaption = "Open";

/// Adds the normal, hover and pressed looks of buttons from \a make.
template <class Make> void addPointerLooks(Card *card, const Make &make)
{
    const QVector<QPair<Look, QString>> looks
        = {{Look::Normal, "normal"}, {Look::Hover, "hover"}, {Look::Pressed, "pressed"}};
    for (const auto &look : looks) {
        QAbstractButton *button = make();
        Specimens::freeze(button, look.first);
        card->addLook(button, look.second);
    }
}

void addDisabled(Card *card, QAbstractButton *button)
{
    button->setEnabled(false);
    Specimens::freeze(button, Look::Normal);
    card->addLook(button, "disabled");
}

/// Shows the signals of \a button in the controls.
void follow(QAbstractButton *button, const Card *card, Controls *controls)
{
    const QString name = card->className();
    const auto report = [=](const char *signal) {
        return [=] {
            controls->report(name, signal);
        };
    };
    QObject::connect(button, &QAbstractButton::pressed, controls, report("pressed"));
    QObject::connect(button, &QAbstractButton::released, controls, report("released"));
    QObject::connect(button, &QAbstractButton::clicked, controls, report("clicked"));
}

Specimen *addLive(Card *card, QAbstractButton *button, Controls *controls)
{
    Specimen *specimen = card->addLive(button);
    follow(button, card, controls);
    QObject::connect(controls, &Controls::enabledChanged, specimen,
                     [specimen](bool enabled) { specimen->widget()->setEnabled(enabled); });
    return specimen;
}

} // namespace

Card *Cards::forMButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("MButton", "Text on a picture, stretched or unscaled", parent);
    const auto make = [card] {
        return Specimens::stretchedButton(card, kStillCaption);
    };
    addPointerLooks(card, make);
    addDisabled(card, make());
    MButton *live = Specimens::stretchedButton(card, controls->caption());
    addLive(card, live, controls);
    QObject::connect(controls, &Controls::captionChanged, live, &MButton::setText);

    card->addRow();
    const auto makePlain = [card] {
        return Specimens::plainButton(card);
    };
    addPointerLooks(card, makePlain);
    addDisabled(card, makePlain());
    addLive(card, makePlain(), controls);
    return card;
}

Card *Cards::forImageButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("ImageButton", "A button that consists of a picture only", parent);
    const auto make = [card] {
        return Specimens::imageButton(card);
    };
    addPointerLooks(card, make);
    addDisabled(card, make());
    addLive(card, make(), controls);
    return card;
}

Card *Cards::forTabButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("tabButton", "One tab in a row; the row's owner selects it", parent);
    const auto make = [card] {
        return Specimens::tab(card, kStillCaption);
    };
    addPointerLooks(card, make);
    tabButton *selected = make();
    selected->setTabCheck(true);
    Specimens::freeze(selected, Look::Normal);
    card->addLook(selected, "selected");

    tabButton *live = Specimens::tab(card, controls->caption());
    addLive(card, live, controls);
    QObject::connect(controls, &Controls::checkedChanged, live, &tabButton::setTabCheck);
    QObject::connect(controls, &Controls::captionChanged, live, &tabButton::setTabText);
    return card;
}

Card *Cards::forColorButton(QWidget *parent, Controls *controls)
{
    const QColor accent(0x19, 0xf0, 0xea);
    auto *card = new Card("ColorButton", "A colour swatch that acts as a radio button", parent);
    ColorButton *unchecked = Specimens::swatch(card, accent);
    Specimens::freeze(unchecked, Look::Normal);
    card->addLook(unchecked, "unchecked");
    // Has its own parent, since siblings are exclusive.
    auto *checkedPlace = new QWidget(card);
    ColorButton *checked = Specimens::swatch(checkedPlace, accent);
    checkedPlace->setFixedSize(checked->size());
    checked->setChecked(true);
    Specimens::freeze(checked, Look::Normal);
    card->addLook(checkedPlace, "checked");

    auto *row = new QWidget(card);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    for (const QRgb color :
         {0xffef4444, 0xfff59e0b, 0xff22c55e, 0xff0ea5a8, 0xff3b82f6, 0xffa855f7}) {
        ColorButton *swatch = Specimens::swatch(row, QColor(color));
        layout->addWidget(swatch);
        follow(swatch, card, controls);
    }
    row->findChild<ColorButton *>()->setChecked(true);
    Specimen *live = card->addLive(row, "live, exclusive");
    QObject::connect(controls, &Controls::enabledChanged, live->widget(), &QWidget::setEnabled);
    return card;
}

Card *Cards::forFuncButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("FuncButton", "A tool bar button with a caption", parent);
    const auto make = [card](const QString &caption) {
        return Specimens::functionButton(card, caption);
    };
    addPointerLooks(card, [make] { return make(kStillCaption); });
    FuncButton *selected = make(kStillCaption);
    selected->setCheck(true);
    Specimens::freeze(selected, Look::Normal);
    card->addLook(selected, "selected");

    Specimen *live = addLive(card, make(controls->caption()), controls);
    QObject::connect(controls, &Controls::checkedChanged, live, [live](bool checked) {
        static_cast<FuncButton *>(live->widget())->setCheck(checked);
    });
    // The caption cannot change, so a new caption needs a new button.
    QObject::connect(controls, &Controls::captionChanged, live, [=](const QString &caption) {
        FuncButton *button = make(caption);
        button->setEnabled(controls->isSubjectEnabled());
        button->setCheck(controls->isSubjectChecked());
        follow(button, card, controls);
        live->setWidget(button);
    });
    return card;
}

Card *Cards::forIconButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("IconButton", "Background, icon, and a title beside the icon", parent);
    const auto make = [card](const QString &caption) {
        return Specimens::iconButton(card, caption);
    };
    addPointerLooks(card, [make] { return make(kStillCaption); });
    Specimen *live = addLive(card, make(controls->caption()), controls);
    QObject::connect(controls, &Controls::captionChanged, live, [=](const QString &caption) {
        IconButton *button = make(caption);
        button->setEnabled(controls->isSubjectEnabled());
        follow(button, card, controls);
        live->setWidget(button);
    });
    return card;
}

Card *Cards::forProfileButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("ProfileButton", "Background, icon, and a centred title", parent);
    addPointerLooks(card, [card] { return Specimens::profileButton(card, "Guest"); });
    ProfileButton *live = Specimens::profileButton(card, controls->caption());
    addLive(card, live, controls);
    QObject::connect(controls, &Controls::captionChanged, live, &ProfileButton::SetTitle);
    return card;
}

Card *Cards::forSwitchButton(QWidget *parent, Controls *controls)
{
    auto *card = new Card("SwitchButton", "An on/off switch; it changes on the press", parent);
    for (const bool on : {false, true}) {
        const QVector<QPair<Look, QString>> looks = {
            {Look::Normal, on ? "on" : "off"}, {Look::Hover, "hover"}, {Look::Pressed, "pressed"}};
        for (const auto &look : looks) {
            SwitchButton *button = Specimens::lightSwitch(card, on);
            Specimens::freeze(button, look.first);
            button->setCheck(on); // the press has changed it
            card->addLook(button, look.second);
        }
    }
    SwitchButton *live = Specimens::lightSwitch(card, false);
    addLive(card, live, controls);
    QObject::connect(controls, &Controls::checkedChanged, live, &SwitchButton::setCheck);
    QObject::connect(live, &SwitchButton::pressed, controls,
                     [=] { controls->setSubjectChecked(live->isCheck()); });
    return card;
}

Card *Cards::forCustomProgressBar(QWidget *parent, Controls *controls)
{
    constexpr int kStill = 86;

    auto *card = new Card("CustomProgressBar", "A flat bar from 0 to 10000", parent);
    for (const int value : {0, 3300, 10000}) {
        card->addLook(Specimens::progressBar(card, kStill, value), QString::number(value));
    }
    CustomProgressBar *live = Specimens::progressBar(card, 186, controls->value());
    card->addLive(live);
    QObject::connect(controls, &Controls::valueChanged, live, &CustomProgressBar::setValue);
    return card;
}

Card *Cards::forCustomArea(QWidget *parent)
{
    auto *card = new Card("CustomArea", "A coloured background for a window", parent);
    auto *plain = new CustomArea(card);
    plain->setFixedSize(88, 44);
    card->addLook(plain, "default");
    auto *coloured = new CustomArea(card);
    coloured->setAreaColor(QColor(0x0b, 0x6e, 0x78));
    coloured->setFixedSize(88, 44);
    card->addLook(coloured, "coloured");
    return card;
}

Card *Cards::forNinePatchPainter(QWidget *parent)
{
    constexpr int kBorder = 16;

    auto *card
        = new Card("NinePatchPainter", "Keeps corners, stretches edges, skips the centre", parent);
    const QPixmap picture(Specimens::path("patch.png"));
    auto *source = new QLabel(card);
    source->setPixmap(picture);
    card->addLook(source, "picture");
    for (const QSize &size : {QSize(128, 104), QSize(216, 72)}) {
        auto *sample = new PatchSample(picture, kBorder, card);
        sample->setFixedSize(size);
        card->addLook(sample, QString("%1 × %2").arg(size.width()).arg(size.height()));
    }
    return card;
}
