// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/models/ButtonRules.h"
#include "tests/support/PointerEvents.h"

#include <QAbstractButton>
#include <QImage>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

class QTemporaryDir;

/// One of the kit's buttons behind an interface that is the same for all classes.
struct ButtonSubject
{
    std::unique_ptr<QAbstractButton> button;

    /// Calls the handler directly, because Qt delivers no mouse events to a disabled widget.
    std::function<void(PointerEvents::Action, const QPoint &)> act;

    /// Sets the pictures by their paths. Does nothing in a class without pictures, or with the
    /// second one in a class that has only one.
    std::function<void(const QString &first, const QString &second)> setPictures;
    QStringList pictures; ///< the paths of the two that create() has set

    /// Sets the mark, in a class that has one.
    std::function<void(bool)> mark;

    /// What the button paints when normal, hovered and pressed, in this order. A switch has the
    /// same again for its other position, an ImageButton has its disabled look at the end.
    QVector<QImage> looks;

    /// A button without caption and pictures.
    static ButtonSubject createBare(const QString &name, QWidget *parent = nullptr);

    /// A button without caption, with pictures in \a folder. Each strip has \a spareColumns more
    /// than its frames need.
    static ButtonSubject create(const ButtonRules &rules, const QTemporaryDir &folder,
                                QWidget *parent = nullptr, int spareColumns = 0);
};
