// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ModelledWindow.h"

#include <QtTest>

#include <random>

namespace {

constexpr int kWalks = 10000;
constexpr int kWalksARow = 500;
constexpr int kSteps = 50;

const QVector<QByteArray> kChunks = {
    "Device programmed",
    "100%\nDevice programmed.\nbye\n",
    "device programmed",
    "Device pro",
    "grammed.\n",
    "Sending firmware\n",
    QByteArray("\0Device programmed", 18),
    QByteArray("Device programmed\0x", 19),
    "\xff\xfe Device programmed \xc3",
    "Ger\xc3\xa4t",
    "<b>x",
    "a\nb\nc\n",
    "",
};

class Walk
{
public:
    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        m_subject.window().show();
    }

    /// Takes a random step and returns its description.
    QString step()
    {
        const int choice = below(20);
        if (choice < 5) {
            return click();
        }
        if (choice < 9) {
            const QByteArray &chunk = kChunks.at(below(int(kChunks.size())));
            const bool noticed = below(3) != 0;
            m_subject.say(chunk, noticed);
            return QString("say %1%2").arg(QString(chunk), noticed ? "" : " unnoticed");
        }
        if (choice < 12) {
            const QByteArray &chunk = kChunks.at(below(int(kChunks.size())));
            m_subject.complain(chunk);
            return "complain " + chunk;
        }
        if (choice == 12 && below(8) == 0) {
            m_subject.close();
            return "close";
        }
        return tick();
    }

    ModelledWindow &subject() { return m_subject; }

private:
    // Unlike std::uniform_int_distribution, this gives the same numbers with every library.
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    QString click()
    {
        const bool atOnce = below(2) != 0;
        const bool later = below(2) != 0;
        m_subject.click(atOnce, later);
        return QString("click, port %1 %2").arg(atOnce).arg(later);
    }

    QString tick()
    {
        const auto timers = static_cast<int>(m_subject.model().outcome.timers.size());
        if (timers == 0) {
            return "nothing";
        }
        // Of the timers, the newest is the most likely to run.
        const int index = below(3) != 0 ? timers - 1 : below(timers);
        const int times = below(64) != 0 ? 1 + below(6) : 1 + below(2001);
        m_subject.tick(index, times);
        return QString("timer %1 ticks %2 times").arg(index).arg(times);
    }

    std::mt19937 m_random;
    ModelledWindow m_subject;
};

} // namespace

/// Takes the window and its model on the same random walks and compares them after each step.
class tst_SequenceModel : public QObject
{
    Q_OBJECT

private slots:
    void walks_data();
    void walks();
};

void tst_SequenceModel::walks_data()
{
    QTest::addColumn<int>("firstSeed");
    for (int seed = 0; seed < kWalks; seed += kWalksARow) {
        QTest::addRow("%d walks from seed %d", kWalksARow, seed) << seed;
    }
}

void tst_SequenceModel::walks()
{
    QFETCH(int, firstSeed);

    for (int seed = firstSeed; seed < firstSeed + kWalksARow; ++seed) {
        Walk walk(static_cast<unsigned>(seed));
        QStringList way;
        for (int i = 0; i < kSteps; ++i) {
            way += walk.step();
            const QString difference = walk.subject().difference();
            if (!difference.isEmpty()) {
                QFAIL(qPrintable(
                    QString("seed %1: %2after %3").arg(seed).arg(difference, way.join("; "))));
            }
        }
    }
}

QTEST_MAIN(tst_SequenceModel)
#include "tst_SequenceModel.moc"
