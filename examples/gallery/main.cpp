// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/DocumentPictures.h"
#include "examples/gallery/Gallery.h"
#include "widgets/KitAccessibility.h"
#include "widgets/QtCompat.h"

#include <QApplication>
#include <QCommandLineParser>

#include <algorithm>
#include <cstring>

namespace {

/// Saving pictures needs no display. Qt has to know this before it parses the arguments.
bool makesPictures(int argc, char *argv[])
{
    return std::any_of(argv, argv + argc, [](const char *argument) {
        return std::strncmp(argument, "--save", 6) == 0;
    });
}

void setDefault(const char *name, const char *value)
{
    if (!qEnvironmentVariableIsSet(name)) {
        qputenv(name, value);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (makesPictures(argc, argv)) {
        setDefault("QT_QPA_PLATFORM", "offscreen");
    }
    setDefault("QT_FONT_DPI", "72"); // a point is a pixel, as for the sample pictures
    QtCompat::setScaling(true);
    QApplication application(argc, argv);

    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);

    QCommandLineParser parser;
    parser.setApplicationDescription("Shows all classes of the widget kit in all looks.");
    parser.addHelpOption();
    const QCommandLineOption save("save", "Saves a picture of the window and exits.", "FILE.png");
    const QCommandLineOption saveDocuments("save-documents",
                                           "Saves the pictures of the manual and exits.", "FOLDER");
    parser.addOptions({save, saveDocuments});
    parser.process(application);

    KitAccessibility::install();
    Gallery gallery;
    if (parser.isSet(save)) {
        return gallery.picture().save(parser.value(save)) ? 0 : 1;
    }
    if (parser.isSet(saveDocuments)) {
        gallery.picture(); // applies the layout
        return DocumentPictures::save(gallery, parser.value(saveDocuments)) ? 0 : 1;
    }
    gallery.show();
    return QApplication::exec();
}
