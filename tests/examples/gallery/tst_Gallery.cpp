// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Gallery.h"

#include "examples/gallery/Card.h"
#include "widgets/SwitchButton.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QProcess>
#include <QSet>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

namespace {

/// Pictures of the cards, by class.
QMap<QString, QImage> cardPictures(Gallery &gallery)
{
    gallery.picture(); // applies the layout
    QMap<QString, QImage> pictures;
    for (Card *card : gallery.cards()) {
        pictures[card->className()] = card->grab().toImage();
    }
    return pictures;
}

QCheckBox *checkBox(Gallery &gallery, const QString &text)
{
    const auto boxes = gallery.findChildren<QCheckBox *>();
    const auto box = std::find_if(boxes.begin(), boxes.end(),
                                  [&](const QCheckBox *each) { return each->text() == text; });
    return box == boxes.end() ? nullptr : *box;
}

void runGallery(const QStringList &arguments)
{
    QProcess gallery;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(display);
    }
    gallery.setProcessEnvironment(environment);
    gallery.start(GALLERY, arguments);
    QVERIFY(gallery.waitForFinished());
    QCOMPARE(gallery.exitStatus(), QProcess::NormalExit);
    QCOMPARE(gallery.exitCode(), 0);
}

} // namespace

class tst_Gallery : public QObject
{
    Q_OBJECT

private slots:
    void showsAllClasses();
    void stillsDifferByLook_data();
    void stillsDifferByLook();
    void controlsChangeLiveWidgets_data();
    void controlsChangeLiveWidgets();
    void controlFollowsTheSwitch();
    void savesAPictureWithoutADisplay();
    void savesThePicturesOfTheManual();
};

void tst_Gallery::showsAllClasses()
{
    const Gallery gallery;
    QStringList names;
    for (const Card *card : gallery.cards()) {
        names << card->className();
    }
    names.sort();
    QCOMPARE(names,
             (QStringList{"ColorButton", "CustomArea", "CustomProgressBar", "FuncButton",
                          "IconButton", "ImageButton", "MButton", "NinePatchPainter",
                          "ProfileButton", "SwitchButton", "tabButton"}));
}

void tst_Gallery::stillsDifferByLook_data()
{
    QTest::addColumn<int>("looks");

    QTest::newRow("ImageButton") << 4;
    QTest::newRow("MButton") << 5; // stretched: normal, hover, disabled; plain: two, some alike
    QTest::newRow("tabButton") << 3; // pressed and selected are alike
    QTest::newRow("FuncButton") << 2;
    QTest::newRow("IconButton") << 3;
    QTest::newRow("ProfileButton") << 3;
    QTest::newRow("SwitchButton") << 6;
}

void tst_Gallery::stillsDifferByLook()
{
    QFETCH(int, looks);

    Gallery gallery;
    gallery.picture(); // applies the layout
    QSet<QByteArray> pictures;
    for (QAbstractButton *button : gallery.findChildren<QAbstractButton *>()) {
        const bool isStill = button->testAttribute(Qt::WA_TransparentForMouseEvents);
        if (isStill && QByteArray(button->metaObject()->className()) == QTest::currentDataTag()) {
            const QImage picture = button->grab().toImage();
            pictures << QByteArray(reinterpret_cast<const char *>(picture.constBits()),
                                   int(picture.sizeInBytes()));
        }
    }
    QCOMPARE(pictures.size(), looks);
}

void tst_Gallery::controlsChangeLiveWidgets_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QStringList>("changing");

    QTest::newRow("enabled: classes with a disabled look")
        << "enabled" << QStringList{"ImageButton", "MButton"};
    QTest::newRow("checked: classes with a selected state")
        << "checked" << QStringList{"FuncButton", "SwitchButton", "tabButton"};
    QTest::newRow("caption: classes with a caption")
        << "caption"
        << QStringList{"FuncButton", "IconButton", "MButton", "ProfileButton", "tabButton"};
    QTest::newRow("value: the progress bar") << "value" << QStringList{"CustomProgressBar"};
}

void tst_Gallery::controlsChangeLiveWidgets()
{
    QFETCH(QString, control);
    QFETCH(QStringList, changing);

    Gallery gallery;
    const QMap<QString, QImage> before = cardPictures(gallery);
    if (control == "enabled") {
        checkBox(gallery, "Enabled")->click();
    } else if (control == "checked") {
        checkBox(gallery, "Checked")->click();
    } else if (control == "caption") {
        gallery.findChild<QLineEdit *>()->setText("Zap");
    } else {
        gallery.findChild<QSlider *>()->setValue(100);
    }

    const QMap<QString, QImage> after = cardPictures(gallery);
    QStringList changed;
    for (auto picture = before.cbegin(); picture != before.cend(); ++picture) {
        if (after.value(picture.key()) != picture.value()) {
            changed << picture.key();
        }
    }
    QCOMPARE(changed, changing);
}

void tst_Gallery::controlFollowsTheSwitch()
{
    Gallery gallery;
    const auto switches = gallery.findChildren<SwitchButton *>();
    const auto live = std::find_if(switches.begin(), switches.end(), [](const SwitchButton *each) {
        return !each->testAttribute(Qt::WA_TransparentForMouseEvents);
    });
    QVERIFY(live != switches.end());
    QTest::mouseClick(*live, Qt::LeftButton);
    QVERIFY((*live)->isCheck());
    QVERIFY(checkBox(gallery, "Checked")->isChecked());
}

void tst_Gallery::savesAPictureWithoutADisplay()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("gallery.png");
    runGallery({"--save", path});
    const QImage picture(path);
    QVERIFY(picture.width() > 1000);
    QVERIFY(picture.height() > 600);
}

void tst_Gallery::savesThePicturesOfTheManual()
{
    const QTemporaryDir folder;
    runGallery({"--save-documents", folder.filePath("images")});
    const QDir images(folder.filePath("images"));
    const Gallery gallery;
    for (const Card *card : gallery.cards()) {
        QVERIFY2(!QImage(images.filePath(card->className() + ".png")).isNull(),
                 qPrintable(card->className()));
    }
    const QStringList withPictures
        = {"MButton",    "ImageButton",  "tabButton",     "FuncButton",
           "IconButton", "SwitchButton", "ProfileButton", "NinePatchPainter"};
    for (const QString &name : withPictures) {
        QVERIFY2(!QImage(images.filePath(name + "-strip.png")).isNull(), qPrintable(name));
    }
}

QTEST_MAIN(tst_Gallery)
#include "tst_Gallery.moc"
