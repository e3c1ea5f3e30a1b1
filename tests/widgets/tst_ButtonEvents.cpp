// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/ButtonSignals.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/ButtonRules.h"
#include "tests/widgets/ButtonSubject.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

/// Puts the buttons of the kit side by side: they differ in which handlers look at the enabled
/// flag, which pass the event on and when, and which button clicks by itself.
class tst_ButtonEvents : public QObject
{
    Q_OBJECT

private slots:
    void construction_data();
    void construction();
    void handler_data();
    void handler();
    void looksReadyWhenItReports_data();
    void looksReadyWhenItReports();
    void slotHasTheLastWord_data();
    void slotHasTheLastWord();
    void repaintsAround_data();
    void repaintsAround();
    void keepsItsStateWhileDisabled_data();
    void keepsItsStateWhileDisabled();

private:
    QTemporaryDir m_folder;
};

namespace {

constexpr QPoint kInside(1, 1);
constexpr QPoint kOutside(-5, -5);

/// Brings a fresh button into the state from which \a action, if heeded, leads elsewhere.
void prepare(const ButtonSubject &subject, Action action, bool enabled)
{
    const bool release = action == LeftRelease || action == RightRelease;
    if (action != Enter) {
        subject.act(Enter, kInside);
    }
    if (release) {
        subject.act(LeftPress, kInside);
    }
    subject.button->setEnabled(enabled);
    if (release && !enabled) {
        subject.button->setDown(true); // else a release that is passed on would do nothing
    }
}

} // namespace

void tst_ButtonEvents::construction_data()
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

void tst_ButtonEvents::construction()
{
    QFETCH(QString, base);
    QFETCH(QString, styleSheet);

    QWidget window;
    window.show();
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
    QVERIFY(button.isVisible());
    QVERIFY(button.text().isEmpty());
    QVERIFY(!button.isChecked());
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(0));
}

void tst_ButtonEvents::handler_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("shown");
    QTest::addColumn<bool>("repaints");
    QTest::addColumn<QStringList>("emitted");

    for (const auto &rules : ButtonRules::kRules) {
        for (const ButtonRules::Row &row : rules.second) {
            const char *actionName = QMetaEnum::fromType<Action>().valueToKey(row.action);
            QTest::addRow("%s, %s, %s", qPrintable(rules.first), actionName,
                          row.enabled ? "enabled" : "disabled")
                << rules.first << row.action << row.enabled << row.shown << row.repaints
                << row.emitted;
        }
    }
}

void tst_ButtonEvents::handler()
{
    QFETCH(QString, name);
    QFETCH(Action, action);
    QFETCH(bool, enabled);
    QFETCH(int, shown);
    QFETCH(bool, repaints);
    QFETCH(QStringList, emitted);

    const ButtonSubject subject = ButtonSubject::create(name, m_folder);
    prepare(subject, action, enabled);
    ButtonSignals buttonSignals(subject.button.get());
    subject.act(action, kInside);
    QCOMPARE(buttonSignals.take(), emitted);
    subject.button->setEnabled(true); // a disabled look would hide the state
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(shown));

    // Off its area the base class does nothing, so a paint is the button's own.
    const ButtonSubject other = ButtonSubject::create(name, m_folder);
    other.button->setEnabled(enabled);
    RepaintCounter counter(other.button.get());
    other.act(action, kOutside);
    QCOMPARE(counter.take(), repaints ? 1 : 0);
}

void tst_ButtonEvents::looksReadyWhenItReports_data()
{
    QTest::addColumn<QVector<int>>("shown");

    QTest::newRow("MButton") << QVector<int>{2, 1, 1};
    QTest::newRow("ImageButton") << QVector<int>{1};
    QTest::newRow("tabButton") << QVector<int>{2, 1, 1};
    QTest::newRow("ColorButton") << QVector<int>{0, 1, 1};
    QTest::newRow("FuncButton") << QVector<int>{2, 1, 1};
    QTest::newRow("IconButton") << QVector<int>{2, 1, 1};
    QTest::newRow("SwitchButton") << QVector<int>{5, 4, 4};
    QTest::newRow("ProfileButton") << QVector<int>{2, 1, 1};
}

/// Looks at the button from slots of pressed, released and clicked: it has changed by then.
void tst_ButtonEvents::looksReadyWhenItReports()
{
    QFETCH(QVector<int>, shown);

    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder);
    QVector<QImage> seen;
    const auto look = [&] {
        seen << WidgetPicture::of(*subject.button);
    };
    connect(subject.button.get(), &QAbstractButton::pressed, look);
    connect(subject.button.get(), &QAbstractButton::released, look);
    connect(subject.button.get(), &QAbstractButton::clicked, look);

    QTest::mouseClick(subject.button.get(), Qt::LeftButton);
    QCOMPARE(seen.size(), shown.size());
    for (int i = 0; i < shown.size(); ++i) {
        QCOMPARE(seen.at(i), subject.looks.at(shown.at(i)));
    }
}

void tst_ButtonEvents::slotHasTheLastWord_data()
{
    QTest::addColumn<int>("shown");

    QTest::newRow("MButton") << 0;
    QTest::newRow("ImageButton") << 0;
    QTest::newRow("tabButton") << 0;
    QTest::newRow("ColorButton") << 1;
    QTest::newRow("FuncButton") << 0;
    QTest::newRow("IconButton") << 0;
    QTest::newRow("SwitchButton") << 3;
    QTest::newRow("ProfileButton") << 0;
}

/// A slot that takes the pointer away, as one that opens a window does: the release is over by then
/// and does not bring the hover look back.
void tst_ButtonEvents::slotHasTheLastWord()
{
    QFETCH(int, shown);

    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder);
    connect(subject.button.get(), &QAbstractButton::clicked, [&] { subject.act(Leave, kInside); });
    QTest::mouseClick(subject.button.get(), Qt::LeftButton);
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(shown));
}

void tst_ButtonEvents::repaintsAround_data()
{
    QTest::addColumn<int>("paints");

    QTest::newRow("MButton") << 1;
    QTest::newRow("ImageButton") << 1;
    QTest::newRow("tabButton") << 1;
    QTest::newRow("ColorButton") << 2;
    QTest::newRow("FuncButton") << 1;
    QTest::newRow("IconButton") << 1;
    QTest::newRow("SwitchButton") << 1;
    QTest::newRow("ProfileButton") << 1;
}

/// The base class paints at once when it is pressed. That settles an update asked for before it was
/// called; one asked for afterwards is a second paint.
void tst_ButtonEvents::repaintsAround()
{
    QFETCH(int, paints);

    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder);
    RepaintCounter counter(subject.button.get());
    subject.act(LeftPress, kInside);
    QCOMPARE(counter.take(), paints);
}

void tst_ButtonEvents::keepsItsStateWhileDisabled_data()
{
    QTest::addColumn<QString>("name");

    for (const auto &rules : ButtonRules::kRules) {
        QTest::newRow(qPrintable(rules.first)) << rules.first;
    }
}

void tst_ButtonEvents::keepsItsStateWhileDisabled()
{
    QFETCH(QString, name);

    const ButtonSubject subject = ButtonSubject::create(name, m_folder);
    subject.act(Enter, kInside);
    const QImage hovered = WidgetPicture::of(*subject.button);
    subject.button->setEnabled(false);
    subject.button->setEnabled(true);
    QCOMPARE(WidgetPicture::of(*subject.button), hovered);
}

QTEST_MAIN(tst_ButtonEvents)
#include "tst_ButtonEvents.moc"
