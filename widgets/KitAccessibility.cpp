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

/// The caption that \a button paints.
QString captionOf(const QAbstractButton &button)
{
    if (const auto *tab = qobject_cast<const tabButton *>(&button)) {
        return tab->tabText;
    }
    if (const auto *function = qobject_cast<const FuncButton *>(&button)) {
        return function->title();
    }
    if (const auto *icon = qobject_cast<const IconButton *>(&button)) {
        return icon->title();
    }
    if (const auto *profile = qobject_cast<const ProfileButton *>(&button)) {
        return profile->title();
    }
    return button.text();
}

} // namespace

// Outside the namespace, for FuncButton to make it a friend.
class AccessibleKitButton : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text kind) const override
    {
        const QAbstractButton *const button = this->button();
        if (button == nullptr) {
            return {};
        }
        if (kind == QAccessible::Name) {
            return nameOf(*button);
        }
        const QString text = QAccessibleWidget::text(kind);
        // A tool tip that already serves as the name is not read a second time.
        const bool repeats = kind == QAccessible::Description && text == nameOf(*button);
        return repeats ? QString() : text;
    }

    QAccessible::State state() const override
    {
        const QAbstractButton *const button = this->button();
        if (button == nullptr) {
            return {};
        }
        QAccessible::State state = QAccessibleWidget::state();
        state.pressed = button->isDown();
        if (const auto *tab = qobject_cast<const tabButton *>(button)) {
            state.selectable = true;
            state.selected = tab->isCheck();
        } else if (const auto *function = qobject_cast<const FuncButton *>(button)) {
            state.selectable = true;
            state.selected = function->m_checked;
        } else if (const auto *flip = qobject_cast<const SwitchButton *>(button)) {
            state.checkable = true;
            state.checked = flip->isCheck();
        } else if (button->isCheckable()) {
            state.checkable = true;
            state.checked = button->isChecked();
        }
        return state;
    }

    QStringList actionNames() const override
    {
        if (button() == nullptr) {
            return {};
        }
        const bool checks = state().checkable;
        const QString action = checks ? toggleAction() : pressAction();
        return QStringList(action) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        QAbstractButton *const button = this->button();
        if (button == nullptr) {
            return;
        }
        if (name != pressAction() && name != toggleAction()) {
            QAccessibleWidget::doAction(name);
            return;
        }
        if (!button->isEnabled()) {
            return;
        }
        // A click from the keyboard leaves the switch as it is; only a mouse press flips it.
        if (auto *flip = qobject_cast<SwitchButton *>(button)) {
            flip->setCheck(!flip->isCheck());
        }
        button->click();
    }

private:
    /// Null once the button's destructor has run: a screen reader may still ask while its base
    /// class is being destroyed.
    QAbstractButton *button() const { return qobject_cast<QAbstractButton *>(object()); }

    QString nameOf(const QAbstractButton &button) const
    {
        QString words = button.accessibleName();
        if (words.isEmpty()) {
            words = captionOf(button);
        }
        if (words.isEmpty()) {
            words = button.toolTip();
        }
        return words.isEmpty() ? QAccessibleWidget::text(QAccessible::Name) : words;
    }
};

namespace {

/// Reports the value when the bar paints it, so that the bar does not depend on accessibility. Does
/// so in steps, since screen readers speak or beep at each report.
class ValueReporter : public QObject
{
public:
    explicit ValueReporter(CustomProgressBar *bar)
        : m_reported(stepOf(*bar))
    {
        bar->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *const bar = qobject_cast<CustomProgressBar *>(watched);
        if (bar != nullptr && event->type() == QEvent::Paint && stepOf(*bar) != m_reported) {
            m_reported = stepOf(*bar);
            QAccessibleValueChangeEvent change(watched, bar->value());
            QAccessible::updateAccessibility(&change);
        }
        return false;
    }

private:
    static int stepOf(const CustomProgressBar &bar)
    {
        constexpr int kSteps = 20;
        return bar.value() * kSteps / bar.maximum();
    }

    int m_reported;
};

class AccessibleProgressBar : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleProgressBar(CustomProgressBar *bar)
        : QAccessibleWidget(bar, QAccessible::ProgressBar)
        , m_reporter(bar)
    { }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface *>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        const CustomProgressBar *const bar = this->bar();
        if (bar == nullptr) {
            return {};
        }
        if (kind == QAccessible::Value) {
            return QString("%1 %").arg(bar->value() * 100 / bar->maximum());
        }
        return QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        if (bar() == nullptr) {
            return {};
        }
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

    QVariant currentValue() const override
    {
        return bar() != nullptr ? bar()->value() : QVariant();
    }
    QVariant maximumValue() const override
    {
        return bar() != nullptr ? bar()->maximum() : QVariant();
    }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant & /*value*/) override { }

private:
    /// Null once the bar's destructor has run.
    CustomProgressBar *bar() const { return qobject_cast<CustomProgressBar *>(object()); }

    ValueReporter m_reporter; // goes with the interface, since the next one has its own
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
    return new AccessibleKitButton(button, *role);
}

} // namespace

void KitAccessibility::install()
{
    QAccessible::installFactory(describe);
}
