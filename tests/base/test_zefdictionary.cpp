#include "ZEFTest.h"

#include <ZEFDictionary.h>

#include <memory>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

} // namespace

class TestZEFDictionary : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void aNewDictionaryIsEmpty();
    void keysComeInTheOrderOfFirstInsertion();
    void aKnownKeyKeepsItsPlaceAndGetsTheNewValue();
    void aKeyThatStandsTwiceInTheListKeepsItsFirstPlaceAndItsLastValue();
    void aRemovedKeyIsGoneAndComesBackLast();
    void removingAnUnknownKeyChangesNothing();
    void anEmptyValueIsHeld();
    void theEmptyKeyIsAKey();
    void keysAreCaseSensitive();
    void copiesAreIndependent();
    void isUsedAndDeletedThroughItsBase();
};

void TestZEFDictionary::aNewDictionaryIsEmpty()
{
    const ZEFDictionary dictionary;
    QCOMPARE(dictionary.keys(), QStringList());
    QVERIFY(!dictionary.contains(s("a")));
    QCOMPARE(dictionary.getString(s("a")), QString());
}

void TestZEFDictionary::keysComeInTheOrderOfFirstInsertion()
{
    ZEFDictionary dictionary{{s("zebra"), s("1")}, {s("ant"), s("2")}, {s("monkey"), s("3")}};
    dictionary.setString(s("bee"), s("4"));
    QCOMPARE(dictionary.keys(), QStringList({s("zebra"), s("ant"), s("monkey"), s("bee")}));
    QCOMPARE(dictionary.getString(s("ant")), s("2"));
    QCOMPARE(dictionary.getString(s("bee")), s("4"));
}

void TestZEFDictionary::aKnownKeyKeepsItsPlaceAndGetsTheNewValue()
{
    ZEFDictionary dictionary{{s("c"), s("1")}, {s("a"), s("2")}, {s("b"), s("3")}};
    dictionary.setString(s("a"), s("new"));
    QCOMPARE(dictionary.keys(), QStringList({s("c"), s("a"), s("b")}));
    QCOMPARE(dictionary.getString(s("a")), s("new"));
}

void TestZEFDictionary::aKeyThatStandsTwiceInTheListKeepsItsFirstPlaceAndItsLastValue()
{
    const ZEFDictionary dictionary{{s("a"), s("1")}, {s("b"), s("2")}, {s("a"), s("3")}};
    QCOMPARE(dictionary.keys(), QStringList({s("a"), s("b")}));
    QCOMPARE(dictionary.getString(s("a")), s("3"));
}

void TestZEFDictionary::aRemovedKeyIsGoneAndComesBackLast()
{
    ZEFDictionary dictionary{{s("a"), s("1")}, {s("b"), s("2")}, {s("c"), s("3")}};
    dictionary.remove(s("a"));
    QCOMPARE(dictionary.keys(), QStringList({s("b"), s("c")}));
    QVERIFY(!dictionary.contains(s("a")));
    QCOMPARE(dictionary.getString(s("a")), QString());

    dictionary.setString(s("a"), s("4"));
    QCOMPARE(dictionary.keys(), QStringList({s("b"), s("c"), s("a")}));
    QCOMPARE(dictionary.getString(s("a")), s("4"));
}

void TestZEFDictionary::removingAnUnknownKeyChangesNothing()
{
    ZEFDictionary dictionary{{s("a"), s("1")}};
    dictionary.remove(s("b"));
    dictionary.remove(QString());
    QCOMPARE(dictionary.keys(), QStringList({s("a")}));
}

void TestZEFDictionary::anEmptyValueIsHeld()
{
    ZEFDictionary dictionary{{s("a"), QString()}};
    QVERIFY(dictionary.contains(s("a")));
    dictionary.remove(s("a"));
    QCOMPARE(dictionary.keys(), QStringList());
}

void TestZEFDictionary::theEmptyKeyIsAKey()
{
    ZEFDictionary dictionary;
    QVERIFY(!dictionary.contains(QString()));
    dictionary.setString(QString(), s("nothing"));
    dictionary.setString(s(""), s("still nothing"));
    QCOMPARE(dictionary.keys(), QStringList({s("")}));
    QCOMPARE(dictionary.getString(s("")), s("still nothing"));
}

void TestZEFDictionary::keysAreCaseSensitive()
{
    const ZEFDictionary dictionary{{s("name"), s("1")}};
    QVERIFY(!dictionary.contains(s("Name")));
    QVERIFY(!dictionary.contains(s("name ")));
}

void TestZEFDictionary::copiesAreIndependent()
{
    ZEFDictionary dictionary{{s("a"), s("1")}};
    const ZEFDictionary copy = dictionary;
    dictionary.setString(s("a"), s("2"));
    dictionary.setString(s("b"), s("3"));
    QCOMPARE(copy.keys(), QStringList({s("a")}));
    QCOMPARE(copy.getString(s("a")), s("1"));
}

void TestZEFDictionary::isUsedAndDeletedThroughItsBase()
{
    const std::unique_ptr<ZEFDictionaryBase> dictionary =
        std::make_unique<ZEFDictionary>(ZEFDictionary{{s("a"), s("1")}});
    QCOMPARE(dictionary->keys(), QStringList({s("a")}));
    QVERIFY(dictionary->contains(s("a")));
    QCOMPARE(dictionary->getString(s("a")), s("1"));
}

ZEF_TEST_MAIN(TestZEFDictionary)
#include "test_zefdictionary.moc"
