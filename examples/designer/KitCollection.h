// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "examples/designer/KitEntry.h"
#include "examples/designer/SampleStrips.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>
#include <vector>

/// The plugin that adds the widget kit to Qt Designer's widget box and to QUiLoader.
///
/// The title of IconButton, FuncButton and ProfileButton is a constructor argument, not a property,
/// so a form creates them without a title. Set that of a ProfileButton with SetTitle(). Promote the
/// other two to a subclass that passes its title to the constructor.
class KitCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetCollectionInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    KitCollection();

    /// One entry for each class of the kit, owned by the collection.
    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    SampleStrips m_samples;
    std::vector<std::unique_ptr<KitEntry>> m_entries;
};
