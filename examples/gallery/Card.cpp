// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Card.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

Card::Card(const QString &className, const QString &summary, QWidget *parent)
    : QFrame(parent)
    , m_layout(new QVBoxLayout(this))
    , m_className(className)
{
    setObjectName("card");
    m_layout->setContentsMargins(18, 14, 18, 14);
    m_layout->setSpacing(4);

    auto *name = new QLabel(className, this);
    name->setObjectName("className");
    m_layout->addWidget(name);
    auto *text = new QLabel(summary, this);
    text->setObjectName("summary");
    m_layout->addWidget(text);
    m_layout->addSpacing(8);
    addRow();
}

QString Card::className() const
{
    return m_className;
}

void Card::addRow()
{
    if (m_row != nullptr) {
        m_layout->addSpacing(10);
    }
    m_row = new QHBoxLayout;
    m_row->setSpacing(12);
    m_row->addStretch();
    m_layout->addLayout(m_row);
}

Specimen *Card::addLook(QWidget *widget, const QString &label)
{
    auto *specimen = new Specimen(widget, label, Specimen::Still, this);
    m_row->insertWidget(m_row->count() - 1, specimen);
    return specimen;
}

Specimen *Card::addLive(QWidget *widget, const QString &label)
{
    auto *specimen = new Specimen(widget, label, Specimen::Live, this);
    m_row->addWidget(specimen);
    return specimen;
}
