// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ModelledButton.h"

#include <QTemporaryDir>
#include <QtTest>

#include <random>

namespace {

constexpr int kWalks = 10000; // of all buttons together
constexpr int kWalksOfEach = 1250;
constexpr int kSteps = 50;

/// One random step of \a button; returns what was done.
QString step(ModelledButton &button, std::mt19937 &random)
{
    // The distributions of the standard library differ from one library to the next.
    const int choice = static_cast<int>(random() % 16);
    if (choice == 0 || choice == 1) {
        button.setEnabled(choice == 1);
        return choice == 1 ? "enable" : "disable";
    }
    if (choice == 2 || choice == 3) {
        button.mark(choice == 3);
        return choice == 3 ? "mark" : "unmark";
    }
    const auto action = PointerEvents::kAllActions[choice % 6];
    const bool inside = random() % 4 != 0;
    button.act(action, inside);
    return QMetaEnum::fromType<PointerEvents::Action>().valueToKey(action)
        + QString(inside ? "" : " outside");
}

} // namespace

/// Leads each of the kit's buttons and its rules on the same random walks, which no other button
/// takes, and looks for a difference at each step.
class tst_ButtonModel : public QObject
{
    Q_OBJECT

private slots:
    void walks_data();
    void walks();

private:
    QTemporaryDir m_folder;
};

void tst_ButtonModel::walks_data()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<int>("firstSeed");
    int firstSeed = 0;
    for (const ButtonRules &rules : ButtonRules::all()) {
        QTest::newRow(qPrintable(rules.name)) << rules << firstSeed;
        firstSeed += kWalksOfEach;
    }
    QCOMPARE(firstSeed, kWalks);
}

void tst_ButtonModel::walks()
{
    QFETCH(ButtonRules, rules);
    QFETCH(int, firstSeed);

    for (int seed = firstSeed; seed < firstSeed + kWalksOfEach; ++seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        ModelledButton button(rules, m_folder);
        QStringList way;
        for (int i = 0; i < kSteps; ++i) {
            way += step(button, random);
            const QString difference = button.difference();
            if (!difference.isEmpty()) {
                QFAIL(qPrintable(
                    QString("seed %1: %2 after %3").arg(seed).arg(difference, way.join(", "))));
            }
        }
    }
}

QTEST_MAIN(tst_ButtonModel)
#include "tst_ButtonModel.moc"
