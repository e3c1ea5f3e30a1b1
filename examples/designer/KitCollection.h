// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "examples/designer/KitEntry.h"
#include "examples/designer/SampleStrips.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>
#include <vector>

/// The plugin that puts the widget kit into Qt Designer's widget box and into reach of QUiLoader.
///
/// The three buttons with a title take it at construction and have no property for it, so a form
/// makes them without one. A ProfileButton gets it by SetTitle; promote the other two to classes of
/// your own that pass it.
class KitCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetCollectionInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    KitCollection();

    /// One entry per class of the kit; they belong to the collection.
    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    SampleStrips m_samples;
    std::vector<std::unique_ptr<KitEntry>> m_entries;
};
