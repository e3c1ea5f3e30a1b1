// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/Slip.h"

#include <QtTest>

class tst_Slip : public QObject
{
    Q_OBJECT

private slots:
    void encodes_data();
    void encodes();
    void decodes_data();
    void decodes();
    void decodesByteByByte_data() { decodes_data(); }
    void decodesByteByByte();
    void everyByteSurvives();
    void resetForgetsABegunFrame();
    void framesUpToTheLimitPass_data();
    void framesUpToTheLimitPass();
};

namespace {

constexpr int kLimit = 8;

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

} // namespace

void tst_Slip::encodes_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("plain bytes") << hex("01 02 00 ff") << hex("01 02 00 ff c0");
    QTest::newRow("an end mark inside") << hex("01 c0 02") << hex("01 db dc 02 c0");
    QTest::newRow("an escape inside") << hex("01 db 02") << hex("01 db dd 02 c0");
    QTest::newRow("escaped codes stay plain") << hex("dc dd") << hex("dc dd c0");
    QTest::newRow("nothing") << QByteArray() << hex("c0");
}

void tst_Slip::encodes()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, line);
    QCOMPARE(Slip::encode(frame), line);
}

void tst_Slip::decodes_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QVector<QByteArray>>("frames");

    QTest::newRow("one frame") << hex("01 02 c0") << QVector<QByteArray>{hex("01 02")};
    QTest::newRow("two frames") << hex("01 c0 02 c0") << QVector<QByteArray>{hex("01"), hex("02")};
    QTest::newRow("escaped end") << hex("01 db dc c0") << QVector<QByteArray>{hex("01 c0")};
    QTest::newRow("escaped escape") << hex("01 db dd c0") << QVector<QByteArray>{hex("01 db")};
    QTest::newRow("escape, then its code as data")
        << hex("db dd dc c0") << QVector<QByteArray>{hex("db dc")};
    QTest::newRow("end marks around") << hex("c0 c0 01 c0 c0") << QVector<QByteArray>{hex("01")};
    QTest::newRow("an unfinished frame") << hex("01 02") << QVector<QByteArray>();
    QTest::newRow("an invalid escape drops its frame only")
        << hex("01 db 01 02 c0 03 c0") << QVector<QByteArray>{hex("03")};
    QTest::newRow("a double escape") << hex("db db dc c0 03 c0") << QVector<QByteArray>{hex("03")};
    QTest::newRow("an escape before the end")
        << hex("01 db c0 03 c0") << QVector<QByteArray>{hex("03")};
    QTest::newRow("escapes in a dropped frame")
        << hex("db 01 db dc db c0 03 c0") << QVector<QByteArray>{hex("03")};
    QTest::newRow("a frame that is too long")
        << QByteArray(100, 'x') + hex("c0 03 c0") << QVector<QByteArray>{hex("03")};
}

void tst_Slip::decodes()
{
    QFETCH(QByteArray, line);
    QFETCH(QVector<QByteArray>, frames);
    QCOMPARE(Slip(kLimit).decode(line), frames);
}

void tst_Slip::decodesByteByByte()
{
    QFETCH(QByteArray, line);
    QFETCH(QVector<QByteArray>, frames);
    Slip slip(kLimit);
    QVector<QByteArray> decoded;
    for (const char byte : line) {
        decoded += slip.decode(QByteArray(1, byte));
    }
    QCOMPARE(decoded, frames);
}

void tst_Slip::everyByteSurvives()
{
    QByteArray all;
    for (int i = 0; i < 256; ++i) {
        all.append(static_cast<char>(i));
    }
    QCOMPARE(Slip(int(all.size())).decode(Slip::encode(all)), QVector<QByteArray>{all});
}

void tst_Slip::resetForgetsABegunFrame()
{
    Slip slip(kLimit);
    slip.decode(hex("01 db"));
    slip.reset();
    QCOMPARE(slip.decode(hex("02 c0")), QVector<QByteArray>{hex("02")});
}

void tst_Slip::framesUpToTheLimitPass_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("frames");

    QTest::newRow("one byte less") << QByteArray(kLimit - 1, 'x') << 1;
    QTest::newRow("the limit") << QByteArray(kLimit, 'x') << 1;
    QTest::newRow("one byte more") << QByteArray(kLimit + 1, 'x') << 0;
    QTest::newRow("the limit, all of it escaped") << QByteArray(kLimit, '\xC0') << 1;
    QTest::newRow("one byte more, all of it escaped") << QByteArray(kLimit + 1, '\xC0') << 0;
}

void tst_Slip::framesUpToTheLimitPass()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, frames);
    QCOMPARE(Slip(kLimit).decode(Slip::encode(frame)).size(), frames);
}

QTEST_GUILESS_MAIN(tst_Slip)
#include "tst_Slip.moc"
