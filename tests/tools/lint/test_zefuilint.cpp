#include "../ToolRun.h"

#include "ZEFTest.h"
#include "tools/lint/Rules.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

// With the drive on Windows, since programs run in folders of other drives.
const QString samples = QFileInfo(QStringLiteral(SAMPLES)).absoluteFilePath();

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), contents.size());
}

ToolRun lint(const QStringList& arguments, const QString& folder = QString())
{
    return runTool(QStringLiteral(ZEFUI_LINT), arguments, folder);
}

//! The arguments for a sample: its form and whatever lies beside it under the same name.
QStringList argumentsFor(const QDir& folder, const QString& sample)
{
    QStringList arguments{sample + u".ui"};
    const QList<std::pair<QString, QString>> companions{{u"--css"_s, u".css"_s},
                                                        {u"--translations"_s, u".translations"_s},
                                                        {u"--values"_s, u".values.json"_s},
                                                        {u"--delegate"_s, u".delegate.h"_s},
                                                        {u"--delegate"_s, u".delegate.json"_s}};
    for (const auto& [option, suffix] : companions) {
        if (const QString name = sample + suffix; folder.exists(name))
            arguments += {option, name};
    }
    return arguments;
}

QByteArray formWith(const QByteArray& widgets, const QByteArray& head = QByteArray())
{
    return "<?xml version=\"1.0\"?>\n" + head
        + "<ui version=\"4.0\">\n<class>F</class>\n<widget class=\"QWidget\" name=\"F\">\n" + widgets
        + "</widget>\n</ui>\n";
}

} // namespace

class TestZEFUILint : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void eachRuleHasSamplesAndASection_data();
    void eachRuleHasSamplesAndASection();
    void aGoodSampleHasNoFindings_data();
    void aGoodSampleHasNoFindings();
    void aBadSampleHasItsFindings_data();
    void aBadSampleHasItsFindings();

    void findingsAreSuppressed_data();
    void findingsAreSuppressed();
    void aRuleIsDisabled();
    void severalFormsAreOneProject();
    void theListNamesAllRules();

    void jsonReport();
    void sarifReport();
    void aTextReportKeepsToOneLineForEachFinding();
    void theReportGoesToAFile();
    void aFileGivenTwiceIsCheckedOnce();
    void onlyFilesAreReplaced_data();
    void onlyFilesAreReplaced();
    void anOutputThatTakesNothingIsAFailure_data();
    void anOutputThatTakesNothingIsAFailure();

    void whatCannotBeRunIsSaidInOneLine_data();
    void whatCannotBeRunIsSaidInOneLine();
    void aHugeFileIsRefused();
    void anUnreadableFolderOrFileIsRefused();
    void aFailureLeavesTheOldReport();
    void deepNestingIsReported();
    void repetitionIsReadInTime_data();
    void repetitionIsReadInTime();

private:
    static void addRuleRows();
};

void TestZEFUILint::addRuleRows()
{
    QTest::addColumn<QString>("rule");
    for (const Rule& rule : rules())
        QTest::newRow(rule.name.latin1()) << QString(rule.name);
}

void TestZEFUILint::eachRuleHasSamplesAndASection_data()
{
    addRuleRows();
}

void TestZEFUILint::eachRuleHasSamplesAndASection()
{
    QFETCH(const QString, rule);
    for (const QString& file : {u"good.ui"_s, u"bad.ui"_s, u"bad.txt"_s})
        QVERIFY2(QFile::exists(samples + u'/' + rule + u'/' + file), qPrintable(file));
    const QByteArray heading = "\n### `" + rule.toLatin1() + "`\n";
    QVERIFY(contentsOf(QStringLiteral(MANUAL)).contains(heading));
}

void TestZEFUILint::aGoodSampleHasNoFindings_data()
{
    addRuleRows();
}

void TestZEFUILint::aGoodSampleHasNoFindings()
{
    QFETCH(const QString, rule);
    const QDir folder(samples + u'/' + rule);
    const ToolRun run = lint(argumentsFor(folder, u"good"_s), folder.path());
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
}

