#include "ZEFTest.h"

#include <ZEFDictionaryList.h>

#include <QtCore/QTranslator>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

//! Answers for every text of the context "zefmain": the text in upper case.
class UpperCase : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, "zefmain") == 0 ? QString::fromUtf8(text).toUpper() : QString();
    }
};

//! A site's own dictionary, whose keys are not known beforehand.
class Environment : public ZEFDictionaryBase {
public:
    QStringList keys() const override { return {}; }
    bool contains(const QString& key) const override { return key.startsWith(u"env."); }
    QString getString(const QString& key) const override { return contains(key) ? key.mid(4) : QString(); }
};

} // namespace

class TestZEFDictionaryList : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void theFirstDictionaryThatHoldsTheKeyWins();
    void anEmptyValueWinsToo();
    void prependPutsADictionaryInFront();
    void anUnknownKeyGivesAnEmptyValue();
    void clearForgetsTheDictionaries();
    void nullDictionariesAreIgnored();
    void aDictionaryIsSearchedWhenItIsAskedFor();
    void interpolate_data();
    void interpolate();
    void theEmptyKeyIsFilled();
    void aSitesOwnDictionaryFills();
    void valuesPassThroughTheTranslator();
    void aHostileTextIsFilledInReasonableTime_data();
    void aHostileTextIsFilledInReasonableTime();
    void theResultStaysWithinItsLimit();
};

void TestZEFDictionaryList::theFirstDictionaryThatHoldsTheKeyWins()
{
    ZEFDictionary first{{s("a"), s("1")}};
    ZEFDictionary second{{s("a"), s("2")}, {s("b"), s("3")}};
    ZEFDictionaryList list;
    list.append(&first);
    list.append(&second);

    ZEFDictionaryBase* where = nullptr;
    QCOMPARE(list.search(s("a"), &where).asString(), s("1"));
    QCOMPARE(where, &first);
    QCOMPARE(list.search(s("b"), &where).asLong(), 3L);
    QCOMPARE(where, &second);
    QCOMPARE(list.search(s("a"), nullptr).asString(), s("1"));
}

void TestZEFDictionaryList::anEmptyValueWinsToo()
{
    ZEFDictionary first{{s("a"), QString()}};
    ZEFDictionary second{{s("a"), s("2")}};
    ZEFDictionaryList list;
    list.append(&first);
    list.append(&second);

    ZEFDictionaryBase* where = nullptr;
    QCOMPARE(list.search(s("a"), &where).asString(), QString());
    QCOMPARE(where, &first);
    QCOMPARE(list.interpolateString(s("<%{a}>"), nullptr), s("<>"));
}

void TestZEFDictionaryList::prependPutsADictionaryInFront()
{
    ZEFDictionary first{{s("a"), s("1")}};
    ZEFDictionary second{{s("a"), s("2")}};
    ZEFDictionaryList list;
    list.append(&first);
    list.prepend(&second);
    QCOMPARE(list.search(s("a"), nullptr).asString(), s("2"));
}

void TestZEFDictionaryList::anUnknownKeyGivesAnEmptyValue()
{
    ZEFDictionary first{{s("a"), s("1")}};
    ZEFDictionaryList list;
    ZEFDictionaryBase* where = &first;
    QCOMPARE(list.search(s("b"), &where).asString(), QString());
    QCOMPARE(where, nullptr);

    list.append(&first);
    where = &first;
    QCOMPARE(list.search(s("b"), &where).asLong(), 0L);
    QCOMPARE(where, nullptr);
    QCOMPARE(list.search(s("b"), nullptr).asString(), QString());
}

void TestZEFDictionaryList::clearForgetsTheDictionaries()
{
    ZEFDictionary first{{s("a"), s("1")}};
    ZEFDictionaryList list;
    list.append(&first);
    list.clear();
    ZEFDictionaryBase* where = &first;
    QCOMPARE(list.search(s("a"), &where).asString(), QString());
    QCOMPARE(where, nullptr);
    QCOMPARE(first.getString(s("a")), s("1"));
}

void TestZEFDictionaryList::nullDictionariesAreIgnored()
{
    ZEFDictionary first{{s("a"), s("1")}};
    ZEFDictionaryList list;
    list.append(nullptr);
    list.append(&first);
    list.prepend(nullptr);
    QCOMPARE(list.interpolateString(s("%{a}%{b}"), nullptr), s("1%{b}"));
}

