#include <ZEFTest.h>

#include <formatinput/FormatParser.h>

#include <QtWidgets/QApplication>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int most = std::numeric_limits<int>::max();

// Writes down what is built, one line for each call.
class Protocol : public FormatBuilder {
public:
    QStringList lines;

    void addSeparator(const QString& text) override { lines += u"separator "_s + text; }
    void addCoercion(const QString& text, int start, int end) override
    {
        lines += u"coercion %1 %2..%3"_s.arg(text).arg(start).arg(end);
    }
    void addCell(const FormatCell& cell) override
    {
        QString line = u"cell %1 max %2"_s.arg(cell.pattern).arg(cell.maxLength);
        if (cell.minLength != -1)
            line += u" min %1"_s.arg(cell.minLength);
        if (!cell.prefix.isEmpty())
            line += u" prefix "_s + cell.prefix;
        if (cell.coercing)
            line += u" coercing %1 from %2"_s.arg(cell.coercionText).arg(cell.coercionStart);
        lines += line;
    }
    void setFinalPattern(const QString& pattern) override { lines += u"final "_s + pattern; }
    void setSuffix(const QString& text) override { lines += u"suffix "_s + text; }
    void reportUnexpected(const QString& c) override { lines += u"unexpected "_s + c; }
    void reportUnexpectedAfterMinimum(const QString& c) override { lines += u"after minimum "_s + c; }
    void reportDropped(const QString& text) override { lines += u"dropped "_s + text; }
};

// Counts, for formats too long to write down.
class Counter : public FormatBuilder {
public:
    qsizetype separators = 0;
    qsizetype coercions = 0;
    qsizetype cells = 0;
    qsizetype finals = 0;
    qsizetype reports = 0;
    int lastMaxLength = 0;

    void addSeparator(const QString&) override { ++separators; }
    void addCoercion(const QString&, int, int) override { ++coercions; }
    void addCell(const FormatCell& cell) override
    {
        ++cells;
        lastMaxLength = cell.maxLength;
    }
    void setFinalPattern(const QString&) override { ++finals; }
    void reportUnexpected(const QString&) override { ++reports; }
    void reportUnexpectedAfterMinimum(const QString&) override { ++reports; }
};

} // namespace

class TestFormatParser : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsAMegabyte_data();
    void readsAMegabyte();
};

