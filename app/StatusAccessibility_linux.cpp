// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/StatusAccessibility.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QEvent>
#include <QLabel>

namespace {

/// Reports a new text when it is painted: texts that are replaced before that are not spoken. Once
/// a click has disabled a button, the same text is new again.
class TextReporter : public QObject
{
public:
    explicit TextReporter(QLabel *label)
        : m_reported(label->text())
    {
        label->installEventFilter(this);
        const auto buttons = label->window()->findChildren<QAbstractButton *>();
        for (QAbstractButton *const button : buttons) {
            button->installEventFilter(this);
        }
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *const label = qobject_cast<QLabel *>(watched);
        const auto *const button = qobject_cast<QAbstractButton *>(watched);
        if (label != nullptr && event->type() == QEvent::Paint && label->text() != m_reported) {
            m_reported = label->text();
            QAccessibleEvent shown(watched, QAccessible::ObjectShow);
            QAccessible::updateAccessibility(&shown);
        }
        if (button != nullptr && event->type() == QEvent::EnabledChange && !button->isEnabled()) {
            m_reported.clear();
        }
        return false;
    }

private:
    QString m_reported;
};

/// Screen readers ignore new texts of labels, but speak a notification when it appears.
class AccessibleStatus : public QAccessibleWidget
{
public:
    explicit AccessibleStatus(QLabel *label)
        : QAccessibleWidget(label, QAccessible::Notification)
        , m_reporter(label)
    { }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? status() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (status().isEmpty()) {
            state.invisible = true;
        }
        return state;
    }

private:
    /// Empty once the label's destructor has run.
    QString status() const
    {
        const auto *const label = qobject_cast<QLabel *>(object());
        return label != nullptr ? label->text() : QString();
    }

    TextReporter m_reporter;
};

} // namespace

QAccessibleInterface *describeStatus(QLabel *label)
{
    return new AccessibleStatus(label);
}