void TestZEFDictionaryList::aDictionaryIsSearchedWhenItIsAskedFor()
{
    ZEFDictionary first;
    ZEFDictionaryList list;
    list.append(&first);
    first.setString(s("a"), s("later"));
    QCOMPARE(list.interpolateString(s("%{a}"), nullptr), s("later"));
}

void TestZEFDictionaryList::interpolate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");

    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("plain") << s("no placeholder") << s("no placeholder");
    QTest::newRow("one") << s("%{name}") << s("Ada");
    QTest::newRow("in the middle") << s("Dear %{name}!") << s("Dear Ada!");
    QTest::newRow("two side by side") << s("%{name}%{count}") << s("Ada3");
    QTest::newRow("the same twice") << s("%{name} and %{name}") << s("Ada and Ada");
    QTest::newRow("unknown stays") << s("%{who} is %{name}") << s("%{who} is Ada");
    QTest::newRow("unknown after known") << s("%{name} is %{who}?") << s("Ada is %{who}?");
    QTest::newRow("front wins") << s("%{shared}") << s("front");
    QTest::newRow("from the back") << s("%{back}") << s("back");
    QTest::newRow("key with blanks") << s("%{ name }") << s("%{ name }");
    QTest::newRow("key with blanks that is held") << s("%{two words}") << s("2");
    QTest::newRow("case") << s("%{Name}") << s("%{Name}");
    QTest::newRow("beyond the first plane") << s("\U0001f600 %{\U0001f600}") << s("\U0001f600 smile");

    QTest::newRow("a value is not searched again") << s("%{sly}") << s("%{name}");
    QTest::newRow("a value completes no placeholder") << s("%{open}name}") << s("%{name}");
    QTest::newRow("a value ends no placeholder") << s("%{nam%{close}") << s("%{name}");
    QTest::newRow("a percent sign before") << s("%%{brace}") << s("%{");

    QTest::newRow("unterminated") << s("a %{name") << s("a %{name");
    QTest::newRow("unterminated after a good one") << s("%{name} %{name") << s("Ada %{name");
    QTest::newRow("opening at the end") << s("%{name} %{") << s("Ada %{");
    QTest::newRow("percent at the end") << s("%{name} %") << s("Ada %");
    QTest::newRow("no percent sign") << s("{name}") << s("{name}");
    QTest::newRow("blank after the percent sign") << s("% {name}") << s("% {name}");
    QTest::newRow("closing first") << s("}%{name}") << s("}Ada");
    QTest::newRow("empty key that nobody holds") << s("a%{}b%{name}") << s("a%{}bAda");
    QTest::newRow("two percent signs") << s("%%{name}") << s("%Ada");
    QTest::newRow("two braces") << s("%{{name}}") << s("%{{name}}");
    QTest::newRow("nested, inner held") << s("%{a%{name}") << s("%{aAda");
    QTest::newRow("nested, inner held, closed twice") << s("%{a%{name}}") << s("%{aAda}");
    QTest::newRow("nested, outer held") << s("%{x%{y}") << s("outer");
    QTest::newRow("nested, outer held and inner too") << s("%{x%{name}") << s("outer wins");
    QTest::newRow("nested, same length as a held one") << s("%{z%{y}") << s("%{z%{y}");
    QTest::newRow("nested three deep") << s("%{%{%{name}") << s("%{%{Ada");
    QTest::newRow("a key ends at the first brace") << s("%{a}b}") << s("%{a}b}");
    QTest::newRow("Qt's own placeholders stay") << s("%1 %L1 %n %s") << s("%1 %L1 %n %s");
}

void TestZEFDictionaryList::interpolate()
{
    QFETCH(const QString, text);
    QFETCH(const QString, result);
    ZEFDictionary front{{s("name"), s("Ada")},         {s("shared"), s("front")},
                        {s("sly"), s("%{name}")},      {s("open"), s("%{")},
                        {s("close"), s("e}")},         {s("nam%{close"), s("%{name}")},
                        {s("\U0001f600"), s("smile")}, {s("brace"), s("{")},
                        {s("two words"), s("2")},      {s("a}b"), s("never")}};
    ZEFDictionary back{{s("count"), s("3")},
                       {s("shared"), s("back")},
                       {s("back"), s("back")},
                       {s("x%{y"), s("outer")},
                       {s("x%{name"), s("outer wins")}};
    ZEFDictionaryList list;
    list.append(&front);
    list.append(&back);
    QCOMPARE(list.interpolateString(text, nullptr), result);
}

