// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/WidgetPicture.h"
#include "tests/widgets/ButtonSubject.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Writes down what the constructors of the children of \a parent do, in their order.
class ConstructionLog : public QObject
{
public:
    explicit ConstructionLog(const QObject *parent)
        : m_parent(parent)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool tells = event->type() == QEvent::CursorChange
            || event->type() == QEvent::StyleChange || event->type() == QEvent::Show;
        if (tells && watched->parent() == m_parent) {
            steps << QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
        }
        return false;
    }

    QStringList steps;

private:
    const QObject *m_parent;
};

} // namespace

/// How the buttons of the kit begin.
class tst_ButtonConstruction : public QObject
{
    Q_OBJECT

private slots:
    void construction_data();
    void construction();

private:
    QTemporaryDir m_folder;
};

void tst_ButtonConstruction::construction_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("styleSheet");

    const QString flat("%1 {border:0px solid #000000; border-radius:0px;}");
    const QString push = flat.arg("QPushButton");
    QTest::newRow("MButton") << "QPushButton" << push;
    QTest::newRow("ImageButton") << "QPushButton" << push;
    QTest::newRow("tabButton") << "QPushButton" << QString();
    QTest::newRow("ColorButton") << "QRadioButton" << flat.arg("QRadioButton");
    QTest::newRow("FuncButton") << "QPushButton" << QString();
    QTest::newRow("IconButton") << "QPushButton" << QString();
    QTest::newRow("SwitchButton") << "QPushButton" << QString();
    QTest::newRow("ProfileButton") << "QPushButton" << QString();
}

void tst_ButtonConstruction::construction()
{
    QFETCH(QString, base);
    QFETCH(QString, styleSheet);

    QWidget window;
    window.show();
    const ConstructionLog log(&window);
    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder, &window);
    const QAbstractButton &button = *subject.button;
    const QMetaObject *meta = button.metaObject();

    QCOMPARE(meta->className(), QTest::currentDataTag());
    QCOMPARE(meta->superClass()->className(), base);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
    QCOMPARE(button.parentWidget(), &window);
    QCOMPARE(button.cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button.styleSheet(), styleSheet);
    QCOMPARE(log.steps,
             styleSheet.isEmpty() ? (QStringList{"CursorChange", "Show"})
                                  : (QStringList{"CursorChange", "StyleChange", "Show"}));
    QVERIFY(button.isVisible());
    QVERIFY(button.isEnabled());
    QVERIFY(button.text().isEmpty());
    QVERIFY(!button.isChecked());
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(0));
    QVERIFY(ButtonSubject::create(QTest::currentDataTag(), m_folder).button->isVisible());
}

QTEST_MAIN(tst_ButtonConstruction)
#include "tst_ButtonConstruction.moc"