void TestZEFUILint::aBadSampleHasItsFindings_data()
{
    addRuleRows();
}

void TestZEFUILint::aBadSampleHasItsFindings()
{
    QFETCH(const QString, rule);
    const QDir folder(samples + u'/' + rule);
    const QByteArray expected = contentsOf(folder.filePath(u"bad.txt"_s));
    QVERIFY(expected.contains(rule.toLatin1()));
    const ToolRun run = lint(argumentsFor(folder, u"bad"_s), folder.path());
    QCOMPARE(run.output, expected);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 1);
}

void TestZEFUILint::findingsAreSuppressed_data()
{
    QTest::addColumn<QByteArray>("form");
    QTest::addColumn<QByteArray>("rulesLeft");

    const QByteArray bad = "<widget class=\"Gauge\" name=\"a_b\"/>\n";
    const QByteArray box = "<widget class=\"QGroupBox\" name=\"box\">\n" + bad + "</widget>\n";
    QTest::newRow("no comment") << formWith(bad) << QByteArray("unknown-class,unaddressable-name");
    QTest::newRow("one rule") << formWith("<!-- zefui-lint: ignore unknown-class -->\n" + bad)
                              << QByteArray("unaddressable-name");
    QTest::newRow("two rules") << formWith("<!-- zefui-lint: ignore unknown-class, unaddressable-name -->\n"
                                           + bad)
                               << QByteArray();
    QTest::newRow("all rules") << formWith("<!--zefui-lint: ignore-->\n" + bad) << QByteArray();
    QTest::newRow("with everything inside")
        << formWith("<!-- zefui-lint: ignore -->\n" + box) << QByteArray();
    QTest::newRow("not what follows the element")
        << formWith("<!-- zefui-lint: ignore -->\n<widget class=\"QLabel\" name=\"l\"/>\n" + bad)
        << QByteArray("unknown-class,unaddressable-name");
    QTest::newRow("not what stands before")
        << formWith(bad + "<!-- zefui-lint: ignore -->\n") << QByteArray("unknown-class,unaddressable-name");
    QTest::newRow("another comment") << formWith("<!-- ignore unknown-class -->\n" + bad)
                                     << QByteArray("unknown-class,unaddressable-name");
    QTest::newRow("the whole form") << formWith(bad, "<!-- zefui-lint: ignore unknown-class -->\n")
                                    << QByteArray("unaddressable-name");
    QTest::newRow("the form's own comment") << formWith(bad).replace(
        "<class>", "<comment>zefui-lint: ignore unaddressable-name</comment>\n<class>")
                                            << QByteArray("unknown-class");
}

void TestZEFUILint::findingsAreSuppressed()
{
    QFETCH(const QByteArray, form);
    QFETCH(const QByteArray, rulesLeft);
    const QTemporaryDir folder;
    write(folder.filePath(u"f.ui"_s), form);
    const ToolRun run = lint({u"f.ui"_s}, folder.path());
    QByteArrayList left;
    for (const QByteArray& line : run.output.split('\n')) {
        if (!line.isEmpty())
            left.append(line.split(':').at(2).trimmed());
    }
    QCOMPARE(left.join(','), rulesLeft);
    QCOMPARE(run.status, rulesLeft.isEmpty() ? 0 : 1);
}

void TestZEFUILint::aRuleIsDisabled()
{
    const QDir folder(samples + u"/close-twice");
    const ToolRun run = lint({u"--disable"_s, u"close-twice"_s, u"bad.ui"_s}, folder.path());
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 0);
}

