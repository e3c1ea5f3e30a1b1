// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>

#include <optional>

/// What makes one of the kit's buttons different from the others. All tests that compare the eight
/// classes take their rows from here.
struct ButtonRules
{
    QString name = {};

    bool isRadio = false; ///< a QRadioButton that shows nothing but whether it is checked
    bool hasFlatStyle = false; ///< sets a style sheet that removes the border
    bool drawsText = false; ///< text(), which the others ignore

    bool crossingNeedsEnabled = false; ///< ignores enter and leave while disabled
    bool mouseNeedsEnabled = false; ///< ignores press and release while disabled
    bool clicksByItself = false; ///< emits clicked() on release, never calls the base class
    bool flips = false; ///< changes its mark on each press

    bool centresPicture = false; ///< else the picture is at the top left
    bool keepsPictures = false; ///< a picture that is set later does not replace the first
    int frames = 0; ///< in each picture
    /// The frames that make ButtonSubject::looks, of the first picture and then of the second.
    QVector<int> shownOfFirst = {};
    QVector<int> shownOfSecond = {}; ///< empty if there is only one picture

    // Indexes of ButtonSubject::looks. Without a value the pointer's state chooses the look.
    std::optional<int> lookWhenDisabled = {};
    std::optional<int> lookWhenMarked = {};

    /// The number of the button's looks for one position of a switch.
    static constexpr int kLooksOfPosition = 3;

    bool hasPictures() const { return frames > 0; }
    /// Whether the owner can mark it. The mark is not QAbstractButton's checked state.
    bool hasMark() const { return flips || (lookWhenMarked && !isRadio); }

    /// The eight classes, sorted by name.
    static const QVector<ButtonRules> &all();

    /// Adds the column "rules" and a row for each class to which \a applies.
    static void addRows(bool (*applies)(const ButtonRules &rules) = nullptr);
};

Q_DECLARE_METATYPE(ButtonRules)
