#include "ElementTest.h"

#include <ZEFTranslatorCache.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

class TestZEFUIElementLoading : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void signalsAndSlotsStandInOrder();
    void fullConstructorWritesItsLinesInOrder();
    void formlessConstructorIsSilent();
    void refusesTheMisspeltConnection();
    void hostStartsWithTheSystemFontHint();
    void startValues();
    void choosesTheFormForWindowsFirst();
    void fallsBackToTheCommonForm();
    void hostLayoutHasNoMargins();
    void secondFormReplacesTheFirst();
    void failedReloadLeavesNoForm();
    void oldFormDiesBeforeItsLayout();
    void reloadInsideAReloadLeavesOneForm();
    void elementMayDieWhileItsFormIsStyled();
    void missingFormLinesInOrder();
    void missingForm_data();
    void missingForm();
    void namesStayInsideTheResources();
    void brokenFormIsReported();
    void unknownTopClassIsReported();
    void dangerousFormIsReported_data();
    void dangerousFormIsReported();
    void translatesWhileTheFormIsBuiltOnly();
    void translatorIsRemovedAfterAFailedLoad_data();
    void translatorIsRemovedAfterAFailedLoad();
    void unknownLocaleLoadsUntranslated();
    void formNameIsTheBaseName();
    void localeIsStoredAndAnnounced();
    void stylesWidgetsByObjectName();
    void unwiringStylesToo();
    void styleSheetByGivenName();
    void styleSheetLines();
    void styleSheetPathIsOnlyRemembered();
    void namesWithPercentSignsAreData();
    void thousandReloadsLeaveOneForm();
    void elementWithoutWidget();
    void contextIsReplacedNotDeleted();
    void contextDestructorMayAskTheElement();
    void cachesTranslatorsWhileAnElementLives();
    void delegateAccessors();
};

namespace {

QString address(const void* object)
{
    return QString::number(reinterpret_cast<quintptr>(object), 16);
}

QString pathLines()
{
    return u"log: LIBRARY PATHS: "_s + QCoreApplication::libraryPaths().join(u'\n');
}

} // namespace

