// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Specimen.h"

#include <QLabel>
#include <QVBoxLayout>

Specimen::Specimen(QWidget *widget, const QString &label, Kind kind, QWidget *parent)
    : QWidget(parent)
    , m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(6);
    m_layout->addStretch();
    setWidget(widget);
    auto *caption = new QLabel(label, this);
    caption->setObjectName(kind == Live ? "liveLabel" : "lookLabel");
    m_layout->addWidget(caption, 0, Qt::AlignHCenter);
}

QWidget *Specimen::widget() const
{
    return m_widget;
}

void Specimen::setWidget(QWidget *widget)
{
    delete m_widget;
    m_widget = widget;
    m_layout->insertWidget(1, widget, 0, Qt::AlignHCenter);
}
