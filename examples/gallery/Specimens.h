// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QString>

class ColorButton;
class CustomProgressBar;
class FuncButton;
class IconButton;
class ImageButton;
class MButton;
class ProfileButton;
class QAbstractButton;
class QWidget;
class SwitchButton;
class tabButton;

/// Creates widgets of the kit with the gallery's sample pictures and a suitable size, owned by the
/// given parent.
namespace Specimens {

enum class Look { Normal, Hover, Pressed };

/// The resource path of the sample picture \a name.
QString path(const QString &name);

MButton *stretchedButton(QWidget *parent, const QString &caption);
MButton *plainButton(QWidget *parent);
ImageButton *imageButton(QWidget *parent);
tabButton *tab(QWidget *parent, const QString &caption);
ColorButton *swatch(QWidget *parent, const QColor &color);
FuncButton *functionButton(QWidget *parent, const QString &caption);
IconButton *iconButton(QWidget *parent, const QString &caption);
ProfileButton *profileButton(QWidget *parent, const QString &caption);
SwitchButton *lightSwitch(QWidget *parent, bool on);
CustomProgressBar *progressBar(QWidget *parent, int width, int value);

/// Sends pointer events to \a button until it has \a look, and makes it ignore real ones.
void freeze(QAbstractButton *button, Look look);

} // namespace Specimens
