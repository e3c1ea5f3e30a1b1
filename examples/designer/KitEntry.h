// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>
#include <QString>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

class QWidget;
class SampleStrips;

/// Describes one class of the kit to Designer.
struct KitClass
{
    QString name;
    QString purpose; ///< the tool tip
    QSize size; ///< the size of a new widget, in pixels
    std::function<QWidget *(QWidget *parent)> make;
    std::function<void(QWidget *, SampleStrips &)> dress; ///< sets sample pictures; may be null
};

/// One class of the kit in Designer's widget box.
class KitEntry : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    /// \a samples is not owned and must outlive the entry.
    KitEntry(KitClass kitClass, SampleStrips *samples);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QString domXml() const override;

    bool isInitialized() const override;
    /// Called by Designer, but not by QUiLoader.
    void initialize(QDesignerFormEditorInterface *core) override;

    /// Sets sample pictures in Designer, where the widget would be invisible otherwise. In a loaded
    /// form it must not: classes that append frames would show the samples instead of the real
    /// pictures.
    QWidget *createWidget(QWidget *parent) override;

private:
    KitClass m_class;
    SampleStrips *m_samples;
    bool m_inDesigner = false;
};
