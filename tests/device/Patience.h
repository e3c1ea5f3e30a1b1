// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtTest>

/// How long a test waits for something that must happen. A program in which a test has failed is
/// wrong and soon gives up waiting, so that its other tests fail within seconds.
class Patience
{
public:
    /// Call it from cleanup().
    static void loseAfterFailure()
    {
        if (QTest::currentTestFailed()) {
            s_milliseconds = 100;
        }
    }

    static int milliseconds() { return s_milliseconds; }

private:
    static inline int s_milliseconds = 5000;
};

// With a time that is no constant, the macros of Qt 6.8 do not compile without warnings.
#define AWAIT_COMPARE(actual, expected)                                                            \
    do {                                                                                           \
        static_cast<void>(                                                                         \
            QTest::qWaitFor([&] { return (actual) == (expected); }, Patience::milliseconds()));    \
        QCOMPARE(actual, expected);                                                                \
    } while (false)
#define AWAIT_VERIFY(condition)                                                                    \
    QVERIFY(QTest::qWaitFor([&] { return condition; }, Patience::milliseconds()))
