#include <ZEFTest.h>

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFListValidator.h>
#include <ZEFToggleButton.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

const QString sourceDir = QStringLiteral(SOURCE_DIR);
const QString workDir = QStringLiteral(WORK_DIR);

//! A fenced block of a page. The comment in the line before it, if any, says what it is.
struct Sample {
    QString page;
    int line = 0;
    QString language;
    QString mark;
    QString text;
};

QString contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList pages()
{
    QStringList found{u"README.md"_s, u"CONTRIBUTING.md"_s};
    for (const QString& name : QDir(sourceDir + u"/docs"_s).entryList({u"*.md"_s}, QDir::Files, QDir::Name))
        found.append(u"docs/"_s + name);
    return found;
}

QList<Sample> samplesOf(const QString& page)
{
    static const QRegularExpression fence(u"^```(\\w*)$"_s);
    static const QRegularExpression comment(u"^<!-- (.*) -->$"_s);
    const QStringList lines = contentOf(sourceDir + u'/' + page).split(u'\n');
    QList<Sample> samples;
    QString mark;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto opening = fence.match(lines.at(i));
        if (!opening.hasMatch()) {
            const auto marked = comment.match(lines.at(i));
            if (marked.hasMatch())
                mark = marked.captured(1);
            else if (!lines.at(i).isEmpty())
                mark.clear();
            continue;
        }
        Sample sample{page, int(i) + 2, opening.captured(1), mark, QString()};
        for (++i; i < lines.size() && lines.at(i) != "```"_L1; ++i)
            sample.text += lines.at(i) + u'\n';
        samples.append(sample);
        mark.clear();
    }
    return samples;
}

void write(const QString& path, const QString& text)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text.toUtf8()), text.toUtf8().size());
}

//! What stands around the samples: all headers, and the names that the text speaks of.
const QString preamble = u"#include <QtCore/QtCore>\n"
                         "#include <QtGui/QtGui>\n"
                         "#include <QtUiTools/QUiLoader>\n"
                         "#include <QtWidgets/QtWidgets>\n"
                         "#include <QtTest/QtTest>\n"
                         "#include <memory>\n"
                         "%1"
                         "using namespace Qt::StringLiterals;\n"
                         "class Request : public ZEFPipeFacilityInvocationContext {\n"
                         "public:\n"
                         "    void answer(int selection);\n"
                         "};\n"_s;
const QString openingOfStatements =
    u"namespace sample%1 { void run(\n"
    "    [[maybe_unused]] ZEFUIElement* element, [[maybe_unused]] ZEFUIDialog* dialog,\n"
    "    [[maybe_unused]] QObject* delegate, [[maybe_unused]] QObject* receiver,\n"
    "    [[maybe_unused]] ZEFDictionaryList& dictionaries,\n"
    "    [[maybe_unused]] ZEFHyperlinkLabel* label, [[maybe_unused]] QLabel* messageLabel,\n"
    "    [[maybe_unused]] ZEFFormatEdit* edit) { {\n"_s;

QString exportedIncludes()
{
    QString includes;
    for (const QString& folder : {u"/include"_s, u"/base"_s}) {
        for (const QString& header : QDir(sourceDir + folder).entryList({u"*.h"_s}, QDir::Files, QDir::Name))
            includes += u"#include <%1>\n"_s.arg(header);
    }
    return includes;
}

//! Ends the test with what the command printed unless it succeeds.
void run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    QVERIFY2(process.waitForFinished(500'000), qPrintable(program + u" does not end"_s));
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        QFAIL(process.readAll().constData());
}

void checkSyntax(const QString& file)
{
    QStringList arguments{u"-fsyntax-only"_s,    u"-std=c++20"_s,  u"-fPIC"_s,       u"-Wall"_s,
                          u"-Wextra"_s,          u"-Werror"_s,     u"-Wno-unused"_s, u"-DQT_GUI_LIB"_s,
                          u"-DQT_WIDGETS_LIB"_s, u"-I"_s + workDir};
    for (const QString& folder :
         contentOf(QStringLiteral(INCLUDE_FLAGS_FILE)).split(u'\n', Qt::SkipEmptyParts)) {
        // The compiler's own folder must keep its place behind those of the C++ library.
        if (folder != "/usr/include"_L1)
            arguments << u"-isystem"_s << folder;
    }
    run(QStringLiteral(COMPILER), arguments << file);
}

//! The anchors of a page's headings, as the HTML has them.
QStringList anchorsOf(const QString& path)
{
    static const QRegularExpression heading(u"^#+ (.*)$"_s, QRegularExpression::MultilineOption);
    static const QRegularExpression dropped(u"[^\\w\\s-]"_s);
    QStringList anchors;
    for (const auto& match : heading.globalMatch(contentOf(path)))
        anchors.append(match.captured(1).remove(dropped).toLower().replace(u' ', u'-'));
    return anchors;
}

//! The section of a page below a heading, up to the next one of its level.
QString sectionOf(const QString& page, const QString& heading)
{
    const QString text = contentOf(sourceDir + u'/' + page);
    const qsizetype start = text.indexOf(u"\n## %1\n"_s.arg(heading));
    return start < 0 ? QString() : text.mid(start, text.indexOf(u"\n## "_s, start + 1) - start);
}

} // namespace

