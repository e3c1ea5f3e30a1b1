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

/// Makes kit widgets dressed in the gallery's sample pictures, each with the size that suits them
/// and owned by the given parent.
namespace Specimens {

enum class Look { Normal, Hover, Pressed };

/// Where the sample picture \a name is found.
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

/// Brings \a button into \a look by events like those of a pointer, then closes it to real ones.
void freeze(QAbstractButton *button, Look look);

} // namespace Specimens
