#include "ZEFTest.h"

#include <ZEFTranslatorCache.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTranslator>
#include <QtWidgets/QWidget>

#include <functional>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QString welcome(QTranslator* translator)
{
    return ZEFTranslatorCache::localizeString(s("Welcome"), translator, nullptr);
}

QTranslator* find(const char* locale)
{
    return ZEFTranslatorCache::translatorForLocale(s("basetest.qm"), s(locale));
}

//! Calls back when the application tells it that a translator has come or gone.
class LanguageWatcher : public QWidget {
public:
    std::function<void()> onLanguageChange;

protected:
    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange && onLanguageChange)
            onLanguageChange();
        QWidget::changeEvent(event);
    }
};

} // namespace

class TestZEFTranslatorCache : public ZEFTest {
    Q_OBJECT

private:
    void prepare() override;
    void tidyUp() override;

private Q_SLOTS:
    void finds_data();
    void finds();
    void theSuffixOfTheFileNameMayBeLeftOut();
    void aTranslatorIsLoadedOnce();
    void localesThatFallBackShareATranslator();
    void unknownFilesHaveNone();
    void aBrokenFileIsNone();
    void missesAreRemembered();
    void manyMissesAreForgotten();
    void theLastReleaseEmptiesTheCache();
    void anExtraReleaseIsIgnored();
    void anInstalledTranslatorMayBeReleased();
    void localize_data();
    void localize();
    void withoutATranslatorTheTextComesBack();
};

void TestZEFTranslatorCache::prepare()
{
    ZEFTranslatorCache::retain();
}

void TestZEFTranslatorCache::tidyUp()
{
    ZEFTranslatorCache::release();
}

void TestZEFTranslatorCache::finds_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("translation"); // null: there is no translator

    QTest::newRow("exact") << s("de") << s("Willkommen");
    QTest::newRow("exact, with a country") << s("de_AT") << s("Grüß Gott");
    QTest::newRow("fallback") << s("de_LI") << s("Willkommen");
    QTest::newRow("fallback, twice") << s("de_Latn_LI") << s("Willkommen");
    QTest::newRow("fallback, twice, to a country") << s("de_AT_vienna") << s("Grüß Gott");
    QTest::newRow("fallback from a POSIX name") << s("de_AT.UTF-8@euro") << s("Grüß Gott");
    QTest::newRow("fallback from a BCP 47 name") << s("de-LI") << s("Willkommen");
    QTest::newRow("resource before the folder, even by fallback") << s("de_CH") << s("Willkommen");
    QTest::newRow("folder") << s("fr") << s("Bienvenue");
    QTest::newRow("folder, by fallback") << s("fr_CA") << s("Bienvenue");
    QTest::newRow("the ends of the alphabets and the digits") << s("de_azAZ09") << s("Willkommen");
    QTest::newRow("separator at the end") << s("de_") << s("Willkommen");

    QTest::newRow("separator at the front, which leaves no language") << s("_de") << QString();
    QTest::newRow("none") << s("en") << QString();
    QTest::newRow("a longer language") << s("deu") << QString();
    QTest::newRow("a shorter language") << s("d") << QString();
    QTest::newRow("C") << s("C") << QString();
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("blank") << s(" ") << QString();
    QTest::newRow("blank after it") << s("de ") << QString();
    QTest::newRow("separators only") << QString(64, u'_') << QString();
    QTest::newRow("up the tree") << s("../i18n/basetest_de") << QString();
    QTest::newRow("slash") << s("x/../../i18n/basetest_de") << QString();
    QTest::newRow("backslash") << s("x\\..\\de") << QString();
    QTest::newRow("slash after it") << s("de/") << QString();
    QTest::newRow("colon") << s("de:stream") << QString();
    QTest::newRow("percent signs") << s("%s%n%1") << QString();
    QTest::newRow("null character") << QString(u"de" + QString(QChar::Null)) << QString();
    QTest::newRow("null character inside") << QString(u"d" + QString(QChar::Null) + u'e') << QString();
    QTest::newRow("line end") << s("de\n") << QString();
    QTest::newRow("full-width letters") << s("\uff44\uff45") << QString();
    QTest::newRow("half a surrogate pair") << QString(QChar(0xd83d)) << QString();
    QTest::newRow("longest name that is looked for")
        << QString(u"de_" + QString(61, u'x')) << s("Willkommen");
    QTest::newRow("too long") << QString(u"de_" + QString(62, u'x')) << QString();
    QTest::newRow("10,000 characters") << QString(10000, u'd') << QString();
    QTest::newRow("10,000 separators") << QString(10000, u'_') << QString();
}

