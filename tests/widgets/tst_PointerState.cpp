// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/PointerState.h"

#include <QtTest>

class tst_PointerState : public QObject
{
    Q_OBJECT

private slots:
    void startsNormal();
    void changes_data();
    void changes();
};

void tst_PointerState::startsNormal()
{
    const PointerState pointer;
    QCOMPARE(pointer.state, 0);
    QCOMPARE(pointer.hovered, false);
}

void tst_PointerState::changes_data()
{
    QTest::addColumn<QString>("events");
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("hovered");

    QTest::newRow("enter") << "e" << 1 << true;
    QTest::newRow("leave") << "el" << 0 << false;
    QTest::newRow("press") << "ep" << 2 << true;
    QTest::newRow("release is hover") << "epr" << 1 << true;
    QTest::newRow("leave while pressed") << "epl" << 0 << false;
    QTest::newRow("release after the leave is hover still") << "eplr" << 1 << false;
    QTest::newRow("press without an enter") << "p" << 2 << false;
}

void tst_PointerState::changes()
{
    QFETCH(QString, events);
    QFETCH(int, state);
    QFETCH(bool, hovered);

    PointerState pointer;
    for (const QChar event : events) {
        switch (event.unicode()) {
        case 'e':
            pointer.enter();
            break;
        case 'l':
            pointer.leave();
            break;
        case 'p':
            pointer.press();
            break;
        default:
            pointer.release();
            break;
        }
    }
    QCOMPARE(pointer.state, state);
    QCOMPARE(pointer.hovered, hovered);
}

QTEST_MAIN(tst_PointerState)
#include "tst_PointerState.moc"
