// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PointerEvents.h"

#include <QPair>
#include <QStringList>
#include <QVector>

/// What each button of the kit makes of each event, enabled and disabled: where they differ is what
/// they are for.
namespace ButtonRules {

using namespace PointerEvents;

inline const QStringList kNothing;
inline const QStringList kPress{"pressed"};
inline const QStringList kClick{"released", "clicked(false)"};
inline const QStringList kOwnClick{"clicked(false)"};
inline const QStringList kCheck{"toggled(true)", "released", "clicked(true)"};

struct Row
{
    Action action;
    bool enabled;
    int shown; ///< the look after the event, one of ButtonSubject::looks
    bool repaints; ///< by its own update()
    QStringList emitted;
};

/// Heeds all four events only while enabled, and only the left mouse button.
inline const QVector<Row> kGuarded = {
    {Enter, true, 1, true, kNothing},         {Enter, false, 0, false, kNothing},
    {Leave, true, 0, true, kNothing},         {Leave, false, 1, false, kNothing},
    {LeftPress, true, 2, true, kPress},       {LeftPress, false, 1, false, kNothing},
    {LeftRelease, true, 1, true, kClick},     {LeftRelease, false, 2, false, kNothing},
    {RightPress, true, 1, false, kNothing},   {RightPress, false, 1, false, kNothing},
    {RightRelease, true, 2, false, kNothing}, {RightRelease, false, 2, false, kNothing},
};

/// As above, but the base class gets to know of nothing.
inline const QVector<Row> kClicksByItself = {
    {Enter, true, 1, true, kNothing},         {Enter, false, 0, false, kNothing},
    {Leave, true, 0, true, kNothing},         {Leave, false, 1, false, kNothing},
    {LeftPress, true, 2, true, kNothing},     {LeftPress, false, 1, false, kNothing},
    {LeftRelease, true, 1, true, kOwnClick},  {LeftRelease, false, 2, false, kNothing},
    {RightPress, true, 1, false, kNothing},   {RightPress, false, 1, false, kNothing},
    {RightRelease, true, 2, false, kNothing}, {RightRelease, false, 2, false, kNothing},
};

/// Only enter and leave look at the enabled flag.
inline const QVector<Row> kHalfGuarded = {
    {Enter, true, 1, true, kNothing},         {Enter, false, 0, false, kNothing},
    {Leave, true, 0, true, kNothing},         {Leave, false, 1, false, kNothing},
    {LeftPress, true, 2, true, kPress},       {LeftPress, false, 2, true, kPress},
    {LeftRelease, true, 1, true, kClick},     {LeftRelease, false, 1, true, kClick},
    {RightPress, true, 1, false, kNothing},   {RightPress, false, 1, false, kNothing},
    {RightRelease, true, 2, false, kNothing}, {RightRelease, false, 2, false, kNothing},
};

/// No handler looks at the enabled flag.
inline const QVector<Row> kUnguarded = {
    {Enter, true, 1, true, kNothing},         {Enter, false, 1, true, kNothing},
    {Leave, true, 0, true, kNothing},         {Leave, false, 0, true, kNothing},
    {LeftPress, true, 2, true, kPress},       {LeftPress, false, 2, true, kPress},
    {LeftRelease, true, 1, true, kClick},     {LeftRelease, false, 1, true, kClick},
    {RightPress, true, 1, false, kNothing},   {RightPress, false, 1, false, kNothing},
    {RightRelease, true, 2, false, kNothing}, {RightRelease, false, 2, false, kNothing},
};

/// As above; looks 3 to 5 are those of the switched-on position, to which each left press flips it.
inline const QVector<Row> kFlips = {
    {Enter, true, 1, true, kNothing},         {Enter, false, 1, true, kNothing},
    {Leave, true, 0, true, kNothing},         {Leave, false, 0, true, kNothing},
    {LeftPress, true, 5, true, kPress},       {LeftPress, false, 5, true, kPress},
    {LeftRelease, true, 4, true, kClick},     {LeftRelease, false, 4, true, kClick},
    {RightPress, true, 1, false, kNothing},   {RightPress, false, 1, false, kNothing},
    {RightRelease, true, 5, false, kNothing}, {RightRelease, false, 5, false, kNothing},
};

/// Has no pointer look at all; look 1 is the checked one. Every mouse button repaints it.
inline const QVector<Row> kRadio = {
    {Enter, true, 0, true, kNothing},        {Enter, false, 0, false, kNothing},
    {Leave, true, 0, true, kNothing},        {Leave, false, 0, false, kNothing},
    {LeftPress, true, 0, true, kPress},      {LeftPress, false, 0, false, kNothing},
    {LeftRelease, true, 1, true, kCheck},    {LeftRelease, false, 0, false, kNothing},
    {RightPress, true, 0, true, kNothing},   {RightPress, false, 0, false, kNothing},
    {RightRelease, true, 0, true, kNothing}, {RightRelease, false, 0, false, kNothing},
};

inline const QVector<QPair<QString, QVector<Row>>> kRules = {
    {"MButton", kGuarded},    {"ImageButton", kClicksByItself}, {"tabButton", kHalfGuarded},
    {"ColorButton", kRadio},  {"FuncButton", kUnguarded},       {"IconButton", kUnguarded},
    {"SwitchButton", kFlips}, {"ProfileButton", kUnguarded},
};

} // namespace ButtonRules