void TestZEFTranslatorCache::finds()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, translation);
    QTranslator* translator = ZEFTranslatorCache::translatorForLocale(s("basetest.qm"), locale);
    QCOMPARE(translator != nullptr, !translation.isNull());
    if (translator)
        QCOMPARE(welcome(translator), translation);
}

void TestZEFTranslatorCache::theSuffixOfTheFileNameMayBeLeftOut()
{
    QVERIFY(find("de"));
    QCOMPARE(ZEFTranslatorCache::translatorForLocale(s("basetest"), s("de")), find("de"));
}

void TestZEFTranslatorCache::aTranslatorIsLoadedOnce()
{
    const QPointer<QTranslator> translator = find("de");
    QVERIFY(translator);
    QCOMPARE(find("de"), translator);
    QVERIFY(find("de_AT") != translator);
    QCOMPARE(find("de"), translator);
}

// Clients name locales at will: not every name may cost a translator of its own.
void TestZEFTranslatorCache::localesThatFallBackShareATranslator()
{
    QCOMPARE(find("de_LI"), find("de"));
    QCOMPARE(find("de_LU"), find("de"));
}

void TestZEFTranslatorCache::unknownFilesHaveNone()
{
    QCOMPARE(ZEFTranslatorCache::translatorForLocale(s("nofile.qm"), s("de")), nullptr);
    QCOMPARE(ZEFTranslatorCache::translatorForLocale(QString(), s("de")), nullptr);
}

void TestZEFTranslatorCache::aBrokenFileIsNone()
{
    QVERIFY(QFile::exists(s(":/i18n/basetest_broken.qm")));
    QCOMPARE(find("broken"), nullptr);
}

void TestZEFTranslatorCache::missesAreRemembered()
{
    QCOMPARE(find("late"), nullptr);
    const QString folder = QCoreApplication::applicationDirPath() + u"/translations";
    const QString path = folder + u"/basetest_late.qm";
    QVERIFY(QFile::copy(folder + u"/basetest_fr.qm", path));
    QTranslator* const remembered = find("late");
    ZEFTranslatorCache::release();
    ZEFTranslatorCache::retain();
    const QString afterwards = welcome(find("late"));
    QVERIFY(QFile::remove(path));

    QCOMPARE(remembered, nullptr);
    QCOMPARE(afterwards, s("Bienvenue")); // the last release forgot it
}

// The memory of misses is bounded, and it is the oldest ones that are given up.
void TestZEFTranslatorCache::manyMissesAreForgotten()
{
    const QPointer<QTranslator> translator = find("de");
    QCOMPARE(find("late"), nullptr);
    const QString folder = QCoreApplication::applicationDirPath() + u"/translations";
    const QString path = folder + u"/basetest_late.qm";
    QVERIFY(QFile::copy(folder + u"/basetest_fr.qm", path));
    for (int i = 0; i < 2000; ++i)
        ZEFTranslatorCache::translatorForLocale(s("basetest.qm"), QStringLiteral("no%1").arg(i));
    const QString afterwards = welcome(find("late"));
    QVERIFY(QFile::remove(path));

    QCOMPARE(afterwards, s("Bienvenue"));
    QVERIFY(translator);
    QCOMPARE(find("de"), translator); // hits stay
}

