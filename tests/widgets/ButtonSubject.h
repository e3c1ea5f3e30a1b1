// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PointerEvents.h"

#include <QAbstractButton>
#include <QImage>
#include <QVector>

#include <functional>
#include <memory>

class QTemporaryDir;

/// One of the kit's buttons, dressed in pictures, behind a face that is the same for all classes.
struct ButtonSubject
{
    std::unique_ptr<QAbstractButton> button;

    /// Calls the handler directly, past Qt's own filter for disabled widgets.
    std::function<void(PointerEvents::Action, const QPoint &)> act;

    /// What the enabled button paints when normal, hovered and pressed, in this order; then the
    /// same for its other position if it has one.
    QVector<QImage> looks;

    /// A button of the class \a name, without a caption, its pictures saved in \a folder.
    static ButtonSubject create(const QString &name, const QTemporaryDir &folder,
                                QWidget *parent = nullptr);
};
