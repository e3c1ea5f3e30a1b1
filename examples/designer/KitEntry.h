// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>
#include <QString>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

class QWidget;
class SampleStrips;

/// What Designer needs to know of one class of the kit.
struct KitClass
{
    QString name;
    QString purpose; ///< one line
    QSize size; ///< of a new widget, in pixels
    std::function<QWidget *(QWidget *parent)> make;
    std::function<void(QWidget *, SampleStrips &)> dress; ///< gives it sample pictures; may be null
};

/// One class of the kit in Designer's widget box.
class KitEntry : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    /// \a samples is not owned and outlives the entry.
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
    /// Only Designer calls this; QUiLoader does not.
    void initialize(QDesignerFormEditorInterface *core) override;

    /// In Designer the widget gets sample pictures to be seen by. In a loaded form it stays as its
    /// constructor leaves it: some classes would keep the samples in front of the real pictures.
    QWidget *createWidget(QWidget *parent) override;

private:
    KitClass m_class;
    SampleStrips *m_samples;
    bool m_inDesigner = false;
};
