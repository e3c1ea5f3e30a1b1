// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/TitledFace.h"

#include "tests/support/StripedPicture.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr QSize kStrip(90, 20);
constexpr QRect kRect(8, 6, 24, 12);

QImage frame(const QImage &strip, int index)
{
    return strip.copy(index * 30, 0, 30, 20);
}

QImage seen(const QPixmap &pixmap)
{
    return pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

/// Each rule is looked at on either of the two lists, "backgrounds" and "icons".
class tst_TitledFace : public QObject
{
    Q_OBJECT

private slots:
    void starts();
    void stores_data();
    void stores();
    void appends_data() { eachList(); }
    void appends();
    void appendsNothingForNoFrames_data() { eachList(); }
    void appendsNothingForNoFrames();
    void unreadablePictureGivesNullFrames_data() { eachList(); }
    void unreadablePictureGivesNullFrames();

private:
    static void eachList()
    {
        QTest::addColumn<bool>("icon");
        QTest::newRow("backgrounds") << false;
        QTest::newRow("icons") << true;
    }

    static void add(TitledFace &face, bool icon, const QString &path, int count)
    {
        if (icon) {
            face.addIcons(path, count, kRect);
        } else {
            face.addBackgrounds(path, count);
        }
    }

    static const QList<QPixmap> &list(const TitledFace &face, bool icon)
    {
        return icon ? face.icons : face.backgrounds;
    }

    static int count(const TitledFace &face, bool icon)
    {
        return icon ? face.iconCount : face.backgroundCount;
    }

    QTemporaryDir m_folder;
};

void tst_TitledFace::starts()
{
    const TitledFace face;
    QVERIFY(face.backgrounds.isEmpty());
    QCOMPARE(face.backgroundCount, 0);
    QVERIFY(face.icons.isEmpty());
    QCOMPARE(face.iconCount, 0);
    QCOMPARE(face.iconRect, QRect());
    QCOMPARE(face.spareRect, QRect());
    QCOMPARE(face.textColors,
             (QList<QColor>{QColor(55, 55, 55, 255), QColor(255, 255, 255, 255),
                            QColor(255, 255, 255, 255), QColor(50, 50, 50, 255)}));
}

void tst_TitledFace::stores_data()
{
    QTest::addColumn<int>("count");

    QTest::newRow("3") << 3;
    QTest::newRow("1") << 1;
    QTest::newRow("0") << 0;
    QTest::newRow("-3") << -3;
}

/// The two lists know nothing of each other.
void tst_TitledFace::stores()
{
    QFETCH(int, count);

    const QString path = StripedPicture::save(m_folder, kStrip);
    TitledFace backed;
    backed.addBackgrounds(path, count);
    QCOMPARE(backed.backgroundCount, count);
    QCOMPARE(backed.backgrounds.size(), qMax(count, 0));
    QCOMPARE(backed.iconCount, 0);
    QVERIFY(backed.icons.isEmpty());
    QCOMPARE(backed.iconRect, QRect());

    TitledFace iconed;
    iconed.addIcons(path, count, kRect);
    QCOMPARE(iconed.iconCount, count);
    QCOMPARE(iconed.icons.size(), qMax(count, 0));
    QCOMPARE(iconed.iconRect, kRect);
    QCOMPARE(iconed.spareRect, QRect());
    QCOMPARE(iconed.backgroundCount, 0);
    QVERIFY(iconed.backgrounds.isEmpty());
}

void tst_TitledFace::appends()
{
    QFETCH(bool, icon);

    TitledFace face;
    add(face, icon, StripedPicture::save(m_folder, kStrip), 3);
    add(face, icon, StripedPicture::saveOther(m_folder, kStrip), 3);
    QCOMPARE(count(face, icon), 3);
    QCOMPARE(list(face, icon).size(), 6);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(seen(list(face, icon).at(i)), frame(StripedPicture::paint(kStrip), i));
        QCOMPARE(seen(list(face, icon).at(i + 3)), frame(StripedPicture::paintOther(kStrip), i));
    }
}

void tst_TitledFace::appendsNothingForNoFrames()
{
    QFETCH(bool, icon);

    const QString path = StripedPicture::save(m_folder, kStrip);
    for (const int none : {0, -3}) {
        TitledFace face;
        face.addIcons(QString(), 0, QRect(1, 2, 3, 4));
        add(face, icon, path, 3);
        add(face, icon, path, none);
        QCOMPARE(count(face, icon), none);
        QCOMPARE(list(face, icon).size(), 3);
        QCOMPARE(face.iconRect, icon ? kRect : QRect(1, 2, 3, 4));
    }
}

void tst_TitledFace::unreadablePictureGivesNullFrames()
{
    QFETCH(bool, icon);

    TitledFace face;
    add(face, icon, m_folder.filePath("missing.png"), 3);
    QCOMPARE(count(face, icon), 3);
    QCOMPARE(list(face, icon).size(), 3);
    for (const QPixmap &pixmap : list(face, icon)) {
        QVERIFY(pixmap.isNull());
    }
}

QTEST_MAIN(tst_TitledFace)
#include "tst_TitledFace.moc"
