// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/DocumentPictures.h"

#include "examples/gallery/Card.h"
#include "examples/gallery/Gallery.h"
#include "examples/gallery/Specimens.h"
#include "examples/gallery/StripDiagram.h"

#include <QDir>
#include <QPixmap>

namespace {

using Strips = QVector<StripDiagram::Strip>;

StripDiagram::Strip strip(const QString &title, const QString &name, const QStringList &frames)
{
    return {title, Specimens::path(name), frames};
}

QVector<QPair<QString, Strips>> strips()
{
    const QStringList three = {"normal", "hover", "pressed"};
    return {
        {"MButton", {strip("Strip", "action.png", {"normal, pressed", "hover, disabled"})}},
        {"ImageButton", {strip("Strip", "play.png", three + QStringList{"disabled"})}},
        {"tabButton",
         {strip("Strip", "tab.png", {"normal", "hover", "pressed, selected", "never shown"})}},
        {"SwitchButton",
         {strip("On", "switch-on.png", three + QStringList{"never shown"}),
          strip("Off", "switch-off.png", three + QStringList{"never shown"})}},
        {"FuncButton",
         {strip("Normal", "func-normal.png", {"normal"}),
          strip("Active", "func-active.png", {"hover, pressed, selected"})}},
        {"IconButton",
         {strip("Background", "icon-background.png", three),
          strip("Icon", "icon-icon.png", three)}},
        {"ProfileButton",
         {strip("Background", "profile-background.png", three),
          strip("Icon", "profile-icon.png", {"every state"})}},
    };
}

} // namespace

bool DocumentPictures::save(const Gallery &gallery, const QString &folder)
{
    constexpr int kPatchBorder = 16;

    if (!QDir().mkpath(folder)) {
        return false;
    }
    const QDir directory(folder);
    const auto path = [&](const QString &name) {
        return directory.filePath(name + ".png");
    };

    bool saved = true;
    for (Card *card : gallery.cards()) {
        saved &= card->grab().save(path(card->className()));
    }
    for (const auto &classStrips : strips()) {
        saved &= StripDiagram::draw(classStrips.second).save(path(classStrips.first + "-strip"));
    }
    const QImage patch = StripDiagram::drawPatch(Specimens::path("patch.png"), kPatchBorder);
    return patch.save(path("NinePatchPainter-strip")) && saved;
}
