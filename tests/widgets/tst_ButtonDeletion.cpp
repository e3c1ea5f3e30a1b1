// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/widgets/ButtonSubject.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

/// A slot may delete the button whose signal it follows: no handler touches the button any more
/// once the base class has emitted. It is the address sanitizer that sees one that does.
class tst_ButtonDeletion : public QObject
{
    Q_OBJECT

private slots:
    void duringAPress_data() { eachClass(); }
    void duringAPress();
    void duringAClick_data() { eachClass(); }
    void duringAClick();

private:
    static void eachClass();

    QTemporaryDir m_folder;
};

void tst_ButtonDeletion::eachClass()
{
    QTest::addColumn<QString>("name");

    // ImageButton is not here: it emits nothing on a press, and only clicks as its last step.
    for (const char *name : {"MButton", "tabButton", "ColorButton", "FuncButton", "IconButton",
                             "SwitchButton", "ProfileButton"}) {
        QTest::newRow(name) << name;
    }
}

void tst_ButtonDeletion::duringAPress()
{
    QFETCH(QString, name);

    const QPointer<QAbstractButton> button = ButtonSubject::create(name, m_folder).button.release();
    connect(button, &QAbstractButton::pressed, this, [&] { delete button; });
    QTest::mousePress(button, Qt::LeftButton);
    QVERIFY(!button);
}

void tst_ButtonDeletion::duringAClick()
{
    QFETCH(QString, name);

    const QPointer<QAbstractButton> button = ButtonSubject::create(name, m_folder).button.release();
    connect(button, &QAbstractButton::clicked, this, [&] { delete button; });
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!button);
}

QTEST_MAIN(tst_ButtonDeletion)
#include "tst_ButtonDeletion.moc"