//! Keeps the manual true: its samples build, its links lead somewhere, and its widget pages are complete.
class TestManual : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QDir(workDir).removeRecursively();
        QVERIFY(QDir().mkpath(workDir));
    }

    void findsSamples()
    {
        int samples = 0;
        for (const QString& page : pages()) {
            for (const Sample& sample : samplesOf(page))
                samples += sample.language == "cpp"_L1;
        }
        QVERIFY(samples > 20);
    }

    //! All samples without includes of their own, in one go.
    void compilesTheSamples()
    {
        QString source = preamble.arg(exportedIncludes());
        int number = 0;
        for (const QString& page : pages()) {
            for (const Sample& sample : samplesOf(page)) {
                if (sample.language != "cpp"_L1 || sample.text.startsWith(u"#include"_s))
                    continue;
                ++number;
                const bool isFileScope = sample.mark == "file scope"_L1;
                source +=
                    isFileScope ? u"namespace sample%1 {\n"_s.arg(number) : openingOfStatements.arg(number);
                source += u"#line %1 \"%2\"\n"_s.arg(sample.line).arg(sample.page) + sample.text;
                source += isFileScope ? u"}\n"_s : u"} } }\n"_s;
            }
        }
        QVERIFY(number > 10);
        write(workDir + u"/samples.cpp"_s, source);
        checkSyntax(workDir + u"/samples.cpp"_s);
    }

    //! Samples with includes stand alone.
    void compilesWholeSources_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("text");
        for (const QString& page : pages()) {
            for (const Sample& sample : samplesOf(page)) {
                if (sample.language == "cpp"_L1 && sample.text.startsWith(u"#include"_s))
                    QTest::addRow("%s:%d", qPrintable(page), sample.line) << page << sample.text;
            }
        }
    }
    void compilesWholeSources()
    {
        QFETCH(QString, text);
        write(workDir + u"/main.moc"_s, QString());
        write(workDir + u"/main.cpp"_s, text);
        checkSyntax(workDir + u"/main.cpp"_s);
    }

    //! Follows the page to the letter, against the installed library.
    void buildsTheFirstService()
    {
        const QString project = workDir + u"/greeter"_s;
        int files = 0;
        for (const Sample& sample : samplesOf(u"docs/getting-started.md"_s)) {
            if (!sample.mark.startsWith(u"file: "_s))
                continue;
            write(project + u'/' + sample.mark.mid(6), sample.text);
            ++files;
        }
        QCOMPARE(files, 4);
        const QString cmake = QStringLiteral(CMAKE_PROGRAM);
        const QString installed = workDir + u"/installed"_s;
        run(cmake, {u"--install"_s, QStringLiteral(BUILD_DIR), u"--prefix"_s, installed});
        run(cmake,
            {u"-S"_s, project, u"-B"_s, project + u"/build"_s, u"-G"_s, u"Ninja"_s,
             u"-DCMAKE_PREFIX_PATH="_s + installed, u"-DQt6_DIR="_s + QStringLiteral(QT_DIRECTORY),
             u"-DCMAKE_CXX_COMPILER="_s + QStringLiteral(COMPILER)});
        run(cmake, {u"--build"_s, project + u"/build"_s});
        QVERIFY(QFileInfo(project + u"/build/greeter"_s).isExecutable());
    }

    void leadsSomewhere_data()
    {
        QTest::addColumn<QString>("page");
        for (const QString& page : pages())
            QTest::newRow(qPrintable(page)) << page;
    }
    void leadsSomewhere()
    {
        QFETCH(QString, page);
        const QString text = contentOf(sourceDir + u'/' + page);
        QVERIFY2(!text.isEmpty(), "empty or missing");
        static const QRegularExpression link(u"\\]\\(([^)#\\s]*)(?:#([^)\\s]*))?\\)"_s);
        const QDir folder = QFileInfo(sourceDir + u'/' + page).dir();
        for (const auto& match : link.globalMatch(text)) {
            const QString target = match.captured(1);
            const QString anchor = match.captured(2);
            if (target.contains(u"://"_s))
                continue;
            const QString file =
                target.isEmpty() ? sourceDir + u'/' + page : QString(folder.filePath(target));
            QVERIFY2(QFileInfo::exists(file), qPrintable(target));
            if (!anchor.isEmpty())
                QVERIFY2(anchorsOf(file).contains(anchor), qPrintable(anchor));
        }
    }

    //! The generator takes a backslash in code for a backslash, in tables too; other readers want one there.
    void escapesNoBarsInTheCodeOfTables_data() { leadsSomewhere_data(); }
    void escapesNoBarsInTheCodeOfTables()
    {
        QFETCH(QString, page);
        static const QRegularExpression row(u"^\\|.*$"_s, QRegularExpression::MultilineOption);
        static const QRegularExpression barInCode(u"`[^`]*\\|[^`]*`"_s);
        for (const auto& match : row.globalMatch(contentOf(sourceDir + u'/' + page))) {
            for (const QString& cell : match.captured().split(u" | "_s))
                QVERIFY2(!cell.contains(barInCode), qPrintable(cell + u": write <code> and &#124;"_s));
        }
    }

    void describesEachWidget_data()
    {
        QTest::addColumn<const QMetaObject*>("metaObject");
        QTest::addColumn<bool>("hasSelectors");
        const auto row = [](const QMetaObject& metaObject, bool hasSelectors = true) {
            QTest::newRow(metaObject.className()) << &metaObject << hasSelectors;
        };
        row(ZEFCalendarWidget::staticMetaObject);
        row(ZEFCommandLinkButton::staticMetaObject);
        row(ZEFEllipsisLabel::staticMetaObject);
        row(ZEFFlatButton::staticMetaObject);
        row(ZEFFormatCell::staticMetaObject);
        row(ZEFFormatEdit::staticMetaObject);
        row(ZEFHyperlinkLabel::staticMetaObject);
        row(ZEFLightStdButton::staticMetaObject);
        row(ZEFLightStdSSButton::staticMetaObject);
        row(ZEFLightStdSSCheckbox::staticMetaObject);
        row(ZEFListValidator::staticMetaObject, false);
        row(ZEFToggleButton::staticMetaObject);
    }
    void describesEachWidget()
    {
        QFETCH(const QMetaObject*, metaObject);
        QFETCH(bool, hasSelectors);
        const QString name = QString::fromLatin1(metaObject->className());
        const QString section = sectionOf(u"docs/widgets.md"_s, name);
        QVERIFY2(!section.isEmpty(), "no section");
        for (int i = metaObject->propertyOffset(); i < metaObject->propertyCount(); ++i) {
            const QByteArray property = metaObject->property(i).name();
            QVERIFY2(section.contains(u'`' + QLatin1String(property) + u'`'), property.constData());
        }
        for (int i = metaObject->methodOffset(); i < metaObject->methodCount(); ++i) {
            const QMetaMethod method = metaObject->method(i);
            if (method.methodType() == QMetaMethod::Signal && !(method.attributes() & QMetaMethod::Cloned))
                QVERIFY2(section.contains(u'`' + QLatin1String(method.name()) + u'('),
                         method.name().constData());
        }
        if (hasSelectors) {
            QVERIFY2(section.contains(u"electors"_s), "no word about selectors");
            QVERIFY2(section.contains(u"](pics/%1.png)"_s.arg(name.toLower())), "no picture");
            QVERIFY2(section.contains(u"\n| a keyboard | "_s), "no word about keys");
            QVERIFY2(section.contains(u"\n| a screen reader | "_s), "no word about screen readers");
        }
    }

    void warns_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("words");
        const auto row = [](const char* what, const char* page, const char* words) {
            QTest::newRow(what) << QString::fromLatin1(page) << QString::fromLatin1(words);
        };
        row("underscores", "docs/index.md", "No underscores in object names");
        row("markup", "docs/index.md", "Labels interpret markup");
        row("empty values", "docs/index.md", "Empty values are values");
        row("captured text", "docs/widgets.md", "never again");
        row("growing hint", "docs/widgets.md", "Give it a maximum height");
        row("show and hide", "docs/hosts.md", "must not\n    delete the dialog");
    }
    void warns()
    {
        QFETCH(QString, page);
        QFETCH(QString, words);
        QVERIFY(contentOf(sourceDir + u'/' + page).contains(words));
    }
};

ZEF_TEST_MAIN(TestManual)
#include "test_manual.moc"
