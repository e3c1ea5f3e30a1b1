// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/designer/KitEntry.h"

#include "examples/designer/SampleStrips.h"

#include <QIcon>
#include <QWidget>

#include <utility>

KitEntry::KitEntry(KitClass kitClass, SampleStrips *samples)
    : m_class(std::move(kitClass))
    , m_samples(samples)
{ }

QString KitEntry::name() const
{
    return m_class.name;
}

QString KitEntry::group() const
{
    return "FW Update widgets";
}

QString KitEntry::toolTip() const
{
    return m_class.purpose;
}

QString KitEntry::whatsThis() const
{
    return {};
}

QString KitEntry::includeFile() const
{
    return QString("widgets/%1.h").arg(m_class.name);
}

QIcon KitEntry::icon() const
{
    return {};
}

bool KitEntry::isContainer() const
{
    // Only this class is meant as a background for other widgets.
    return m_class.name == "CustomArea";
}

QString KitEntry::domXml() const
{
    // An object with the name of its class would hide the class in the generated code. One class
    // name starts with a lower-case letter.
    return QString(R"(<ui language="c++"><widget class="%1" name="%2"><property name="geometry">)"
                   "<rect><x>0</x><y>0</y><width>%3</width><height>%4</height></rect>"
                   "</property></widget></ui>")
        .arg(m_class.name, m_class.name.toLower())
        .arg(m_class.size.width())
        .arg(m_class.size.height());
}

bool KitEntry::isInitialized() const
{
    return m_inDesigner;
}

void KitEntry::initialize(QDesignerFormEditorInterface * /*core*/)
{
    m_inDesigner = true;
}

QWidget *KitEntry::createWidget(QWidget *parent)
{
    QWidget *widget = m_class.make(parent);
    if (m_inDesigner && m_class.dress) {
        m_class.dress(widget, *m_samples);
    }
    return widget;
}
