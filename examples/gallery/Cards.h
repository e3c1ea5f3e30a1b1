// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

class Card;
class Controls;
class QWidget;

/// Creates the card for each class of the kit and connects its live specimens to the controls.
namespace Cards {

Card *forMButton(QWidget *parent, Controls *controls);
Card *forImageButton(QWidget *parent, Controls *controls);
Card *forTabButton(QWidget *parent, Controls *controls);
Card *forColorButton(QWidget *parent, Controls *controls);
Card *forFuncButton(QWidget *parent, Controls *controls);
Card *forIconButton(QWidget *parent, Controls *controls);
Card *forProfileButton(QWidget *parent, Controls *controls);
Card *forSwitchButton(QWidget *parent, Controls *controls);
Card *forCustomProgressBar(QWidget *parent, Controls *controls);
Card *forCustomArea(QWidget *parent);
Card *forNinePatchPainter(QWidget *parent);

} // namespace Cards
