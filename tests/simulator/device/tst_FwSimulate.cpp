// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

/// Installs fw-simulate and uses it outside the source tree, with programs of other makers.
class tst_FwSimulate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void manualIsInstalled();
    void documentedExampleWorks_data();
    void documentedExampleWorks();
    void runsNothingWithoutItsLibrary();
    void exitsLikeTheProgram_data();
    void exitsLikeTheProgram();
    void refuses_data();
    void refuses();

private:
    struct Outcome
    {
        int exitCode = -1;
        QByteArray output;
    };

    QString path(const QString &name) const { return m_folder.filePath(name); }
    void saveFiles() const;
    Outcome run(const QString &command) const;

    QTemporaryDir m_folder;
    QString m_page;
};

namespace {

/// The indented blocks of a section, without their indentation.
QStringList blocksOf(const QString &section)
{
    QStringList blocks;
    bool isInside = false;
    bool isFenced = false;
    const QStringList lines = section.split('\n');
    for (const QString &line : lines) {
        isFenced = line.startsWith("```") ? !isFenced : isFenced;
        const bool isCode = !isFenced && line.startsWith("    ");
        if (isCode && !isInside) {
            blocks.append(QString());
        }
        if (isCode) {
            blocks.last() += line.mid(4) + '\n';
        }
        isInside = isCode;
    }
    return blocks;
}

} // namespace

void tst_FwSimulate::initTestCase()
{
    QFile page(DOCUMENT);
    QVERIFY(page.open(QIODevice::ReadOnly));
    m_page = QString::fromUtf8(page.readAll());
    saveFiles();
    QCOMPARE(QProcess::execute(CMAKE,
                               {"--install", BUILD_FOLDER, "--component", "simulator", "--prefix",
                                path("installed")}),
             0);
}

/// The files that the page says to save.
void tst_FwSimulate::saveFiles() const
{
    static const QRegularExpression file("[Ss]ave (?:this|it) as `([^`]+)`:\n\n```[a-z]+\n(.*?)```",
                                         QRegularExpression::DotMatchesEverythingOption);
    auto matches = file.globalMatch(m_page);
    QVERIFY(matches.hasNext());
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        QFile output(path(match.captured(1)));
        QVERIFY(output.open(QIODevice::WriteOnly));
        output.write(match.captured(2).toUtf8());
    }
}

tst_FwSimulate::Outcome tst_FwSimulate::run(const QString &command) const
{
    QProcessEnvironment environment;
    environment.insert("PATH", path("installed/bin") + ":/usr/bin:/bin");
    for (const char *name : {"ASAN_OPTIONS", "LC_ALL", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        environment.insert(name, qEnvironmentVariable(name));
    }
    QProcess shell;
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(m_folder.path());
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start("sh", {"-c", command});
    shell.waitForFinished();
    return {shell.exitCode(), shell.readAllStandardOutput()};
}

void tst_FwSimulate::manualIsInstalled()
{
    QFile manual(path("installed/share/man/man1/fw-simulate.1"));
    QVERIFY(manual.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(manual.readAll()).remove('\\');
    const QString help = QString::fromUtf8(run("fw-simulate --help").output);
    static const QRegularExpression option("--[a-z-]+");
    auto options = option.globalMatch(help.section("Options:", 1));
    QVERIFY(options.hasNext());
    while (options.hasNext()) {
        const QString name = options.next().captured();
        // Qt's own.
        if (name != "--help-all") {
            QVERIFY2(text.contains(name), qPrintable(name));
        }
    }
}

void tst_FwSimulate::documentedExampleWorks_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("output");

    const QStringList sections = m_page.split("\n## ");
    for (const QString &section : sections) {
        const QStringList blocks = blocksOf(section);
        // Others need files that the reader has.
        if (blocks.size() == 2) {
            QTest::newRow(qPrintable(section.section('\n', 0, 0))) << blocks.at(0) << blocks.at(1);
        }
    }
}

void tst_FwSimulate::documentedExampleWorks()
{
    QFETCH(const QString, command);
    QFETCH(const QString, output);

    const Outcome outcome = run(command);

    QCOMPARE(QString::fromUtf8(outcome.output), output);
    QCOMPARE(outcome.exitCode, 0);
}

/// Otherwise, the program would use the devices of the machine.
void tst_FwSimulate::runsNothingWithoutItsLibrary()
{
    QVERIFY(QDir(m_folder.path()).mkdir("broken"));
    QFile library(path("broken/libumockdev-preload.so.0"));
    QVERIFY(library.open(QIODevice::WriteOnly));
    library.write("no library");
    library.close();

    const Outcome outcome = run("LD_LIBRARY_PATH=broken fw-simulate -- touch ran");

    QCOMPARE(outcome.output,
             QByteArray("fw-simulate: cannot load umockdev's library; install the "
                        "package umockdev\n"));
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY(!QFile::exists(path("ran")));
}

void tst_FwSimulate::exitsLikeTheProgram_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<int>("exitCode");

    QTest::newRow("success") << "true" << 0;
    QTest::newRow("failure") << "sh -c 'exit 7'" << 7;
    QTest::newRow("a signal") << "sh -c 'kill -KILL $$'" << 128 + 9;
}

void tst_FwSimulate::exitsLikeTheProgram()
{
    QFETCH(const QString, program);
    QFETCH(const int, exitCode);

    const Outcome outcome = run("fw-simulate --json -- " + program);

    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, QByteArray("{\"event\":\"application\"}\n"));
}

void tst_FwSimulate::refuses_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("sentence");

    QTest::newRow("no program") << "" << QByteArray("no program given, see --help");
    QTest::newRow("a wrong setting")
        << "--start asleep -- true"
        << QByteArray("start must be application, bootloader or absent");
    QTest::newRow("a file for the events that cannot be written")
        << "--events /none/events -- true" << QByteArray("/none/events: No such file or directory");
    QTest::newRow("a program that does not exist")
        << "--start absent -- /none/program" << QByteArray("cannot start /none/program");
}

void tst_FwSimulate::refuses()
{
    QFETCH(const QString, arguments);
    QFETCH(const QByteArray, sentence);

    const Outcome outcome = run("fw-simulate " + arguments);

    QCOMPARE(outcome.output, "fw-simulate: " + sentence + '\n');
    QCOMPARE(outcome.exitCode, 2);
}

QTEST_GUILESS_MAIN(tst_FwSimulate)
#include "tst_FwSimulate.moc"
