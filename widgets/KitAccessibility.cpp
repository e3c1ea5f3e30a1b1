// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/KitAccessibility.h"

#include "widgets/CustomProgressBar.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QHash>

namespace {

/// The words that \a button paints.
QString captionOf(const QAbstractButton *button)
{
    if (const auto *tab = qobject_cast<const tabButton *>(button)) {
        return tab->tabText;
    }
    if (const auto *function = qobject_cast<const FuncButton *>(button)) {
        return function->title();
    }
    if (const auto *icon = qobject_cast<const IconButton *>(button)) {
        return icon->title();
    }
    if (const auto *profile = qobject_cast<const ProfileButton *>(button)) {
        return profile->title();
    }
    return button->text();
}

class AccessibleButton : public QAccessibleWidget
{
public:
    AccessibleButton(QAbstractButton *button, QAccessible::Role role)
        : QAccessibleWidget(button, role)
        , m_button(button)
    { }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name) {
            return name();
        }
        const QString text = QAccessibleWidget::text(kind);
        // A tool tip that is the name already need not be read a second time.
        const bool repeats = kind == QAccessible::Description && text == name();
        return repeats ? QString() : text;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.pressed = m_button->isDown();
        if (const auto *tab = qobject_cast<const tabButton *>(m_button)) {
            state.selectable = true;
            state.selected = tab->isCheck();
        } else if (const auto *function = qobject_cast<const FuncButton *>(m_button)) {
            state.selectable = true;
            state.selected = function->isCheck();
        } else if (const auto *flip = qobject_cast<const SwitchButton *>(m_button)) {
            state.checkable = true;
            state.checked = flip->isCheck();
        } else if (m_button->isCheckable()) {
            state.checkable = true;
            state.checked = m_button->isChecked();
        }
        return state;
    }

    QStringList actionNames() const override
    {
        const bool checks = state().checkable;
        const QString action = checks ? toggleAction() : pressAction();
        return QStringList(action) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name != pressAction() && name != toggleAction()) {
            QAccessibleWidget::doAction(name);
            return;
        }
        if (!m_button->isEnabled()) {
            return;
        }
        // A click from the keyboard leaves the switch as it is; only a mouse press flips it.
        if (auto *flip = qobject_cast<SwitchButton *>(m_button)) {
            flip->setCheck(!flip->isCheck());
        }
        m_button->click();
    }

private:
    QString name() const
    {
        QString words = m_button->accessibleName();
        if (words.isEmpty()) {
            words = captionOf(m_button);
        }
        if (words.isEmpty()) {
            words = m_button->toolTip();
        }
        return words.isEmpty() ? QAccessibleWidget::text(QAccessible::Name) : words;
    }

    QAbstractButton *m_button;
};

/// Tells of new values when they get painted, so that the bar itself need not know of readers.
class ValueReporter : public QObject
{
public:
    explicit ValueReporter(CustomProgressBar *bar)
        : QObject(bar)
        , m_bar(bar)
        , m_reported(bar->value())
    {
        bar->installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && m_bar->value() != m_reported) {
            m_reported = m_bar->value();
            QAccessibleValueChangeEvent change(m_bar, m_reported);
            QAccessible::updateAccessibility(&change);
        }
        return false;
    }

private:
    CustomProgressBar *m_bar;
    int m_reported;
};

class AccessibleProgressBar : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleProgressBar(CustomProgressBar *bar)
        : QAccessibleWidget(bar, QAccessible::ProgressBar)
        , m_bar(bar)
    {
        new ValueReporter(bar);
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface *>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value) {
            return QString("%1 %").arg(m_bar->value() * 100 / m_bar->maximum());
        }
        return QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

    QVariant currentValue() const override { return m_bar->value(); }
    QVariant maximumValue() const override { return m_bar->maximum(); }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant & /*value*/) override { }

private:
    CustomProgressBar *m_bar;
};

QAccessibleInterface *describe(const QString &className, QObject *object)
{
    static const QHash<QString, QAccessible::Role> kRoles = {
        {"MButton", QAccessible::PushButton},    {"ImageButton", QAccessible::PushButton},
        {"tabButton", QAccessible::PageTab},     {"ColorButton", QAccessible::RadioButton},
        {"FuncButton", QAccessible::PushButton}, {"IconButton", QAccessible::PushButton},
        {"SwitchButton", QAccessible::CheckBox}, {"ProfileButton", QAccessible::PushButton},
    };
    if (auto *bar = qobject_cast<CustomProgressBar *>(object)) {
        return new AccessibleProgressBar(bar);
    }
    auto *button = qobject_cast<QAbstractButton *>(object);
    const auto role = kRoles.find(className);
    if (button == nullptr || role == kRoles.end()) {
        return nullptr;
    }
    return new AccessibleButton(button, *role);
}

} // namespace

void KitAccessibility::install()
{
    QAccessible::installFactory(describe);
}
