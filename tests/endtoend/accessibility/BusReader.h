// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QRect>
#include <QStringList>
#include <QVector>

#include <functional>

/// A screen reader on the session's accessibility bus. It sees a program only as what the program
/// says about itself there.
class BusReader : public QObject
{
    Q_OBJECT

public:
    /// Turns accessibility on for programs that start from now on.
    BusReader();

    /// Whether the session has an accessibility bus.
    bool isConnected() const { return m_bus.isConnected(); }

    /// The windows of all programs and their parts, indented by their depth:
    /// `role "name": value, place in the window, states, actions`.
    QStringList windows() const;

    /// Presses the button \a name. Returns whether there is one.
    bool press(const QString &name) const;

    /// The text of each notification that appeared.
    QStringList spoken;

    /// Each reported value of a progress bar.
    QVector<double> values;

private slots:
    void stateChanged(const QDBusMessage &signal);
    void propertyChanged(const QDBusMessage &signal);

private:
    /// An object of a program on the bus.
    struct Node
    {
        QString program;
        QString path;
    };

    QDBusMessage call(const Node &node, const QString &interface, const QString &method,
                      const QVariantList &arguments = {}) const;
    QVariant property(const Node &node, const QString &interface, const QString &name) const;
    QVector<Node> children(const Node &node) const;
    void visit(const Node &node, int depth,
               const std::function<void(const Node &node, int depth)> &visitor) const;
    void visitWindows(const std::function<void(const Node &node, int depth)> &visitor) const;
    QString roleOf(const Node &node) const;
    QString nameOf(const Node &node) const;
    QStringList statesOf(const Node &node) const;
    QStringList actionsOf(const Node &node) const;
    QRect placeOf(const Node &node) const;
    QString describe(const Node &node, const QPoint &origin) const;

    QDBusConnection m_bus;
};
