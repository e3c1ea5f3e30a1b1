// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ButtonRules.h"

#include <QtTest>

namespace {

ButtonRules colorButton()
{
    ButtonRules rules{"ColorButton"};
    rules.isRadio = true;
    rules.hasFlatStyle = true;
    rules.crossingNeedsEnabled = true;
    rules.mouseNeedsEnabled = true;
    rules.lookWhenMarked = 1;
    return rules;
}

ButtonRules funcButton()
{
    ButtonRules rules{"FuncButton"};
    rules.centresPicture = true;
    rules.frames = 1;
    rules.shownOfFirst = {0};
    rules.shownOfSecond = {0, 0}; // hovered and pressed
    rules.lookWhenMarked = 1;
    return rules;
}

ButtonRules imageButton()
{
    ButtonRules rules{"ImageButton"};
    rules.hasFlatStyle = true;
    rules.crossingNeedsEnabled = true;
    rules.mouseNeedsEnabled = true;
    rules.clicksByItself = true;
    rules.frames = 4;
    rules.shownOfFirst = {0, 1, 2, 3};
    rules.lookWhenDisabled = 3;
    return rules;
}

ButtonRules mButton()
{
    ButtonRules rules{"MButton"};
    rules.hasFlatStyle = true;
    rules.drawsText = true;
    rules.crossingNeedsEnabled = true;
    rules.mouseNeedsEnabled = true;
    rules.frames = 2;
    rules.shownOfFirst = {0, 1, 0};
    rules.lookWhenDisabled = 1;
    return rules;
}

ButtonRules switchButton()
{
    ButtonRules rules{"SwitchButton"};
    rules.flips = true;
    rules.frames = 4;
    rules.shownOfFirst = {0, 1, 2};
    rules.shownOfSecond = {0, 1, 2};
    return rules;
}

ButtonRules tabButton()
{
    ButtonRules rules{"tabButton"};
    rules.crossingNeedsEnabled = true;
    rules.centresPicture = true;
    rules.frames = 4;
    rules.shownOfFirst = {0, 1, 2};
    rules.lookWhenMarked = 2;
    return rules;
}

/// IconButton or ProfileButton, which differ in their titles only.
ButtonRules titledButton(const QString &name)
{
    ButtonRules rules{name};
    rules.centresPicture = true;
    rules.keepsPictures = true;
    rules.frames = 3;
    rules.shownOfFirst = {0, 1, 2};
    return rules;
}

} // namespace

const QVector<ButtonRules> &ButtonRules::all()
{
    static const QVector<ButtonRules> rules
        = {colorButton(),  funcButton(), titledButton("IconButton"),
           imageButton(),  mButton(),    titledButton("ProfileButton"),
           switchButton(), tabButton()};
    return rules;
}

void ButtonRules::addRows(bool (*applies)(const ButtonRules &rules))
{
    QTest::addColumn<ButtonRules>("rules");

    for (const ButtonRules &rules : all()) {
        if (applies == nullptr || applies(rules)) {
            QTest::newRow(qPrintable(rules.name)) << rules;
        }
    }
}
