// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Controls.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QVBoxLayout>

Controls::Controls(QWidget *parent)
    : QFrame(parent)
    , m_enabled(new QCheckBox("Enabled", this))
    , m_checked(new QCheckBox("Checked", this))
    , m_caption(new QLineEdit("Open", this))
    , m_value(new QSlider(Qt::Horizontal, this))
    , m_report(new QLabel("Click a live widget", this))
{
    constexpr int kCaptionLength = 8; // fits the narrowest specimen

    setObjectName("controls");
    setFixedWidth(216);
    m_enabled->setChecked(true);
    m_caption->setMaxLength(kCaptionLength);
    m_value->setRange(0, 10000);
    m_value->setValue(6200);
    m_report->setObjectName("report");

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 16, 18, 18);
    layout->setSpacing(8);
    addHeading(layout, "LIVE WIDGETS");
    layout->addWidget(m_enabled);
    layout->addWidget(m_checked);
    layout->addSpacing(10);
    addHeading(layout, "CAPTION");
    layout->addWidget(m_caption);
    layout->addSpacing(10);
    addHeading(layout, "VALUE");
    layout->addWidget(m_value);
    layout->addSpacing(10);
    addHeading(layout, "LAST SIGNAL");
    layout->addWidget(m_report);

    connect(m_enabled, &QCheckBox::toggled, this, &Controls::enabledChanged);
    connect(m_checked, &QCheckBox::toggled, this, &Controls::checkedChanged);
    connect(m_caption, &QLineEdit::textChanged, this, &Controls::captionChanged);
    connect(m_value, &QSlider::valueChanged, this, &Controls::valueChanged);
}

bool Controls::isSubjectEnabled() const
{
    return m_enabled->isChecked();
}

bool Controls::isSubjectChecked() const
{
    return m_checked->isChecked();
}

QString Controls::caption() const
{
    return m_caption->text();
}

int Controls::value() const
{
    return m_value->value();
}

void Controls::setSubjectChecked(bool checked)
{
    m_checked->setChecked(checked);
}

void Controls::report(const QString &className, const QString &signal)
{
    m_report->setText(className + "\n" + signal);
}

void Controls::addHeading(QVBoxLayout *layout, const QString &text)
{
    auto *heading = new QLabel(text, this);
    heading->setObjectName("heading");
    layout->addWidget(heading);
}