void TestZEFUILint::severalFormsAreOneProject()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"a.ui"_s), formWith("<widget class=\"QPushButton\" name=\"ok\"/>\n"));
    write(folder.filePath(u"b.ui"_s),
          formWith("<widget class=\"QLineEdit\" name=\"ok\"/>\n<widget class=\"QLabel\" name=\"a_b\"/>\n"));
    write(folder.filePath(u"ok.css"_s),
          "QPushButton { color: red; }\nQLineEdit { color: red; }\nQDial { color: red; }\n");
    const ToolRun run = lint(
        {u"--disable"_s, u"unnamed-control"_s, u"--css"_s, u"ok.css"_s, u"b.ui"_s, u"a.ui"_s}, folder.path());
    const QByteArrayList lines = run.output.split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).startsWith("b.ui:6: unaddressable-name: "));
    QVERIFY(lines.at(1).startsWith("ok.css:3: unused-selector: the selector \"QDial\" "));
}

void TestZEFUILint::theListNamesAllRules()
{
    const ToolRun run = lint({u"--list-rules"_s});
    QCOMPARE(run.status, 0);
    QByteArray expected;
    for (const Rule& rule : rules())
        expected += QByteArray(rule.name.latin1()) + "  " + rule.summary.latin1() + '\n';
    QCOMPARE(run.output, expected);
}

void TestZEFUILint::jsonReport()
{
    const QDir folder(samples + u"/close-twice");
    const ToolRun run = lint({u"--format"_s, u"json"_s, u"bad.ui"_s}, folder.path());
    QCOMPARE(run.status, 1);
    const QJsonArray findings = QJsonDocument::fromJson(run.output).object().value(u"findings"_s).toArray();
    QCOMPARE(findings.size(), 1);
    const QJsonObject finding = findings.at(0).toObject();
    QCOMPARE(finding.keys(), QStringList({u"file"_s, u"line"_s, u"message"_s, u"rule"_s}));
    QCOMPARE(finding.value(u"file"_s).toString(), u"bad.ui"_s);
    QCOMPARE(finding.value(u"line"_s).toInt(), 11);
    QCOMPARE(finding.value(u"rule"_s).toString(), u"close-twice"_s);
    QVERIFY(
        finding.value(u"message"_s).toString().startsWith(u"the widget in line 7 is named \"close\" too: "));

    const ToolRun clean = lint({u"--format"_s, u"json"_s, u"good.ui"_s}, folder.path());
    QCOMPARE(clean.status, 0);
    QCOMPARE(QJsonDocument::fromJson(clean.output).object(), QJsonObject({{u"findings"_s, QJsonArray()}}));
}

void TestZEFUILint::sarifReport()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"my forms"_s));
    const QString absolute = folder.filePath(u"my forms/ä.ui"_s);
    write(absolute, formWith("<widget class=\"QLabel\" name=\"a_b\"/>\n"));

    const auto locationOf = [](const ToolRun& run) {
        const QJsonObject root = QJsonDocument::fromJson(run.output).object();
        return root.value(u"runs"_s)
            .toArray()
            .at(0)
            .toObject()
            .value(u"results"_s)
            .toArray()
            .at(0)
            .toObject()
            .value(u"locations"_s)
            .toArray()
            .at(0)
            .toObject()
            .value(u"physicalLocation"_s)
            .toObject();
    };
    const ToolRun run = lint({u"--format"_s, u"sarif"_s, u"my forms/ä.ui"_s}, folder.path());
    QCOMPARE(run.status, 1);
    const QJsonObject root = QJsonDocument::fromJson(run.output).object();
    QCOMPARE(root.value(u"version"_s).toString(), u"2.1.0"_s);
    QCOMPARE(root.value(u"$schema"_s).toString(), u"https://json.schemastore.org/sarif-2.1.0.json"_s);
    const QJsonObject sarifRun = root.value(u"runs"_s).toArray().at(0).toObject();
    const QJsonObject driver = sarifRun.value(u"tool"_s).toObject().value(u"driver"_s).toObject();
    QCOMPARE(driver.value(u"name"_s).toString(), u"zefui-lint"_s);
    QCOMPARE(driver.value(u"rules"_s).toArray().size(), rules().size());
    const QJsonObject result = sarifRun.value(u"results"_s).toArray().at(0).toObject();
    QCOMPARE(result.value(u"ruleId"_s).toString(), u"unaddressable-name"_s);
    const QJsonObject named =
        driver.value(u"rules"_s).toArray().at(result.value(u"ruleIndex"_s).toInt()).toObject();
    QCOMPARE(named.value(u"id"_s).toString(), u"unaddressable-name"_s);
    QVERIFY(result.value(u"message"_s).toObject().value(u"text"_s).toString().contains(u"\"a_b\""));
    // A report is about the sources: a relative file stays relative, for the service that reads it.
    QCOMPARE(locationOf(run).value(u"artifactLocation"_s).toObject().value(u"uri"_s).toString(),
             u"my%20forms/%C3%A4.ui"_s);
    QCOMPARE(locationOf(run).value(u"region"_s).toObject().value(u"startLine"_s).toInt(), 5);