void TestZEFUIElementLoading::signalsAndSlotsStandInOrder()
{
    const QMetaObject& meta = ZEFUIElement::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const bool signal = meta.method(i).methodType() == QMetaMethod::Signal;
        methods.append((signal ? u"signal "_s : u"slot "_s)
                       + QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(methods,
             QStringList({u"signal closing()"_s, u"signal localeChanged()"_s, u"slot housekeeping()"_s,
                          u"slot destroy()"_s, u"slot widgetDestroyed()"_s, u"slot activateAndRaise()"_s}));
}

void TestZEFUIElementLoading::fullConstructorWritesItsLinesInOrder()
{
    QWidget host;
    const ZEFUIElement parent(nullptr, nullptr, nullptr, 0);
    TestLog::takeAll();
    const ZEFUIElement element(&host, const_cast<ZEFUIElement*>(&parent), u"plain"_s, u"en"_s, nullptr, 7);
    QCOMPARE(
        withoutRefusedConnections(TestLog::takeAll()),
        QStringList({u"log: ZEFUIElement with parent: "_s + address(&parent),
                     u"log:   adding child "_s + address(&element), u"log: ZEFUIElement setFormPath: plain"_s,
                     u"log: Loading form plain for locale en"_s, pathLines(), u"log: PLUGIN PATHS: "_s,
                     u"log: Found CSS: :/css/win_styledButton.css"_s,
                     u"log: Setting widget style sheet: :/css/win_styledButton.css"_s,
                     u"log: Found CSS: :/css/commonStyled.css"_s,
                     u"log: Setting widget style sheet: :/css/commonStyled.css"_s,
                     u"log: Found CSS: :/css/emptyStyled.css"_s}));
    QCOMPARE(element.clientPID(), 7L);
    QCOMPARE(parent.childElementCount(), 1);

    QWidget orphanHost;
    const ZEFUIElement orphan(&orphanHost, nullptr, u"labels"_s, u"en"_s, nullptr, 0);
    QCOMPARE(TestLog::takeAll().first(), u"log: ZEFUIElement with parent: 0"_s);
}

void TestZEFUIElementLoading::formlessConstructorIsSilent()
{
    QWidget host;
    ZEFUIElement parent(nullptr, nullptr, nullptr, 0);
    const ZEFUIElement element(&host, &parent, nullptr, 8);
    QCOMPARE(TestLog::take(u"log: "_s), QStringList());
    QCOMPARE(TestLog::take(u"debug: "_s), QStringList());
    QCOMPARE(TestLog::take(u"warning: "_s),
             QStringList(u"warning: QObject::connect: No such signal QWidget::destoyed()"_s));
    QCOMPARE(parent.childElement(0), &element);
    QCOMPARE(element.clientPID(), 8L);
    QCOMPARE(element.locale(), QString());
    QVERIFY(!element.loaded());
    QVERIFY(!host.layout());
}

void TestZEFUIElementLoading::refusesTheMisspeltConnection()
{
    auto host = std::make_unique<ZEFUIWidget>(u"labels"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    const QStringList warnings = TestLog::take(u"warning: "_s);
    QCOMPARE(warnings.at(0), u"warning: QObject::connect: No such signal ZEFUIWidget::destoyed()"_s);
    QVERIFY(warnings.contains(u"warning: QObject::connect: No such slot ZEFUIWidget::rootDestroyed()"_s));
    host.reset();

    // Nobody tells an element around a plain widget that the widget dies, and nothing breaks.
    auto plain = std::make_unique<QWidget>();
    ZEFUIElement element(plain.get(), nullptr, u"labels"_s, u"en"_s, nullptr, 0);
    QSignalSpy closing(&element, &ZEFUIElement::closing);
    TestLog::takeAll();
    plain.reset();
    QCOMPARE(closing.count(), 0);
    QVERIFY(!element.widget());
    QVERIFY(!element.isClosing());
    QTRY_COMPARE(closing.count(), 1); // by the tick, which finds no widget
    QVERIFY(element.isClosing());
    element.hideChild(u"one"_s);
    element.close();
    element.destroy();
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFUIElementLoading::hostStartsWithTheSystemFontHint()
{
    QWidget host;
    QFont font = host.font();
    font.setStyleHint(QFont::Monospace, QFont::PreferQuality);
    host.setFont(font);
    const ZEFUIElement element(&host, nullptr, nullptr, 0);
    QCOMPARE(host.font().styleHint(), QFont::System);
    QCOMPARE(host.font().styleStrategy(), QFont::PreferDefault);
}

void TestZEFUIElementLoading::startValues()
{
    QWidget host;
    const ZEFUIElement element(&host, nullptr, nullptr, 0);
    QVERIFY(!element.parent());
    QCOMPARE(element.widget(), &host);
    QVERIFY(!element.delegate());
    QVERIFY(!element.context());
    QVERIFY(!element.loaded());
    QVERIFY(!element.isClosing());
    QCOMPARE(element.closeSelection(), 0);
    QCOMPARE(element.formPath(), QString());
    QCOMPARE(element.styleSheetPath(), QString());
    QCOMPARE(element.childElementCount(), 0);
    const ZEFUIElementPrivate* d = ZEFUIElementPrivate::get(&element);
    QVERIFY(!d->secondary);
    QVERIFY(!d->geometryPending);
    QVERIFY(d->mayRaise);
    QVERIFY(!d->savedSize.isValid());
    QVERIFY(d->housekeepingTimer.isActive());
    QCOMPARE(d->housekeepingTimer.interval(), 100);
}

void TestZEFUIElementLoading::choosesTheFormForWindowsFirst()
{
    const ZEFUIWidget host(u"login"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(host.element()->loaded());
    QCOMPARE(host.element()->formPath(), u":/forms/win_login.ui"_s);
    QVERIFY(host.findChild<QWidget*>(u"windowsForm"_s));
}

void TestZEFUIElementLoading::fallsBackToTheCommonForm()
{
    const ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(host.element()->formPath(), u":/forms/plain.ui"_s);
    QVERIFY(host.findChild<QWidget*>(u"plainForm"_s));
}

void TestZEFUIElementLoading::hostLayoutHasNoMargins()
{
    const ZEFUIWidget host(u"plain"_s, u"de_AT"_s, nullptr, Qt::WindowFlags(), nullptr);
    auto* layout = qobject_cast<QVBoxLayout*>(host.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(layout->count(), 1);
    auto* form = host.findChild<QWidget*>(u"plainForm"_s);
    QCOMPARE(layout->itemAt(0)->widget(), form);
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(layout->itemAt(0)->alignment(), Qt::Alignment());
    QCOMPARE(form->parentWidget(), &host);
    QCOMPARE(form->locale(), QLocale(u"de_AT"_s));
}

void TestZEFUIElementLoading::secondFormReplacesTheFirst()
{
    ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    const QPointer<QWidget> first(host.findChild<QWidget*>(u"plainForm"_s));
    const QPointer<QLayout> firstLayout(host.layout());
    host.element()->setFormPath(u"labels"_s);
    QVERIFY(!first);
    QVERIFY(!firstLayout);
    QVERIFY(host.element()->loaded());
    QCOMPARE(host.element()->formPath(), u":/forms/labels.ui"_s);
    QCOMPARE(host.layout()->contentsMargins(), QMargins());
    QCOMPARE(host.findChildren<QWidget*>(u"labelsForm"_s).size(), 1);
}

void TestZEFUIElementLoading::failedReloadLeavesNoForm()
{
    ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    TestLog::takeAll();
    host.element()->setFormPath(u"missing"_s);
    QCOMPARE(TestLog::take(u"debug: "_s),
             QStringList(u"debug: Could not open file :/forms/missing.ui for reading"_s));
    QVERIFY(!host.element()->loaded());
    QVERIFY(!host.layout());
    QVERIFY(!host.findChild<QWidget*>(u"plainForm"_s));
    QCOMPARE(ZEFUIElementPrivate::get(host.element())->formName, QString());
    host.element()->setFormPath(u"labels"_s);
    QVERIFY(host.element()->loaded());
}

void TestZEFUIElementLoading::oldFormDiesBeforeItsLayout()
{
    ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    const QLayout* layout = host.layout();
    int deaths = 0;
    connect(host.findChild<QWidget*>(u"plainForm"_s), &QObject::destroyed, this, [&] {
        ++deaths;
        QVERIFY(!host.element()->loaded());
        QCOMPARE(host.layout(), layout);
    });
    host.element()->setFormPath(u"labels"_s);
    QCOMPARE(deaths, 1);
}

void TestZEFUIElementLoading::reloadInsideAReloadLeavesOneForm()
{
    ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    connect(host.findChild<QWidget*>(u"plainForm"_s), &QObject::destroyed, this,
            [&] { host.element()->setFormPath(u"labels"_s); });
    host.element()->setFormPath(u"names"_s);
    QVERIFY(host.element()->loaded());
    QCOMPARE(host.element()->formPath(), u":/forms/names.ui"_s);
    QVERIFY(!host.findChild<QWidget*>(u"labelsForm"_s));
    QCOMPARE(host.layout()->itemAt(0)->widget(), host.findChild<QWidget*>(u"namesForm"_s));
    QCOMPARE(host.children().size(), 2); // the form and the layout
}

void TestZEFUIElementLoading::elementMayDieWhileItsFormIsStyled()
{
    //! Deletes the element in the middle of the load.
    class Assassin : public QObject {
    public:
        QPointer<ZEFUIElement> victim;
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::StyleChange && watched->objectName() == u"styledButton")
                delete victim;
            return false;
        }
    } assassin;
    ZEFUIWidget host;
    assassin.victim = host.element();
    qApp->installEventFilter(&assassin);
    host.element()->setFormPath(u"plain"_s);
    qApp->removeEventFilter(&assassin);
    QVERIFY(!assassin.victim);
    QVERIFY(!host.element());
    QVERIFY(host.findChild<QWidget*>(u"plainForm"_s));
}

void TestZEFUIElementLoading::missingFormLinesInOrder()
{
    const ZEFUIWidget host(u"missing"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(withoutRefusedConnections(TestLog::takeAll()),
             QStringList({u"log: ZEFUIElement with parent: 0"_s, u"log: ZEFUIElement setFormPath: missing"_s,
                          u"log: Loading form missing for locale en"_s, pathLines(), u"log: PLUGIN PATHS: "_s,
                          u"debug: Could not open file :/forms/missing.ui for reading"_s}));
}

void TestZEFUIElementLoading::missingForm_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such form") << u"missing"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("slashes") << u"../../etc/passwd"_s;
    QTest::newRow("dots") << u"..."_s;
    QTest::newRow("format characters") << u"%s%n%1%2%99"_s;
    QTest::newRow("placeholder") << u"%{name}"_s;
    QTest::newRow("blanks") << u" login "_s;
    QTest::newRow("very long") << QString(10000, u'x');
    QTest::newRow("line feed and NUL") << u"a\nb"_s + QChar(0) + u'c';
}

void TestZEFUIElementLoading::missingForm()
{
    QFETCH(QString, name);
    ZEFUIWidget host(name, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(!host.element()->loaded());
    QCOMPARE(host.element()->formPath(), u":/forms/"_s + name + u".ui"_s);
    QCOMPARE(TestLog::take(u"debug: "_s),
             QStringList(u"debug: Could not open file :/forms/"_s + name + u".ui for reading"_s));
    QVERIFY(TestLog::take(u"log: "_s).contains(u"log: Loading form "_s + name + u" for locale en"_s));
}

void TestZEFUIElementLoading::namesStayInsideTheResources()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(u":/forms/plain.ui"_s, folder.filePath(u"outside.ui"_s)));
    QString name = folder.filePath(u"outside"_s);
    for (int i = 0; i < 12; ++i) {
        const ZEFUIWidget host(name, QString(), nullptr, Qt::WindowFlags(), nullptr);
        QVERIFY2(!host.element()->loaded(), qPrintable(name));
        name.prepend(u"../"_s);
    }
    TestLog::takeAll();
}

void TestZEFUIElementLoading::brokenFormIsReported()
{
    const ZEFUIWidget host(u"broken"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(!host.element()->loaded());
    QVERIFY(!host.layout());
    QCOMPARE(TestLog::take(u"debug: "_s), QStringList(u"debug: Could not load UI file: :/forms/broken.ui"_s));
    TestLog::take(u"warning: "_s); // Qt's reader names the line
}

void TestZEFUIElementLoading::unknownTopClassIsReported()
{
    const ZEFUIWidget host(u"nothing"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(!host.element()->loaded());
    QCOMPARE(TestLog::take(u"debug: "_s),
             QStringList(u"debug: Could not load UI file: :/forms/nothing.ui"_s));
    TestLog::take(u"warning: "_s);

    const ZEFUIWidget inner(u"noclass"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(inner.element()->loaded());
    QVERIFY(inner.findChild<QPushButton*>(u"okButton"_s));
    QVERIFY(!inner.findChild<QWidget*>(u"stranger"_s));
    TestLog::take(u"warning: "_s);
}

void TestZEFUIElementLoading::dangerousFormIsReported_data()
{
    QTest::addColumn<QString>("form");
    QTest::newRow("unknown layout") << u"unknownlayout"_s;
    QTest::newRow("promoted in a circle") << u"promotedcircle"_s;
}

// Qt's form loader would end the process.
void TestZEFUIElementLoading::dangerousFormIsReported()
{
    QFETCH(QString, form);
    const ZEFUIWidget host(form, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(!host.element()->loaded());
    QVERIFY(!host.layout());
    QCOMPARE(TestLog::take(u"debug: "_s),
             QStringList(u"debug: Could not load UI file: :/forms/"_s + form + u".ui"_s));
}

void TestZEFUIElementLoading::translatesWhileTheFormIsBuiltOnly()
{
    const ZEFUIWidget host(u"login"_s, u"de"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(host.findChild<QLabel*>(u"greeting"_s)->text(), u"Willkommen"_s);
    QCOMPARE(host.findChild<QLabel*>(u"untranslated"_s)->text(), u"No translation"_s);
    QCOMPARE(QCoreApplication::translate("Login", "Welcome"), u"Welcome"_s);

    const ZEFUIWidget austrian(u"login"_s, u"de_AT"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(austrian.findChild<QLabel*>(u"greeting"_s)->text(), u"Willkommen"_s);
}

void TestZEFUIElementLoading::translatorIsRemovedAfterAFailedLoad_data()
{
    QTest::addColumn<QString>("form");
    QTest::newRow("missing") << u"missing"_s;
    QTest::newRow("broken") << u"broken"_s;
}

void TestZEFUIElementLoading::translatorIsRemovedAfterAFailedLoad()
{
    QFETCH(QString, form);
    const ZEFUIWidget host(form, u"de"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(!host.element()->loaded());
    QCOMPARE(QCoreApplication::translate("Login", "Welcome"), u"Welcome"_s);
    TestLog::takeAll();
}

void TestZEFUIElementLoading::unknownLocaleLoadsUntranslated()
{
    for (const QString& locale : {u"xx_YY"_s, QString(), u"../../x"_s, QString(10000, u'd'), u"%s%n"_s}) {
        const ZEFUIWidget host(u"login"_s, locale, nullptr, Qt::WindowFlags(), nullptr);
        QVERIFY(host.element()->loaded());
        QCOMPARE(host.element()->locale(), locale);
        QCOMPARE(host.findChild<QLabel*>(u"greeting"_s)->text(), u"Welcome"_s);
    }
}

void TestZEFUIElementLoading::formNameIsTheBaseName()
{
    ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(ZEFUIElementPrivate::get(host.element())->formName, u"plain"_s);
    host.element()->setFormPath(u"dir.with dots"_s);
    QVERIFY(host.element()->loaded());
    QCOMPARE(ZEFUIElementPrivate::get(host.element())->formName, u"dir"_s);
}

void TestZEFUIElementLoading::localeIsStoredAndAnnounced()
{
    ZEFUIWidget host(u"login"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QSignalSpy changed(host.element(), &ZEFUIElement::localeChanged);
    host.element()->setLocale(u"de"_s);
    host.element()->setLocale(u"de"_s);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(host.element()->locale(), u"de"_s);
    QCOMPARE(host.findChild<QLabel*>(u"greeting"_s)->text(), u"Welcome"_s);
    host.element()->setFormPath(u"login"_s);
    QCOMPARE(host.findChild<QLabel*>(u"greeting"_s)->text(), u"Willkommen"_s);
}

void TestZEFUIElementLoading::stylesWidgetsByObjectName()
{
    const ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(host.findChild<QWidget*>(u"styledButton"_s)->styleSheet(),
             u"QPushButton { color: #010203; }\n"_s);
    QCOMPARE(host.findChild<QWidget*>(u"commonStyled"_s)->styleSheet(),
             u"QPushButton { color: #040506; } /* gr\u00fcn */\n"_s);
    QCOMPARE(host.findChild<QWidget*>(u"emptyStyled"_s)->styleSheet(), QString());
    QCOMPARE(host.findChild<QWidget*>(u"okButton"_s)->styleSheet(), QString());
}

void TestZEFUIElementLoading::unwiringStylesToo()
{
    const ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    TestLog::takeAll();
    host.element()->connectWidgetTree(false, host.findChild<QWidget*>(u"plainForm"_s));
    QCOMPARE(TestLog::take(u"log: Found CSS"_s),
             QStringList({u"log: Found CSS: :/css/win_styledButton.css"_s,
                          u"log: Found CSS: :/css/commonStyled.css"_s,
                          u"log: Found CSS: :/css/emptyStyled.css"_s}));
    TestLog::takeAll();
}

void TestZEFUIElementLoading::styleSheetByGivenName()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    QPushButton button;
    button.setObjectName(u"commonStyled"_s);
    element.setWidgetStyleSheet(&button, u"styledButton"_s);
    QCOMPARE(button.styleSheet(), u"QPushButton { color: #010203; }\n"_s);
    element.setWidgetStyleSheet(&button, u"emptyStyled"_s);
    QCOMPARE(button.styleSheet(), u"QPushButton { color: #010203; }\n"_s);
    element.setWidgetStyleSheet(&button, QString());
    QVERIFY(button.styleSheet().startsWith(u"QPushButton { color: #040506; }"));
    element.setWidgetStyleSheet(nullptr, u"styledButton"_s);
}

void TestZEFUIElementLoading::styleSheetLines()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    QPushButton button;
    TestLog::takeAll();
    element.setWidgetStyleSheet(&button, u"styledButton"_s);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"log: Found CSS: :/css/win_styledButton.css"_s,
                          u"log: Setting widget style sheet: :/css/win_styledButton.css"_s}));
    element.setWidgetStyleSheet(&button, u"emptyStyled"_s);
    QCOMPARE(TestLog::takeAll(), QStringList(u"log: Found CSS: :/css/emptyStyled.css"_s));
    element.setWidgetStyleSheet(&button, u"missing %s"_s);
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFUIElementLoading::styleSheetPathIsOnlyRemembered()
{
    ZEFUIWidget host(u"plain"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    auto* button = host.findChild<QPushButton*>(u"okButton"_s);
    host.element()->setStyleSheetPath(u":/css/styledButton.css"_s);
    QCOMPARE(host.element()->styleSheetPath(), u":/css/styledButton.css"_s);
    QCOMPARE(button->styleSheet(), QString());
    QCOMPARE(host.styleSheet(), QString());
    host.element()->setStyleSheetPath(u":/css/missing.css"_s);
    QCOMPARE(host.element()->styleSheetPath(), u":/css/missing.css"_s);
}

void TestZEFUIElementLoading::namesWithPercentSignsAreData()
{
    const ZEFUIWidget host(u"100%s"_s, u"%s%n"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(host.element()->loaded());
    QVERIFY(TestLog::take(u"log: "_s).contains(u"log: Loading form 100%s for locale %s%n"_s));
}

void TestZEFUIElementLoading::thousandReloadsLeaveOneForm()
{
    ZEFUIWidget host(u"labels"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    for (int i = 0; i < 1000; ++i)
        host.element()->setFormPath(u"labels"_s);
    QVERIFY(host.element()->loaded());
    QCOMPARE(host.findChildren<QWidget*>(u"labelsForm"_s).size(), 1);
    QCOMPARE(host.children().size(), 2); // the form and the layout
}

void TestZEFUIElementLoading::elementWithoutWidget()
{
    int deletions = 0;
    {
        ZEFUIElement element(nullptr, nullptr, u"plain"_s, u"en"_s, new CountingContext(&deletions), 0);
        QVERIFY(!element.loaded());
        element.setFormPath(u"plain"_s);
        element.connectWidgetTree(true, nullptr);
        element.setDelegate(this);
        element.dispatch(this, "clicked");
        element.connectSlotsByName(this);
        element.show();
        element.activateAndRaise();
        element.destroy();
        element.close();
        QVERIFY(!element.bringToFront(true));
        QCOMPARE(element.formPath(), QString());
    }
    QCOMPARE(deletions, 1);
    // The sender of a click need not be a widget of the form.
    QCOMPARE(TestLog::take(u"debug: "_s),
             QStringList(u"debug: Could not find a method _clicked on delegate"_s));
}

void TestZEFUIElementLoading::contextIsReplacedNotDeleted()
{
    int deletions = 0;
    auto first = std::make_unique<CountingContext>(&deletions);
    {
        QWidget host;
        ZEFUIElement element(&host, nullptr, first.get(), 0);
        QCOMPARE(element.context(), first.get());
        auto* second = new CountingContext(&deletions);
        element.setContext(second);
        QCOMPARE(element.context(), second);
        QCOMPARE(deletions, 0);
    }
    QCOMPARE(deletions, 1);
    first.reset();
    QCOMPARE(deletions, 2);
}

void TestZEFUIElementLoading::contextDestructorMayAskTheElement()
{
    class CuriousContext : public ZEFPipeFacilityInvocationContext {
    public:
        ~CuriousContext() override
        {
            *selection = element->closeSelection();
            *contextWasGone = !element->context();
        }
        ZEFUIElement* element = nullptr;
        int* selection = nullptr;
        bool* contextWasGone = nullptr;
    };
    int selection = 0;
    bool contextWasGone = false;
    QWidget host;
    auto element = std::make_unique<ZEFUIElement>(&host, nullptr, nullptr, 0);
    auto* context = new CuriousContext;
    context->element = element.get();
    context->selection = &selection;
    context->contextWasGone = &contextWasGone;
    element->setContext(context);
    element->setCloseSelection(5);
    element.reset();
    QCOMPARE(selection, 5);
    QVERIFY(contextWasGone);
}

void TestZEFUIElementLoading::cachesTranslatorsWhileAnElementLives()
{
    QWidget host;
    auto element = std::make_unique<ZEFUIElement>(&host, nullptr, u"login"_s, u"de"_s, nullptr, 0);
    const QPointer<QTranslator> translator(ZEFTranslatorCache::translatorForLocale(u"zefmain.qm"_s, u"de"_s));
    QVERIFY(translator);
    {
        QWidget otherHost;
        const ZEFUIElement other(&otherHost, nullptr, nullptr, 0);
    }
    QVERIFY(translator);
    element.reset();
    QVERIFY(!translator);
}

void TestZEFUIElementLoading::delegateAccessors()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    auto delegate = std::make_unique<QObject>();
    element.setDelegate(delegate.get());
    QCOMPARE(element.delegate(), delegate.get());
    delegate.reset();
    QVERIFY(!element.delegate());
    element.setDelegate(nullptr);
    element.setClientPID(1234);
    QCOMPARE(element.clientPID(), 1234L);
    element.setSecondary(true);
    QVERIFY(ZEFUIElementPrivate::get(&element)->secondary);
}

ZEF_TEST_MAIN(TestZEFUIElementLoading)
#include "test_zefuielement_loading.moc"
