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

#define AWAIT_COMPARE(actual, expected)                                                            \
    QTRY_COMPARE_WITH_TIMEOUT(actual, expected, Patience::milliseconds())
#define AWAIT_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, Patience::milliseconds())