void TestZEFDictionaryList::theEmptyKeyIsFilled()
{
    ZEFDictionary dictionary{{QString(), s("nothing")}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    QCOMPARE(list.interpolateString(s("<%{}>"), nullptr), s("<nothing>"));
}

void TestZEFDictionaryList::aSitesOwnDictionaryFills()
{
    Environment environment;
    ZEFDictionaryList list;
    list.append(&environment);
    QCOMPARE(list.interpolateString(s("%{env.HOME} %{%{env.PATH} %{HOME}"), nullptr),
             s("HOME %{PATH %{HOME}"));
}

void TestZEFDictionaryList::valuesPassThroughTheTranslator()
{
    ZEFDictionary dictionary{{s("a"), s("value")}, {s("b"), s("%{a}")}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    UpperCase translator;
    // Values only: neither the text around them nor the result, and a translation is not searched either.
    QCOMPARE(list.interpolateString(s("text %{a} %{c} %{b}"), &translator), s("text VALUE %{c} %{A}"));
    QCOMPARE(list.interpolateString(s("text"), &translator), s("text"));
}

void TestZEFDictionaryList::aHostileTextIsFilledInReasonableTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("longestKey");
    QTest::addColumn<int>("expectedSize");

    constexpr int mebi = 1024 * 1024;
    const QString opening = s("%{");
    QTest::newRow("openings without an end") << opening.repeated(mebi / 2) << 0 << mebi;
    QTest::newRow("openings with one end") << QString(opening.repeated(mebi / 2) + u'}') << 0 << mebi + 1;
    QTest::newRow("openings with one end, long keys")
        << QString(opening.repeated(mebi / 2) + u'}') << mebi / 2 << mebi + 1;
    QTest::newRow("an opening for each end")
        << QString(opening.repeated(mebi / 4) + QString(mebi / 2, u'}')) << 0 << mebi;
    QTest::newRow("empty keys") << s("%{}").repeated(mebi / 3) << 0 << mebi / 3 * 3;
    QTest::newRow("percent signs") << QString(mebi, u'%') << 0 << mebi;
    QTest::newRow("placeholders") << s("%{k}").repeated(mebi / 4) << 0 << mebi / 4;
    QTest::newRow("one long key") << QString(opening + QString(mebi, u'k') + u'}') << 0 << mebi + 3;
}

void TestZEFDictionaryList::aHostileTextIsFilledInReasonableTime()
{
    QFETCH(const QString, text);
    QFETCH(const int, longestKey);
    QFETCH(const int, expectedSize);
    // a key of every tenth length below the longest, up to about a million characters together
    ZEFDictionary dictionary{{s("k"), s("v")}};
    int total = 0;
    for (int length = 3; total < longestKey; length += 10) {
        dictionary.setString(QString(u"%{" + QString(length, u'x')), s("v"));
        total += length;
    }
    if (longestKey > 0)
        dictionary.setString(QString(u"%{" + QString(longestKey, u'x')), s("v"));
    ZEFDictionaryList list;
    list.append(&dictionary);

    // Quadratic work on this would take minutes.
    QElapsedTimer timer;
    timer.start();
    const QString result = list.interpolateString(text, nullptr);
    QCOMPARE(result.size(), expectedSize);
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
}

void TestZEFDictionaryList::theResultStaysWithinItsLimit()
{
    constexpr qsizetype mebi = 1024 * 1024;
    ZEFDictionary dictionary{{s("a"), QString(mebi, u'v')}, {s("b"), s("short")}};
    ZEFDictionaryList list;
    list.append(&dictionary);

    QCOMPARE(list.interpolateString(s("%{a}").repeated(64), nullptr).size(), 64 * mebi);
    const QString limited = list.interpolateString(QString(s("%{a}").repeated(100) + u"%{b}"), nullptr);
    QCOMPARE(limited.size(), 64 * mebi + 37 * 4);
    QVERIFY(limited.endsWith(u"v" + s("%{a}").repeated(36) + u"%{b}"));
}

ZEF_TEST_MAIN(TestZEFDictionaryList)
#include "test_zefdictionarylist.moc"
