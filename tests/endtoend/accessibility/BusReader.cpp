// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/accessibility/BusReader.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QRect>

namespace {

const QString kRegistry = "org.a11y.atspi.Registry";
const QString kAccessible = "org.a11y.atspi.Accessible";
const QString kAction = "org.a11y.atspi.Action";
const QString kEvents = "org.a11y.atspi.Event.Object";

/// Connects to the bus whose address the session bus knows.
QDBusConnection connectToBus()
{
    const QDBusMessage ask = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                            "org.a11y.Bus", "GetAddress");
    const QDBusMessage answer = QDBusConnection::sessionBus().call(ask);
    return QDBusConnection::connectToBus(answer.arguments().value(0).toString(), "accessibility");
}

} // namespace

BusReader::BusReader()
    : m_bus(connectToBus())
{
    QDBusMessage enable = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                         "org.freedesktop.DBus.Properties", "Set");
    enable.setArguments({"org.a11y.Status", "IsEnabled", QVariant::fromValue(QDBusVariant(true))});
    QDBusConnection::sessionBus().call(enable);

    // Programs send only what somebody waits for.
    for (const char *const event : {"object:state-changed:showing", "object:value-changed",
                                    "object:property-change:accessible-value"}) {
        call({kRegistry, "/org/a11y/atspi/registry"}, kRegistry, "RegisterEvent", {event});
    }
    m_bus.connect(QString(), QString(), kEvents, "StateChanged", this,
                  SLOT(stateChanged(QDBusMessage)));
    m_bus.connect(QString(), QString(), kEvents, "PropertyChange", this,
                  SLOT(propertyChanged(QDBusMessage)));
}

QStringList BusReader::windows() const
{
    QStringList lines;
    QPoint origin;
    visitWindows([&](const Node &node, int depth) {
        if (depth == 0) {
            origin = placeOf(node).topLeft();
        }
        lines.append(QString(2 * depth, ' ') + describe(node, origin));
    });
    return lines;
}

bool BusReader::press(const QString &name) const
{
    bool found = false;
    visitWindows([&](const Node &node, int /*depth*/) {
        const auto action = int(actionsOf(node).indexOf("Press"));
        if (action >= 0 && nameOf(node) == name) {
            found = true;
            call(node, kAction, "DoAction", {action});
        }
    });
    return found;
}

void BusReader::stateChanged(const QDBusMessage &signal)
{
    const Node node = {signal.service(), signal.path()};
    const bool appears
        = signal.arguments().value(0) == "showing" && signal.arguments().value(1) == 1;
    if (appears && roleOf(node) == "notification") {
        spoken.append(nameOf(node));
    }
}

void BusReader::propertyChanged(const QDBusMessage &signal)
{
    if (signal.arguments().value(0) == "accessible-value") {
        values.append(
            property({signal.service(), signal.path()}, "org.a11y.atspi.Value", "CurrentValue")
                .toDouble());
    }
}

QDBusMessage BusReader::call(const Node &node, const QString &interface, const QString &method,
                             const QVariantList &arguments) const
{
    QDBusMessage message
        = QDBusMessage::createMethodCall(node.program, node.path, interface, method);
    message.setArguments(arguments);
    return m_bus.call(message);
}

QVariant BusReader::property(const Node &node, const QString &interface, const QString &name) const
{
    const QDBusMessage answer
        = call(node, "org.freedesktop.DBus.Properties", "Get", {interface, name});
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

QVector<BusReader::Node> BusReader::children(const Node &node) const
{
    const QVariant answer = call(node, kAccessible, "GetChildren").arguments().value(0);
    const auto list = answer.value<QDBusArgument>();
    QVector<Node> nodes;
    if (list.currentType() != QDBusArgument::ArrayType) {
        return nodes; // the program has ended
    }
    list.beginArray();
    while (!list.atEnd()) {
        QString program;
        QDBusObjectPath path;
        list.beginStructure();
        list >> program >> path;
        list.endStructure();
        nodes.append({program, path.path()});
    }
    list.endArray();
    return nodes;
}

void BusReader::visit(const Node &node, int depth,
                      const std::function<void(const Node &node, int depth)> &visitor) const
{
    visitor(node, depth);
    const QVector<Node> all = children(node);
    for (const Node &child : all) {
        visit(child, depth + 1, visitor);
    }
}

void BusReader::visitWindows(const std::function<void(const Node &node, int depth)> &visitor) const
{
    const QVector<Node> programs = children({kRegistry, "/org/a11y/atspi/accessible/root"});
    for (const Node &program : programs) {
        const QVector<Node> windows = children(program);
        for (const Node &window : windows) {
            visit(window, 0, visitor);
        }
    }
}

QString BusReader::roleOf(const Node &node) const
{
    return call(node, kAccessible, "GetRoleName").arguments().value(0).toString();
}

QString BusReader::nameOf(const Node &node) const
{
    return property(node, kAccessible, "Name").toString();
}

QStringList BusReader::statesOf(const Node &node) const
{
    const QVector<std::pair<int, QString>> known
        = {{8, "enabled"}, {11, "focusable"}, {25, "showing"}, {43, "read-only"}};
    const QVariant answer = call(node, kAccessible, "GetState").arguments().value(0);
    const auto halves = qdbus_cast<QList<uint>>(answer.value<QDBusArgument>());
    QStringList states;
    for (const auto &[bit, name] : known) {
        if ((halves.value(bit / 32) >> (bit % 32) & 1U) != 0) {
            states.append(name);
        }
    }
    return states;
}

QStringList BusReader::actionsOf(const Node &node) const
{
    const QVariant answer = call(node, kAction, "GetActions").arguments().value(0);
    const auto list = answer.value<QDBusArgument>();
    QStringList names;
    if (list.currentType() != QDBusArgument::ArrayType) {
        return names;
    }
    list.beginArray();
    while (!list.atEnd()) {
        QString name;
        QString description;
        QString key;
        list.beginStructure();
        list >> name >> description >> key;
        list.endStructure();
        names.append(name);
    }
    list.endArray();
    return names;
}

QRect BusReader::placeOf(const Node &node) const
{
    constexpr uint kOnScreen = 0;
    const QVariant extents
        = call(node, "org.a11y.atspi.Component", "GetExtents", {kOnScreen}).arguments().value(0);
    return qdbus_cast<QRect>(extents);
}

QString BusReader::describe(const Node &node, const QPoint &origin) const
{
    const QString value = "org.a11y.atspi.Value";
    QString line = QString("%1 \"%2\": ").arg(roleOf(node), nameOf(node));
    if (property(node, value, "CurrentValue").isValid()) {
        line += QString("%1 of %2, ")
                    .arg(property(node, value, "CurrentValue").toDouble())
                    .arg(property(node, value, "MaximumValue").toDouble());
    }
    const QRect place = placeOf(node).translated(-origin);
    line += QString("%1,%2 %3x%4")
                .arg(place.x())
                .arg(place.y())
                .arg(place.width())
                .arg(place.height());
    return (QStringList(line) + statesOf(node) + actionsOf(node)).join(", ");
}
