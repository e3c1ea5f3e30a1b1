// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/StatusAccessibility.h"
#include "app/WindowAccessibility.h"
#include "tests/support/ScreenReader.h"
#include "tests/support/WindowParts.h"
#include "tests/widgets/AskWhenHidden.h"

#include <QtTest>

using namespace WindowParts;

namespace {

/// Notes the text of a notification that appears. Without one, it appears with the window.
void note(const QAccessibleEvent *event, QStringList *spoken)
{
    const QAccessibleInterface *const interface = event->accessibleInterface();
    if (interface == nullptr || event->type() != QAccessible::ObjectShow) {
        return; // Qt 6.11 also tells about objects without an interface
    }
    const QString text = interface->text(QAccessible::Name);
    if (!text.isEmpty() && interface->role() == QAccessible::Notification) {
        spoken->append(text);
    }
}

} // namespace

/// How screen readers learn the texts of the status line.
class tst_StatusAccessibility_linux : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { WindowAccessibility::install(); }
    void notification_data();
    void notification();
    void paintedTextsAreSpoken();
    void sameTextIsSpokenAfterAClick_data();
    void sameTextIsSpokenAfterAClick();
    void deletedLabelTellsNothing();
};

void tst_StatusAccessibility_linux::notification_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("text") << "Find Upgrade Device!" << false;
    QTest::newRow("two lines") << "first\nsecond" << false;
}

void tst_StatusAccessibility_linux::notification()
{
    QFETCH(QString, text);
    MainWindow window;
    window.show();
    statusLabel(window)->setText(text);
    const QAccessibleInterface *const status
        = QAccessible::queryAccessibleInterface(statusLabel(window));
    QCOMPARE(status->role(), QAccessible::Notification);
    QCOMPARE(status->text(QAccessible::Name), text);
    QCOMPARE(status->text(QAccessible::Description), QString()); // or it would be read twice
    QTEST(bool(status->state().invisible), "isHidden");
}

void tst_StatusAccessibility_linux::paintedTextsAreSpoken()
{
    QStringList spoken;
    const ScreenReader reader([&](const QAccessibleEvent *event) { note(event, &spoken); });
    MainWindow window;
    QLabel *const label = statusLabel(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const char *const text : {"first", "second", "second"}) {
        label->setText("replaced before it is painted");
        QEvent other(QEvent::User);
        QCoreApplication::sendEvent(label, &other);
        label->setText(text);
        label->repaint();
    }
    QCOMPARE(spoken, QStringList({"first", "second"}));
}

void tst_StatusAccessibility_linux::sameTextIsSpokenAfterAClick_data()
{
    QTest::addColumn<bool>("readerIsFirst");
    QTest::newRow("the reader starts first") << true;
    QTest::newRow("the program starts first") << false;
}

void tst_StatusAccessibility_linux::sameTextIsSpokenAfterAClick()
{
    QFETCH(bool, readerIsFirst);
    QStringList spoken;
    std::unique_ptr<ScreenReader> reader;
    const auto startReader = [&] {
        reader = std::make_unique<ScreenReader>(
            [&](const QAccessibleEvent *event) { note(event, &spoken); });
    };
    if (readerIsFirst) {
        startReader();
    }
    MainWindow window;
    QLabel *const label = statusLabel(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (!readerIsFirst) {
        startReader();
        QAccessible::queryAccessibleInterface(label); // readers ask for all that is there already
    }
    for (const bool enabled : {true, false, true, false}) {
        upgradeButton(window)->setEnabled(enabled); // a click disables it
        label->setText("same");
        label->repaint();
    }
    QCOMPARE(spoken, QStringList({"same", "same", "same"}));
}

void tst_StatusAccessibility_linux::deletedLabelTellsNothing()
{
    auto label = std::make_unique<QLabel>("text");
    QAccessibleInterface *const status = describeStatus(label.get());
    QAccessible::registerAccessibleInterface(status); // which Qt deletes with the label
    label->show();
    const AskWhenHidden reader(label.get(), [status] {
        QCOMPARE(status->text(QAccessible::Name), QString());
        QVERIFY(status->state().invisible);
    });
    label.reset();
    QVERIFY(reader.asked);
}

QTEST_MAIN(tst_StatusAccessibility_linux)
#include "tst_StatusAccessibility_linux.moc"
