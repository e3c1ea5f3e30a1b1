// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/widgets/ButtonSubject.h"

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
constexpr QSize kPair(60, 20);
constexpr QSize kTriple(90, 20);
constexpr QSize kFour(120, 20);

/// Frame \a index of a striped picture, as wide as the button.
QImage frame(const QImage &strip, int index)
{
    return strip.copy(QRect(QPoint(index * kFrame.width(), 0), kFrame))
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QVector<QImage> frames(const QImage &strip, const QVector<int> &indexes)
{
    QVector<QImage> result;
    for (const int index : indexes) {
        result << frame(strip, index);
    }
    return result;
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

template <class Button, class... Arguments>
ButtonSubject made(const QVector<QImage> &looks, const std::function<void(Button &)> &dress,
                   Arguments... arguments)
{
    auto button = std::make_unique<Open<Button>>(arguments...);
    button->resize(kFrame);
    dress(*button);
    const auto act = [raw = button.get()](Action action, const QPoint &position) {
        PointerEvents::call(*raw, action, position);
    };
    return {std::move(button), act, looks};
}

template <class Button> ButtonSubject titled(const QTemporaryDir &folder, QWidget *parent)
{
    return made<Button>(
        frames(StripedPicture::paint(kTriple), {0, 1, 2}),
        [&](Button &button) { button.setBkgPixmap(StripedPicture::save(folder, kTriple), 3); },
        parent, QString());
}

} // namespace

ButtonSubject ButtonSubject::create(const QString &name, const QTemporaryDir &folder,
                                    QWidget *parent)
{
    const QString four = StripedPicture::save(folder, kFour);
    const QVector<QImage> fourLooks = frames(StripedPicture::paint(kFour), {0, 1, 2});
    if (name == "MButton") {
        return made<MButton>(
            frames(StripedPicture::paint(kPair), {0, 1, 0}),
            [&](MButton &one) { one.setPixmap(StripedPicture::save(folder, kPair), 0); }, parent);
    }
    if (name == "ImageButton") {
        return made<ImageButton>(
            fourLooks, [&](ImageButton &one) { one.setPixmap(four); }, parent);
    }
    if (name == "tabButton") {
        return made<tabButton>(
            fourLooks, [&](tabButton &one) { one.setPixmap(four); }, parent);
    }
    if (name == "ColorButton") {
        return made<ColorButton>(
            {swatch(false), swatch(true)}, [](ColorButton & /*one*/) {}, parent);
    }
    if (name == "FuncButton") {
        const QImage active = frame(StripedPicture::paintOther(kFrame), 0);
        return made<FuncButton>(
            {frame(StripedPicture::paint(kFrame), 0), active, active},
            [&](FuncButton &one) {
                one.setPixmap(StripedPicture::save(folder, kFrame),
                              StripedPicture::saveOther(folder, kFrame));
            },
            parent, QString());
    }
    if (name == "IconButton") {
        return titled<IconButton>(folder, parent);
    }
    if (name == "SwitchButton") {
        return made<SwitchButton>(
            fourLooks + frames(StripedPicture::paintOther(kFour), {0, 1, 2}),
            [&](SwitchButton &one) {
                one.setPixmap(StripedPicture::saveOther(folder, kFour), four);
            },
            parent);
    }
    Q_ASSERT(name == "ProfileButton");
    return titled<ProfileButton>(folder, parent);
}
