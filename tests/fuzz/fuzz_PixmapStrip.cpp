// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Input: a class and a frame count, then the size of a picture to create or, after a width of 0, a
// picture file.

#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzBytes.h"
#include "tests/support/PointerEvents.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ImageButton.h"
#include "widgets/MButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>

#include <cstdlib>

using PointerEvents::Open;

namespace {

// Most classes have no selected state.
void mark(QWidget & /*button*/) { }

void mark(tabButton &button)
{
    button.setTabCheck(true);
}

void mark(FuncButton &button)
{
    button.setCheck(true);
}

void mark(SwitchButton &button)
{
    button.setCheck(true);
}

template <class Button> void paintStates(Open<Button> &button)
{
    button.setEnabled(true);
    for (const auto action :
         {PointerEvents::Leave, PointerEvents::Enter, PointerEvents::LeftPress}) {
        PointerEvents::call(button, action);
        button.grab();
    }
    button.setEnabled(false);
    button.grab();
}

/// Paints all looks of a button.
template <class Button> void paint(Open<Button> &button)
{
    button.resize(40, 20);
    paintStates(button);
    mark(button);
    paintStates(button);
}

template <class Button> void paintTitled(const QString &path, int count)
{
    Open<Button> button(nullptr, "Title");
    button.setBkgPixmap(path, count);
    button.setIconPixmap(path, count, QRect(count, 2, 10, 10));
    paint(button);
}

template <class Button> void paintStrip(const QString &path)
{
    Open<Button> button;
    button.setPixmap(path);
    paint(button);
}

void paintClass(int which, const QString &path, int count)
{
    switch (which % 7) {
    case 0: {
        Open<MButton> button;
        button.setPixmap(path, count);
        paint(button);
        break;
    }
    case 1:
        paintStrip<ImageButton>(path);
        break;
    case 2:
        paintStrip<tabButton>(path);
        break;
    case 3: {
        Open<FuncButton> button(nullptr, "Title");
        button.setPixmap(path, path);
        paint(button);
        break;
    }
    case 4: {
        Open<SwitchButton> button;
        button.setPixmap(path, path);
        paint(button);
        break;
    }
    case 5:
        paintTitled<IconButton>(path, count);
        break;
    default:
        paintTitled<ProfileButton>(path, count);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    FuzzApplication::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath("strip");

    FuzzBytes input(data, size);
    const int which = input.byte();
    const int count = int(input.byte()) - 128;
    const int width = input.byte();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::abort();
    }
    if (width == 0) {
        file.write(input.rest());
    } else {
        const int height = input.byte();
        file.write(QString("P5 %1 %2 255\n").arg(width).arg(height).toLatin1());
        file.write(QByteArray(width * height, static_cast<char>(input.byte())));
    }
    file.close();
    // Skips huge pictures, for which the image library needs too much memory.
    const QSize picture = QImageReader(path).size();
    if (qint64(picture.width()) * picture.height() <= 0x100000) {
        paintClass(which, path, count);
    }
    return 0;
}