void TestFormatParser::reads_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QString>("master");

    // Formats as they are meant
    QTest::addRow("empty") << u""_s << QStringList{} << u""_s;
    QTest::addRow("two cells and a separator")
        << uR"({3}(\d*)-{4}(\d*))"_s
        << QStringList{uR"(cell \d* max 3)"_s, u"separator -"_s, uR"(cell \d* max 4 prefix -)"_s}
        << uR"((\d*)(?:-)?(\d*))"_s;
    QTest::addRow("minimum and final pattern")
        << u"{2,4}([A-Z0-9]*)([A-Z]{2}[0-9]*)"_s
        << QStringList{u"cell [A-Z0-9]* max 4 min 2"_s, u"final [A-Z]{2}[0-9]*"_s} << u"([A-Z0-9]*)"_s;
    QTest::addRow("coercions") << uR"({2:ab|3:cd}(\w*))"_s
                               << QStringList{u"coercion ab 0..1"_s,
                                              uR"(cell \w* max 5 coercing cd from 2)"_s}
                               << uR"((\w*))"_s;
    QTest::addRow("suffix") << uR"({5}(\w*)kg{})"_s
                            << QStringList{uR"(cell \w* max 5)"_s, u"separator kg"_s, u"suffix kg"_s}
                            << uR"((\w*)(?:kg)?)"_s;
    QTest::addRow("the minimum carries over")
        << uR"({2,3}(\d*)/{2}(\d*))"_s
        << QStringList{uR"(cell \d* max 3 min 2)"_s, u"separator /"_s, uR"(cell \d* max 2 min 2 prefix /)"_s}
        << uR"((\d*)(?:/)?(\d*))"_s;

    // Count blocks
    QTest::addRow("a brace between items resets the minimum")
        << u"{2,3}(a){2}(b)"_s << QStringList{u"cell a max 3 min 2"_s, u"cell b max 2"_s} << u"(a)(b)"_s;
    QTest::addRow("count blocks in a row: the last one holds")
        << u"{2,3}{4}(a)"_s << QStringList{u"cell a max 4"_s} << u"(a)"_s;
    QTest::addRow("a literal's brace adds to the count before the literal")
        << u"{2}-{3}(a)"_s << QStringList{u"separator -"_s, u"cell a max 5 prefix -"_s} << u"(?:-)?(a)"_s;
    QTest::addRow("zero") << u"{0}(a)"_s << QStringList{u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("empty block") << u"{}(a)"_s << QStringList{u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("a minimum of 0") << u"{0,4}(a)"_s << QStringList{u"cell a max 4 min 0"_s} << u"(a)"_s;
    QTest::addRow("an empty minimum is 0")
        << u"{,4}(a)"_s << QStringList{u"cell a max 4 min 0"_s} << u"(a)"_s;
    QTest::addRow("the last comma holds")
        << u"{1,2,3}(a)"_s << QStringList{u"cell a max 3 min 2"_s} << u"(a)"_s;
    QTest::addRow("no count block") << u"(a)"_s << QStringList{u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("a bar after a minimum")
        << u"{2,3|4}(a)"_s << QStringList{u"after minimum |"_s, u"cell a max 34 min 2"_s} << u"(a)"_s;
    QTest::addRow("a bar without a coercion")
        << u"{2|3}(a)"_s << QStringList{u"coercion  0..1"_s, u"cell a max 5"_s} << u"(a)"_s;
    QTest::addRow("a bar does not empty the coercion text")
        << u"{2:ab|3|1}(a)"_s << QStringList{u"coercion ab 0..1"_s, u"coercion ab 2..4"_s, u"cell a max 6"_s}
        << u"(a)"_s;
    QTest::addRow("each count block starts at the first character again")
        << u"{2|1}(a){3:cd}(b)"_s
        << QStringList{u"coercion  0..1"_s, u"cell a max 3"_s, u"cell b max 3 coercing cd from 0"_s}
        << u"(a)(b)"_s;
    QTest::addRow("a bar at position 0")
        << u"{|}(a)"_s << QStringList{u"coercion  0..-1"_s, u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("digits and commas belong to a coercion text, but for the comma")
        << u"{2:0O1,5}(a)"_s << QStringList{u"cell a max 2 min 0 coercing 0O15 from 0"_s} << u"(a)"_s;
    QTest::addRow("a second colon starts the coercion text anew")
        << u"{2:ab:cd}(a)"_s << QStringList{u"cell a max 2 coercing cd from 0"_s} << u"(a)"_s;
    QTest::addRow("an odd coercion text")
        << u"{2:abc}(a)"_s << QStringList{u"cell a max 2 coercing abc from 0"_s} << u"(a)"_s;
    QTest::addRow("the open coercion belongs to one cell, closed ones to all that follow")
        << u"{2:ab|3:cd}(a){1}(b)"_s
        << QStringList{u"coercion ab 0..1"_s, u"cell a max 5 coercing cd from 2"_s, u"cell b max 1"_s}
        << u"(a)(b)"_s;
    QTest::addRow("a literal's brace ends an open coercion")
        << u"{2:ab}-{1}(a)"_s << QStringList{u"separator -"_s, u"cell a max 3 prefix -"_s} << u"(?:-)?(a)"_s;
    QTest::addRow("a literal alone does not end an open coercion")
        << u"{2:ab}-(a)"_s << QStringList{u"separator -"_s, u"cell a max 2 prefix - coercing ab from 0"_s}
        << u"(?:-)?(a)"_s;
    QTest::addRow("a literal's brace keeps the coercion start")
        << u"{2:ab|1}(a)-{3:cd}(b)"_s
        << QStringList{u"coercion ab 0..1"_s, u"cell a max 3"_s, u"separator -"_s,
                       u"cell b max 3 prefix - coercing cd from 2"_s}
        << u"(a)(?:-)?(b)"_s;

    // Characters that do not belong there
    QTest::addRow("a letter") << u"{2x3}(a)"_s << QStringList{u"unexpected x"_s, u"cell a max 23"_s}
                              << u"(a)"_s;
    QTest::addRow("a blank and a percent sign")
        << u"{ %}(a)"_s << QStringList{u"unexpected  "_s, u"unexpected %"_s, u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("a parenthesis in a count block")
        << u"{2(a)}"_s << QStringList{u"unexpected ("_s, u"unexpected a"_s, u"unexpected )"_s} << u""_s;
    QTest::addRow("a backslash in a count block")
        << uR"({\}(a))"_s << QStringList{uR"(unexpected \)"_s, u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("outside the basic plane")
        << u"{2😀3}(a)"_s << QStringList{u"unexpected 😀"_s, u"cell a max 23"_s} << u"(a)"_s;
    QTest::addRow("half of a character")
        << QString(u"{"_s + QChar(0xd83d) + u"}(a)"_s)
        << QStringList{u"unexpected "_s + QChar(0xd83d), u"cell a max 0"_s} << u"(a)"_s;
    QTest::addRow("half of a character at the end")
        << QString(u"{"_s + QChar(0xd83d)) << QStringList{u"unexpected "_s + QChar(0xd83d), u"dropped {"_s}
        << u""_s;

    // Counts without limit
    QTest::addRow("the greatest count")
        << u"{2147483647}(a)"_s << QStringList{u"cell a max %1"_s.arg(most)} << u"(a)"_s;
    QTest::addRow("one more") << u"{2147483648}(a)"_s << QStringList{u"cell a max %1"_s.arg(most)}
                              << u"(a)"_s;
    QTest::addRow("far more") << QString(u"{"_s + QString(400, u'9') + u"}(a)"_s)
                              << QStringList{u"cell a max %1"_s.arg(most)} << u"(a)"_s;
    QTest::addRow("a sum") << u"{2147483647:ab|2147483647:cd}(a)"_s
                           << QStringList{u"coercion ab 0..%1"_s.arg(most - 1),
                                          u"cell a max %1 coercing cd from %1"_s.arg(most)}
                           << u"(a)"_s;
    QTest::addRow("a minimum") << u"{99999999999,1}(a)"_s << QStringList{u"cell a max 1 min %1"_s.arg(most)}
                               << u"(a)"_s;

    // Groups
    QTest::addRow("a nested group loses its end")
        << u"{3}(a(b)c)"_s << QStringList{u"cell a(bc max 3"_s} << u"(a(bc)"_s;
    QTest::addRow("a nested group with an escaped end needs the bare one as well")
        << uR"({3}(a(b\)c))"_s << QStringList{u"dropped (a(b)c"_s} << u""_s;
    QTest::addRow("a nested group that is written right")
        << uR"({3}(a(b\)c)))"_s << QStringList{u"cell a(b)c max 3"_s} << u"(a(b)c)"_s;
    QTest::addRow("an escaped opening parenthesis does not count")
        << uR"({3}(a\(b))"_s << QStringList{u"cell a(b max 3"_s} << u"(a(b)"_s;
    QTest::addRow("deep nesting") << u"(((((a))))))"_s << QStringList{u"cell ((((a max 0"_s, u"dropped )"_s}
                                  << u"(((((a)"_s;
    QTest::addRow("braces in a group")
        << u"{3}([a]{2})"_s << QStringList{u"cell [a]{2} max 3"_s} << u"([a]{2})"_s;
    QTest::addRow("escaped braces in a group")
        << uR"({3}(\{\}))"_s << QStringList{u"cell {} max 3"_s} << u"({})"_s;
    QTest::addRow("other escapes in a group")
        << uR"({3}(\d\\\.))"_s << QStringList{uR"(cell \d\\\. max 3)"_s} << uR"((\d\\\.))"_s;
    QTest::addRow("empty group") << u"{1}()"_s << QStringList{u"cell  max 1"_s} << u"()"_s;
    QTest::addRow("a third group replaces the final pattern")
        << u"(x)(y)(z)"_s << QStringList{u"cell x max 0"_s, u"final y"_s, u"final z"_s} << u"(x)"_s;
    QTest::addRow("a count block ends that")
        << u"(x)(y){2}(z)"_s << QStringList{u"cell x max 0"_s, u"final y"_s, u"cell z max 2"_s}
        << u"(x)(z)"_s;
    QTest::addRow("a final pattern does not use up the count")
        << u"{2}(x)-{1}(y)(z)"_s
        << QStringList{u"cell x max 2"_s, u"separator -"_s, u"cell y max 1 prefix -"_s, u"final z"_s}
        << u"(x)(?:-)?(y)"_s;

    // Literals
    QTest::addRow("only a literal") << u"abc"_s << QStringList{u"dropped abc"_s} << u""_s;
    QTest::addRow("a pending literal is dropped")
        << u"{1}(a)kg"_s << QStringList{u"cell a max 1"_s, u"dropped kg"_s} << u"(a)"_s;
    QTest::addRow("a literal without a cell")
        << u"abc{}"_s << QStringList{u"separator abc"_s, u"suffix abc"_s} << u"(?:abc)?"_s;
    QTest::addRow("closing parentheses and braces are literal")
        << u")}(a)"_s << QStringList{u"separator )}"_s, u"cell a max 0 prefix )}"_s} << u"(?:)})?(a)"_s;
    QTest::addRow("a closing parenthesis in a literal")
        << u"x)y{}"_s << QStringList{u"separator x)y"_s, u"suffix x)y"_s} << u"(?:x)y)?"_s;
    QTest::addRow("an escaped parenthesis is shown bare")
        << uR"(x\({})"_s << QStringList{u"separator x("_s, u"suffix x("_s} << uR"((?:x\()?)"_s;
    QTest::addRow("a literal that begins with an escape")
        << uR"(\(x{})"_s << QStringList{u"separator (x"_s, u"suffix (x"_s} << uR"((?:\(x)?)"_s;
    QTest::addRow("any other escape shows its backslash")
        << uR"(\.x\.{})"_s << QStringList{uR"(separator \.x\.)"_s, uR"(suffix \.x\.)"_s}
        << uR"((?:\.x\.)?)"_s;
    QTest::addRow("two separators: the later one is the prefix")
        << u"a{}b(c)"_s << QStringList{u"separator a"_s, u"separator b"_s, u"cell c max 0 prefix b"_s}
        << u"(?:a)?(?:b)?(c)"_s;
    QTest::addRow("a placeholder is no placeholder here")
        << u"%1{}%2{}"_s << QStringList{u"separator %1"_s, u"separator %2"_s, u"suffix %2"_s}
        << u"(?:%1)?(?:%2)?"_s;
    QTest::addRow("outside the basic plane, literally")
        << u"😀{}"_s << QStringList{u"separator 😀"_s, u"suffix 😀"_s} << u"(?:😀)?"_s;

    // What is left open
    QTest::addRow("unclosed group") << u"{3}(a"_s << QStringList{u"dropped (a"_s} << u""_s;
    QTest::addRow("unclosed nested group") << u"{3}(a(b)"_s << QStringList{u"dropped (a(b"_s} << u""_s;
    QTest::addRow("unclosed count block")
        << u"(a){3"_s << QStringList{u"cell a max 0"_s, u"dropped {"_s} << u"(a)"_s;
    QTest::addRow("unclosed coercion")
        << u"(a){3:ab"_s << QStringList{u"cell a max 0"_s, u"dropped {"_s} << u"(a)"_s;
    QTest::addRow("unclosed escape") << uR"((a)\)"_s << QStringList{u"cell a max 0"_s, uR"(dropped \)"_s}
                                     << u"(a)"_s;
    QTest::addRow("unclosed escape in a group")
        << uR"((a)-(b\)"_s
        << QStringList{u"cell a max 0"_s, u"separator -"_s, uR"(dropped (b\)"_s, u"suffix -"_s}
        << u"(a)(?:-)?"_s;
    QTest::addRow("a separator before an unclosed group becomes the suffix")
        << u"(a)-(b"_s << QStringList{u"cell a max 0"_s, u"separator -"_s, u"dropped (b"_s, u"suffix -"_s}
        << u"(a)(?:-)?"_s;
}

void TestFormatParser::reads()
{
    QFETCH(QString, format);
    QFETCH(QStringList, expected);
    Protocol protocol;
    const QString master = FormatParser(format, protocol).run();
    QCOMPARE(protocol.lines, expected);
    QTEST(master, "master");
}

void TestFormatParser::readsAMegabyte_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<qsizetype>("separators");
    QTest::addColumn<qsizetype>("coercions");
    QTest::addColumn<qsizetype>("cells");
    QTest::addColumn<qsizetype>("finals");
    QTest::addColumn<qsizetype>("reports");

    constexpr qsizetype one = 1;
    constexpr qsizetype none = 0;
    QTest::addRow("literal") << u"abcd"_s << none << none << none << none << none;
    QTest::addRow("separators") << u"ab{}"_s << one << none << none << none << none;
    QTest::addRow("cells") << u"{}()"_s << none << none << one << none << none;
    QTest::addRow("cells and separators") << u"-(a)"_s << one << none << one << none << none;
    QTest::addRow("cells with coercions") << u"{1|}(a)"_s << none << one << one << none << none;
    QTest::addRow("mistakes") << u"{xy}"_s << none << none << none << none << qsizetype(2);
    QTest::addRow("opening parentheses") << u"(((("_s << none << none << none << none << none;
    QTest::addRow("backslashes") << uR"(\\\\)"_s << none << none << none << none << none;
    QTest::addRow("final patterns") << u"{}()()()"_s << none << none << one << qsizetype(2) << none;
}

void TestFormatParser::readsAMegabyte()
{
    QFETCH(QString, piece);
    const qsizetype times = 1024 * 1024 / piece.size();
    Counter counter;
    FormatParser(piece.repeated(times), counter).run();
    QFETCH(qsizetype, separators);
    QFETCH(qsizetype, coercions);
    QFETCH(qsizetype, cells);
    QFETCH(qsizetype, finals);
    QFETCH(qsizetype, reports);
    QCOMPARE(counter.separators, separators * times);
    QCOMPARE(counter.coercions, coercions * times);
    QCOMPARE(counter.cells, cells * times);
    QCOMPARE(counter.finals, finals * times);
    QCOMPARE(counter.reports, reports * times);
}

ZEF_TEST_MAIN(TestFormatParser)
#include "test_formatparser.moc"
