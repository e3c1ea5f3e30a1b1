// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ButtonSubject.h"
#include "tests/support/WidgetPicture.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Records the steps of the constructors of all children of \a parent, in order.
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
        const bool isStep = event->type() == QEvent::CursorChange
            || event->type() == QEvent::StyleChange || event->type() == QEvent::Show;
        if (isStep && watched->parent() == m_parent) {
            steps << QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
        }
        return false;
    }

    QStringList steps;

private:
    const QObject *m_parent;
};

} // namespace

/// How the buttons of the kit begin and end.
class tst_ButtonLifetime : public QObject
{
    Q_OBJECT

private slots:
    void construction_data() { ButtonRules::addRows(); }
    void construction();
    void deletionInASlot_data();
    void deletionInASlot();

private:
    QTemporaryDir m_folder;
};

void tst_ButtonLifetime::construction()
{
    QFETCH(ButtonRules, rules);

    QWidget window;
    window.show();
    const ConstructionLog log(&window);
    const ButtonSubject subject = ButtonSubject::create(rules, m_folder, &window);
    const QAbstractButton &button = *subject.button;
    const QMetaObject *meta = button.metaObject();
    const QString base = rules.isRadio ? "QRadioButton" : "QPushButton";
    const QString style = base + " {border:0px solid #000000; border-radius:0px;}";

    QCOMPARE(meta->className(), rules.name);
    QCOMPARE(meta->superClass()->className(), base);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
    QCOMPARE(button.parentWidget(), &window);
    QCOMPARE(button.cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button.styleSheet(), rules.hasFlatStyle ? style : QString());
    QCOMPARE(log.steps,
             rules.hasFlatStyle ? (QStringList{"CursorChange", "StyleChange", "Show"})
                                : (QStringList{"CursorChange", "Show"}));
    QVERIFY(button.isVisible());
    QVERIFY(button.isEnabled());
    QVERIFY(button.text().isEmpty());
    QVERIFY(!button.isChecked());
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(0));
    QVERIFY(ButtonSubject::createBare(rules.name).button->isVisible());
}

void tst_ButtonLifetime::deletionInASlot_data()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<bool>("onPress");

    for (const ButtonRules &rules : ButtonRules::all()) {
        // An ImageButton emits nothing but clicked(), as its last step.
        if (!rules.clicksByItself) {
            QTest::addRow("%s, pressed", qPrintable(rules.name)) << rules << true;
            QTest::addRow("%s, clicked", qPrintable(rules.name)) << rules << false;
        }
    }
}

/// No handler uses the button after the base class has emitted a signal. The address sanitizer
/// detects one that does.
void tst_ButtonLifetime::deletionInASlot()
{
    QFETCH(ButtonRules, rules);
    QFETCH(bool, onPress);

    const QPointer<QAbstractButton> button
        = ButtonSubject::create(rules, m_folder).button.release();
    const auto remove = [&] {
        delete button;
    };
    if (onPress) {
        connect(button, &QAbstractButton::pressed, this, remove);
        QTest::mousePress(button, Qt::LeftButton);
    } else {
        connect(button, &QAbstractButton::clicked, this, remove);
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QVERIFY(!button);
}

QTEST_MAIN(tst_ButtonLifetime)
#include "tst_ButtonLifetime.moc"
