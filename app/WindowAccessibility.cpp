// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/WindowAccessibility.h"

#include "app/MainWindow.h"
#include "app/StatusAccessibility.h"
#include "widgets/CustomProgressBar.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLabel>

#include <algorithm>

namespace {

/// Without the background and the empty widgets of the form below it.
class AccessibleWindow : public QAccessibleWidget
{
public:
    explicit AccessibleWindow(MainWindow *window)
        : QAccessibleWidget(window, QAccessible::Window)
    { }

    int childCount() const override { return static_cast<int>(parts().size()); }

    QAccessibleInterface *child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(parts().value(index));
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return static_cast<int>(parts().indexOf(qobject_cast<QWidget *>(child->object())));
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QList<QWidget *> all = parts();
        const auto found = std::find_if(all.begin(), all.end(), [x, y](const QWidget *part) {
            return part->rect().contains(part->mapFromGlobal(QPoint(x, y)));
        });
        return found != all.end() ? QAccessible::queryAccessibleInterface(*found) : nullptr;
    }

private:
    QList<QWidget *> parts() const
    {
        QList<QWidget *> parts;
        if (widget() != nullptr) {
            const QObjectList &children = widget()->children();
            for (QObject *const child : children) {
                if (isPart(child)) {
                    parts.append(static_cast<QWidget *>(child));
                }
            }
        }
        return parts;
    }

    static bool isPart(const QObject *child)
    {
        return qobject_cast<const QAbstractButton *>(child) != nullptr
            || qobject_cast<const QLabel *>(child) != nullptr
            || qobject_cast<const CustomProgressBar *>(child) != nullptr;
    }
};

QAccessibleInterface *describe(const QString & /*className*/, QObject *object)
{
    if (auto *const window = qobject_cast<MainWindow *>(object)) {
        return new AccessibleWindow(window);
    }
    auto *const label = qobject_cast<QLabel *>(object);
    const auto *const window
        = label != nullptr ? qobject_cast<MainWindow *>(label->parentWidget()) : nullptr;
    const bool isStatus = window != nullptr && window->statusLabel() == label;
    return isStatus ? describeStatus(label) : nullptr;
}

} // namespace

void WindowAccessibility::install()
{
    QAccessible::installFactory(describe);
}
