// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>
#include <QVector>
#include <QtTest>

/// How the classes with four frames to a strip cut it, as rows of a table of tests.
namespace FourFrameStrips {

/// Adds the columns "strip", "starts" (the left edges of the four frames) and "width" (of each).
inline void addRows()
{
    QTest::addColumn<QSize>("strip");
    QTest::addColumn<QVector<int>>("starts");
    QTest::addColumn<int>("width");

    using Starts = QVector<int>;
    QTest::newRow("160 x 40") << QSize(160, 40) << Starts{0, 40, 80, 120} << 40;
    QTest::newRow("200 x 30") << QSize(200, 30) << Starts{0, 50, 100, 150} << 50;
    QTest::newRow("102 wide: each start is rounded on its own")
        << QSize(102, 10) << Starts{0, 25, 51, 76} << 25;
    QTest::newRow("10 wide") << QSize(10, 10) << Starts{0, 2, 5, 7} << 2;
    QTest::newRow("163 wide: the last column is in no frame")
        << QSize(163, 10) << Starts{0, 40, 81, 122} << 40;
    QTest::newRow("4 wide") << QSize(4, 10) << Starts{0, 1, 2, 3} << 1;
    QTest::newRow("3 wide: every frame is the whole picture")
        << QSize(3, 10) << Starts{0, 0, 0, 0} << 3;
    QTest::newRow("1 wide: every frame is the whole picture")
        << QSize(1, 10) << Starts{0, 0, 0, 0} << 1;
}

} // namespace FourFrameStrips
