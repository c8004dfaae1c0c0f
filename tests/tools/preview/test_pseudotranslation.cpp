#include "ZEFTest.h"
#include "tools/preview/PseudoTranslation.h"

#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

class TestPseudoTranslation : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void grows_data();
    void grows();
    void onlyItsContextIsTranslated();
};

void TestPseudoTranslation::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QString& text, const QString& expected) {
        QTest::newRow(name) << text << expected;
    };
    row("accents", u"Cancel"_s, u"[Çåñçéļ lörém]"_s);
    row("a placeholder", u"Hello %{user_name}"_s, u"[Ĥéļļö %{user_name} lörém îpsûm]"_s);
    row("a placeholder alone", u"%{user}"_s, u"%{user}"_s);
    // The key stays the one that testers know.
    row("a mnemonic", u"&Save"_s, u"[&Såvé lörém]"_s);
    row("an ampersand", u"A && B"_s, u"[Å && B lörém]"_s);
    row("markup", u"<p><b>Hi</b></p>"_s, u"<p><b>[Ĥî lörém]</b></p>"_s);
    row("a link", u"See <a href='x'>terms</a>."_s, u"[Šéé <a href='x'>ţéŕmš</a>. lörém îpsûm dölör]"_s);
    row("an entity", u"a&nbsp;b"_s, u"[å&nbsp;b lörém îpsûm]"_s);
    row("arguments", u"%1 of %L2, %n"_s, u"[%1 öf %L2, %n lörém îpsûm]"_s);
    row("blanks around", u" Hi "_s, u"[ Ĥî  lörém]"_s);
    row("nothing", QString(), QString());
    row("nothing to translate", u"-"_s, u"-"_s);
    row("digits", u"24:00"_s, u"24:00"_s);
}

void TestPseudoTranslation::texts()
{
    QFETCH(const QString, text);
    QFETCH(const QString, expected);
    QCOMPARE(pseudoTranslated(text), expected);
}

void TestPseudoTranslation::grows_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<double>("least");
    QTest::newRow("a word") << 8 << 2.0;
    QTest::newRow("a few words") << 25 << 1.6;
    QTest::newRow("a sentence") << 100 << 1.35;
}

void TestPseudoTranslation::grows()
{
    QFETCH(const int, length);
    QFETCH(const double, least);
    const double growth = double(pseudoTranslated(QString(length, u'x')).size()) / length;
    QVERIFY(growth >= least);
    QVERIFY(growth <= least + 1);
}

void TestPseudoTranslation::onlyItsContextIsTranslated()
{
    PseudoTranslator translator(u"Login"_s);
    QVERIFY(!translator.isEmpty());
    QCoreApplication::installTranslator(&translator);
    QCOMPARE(QCoreApplication::translate("Login", "Go"), u"[Ĝö lörém]"_s);
    QCOMPARE(QCoreApplication::translate("Login2", "Go"), u"Go"_s);
    QCoreApplication::removeTranslator(&translator);
}

ZEF_TEST_MAIN(TestPseudoTranslation)
#include "test_pseudotranslation.moc"