#ifndef Q_OS_WIN
    QVERIFY(QFile::copy(absolute, folder.filePath(u"a:b?.ui"_s)));
    const ToolRun colonRun = lint({u"--format"_s, u"sarif"_s, u"a:b?.ui"_s}, folder.path());
    QCOMPARE(locationOf(colonRun).value(u"artifactLocation"_s).toObject().value(u"uri"_s).toString(),
             u"a%3Ab%3F.ui"_s);
#endif

    const ToolRun absoluteRun = lint({u"--format"_s, u"sarif"_s, absolute});
    const QString uri =
        locationOf(absoluteRun).value(u"artifactLocation"_s).toObject().value(u"uri"_s).toString();
    QVERIFY(uri.startsWith(u"file:///"));
    QVERIFY(uri.endsWith(u"/my%20forms/%C3%A4.ui"));
}

void TestZEFUILint::aTextReportKeepsToOneLineForEachFinding()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"f.ui"_s),
          formWith("<widget class=\"QLabel\" name=\"a_&#10;b&#9;%s%n&#x2028;\"/>\n"));
    const ToolRun run = lint({u"f.ui"_s}, folder.path());
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output.count('\n'), 1);
    QVERIFY(run.output.contains("\"a_ b %s%n \""));
}

void TestZEFUILint::theReportGoesToAFile()
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(u"report.txt"_s);
    const ToolRun run = lint({u"--output"_s, report, u"bad.ui"_s}, samples + u"/close-twice");
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(contentsOf(report), contentsOf(samples + u"/close-twice/bad.txt"));
}

void TestZEFUILint::aFileGivenTwiceIsCheckedOnce()
{
    const QDir folder(samples + u"/close-twice");
    const ToolRun run = lint({u"bad.ui"_s, u"bad.ui"_s}, folder.path());
    QCOMPARE(run.output, contentsOf(folder.filePath(u"bad.txt"_s)));
}

void TestZEFUILint::onlyFilesAreReplaced_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("a folder") << u"folder"_s << QByteArray("folder: is a folder, not a file");
    QTest::newRow("a pipe") << u"pipe"_s << QByteArray("pipe: is not an ordinary file");
    QTest::newRow("nothing") << QString() << QByteArray(": ");
}

//! A report for /dev/null must not take the place of the device. A pipe stands for it here.
void TestZEFUILint::onlyFilesAreReplaced()
{
    QFETCH(const QString, path);
    QFETCH(const QByteArray, error);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"folder"_s));
    if (path == "pipe"_L1 && QProcess::execute(u"mkfifo"_s, {folder.filePath(path)}) != 0)
        QSKIP("This system has no pipes among its files");
    const ToolRun run = lint({u"--output"_s, path, samples + u"/close-twice/bad.ui"}, folder.path());
    QCOMPARE(run.errors.first(qMin(run.errors.size(), error.size() + 12)), "zefui-lint: " + error);
    QCOMPARE(run.errors.count('\n'), 1);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 2);
    QVERIFY(!QFileInfo(folder.filePath(u"pipe"_s)).isFile());
}

