// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ButtonSubject.h"

#include "tests/support/StripedPicture.h"
#include "widgets/ColorButton.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ImageButton.h"
#include "widgets/MButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QHash>
#include <QPainter>
#include <QTemporaryDir>

using PointerEvents::Action;
using PointerEvents::Open;

namespace {

constexpr QSize kFrame(30, 20);

void setPictures(ColorButton & /*button*/, const QString & /*first*/, const QString & /*second*/) {
}

void setPictures(FuncButton &button, const QString &first, const QString &second)
{
    button.setPixmap(first, second);
}

void setPictures(ImageButton &button, const QString &first, const QString & /*second*/)
{
    button.setPixmap(first);
}

void setPictures(MButton &button, const QString &first, const QString & /*second*/)
{
    button.setPixmap(first, 0);
}

void setPictures(SwitchButton &button, const QString &first, const QString &second)
{
    button.setPixmap(second, first); // the first look is that of the position "off"
}

void setPictures(tabButton &button, const QString &first, const QString & /*second*/)
{
    button.setPixmap(first);
}

template <class Titled>
void setPictures(Titled &button, const QString &first, const QString & /*second*/)
{
    button.setBkgPixmap(first, 3);
}

void mark(QAbstractButton & /*button*/, bool /*marked*/) { }

void mark(FuncButton &button, bool marked)
{
    button.setCheck(marked);
}

void mark(SwitchButton &button, bool marked)
{
    button.setCheck(marked);
}

void mark(tabButton &button, bool marked)
{
    button.setTabCheck(marked);
}

template <class Button> ButtonSubject wrap(QWidget *parent)
{
    auto button = std::make_unique<Open<Button>>(parent);
    Open<Button> &open = *button;
    open.resize(kFrame);
    ButtonSubject subject;
    subject.button = std::move(button);
    subject.act = [&open](Action action, const QPoint &position) {
        PointerEvents::call(open, action, position);
    };
    subject.setPictures = [&open](const QString &first, const QString &second) {
        setPictures(static_cast<Button &>(open), first, second);
    };
    subject.mark = [&open](bool marked) {
        mark(static_cast<Button &>(open), marked);
    };
    return subject;
}

QVector<QImage> framesOf(const QImage &strip, int count, const QVector<int> &indexes)
{
    QVector<QImage> frames;
    for (const int index : indexes) {
        const QPoint topLeft(strip.width() * index / count, 0);
        frames << strip.copy(QRect(topLeft, kFrame))
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    return frames;
}

QImage swatch(bool framed)
{
    QImage picture(kFrame, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::cyan);
    if (framed) {
        QPainter painter(&picture);
        painter.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.drawRect(1, 1, kFrame.width() - 2, kFrame.height() - 2);
    }
    return picture;
}

} // namespace

ButtonSubject ButtonSubject::createBare(const QString &name, QWidget *parent)
{
    static const QHash<QString, ButtonSubject (*)(QWidget *)> kClasses = {
        {"ColorButton", wrap<ColorButton>},   {"FuncButton", wrap<FuncButton>},
        {"IconButton", wrap<IconButton>},     {"ImageButton", wrap<ImageButton>},
        {"MButton", wrap<MButton>},           {"ProfileButton", wrap<ProfileButton>},
        {"SwitchButton", wrap<SwitchButton>}, {"tabButton", wrap<tabButton>},
    };
    return kClasses.value(name)(parent);
}

ButtonSubject ButtonSubject::create(const ButtonRules &rules, const QTemporaryDir &folder,
                                    QWidget *parent, int spareColumns)
{
    ButtonSubject subject = createBare(rules.name, parent);
    if (!rules.hasPictures()) {
        subject.looks = {swatch(false), swatch(true)};
        return subject;
    }
    const QSize strip(kFrame.width() * rules.frames + spareColumns, kFrame.height());
    subject.pictures << StripedPicture::save(folder, strip)
                     << StripedPicture::saveOther(folder, strip);
    subject.setPictures(subject.pictures.at(0), subject.pictures.at(1));
    subject.looks = framesOf(StripedPicture::paint(strip), rules.frames, rules.shownOfFirst)
        + framesOf(StripedPicture::paintOther(strip), rules.frames, rules.shownOfSecond);
    return subject;
}
