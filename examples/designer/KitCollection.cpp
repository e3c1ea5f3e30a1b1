// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/designer/KitCollection.h"

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

#include <type_traits>

namespace {

constexpr QSize kFace(120, 40);
constexpr QRect kIconPlace(8, 8, 24, 24);

template <class Widget> QWidget *make(QWidget *parent)
{
    return new Widget(parent);
}

void fillHalf(QWidget *widget, SampleStrips & /*samples*/)
{
    constexpr int kHalf = 5000;
    static_cast<CustomProgressBar *>(widget)->setValue(kHalf);
}

void dressStretched(QWidget *widget, SampleStrips &samples)
{
    // With this border, the unpainted centre of a new button is empty.
    static_cast<MButton *>(widget)->setPixmap(samples.path(kFace, 2), kFace.height() / 2);
}

template <class Button> void dressFourFrames(QWidget *widget, SampleStrips &samples)
{
    static_cast<Button *>(widget)->setPixmap(samples.path(kFace, 4));
}

template <class Button> void dressTwoPictures(QWidget *widget, SampleStrips &samples)
{
    // SwitchButton cuts each picture into four frames, FuncButton does not cut them.
    constexpr int kFrames = std::is_same_v<Button, SwitchButton> ? 4 : 1;
    static_cast<Button *>(widget)->setPixmap(samples.path(kFace, kFrames),
                                             samples.path(kFace, kFrames));
}

template <class Button> void dressFaceAndIcon(QWidget *widget, SampleStrips &samples)
{
    auto *button = static_cast<Button *>(widget);
    button->setBkgPixmap(samples.path(kFace, 3), 3);
    button->setIconPixmap(samples.path(kIconPlace.size(), 1), 1, kIconPlace);
}

QVector<KitClass> kitClasses()
{
    return {
        {"ColorButton",
         "A colour swatch that acts as a radio button",
         {40, 20},
         make<ColorButton>,
         {}},
        {"CustomArea", "A plain area of one colour", {200, 120}, make<CustomArea>, {}},
        {"CustomProgressBar", "A flat progress bar", {200, 20}, make<CustomProgressBar>, fillHalf},
        {"FuncButton", "A tool bar button with two pictures and a caption", kFace, make<FuncButton>,
         dressTwoPictures<FuncButton>},
        {"IconButton", "A button with a background, an icon and a title beside the icon", kFace,
         make<IconButton>, dressFaceAndIcon<IconButton>},
        {"ImageButton", "A button that consists of a picture with four frames", kFace,
         make<ImageButton>, dressFourFrames<ImageButton>},
        {"MButton", "A button with a stretched picture of two frames and a text", kFace,
         make<MButton>, dressStretched},
        {"ProfileButton", "A button with a background, an icon and a centred title", kFace,
         make<ProfileButton>, dressFaceAndIcon<ProfileButton>},
        {"SwitchButton", "An on/off switch with two pictures of four frames", kFace,
         make<SwitchButton>, dressTwoPictures<SwitchButton>},
        {"tabButton", "One tab in a row, with a picture of four frames", kFace, make<tabButton>,
         dressFourFrames<tabButton>},
    };
}

} // namespace

KitCollection::KitCollection()
{
    for (const KitClass &kitClass : kitClasses()) {
        m_entries.push_back(std::make_unique<KitEntry>(kitClass, &m_samples));
    }
}

QList<QDesignerCustomWidgetInterface *> KitCollection::customWidgets() const
{
    QList<QDesignerCustomWidgetInterface *> entries;
    for (const std::unique_ptr<KitEntry> &entry : m_entries) {
        entries << entry.get();
    }
    return entries;
}