void TestZEFUILint::anOutputThatTakesNothingIsAFailure_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("findings") << QStringList{samples + u"/close-twice/bad.ui"};
    QTest::newRow("an empty list") << QStringList{u"--format"_s, u"json"_s,
                                                  samples + u"/close-twice/good.ui"};
    QTest::newRow("rules") << QStringList{u"--list-rules"_s};
    QTest::newRow("help") << QStringList{u"--help"_s};
    QTest::newRow("version") << QStringList{u"--version"_s};
}

void TestZEFUILint::anOutputThatTakesNothingIsAFailure()
{
    QFETCH(const QStringList, arguments);
    const QFileInfo full(u"/dev/full"_s);
    if (!full.exists() || full.isFile())
        QSKIP("This system has no device that is always full");
    QProcess process;
    process.setStandardOutputFile(full.filePath());
    process.start(QStringLiteral(ZEFUI_LINT), arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardError(),
             QByteArray("zefui-lint: standard output: No space left on device\n"));
    QCOMPARE(process.exitCode(), 2);
}

void TestZEFUILint::whatCannotBeRunIsSaidInOneLine_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");

    const QByteArray none;
    const QStringList theFile{u"f.ui"_s};
    QTest::newRow("no form") << none << QStringList()
                             << QByteArray("no form given; zefui-lint --help says more");
    QTest::newRow("unknown option") << none << QStringList{u"--frob"_s, u"f.ui"_s}
                                    << QByteArray("Unknown option 'frob'.");
    QTest::newRow("unknown format") << none << QStringList{u"--format"_s, u"xml"_s, u"f.ui"_s}
                                    << QByteArray("the format must be text, json or sarif, not xml");
    QTest::newRow("unknown rule") << none << QStringList{u"--disable"_s, u"x"_s, u"f.ui"_s}
                                  << QByteArray("there is no rule x; zefui-lint --list-rules names them");
    QTest::newRow("no such file") << none << QStringList{u"absent.ui"_s}
                                  << QByteArray("absent.ui: there is no such file");
    QTest::newRow("a folder") << none << QStringList{u"."_s} << QByteArray(".: is a folder, not a file");
#ifndef Q_OS_WIN
    QTest::newRow("a device") << none << QStringList{u"/dev/zero"_s}
                              << QByteArray("/dev/zero: is not an ordinary file");
