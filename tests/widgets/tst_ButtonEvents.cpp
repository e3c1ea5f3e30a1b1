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

Q_DECLARE_METATYPE(Qt::MouseButton)

/// Puts the buttons of the kit side by side: they differ in which handlers look at the enabled
/// flag, which pass the event on and when, and which button clicks by itself.
class tst_ButtonEvents : public QObject
{
    Q_OBJECT

private slots:
    void handler_data();
    void handler();
    void looksReadyWhenItReports_data();
    void looksReadyWhenItReports();
    void slotHasTheLastWord_data();
    void slotHasTheLastWord();
    void repaintsAround_data();
    void repaintsAround();
    void otherMouseButtonsReachTheParent_data();
    void otherMouseButtonsReachTheParent();
    void keepsItsStateWhileDisabled_data();
    void keepsItsStateWhileDisabled();

private:
    QTemporaryDir m_folder;
};

namespace {

constexpr QPoint kInside(1, 1);
constexpr QPoint kOutside(-5, -5);

/// Counts what its child does not keep to itself.
class ClickedGround : public QWidget
{
public:
    int presses = 0;
    int releases = 0;

protected:
    void mousePressEvent(QMouseEvent * /*event*/) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent * /*event*/) override { ++releases; }
};

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

    // Off its area the base class ignores a press, so that a paint is the button's own; after a
    // release it asks for one itself. Two events make one paint, for it is only scheduled.
    const ButtonSubject other = ButtonSubject::create(name, m_folder);
    other.button->setEnabled(enabled);
    RepaintCounter counter(other.button.get());
    other.act(action, kOutside);
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
    QTest::addColumn<int>("onPress");
    QTest::addColumn<int>("beforeClick");
    QTest::addColumn<int>("afterClick");

    QTest::newRow("MButton") << 1 << 1 << 0;
    QTest::newRow("ImageButton") << 1 << 1 << 0;
    QTest::newRow("tabButton") << 1 << 1 << 0;
    QTest::newRow("ColorButton") << 2 << 1 << 1;
    QTest::newRow("FuncButton") << 1 << 1 << 0;
    QTest::newRow("IconButton") << 1 << 1 << 0;
    QTest::newRow("SwitchButton") << 1 << 1 << 0;
    QTest::newRow("ProfileButton") << 1 << 1 << 0;
}

/// The base class paints at once when it is pressed and before it clicks. That settles an update
/// asked for before it was called; one asked for afterwards is another paint.
void tst_ButtonEvents::repaintsAround()
{
    QFETCH(int, onPress);
    QFETCH(int, beforeClick);
    QFETCH(int, afterClick);

    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder);
    RepaintCounter counter(subject.button.get());
    subject.act(Enter, kInside);
    QCOMPARE(counter.take(), 1);
    subject.act(LeftPress, kInside);
    QCOMPARE(counter.take(), onPress);

    int untilClick = 0;
    connect(subject.button.get(), &QAbstractButton::clicked, [&] { untilClick = counter.take(); });
    subject.act(LeftRelease, kInside);
    QCOMPARE(untilClick, beforeClick);
    QCOMPARE(counter.take(), afterClick);
}

void tst_ButtonEvents::otherMouseButtonsReachTheParent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Qt::MouseButton>("mouseButton");
    QTest::addColumn<bool>("passesOn");

    const QVector<QPair<const char *, Qt::MouseButton>> others{
        {"right", Qt::RightButton}, {"middle", Qt::MiddleButton}, {"back", Qt::BackButton}};
    for (const auto &rules : ButtonRules::kRules) {
        for (const auto &other : others) {
            QTest::addRow("%s, %s", qPrintable(rules.first), other.first)
                << rules.first << other.second << (rules.first == "ColorButton");
        }
    }
}

/// Only the swatch hands them to the base class, which leaves them to the parent; the others keep
/// them to themselves.
void tst_ButtonEvents::otherMouseButtonsReachTheParent()
{
    QFETCH(QString, name);
    QFETCH(Qt::MouseButton, mouseButton);
    QFETCH(bool, passesOn);

    ClickedGround ground;
    const ButtonSubject subject = ButtonSubject::create(name, m_folder, &ground);
    ground.show();
    subject.act(Enter, kInside);
    const QImage hovered = WidgetPicture::of(*subject.button);
    ButtonSignals buttonSignals(subject.button.get());
    RepaintCounter counter(subject.button.get());
    const int once = passesOn ? 1 : 0;

    QTest::mousePress(subject.button.get(), mouseButton);
    QCOMPARE(counter.take(), once);
    QCOMPARE(WidgetPicture::of(*subject.button), hovered);
    counter.take(); // the picture was a paint as well
    QTest::mouseRelease(subject.button.get(), mouseButton);
    QCOMPARE(counter.take(), once);
    QCOMPARE(WidgetPicture::of(*subject.button), hovered);
    QCOMPARE(ground.presses, once);
    QCOMPARE(ground.releases, once);
    QCOMPARE(buttonSignals.take(), QStringList());
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
