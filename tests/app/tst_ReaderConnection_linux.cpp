// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/ReaderConnection_linux.h"

#include <QApplication>
#include <QtTest>

/// Registers the program once, like Qt's class of this name.
class QSpiAccessibleBridge : public QObject
{
    Q_OBJECT

public:
    explicit QSpiAccessibleBridge(QStringList &events)
        : m_events(events)
    { }

    void enable()
    {
        QAccessible::setActive(true);
        if (!m_events.contains("registered")) {
            m_events.append("registered");
        }
    }

private:
    QStringList &m_events;
};

/// When Qt registers the program with screen readers. That they find it is tested by
/// tst_Accessibility, where Qt has the patch.
class tst_ReaderConnection_linux : public QObject
{
    Q_OBJECT

private slots:
    void registration_data();
    void registration();
};

void tst_ReaderConnection_linux::registration_data()
{
    QTest::addColumn<bool>("isPatched");
    QTest::newRow("Qt waits until it is connected") << false;
    QTest::newRow("Qt does not wait") << true;
}

void tst_ReaderConnection_linux::registration()
{
    QFETCH(bool, isPatched);
    const ReaderConnection connection(*qApp);
    QStringList events;
    QSpiAccessibleBridge bridge(events);
    QObject bus;
    if (isPatched) {
        QMetaObject::invokeMethod(
            &bridge, [&] { bridge.enable(); }, Qt::QueuedConnection);
    }
    const auto connectBridge = [&] {
        events.append("connected");
        bridge.enable();
    };
    QMetaObject::invokeMethod(&bus, connectBridge, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        &bus, [&] { events.append("something else"); }, Qt::QueuedConnection);
    QTRY_COMPARE(events, QStringList({"connected", "registered", "something else"}));
}

QTEST_MAIN(tst_ReaderConnection_linux)
#include "tst_ReaderConnection_linux.moc"