#endif
    QTest::newRow("empty") << none << theFile << QByteArray("f.ui:1: ");
    QTest::newRow("broken XML") << QByteArray(
        "<ui version=\"4.0\">\n<widget class=\"QWidget\" name=\"a\">\n</ui>\n")
                                << theFile << QByteArray("f.ui:3: ");
    QTest::newRow("cut off") << QByteArray("<ui version=\"4.0\">\n<widget class=\"QWidget\" name=\"a\">\n")
                             << theFile << QByteArray("f.ui:3: ");
    QTest::newRow("binary garbage") << QByteArray("\x7f"
                                                  "ELF\x02\x01\x01\0\0\0\xff\xfe\x80",
                                                  13)
                                    << theFile << QByteArray("f.ui:1: ");
    QTest::newRow("another document")
        << QByteArray("<html>\n<body/></html>") << theFile << QByteArray("f.ui:1: is no Qt Designer form");
    QTest::newRow("old form")
        << QByteArray("<ui version=\"3.3\">\n</ui>") << theFile
        << QByteArray("f.ui:1: is a form of an old Qt Designer, which the form loader refuses");
    QTest::newRow("no widget") << QByteArray("<ui version=\"4.0\">\n<class>a</class>\n</ui>") << theFile
                               << QByteArray("f.ui:3: the form holds no widget");
    QTest::newRow("entity bomb") << QByteArray(
        "<!DOCTYPE ui [<!ENTITY a \"aaaaaaaaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>\n"
        "<ui version=\"4.0\"><class>&d;&d;</class></ui>")
                                 << theFile << QByteArray("f.ui:2: ");
    const QStringList withFile{u"--css"_s, u"f.ui"_s, samples + u"/close-twice/good.ui"};
    QTest::newRow("style sheet of bytes")
        << QByteArray("a { \xff }") << withFile << QByteArray("f.ui: is not UTF-8 text");
    const auto with = [](const QString& option) {
        return QStringList{option, u"f.ui"_s, samples + u"/close-twice/good.ui"};
    };
    QTest::newRow("values without JSON")
        << QByteArray("{\n \"a\": ]\n}") << with(u"--values"_s) << QByteArray("f.ui:2: ");
    QTest::newRow("values of a wrong kind")
        << QByteArray("[]") << with(u"--values"_s)
        << QByteArray("f.ui: must hold an object with \"dictionaries\" and \"properties\"");
    QTest::newRow("a list as value") << QByteArray("{\"dictionaries\": [{\"a\": [1]}]}")
                                     << with(u"--values"_s)
                                     << QByteArray("f.ui: each of the \"dictionaries\": the value of \"a\" "
                                                   "must be a text, a number or a boolean");
    QTest::newRow("unknown member")
        << QByteArray("{\"dictionary\": {}}") << with(u"--values"_s)
        << QByteArray("f.ui: unknown member \"dictionary\"; \"dictionaries\" and \"properties\" are known");
    QTest::newRow("no translation") << QByteArray("<ui/>") << with(u"--translations"_s)
                                    << QByteArray("f.ui:1: is no translation file of Qt");
    QTest::newRow("no delegate") << QByteArray("class A { void f(); };") << with(u"--delegate"_s)
                                 << QByteArray(
                                        "f.ui: has no class with slots, signals or Q_INVOKABLE methods");
}

void TestZEFUILint::whatCannotBeRunIsSaidInOneLine()
{
    QFETCH(const QByteArray, contents);
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, error);
    const QTemporaryDir folder;
    write(folder.filePath(u"f.ui"_s), contents);
    const ToolRun run = lint(arguments, folder.path());
    // Of a syntax error the place is ours and the rest is Qt's.
    const QByteArray expected = "zefui-lint: " + error + (error.endsWith(' ') ? "" : "\n");
    QCOMPARE(run.errors.first(qMin(run.errors.size(), expected.size())), expected);
    QCOMPARE(run.errors.count('\n'), 1);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 2);
}

void TestZEFUILint::aHugeFileIsRefused()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"huge.ui"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(100 * 1024 * 1024));
    const ToolRun run = lint({u"huge.ui"_s}, folder.path());
    QCOMPARE(run.errors, QByteArray("zefui-lint: huge.ui: is larger than 32 MiB\n"));
    QCOMPARE(run.status, 2);
}

void TestZEFUILint::anUnreadableFolderOrFileIsRefused()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"f.ui"_s);
    write(path, formWith(QByteArray()));
    if (!QFile::setPermissions(path, QFileDevice::Permissions()))
        QSKIP("This system makes no file unreadable");
    if (QFile readable(path); readable.open(QIODevice::ReadOnly))
        QSKIP("This user may read everything");
    const ToolRun run = lint({u"f.ui"_s}, folder.path());
    QCOMPARE(run.errors, QByteArray("zefui-lint: f.ui: Permission denied\n"));
    QCOMPARE(run.status, 2);
}

void TestZEFUILint::aFailureLeavesTheOldReport()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"report.txt"_s), "old");
    const ToolRun broken = lint(
        {u"--output"_s, u"report.txt"_s, samples + u"/close-twice/bad.ui", u"absent.ui"_s}, folder.path());
    QCOMPARE(broken.status, 2);
    QCOMPARE(contentsOf(folder.filePath(u"report.txt"_s)), QByteArray("old"));

    const ToolRun unwritable =
        lint({u"--output"_s, u"absent/report.txt"_s, samples + u"/close-twice/bad.ui"}, folder.path());
    QCOMPARE(unwritable.status, 2);
    QFile nowhere(folder.filePath(u"absent/report.txt"_s));
    QVERIFY(!nowhere.open(QIODevice::WriteOnly));
    const QByteArray reason = nowhere.errorString().toUtf8();
    QCOMPARE(unwritable.errors, "zefui-lint: absent/report.txt: " + reason + '\n');
}