void TestZEFTranslatorCache::theLastReleaseEmptiesTheCache()
{
    const QPointer<QTranslator> translator = find("de");
    ZEFTranslatorCache::retain();
    ZEFTranslatorCache::release();
    QVERIFY(translator);
    ZEFTranslatorCache::release();
    QVERIFY(!translator);
    ZEFTranslatorCache::retain();
    QCOMPARE(welcome(find("de")), s("Willkommen"));
}

void TestZEFTranslatorCache::anExtraReleaseIsIgnored()
{
    ZEFTranslatorCache::release();
    ZEFTranslatorCache::release();
    ZEFTranslatorCache::release();
    ZEFTranslatorCache::retain();
    const QPointer<QTranslator> translator = find("de");
    ZEFTranslatorCache::retain();
    ZEFTranslatorCache::release();
    QVERIFY(translator);
}

void TestZEFTranslatorCache::anInstalledTranslatorMayBeReleased()
{
    LanguageWatcher watcher;
    const QPointer<QTranslator> translator = find("de");
    QVERIFY(QCoreApplication::installTranslator(translator));
    QCOMPARE(QCoreApplication::translate("zefmain", "Welcome"), s("Willkommen"));
    QCoreApplication::processEvents();

    QString seen;
    watcher.onLanguageChange = [&] { seen = welcome(find("de_AT")); };
    ZEFTranslatorCache::release();
    QVERIFY(!translator);
    QCOMPARE(QCoreApplication::translate("zefmain", "Welcome"), s("Welcome"));
    QTRY_COMPARE(seen, s("Grüß Gott")); // asked from within the release or soon after
    ZEFTranslatorCache::retain();
}

void TestZEFTranslatorCache::localize_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("translation"); // null: there is none

    QTest::newRow("zefmain") << s("Welcome") << s("Willkommen");
    QTest::newRow("zefmain before the empty context") << s("Both") << s("Beide, zefmain");
    QTest::newRow("empty context") << s("Farewell") << s("Lebewohl");
    QTest::newRow("another context does not count") << s("Form text") << QString();
    QTest::newRow("beyond ASCII") << s("Größe: %1") << s("Size: %1");
    QTest::newRow("placeholder") << s("%{name}") << s("%{value}");
    QTest::newRow("unknown") << s("Nobody translated this") << QString();
    QTest::newRow("case") << s("welcome") << QString();
    QTest::newRow("blank after it") << s("Welcome ") << QString();
    QTest::newRow("empty") << s("") << QString();
    QTest::newRow("null character") << QString(u"Welcome" + QString(QChar::Null) + u" %s") << QString();
    QTest::newRow("long") << QString(1024 * 1024, u'W') << QString();
}

void TestZEFTranslatorCache::localize()
{
    QFETCH(const QString, text);
    QFETCH(const QString, translation);
    QTranslator* translator = find("de");
    QVERIFY(translator);
    bool ok = translation.isNull();
    QCOMPARE(ZEFTranslatorCache::localizeString(text, translator, &ok),
             translation.isNull() ? text : translation);
    QCOMPARE(ok, !translation.isNull());
    QCOMPARE(ZEFTranslatorCache::localizeString(text, translator, nullptr),
             translation.isNull() ? text : translation);
}

void TestZEFTranslatorCache::withoutATranslatorTheTextComesBack()
{
    bool ok = true;
    QCOMPARE(ZEFTranslatorCache::localizeString(s("Welcome"), nullptr, &ok), s("Welcome"));
    QVERIFY(!ok);
    QCOMPARE(ZEFTranslatorCache::localizeString(s("Welcome"), nullptr, nullptr), s("Welcome"));
}

ZEF_TEST_MAIN(TestZEFTranslatorCache)
#include "test_zeftranslatorcache.moc"
