// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"

#include <QAbstractButton>
#include <QBuffer>
#include <QDir>
#include <QPluginLoader>
#include <QUiLoader>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtTest>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>

namespace {

const QString kPlugin = DESIGNER_PLUGIN;
const QDir kHeaders(HEADERS);

const QStringList kKit{"ColorButton",  "CustomArea",  "CustomProgressBar", "FuncButton",
                       "IconButton",   "ImageButton", "MButton",           "ProfileButton",
                       "SwitchButton", "tabButton"};

} // namespace

class tst_KitCollection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void offersAllClasses();
    void entryIsComplete_data() { eachClass(); }
    void entryIsComplete();
    void createsByName_data() { eachClass(); }
    void createsByName();
    void rejectsAnUnknownName();
    void loadsItsOwnForm_data() { eachClass(); }
    void loadsItsOwnForm();
    void loadsAFormWithTwoWidgets();
    void areaIsAContainer();
    void showsSamplesInDesignerOnly_data();
    void showsSamplesInDesignerOnly();

private:
    static void eachClass();
    QDesignerCustomWidgetInterface *entry(const QString &name) const;
    std::unique_ptr<QWidget> loadForm(const QString &xml);

    QPluginLoader m_plugin{kPlugin};
    QList<QDesignerCustomWidgetInterface *> m_entries;
    std::unique_ptr<QUiLoader> m_loader;
};

void tst_KitCollection::eachClass()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : kKit) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

QDesignerCustomWidgetInterface *tst_KitCollection::entry(const QString &name) const
{
    for (QDesignerCustomWidgetInterface *candidate : m_entries) {
        if (candidate->name() == name) {
            return candidate;
        }
    }
    return nullptr;
}

std::unique_ptr<QWidget> tst_KitCollection::loadForm(const QString &xml)
{
    QByteArray bytes = xml.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return std::unique_ptr<QWidget>(m_loader->load(&buffer));
}

void tst_KitCollection::initTestCase()
{
    auto *collection
        = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(m_plugin.instance());
    QVERIFY2(collection, qPrintable(m_plugin.errorString()));
    m_entries = collection->customWidgets();
    m_loader = std::make_unique<QUiLoader>();
    m_loader->clearPluginPaths();
    QVERIFY(!m_loader->availableWidgets().contains("MButton"));
    m_loader->addPluginPath(QFileInfo(kPlugin).path());
}

void tst_KitCollection::offersAllClasses()
{
    QStringList names;
    for (const QDesignerCustomWidgetInterface *candidate : m_entries) {
        names << candidate->name();
    }
    QCOMPARE(names, kKit);

    // Each widget class has a header with its name.
    QStringList widgets;
    for (const QString &header : QDir(kHeaders.filePath("widgets")).entryList({"*.h"})) {
        QFile file(kHeaders.filePath("widgets/" + header));
        QVERIFY(file.open(QIODevice::ReadOnly));
        if (file.readAll().contains("Q_OBJECT")) {
            widgets << QFileInfo(header).baseName();
        }
    }
    widgets.sort();
    QCOMPARE(widgets, kKit);
}

void tst_KitCollection::entryIsComplete()
{
    QFETCH(QString, name);

    const QDesignerCustomWidgetInterface *described = entry(name);
    QVERIFY(described);
    QVERIFY(!described->group().isEmpty());
    QVERIFY(!described->toolTip().isEmpty());
    QCOMPARE(described->isContainer(), name == "CustomArea");
    QCOMPARE(described->includeFile(), QString("widgets/%1.h").arg(name));
    QVERIFY(kHeaders.exists(described->includeFile()));
}

void tst_KitCollection::createsByName()
{
    QFETCH(QString, name);

    QVERIFY(m_loader->availableWidgets().contains(name));
    QWidget parent;
    QWidget *widget = m_loader->createWidget(name, &parent, "thing");
    QVERIFY(widget);
    QCOMPARE(widget->metaObject()->className(), qPrintable(name));
    QCOMPARE(widget->parentWidget(), &parent);
    QCOMPARE(widget->objectName(), "thing");
}

void tst_KitCollection::rejectsAnUnknownName()
{
    WarningCatcher warnings;
    QWidget parent;
    QVERIFY(!m_loader->createWidget("NinePatchPainter", &parent));
    QVERIFY(parent.children().isEmpty());
}

void tst_KitCollection::loadsItsOwnForm()
{
    QFETCH(QString, name);

    WarningCatcher warnings;
    const std::unique_ptr<QWidget> widget = loadForm(entry(name)->domXml());
    QCOMPARE(warnings.take(), QStringList());
    QVERIFY2(widget, qPrintable(m_loader->errorString()));
    QCOMPARE(widget->metaObject()->className(), qPrintable(name));
    QVERIFY(!widget->size().isEmpty());
    QVERIFY(widget->width() <= 200 && widget->height() <= 120);
    QVERIFY(!widget->objectName().isEmpty());
    QVERIFY(widget->objectName() != name);
}

void tst_KitCollection::loadsAFormWithTwoWidgets()
{
    const std::unique_ptr<QWidget> form = loadForm(
        R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
        <widget class="MButton" name="start"><property name="text"><string>Start</string></property>
        <property name="enabled"><bool>false</bool></property></widget>
        <widget class="ColorButton" name="colour"><property name="checked"><bool>true</bool>
        </property></widget></widget></ui>)");
    QVERIFY(form);
    const auto *start = form->findChild<QAbstractButton *>("start");
    const auto *colour = form->findChild<QAbstractButton *>("colour");
    QVERIFY(start && colour);
    QCOMPARE(start->metaObject()->className(), "MButton");
    QCOMPARE(start->text(), "Start");
    QVERIFY(!start->isEnabled());
    QCOMPARE(colour->metaObject()->className(), "ColorButton");
    QVERIFY(colour->isChecked());
}

void tst_KitCollection::areaIsAContainer()
{
    const std::unique_ptr<QWidget> area
        = loadForm(R"(<ui version="4.0"><widget class="CustomArea" name="area">
        <widget class="MButton" name="start"/></widget></ui>)");
    QVERIFY(area);
    QCOMPARE(area->metaObject()->className(), "CustomArea");
    QVERIFY(area->findChild<QAbstractButton *>("start"));
}

void tst_KitCollection::showsSamplesInDesignerOnly_data()
{
    QTest::addColumn<QString>("name");

    for (const QString &name : kKit) {
        // These three need no pictures.
        if (name != "ColorButton" && name != "CustomArea" && name != "CustomProgressBar") {
            QTest::newRow(qPrintable(name)) << name;
        }
    }
}

void tst_KitCollection::showsSamplesInDesignerOnly()
{
    QFETCH(QString, name);

    const QSize size(120, 40);
    QDesignerCustomWidgetInterface *described = entry(name);
    QVERIFY(!described->isInitialized());
    const std::unique_ptr<QWidget> plain(described->createWidget(nullptr));
    plain->resize(size);
    QCOMPARE(WidgetPicture::of(*plain), WidgetPicture::canvas(size));

    QDesignerFormEditorInterface designer;
    described->initialize(&designer);
    QVERIFY(described->isInitialized());
    const std::unique_ptr<QWidget> drawn(described->createWidget(nullptr));
    drawn->resize(size);
    QCOMPARE(WidgetPicture::changedRegion(WidgetPicture::canvas(size), WidgetPicture::of(*drawn)),
             QRect(QPoint(0, 0), size));
}

QTEST_MAIN(tst_KitCollection)
#include "tst_KitCollection.moc"