void TestZEFUILint::deepNestingIsReported()
{
    constexpr int depth = 20000;
    QByteArray nested;
    for (int i = 0; i < depth; ++i)
        nested += "<widget class=\"QWidget\" name=\"w" + QByteArray::number(i) + "\">\n";
    nested += QByteArray("</widget>\n").repeated(depth);
    const QTemporaryDir folder;
    write(folder.filePath(u"deep.ui"_s), formWith(nested));
    const ToolRun run = lint({u"deep.ui"_s}, folder.path());
    QCOMPARE(run.errors, QByteArray());
    QVERIFY2(
        run.output.endsWith(": unloadable-form: more than 300 elements are nested here, which is too deep: "
                            "the form does not load.\n"),
        run.output.constData());
    QCOMPARE(run.output.count('\n'), 1);
}

void TestZEFUILint::repetitionIsReadInTime_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("contents");
    constexpr int count = 1000000;
    QTest::newRow("open placeholders")
        << QString()
        << formWith("<widget class=\"QLabel\" name=\"l\"><property name=\"text\"><string>"
                    + QByteArray("%{").repeated(count) + "a}</string></property></widget>\n");
    QTest::newRow("labels and what they name")
        << QString()
        << formWith(QByteArray("<widget class=\"QLabel\" name=\"l\"><property name=\"text\"><string>&amp;a"
                               "</string></property><property name=\"buddy\"><cstring>e</cstring></property>"
                               "</widget>\n<widget class=\"ZEFFormatEdit\" name=\"e\"/>\n"
                               "<widget class=\"ZEFToggleButton\" name=\"t\"/>\n")
                        .repeated(count / 20));
    QTest::newRow("markup") << QString()
                            << formWith("<widget class=\"ZEFFlatButton\" name=\"f\"><property "
                                        "name=\"text\"><string>"
                                        + QByteArray("&lt;a").repeated(count)
                                        + "</string></property></widget>\n");
    QTest::newRow("rules of a style sheet") << u"--css"_s << QByteArray("* {} ").repeated(count);
    QTest::newRow("comments of a style sheet") << u"--css"_s << QByteArray("/* */").repeated(count);
    QTest::newRow("heads of classes")
        << u"--delegate"_s << QByteArray("class ").repeated(count) + "A { Q_INVOKABLE void f(); };";
    QByteArray signatures;
    QByteArray keys;
    for (int i = 0; i < count / 5; ++i) {
        const QByteArray number = QByteArray::number(i);
        signatures += "\"a" + number + "_clicked()\",\n";
        keys += "\"a" + number + "_text\": 1,\n";
    }
    signatures.chop(2);
    keys.chop(2);
    QTest::newRow("signatures") << u"--delegate"_s << '[' + signatures + ']';
    QTest::newRow("property keys") << u"--values"_s << "{\"properties\": {" + keys + "}}";
}

//! A scan that starts again at each place would take hours.
void TestZEFUILint::repetitionIsReadInTime()
{
    QFETCH(const QString, option);
    QFETCH(const QByteArray, contents);
    const QTemporaryDir folder;
    const QString name = contents.startsWith('[') ? u"input.json"_s : u"input"_s;
    write(folder.filePath(name), contents);
    QStringList arguments{name};
    if (!option.isEmpty())
        arguments = {option, name, samples + u"/close-twice/good.ui"};
    const ToolRun run = lint(arguments, folder.path());
    QCOMPARE(run.errors, QByteArray());
    QVERIFY(run.status == 0 || run.status == 1);
}

ZEF_TEST_MAIN(TestZEFUILint)
#include "test_zefuilint.moc"
