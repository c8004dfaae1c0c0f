#include "ElementTest.h"

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>

#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

//! A widget with string properties of its own, in a known order.
class Texts : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString first MEMBER first)
    Q_PROPERTY(QString fixed READ fixed CONSTANT)
    Q_PROPERTY(QByteArray bytes MEMBER bytes)
    Q_PROPERTY(QStringList list MEMBER list)
    Q_PROPERTY(QString second MEMBER second)

public:
    using QWidget::QWidget;
    QString fixed() const { return u"%{key}"_s; }

    QString first;
    QByteArray bytes;
    QStringList list;
    QString second;
};

//! A widget that may be deleted when it announces a write, as Qt's widgets may not.
class Announcing : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString note READ note WRITE setNote)

public:
    using QWidget::QWidget;
    QString note() const { return m_note; }
    void setNote(const QString& note)
    {
        m_note = note;
        Q_EMIT noted();
    }

Q_SIGNALS:
    void noted();

private:
    QString m_note = u"%{user}"_s;
};

class TestZEFUIElementInterpolation : public ElementTest {
    Q_OBJECT

private:
    void show(const QString& form, const QString& locale = u"en"_s)
    {
        m_host = std::make_unique<ZEFUIWidget>(form, locale, nullptr, Qt::WindowFlags(), nullptr);
        TestLog::takeAll();
    }
    void tidyUp() override { m_host.reset(); }
    ZEFUIElement* element() const { return m_host->element(); }
    QString text(const QString& label) const { return m_host->findChild<QLabel*>(label)->text(); }

    std::unique_ptr<ZEFUIWidget> m_host;

private Q_SLOTS:
    void updateWritesAllWidgetsOfTheName();
    void updateConvertsToThePropertysType();
    void updateIgnoresFurtherPieces();
    void updateSkips_data();
    void updateSkips();
    void hiddenTextsAreNotShown();
    void updateLinesAreData();
    void updateReportsRefusedWrites();
    void updateEmptyNameMeansNamelessWidgets();
    void updateNamesAreLatin1();
    void updateOfTheObjectName();
    void updateSeesWidgetsThatSlotsMake();
    void updateWithManyUnknownNames();
    void updateSurvivesASlotThatDeletesTheHost();
    void fillsPlaceholders();
    void secondRunStartsFromTheTemplates();
    void untouchedTextsLeaveNoLine();
    void missingValuesLeaveTheEarlierText();
    void translationAloneIsNotWritten();
    void translatorIsLookedUpOnEachRun();
    void sameResultKeepsTheLaterTemplate();
    void hostComesFirst();
    void propertiesInMetaObjectOrder();
    void translatesTemplatesAndValues();
    void valuesAreNeverTemplates();
    void valuesAreDataInLines();
    void objectNamesAndStyleSheetsAreTexts();
    void readOnlyTextIsReportedButStays();
    void templatesSurviveAReload();
    void emptyResultsTraceBackToo();
    void nullsAndForgottenWidget();
    void interpolationMayDeleteTheHost();
    void theElementMayOutliveItsHost();
    void theLineComesBeforeTheWrite();
};

void TestZEFUIElementInterpolation::updateWritesAllWidgetsOfTheName()
{
    show(u"names"_s);
    const QList<QLineEdit*> edits = m_host->findChildren<QLineEdit*>(u"nameEdit"_s);
    element()->updateProperties({{u"nameEdit_text"_s, u"both"_s}, {u"nameEdit_enabled"_s, u"false"_s}});
    QCOMPARE(edits.size(), 2);
    for (const QLineEdit* edit : edits) {
        QCOMPARE(edit->text(), u"both"_s);
        QVERIFY(!edit->isEnabled());
    }
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: set property on nameEdit.text=both"_s,
                          u"debug: set property on nameEdit.text=both"_s,
                          u"debug: set property on nameEdit.enabled=false"_s,
                          u"debug: set property on nameEdit.enabled=false"_s}));
}

void TestZEFUIElementInterpolation::updateConvertsToThePropertysType()
{
    show(u"names"_s);
    element()->updateProperties({{u"count_value"_s, u"12"_s}, {u"agree_checked"_s, u"true"_s}});
    QCOMPARE(m_host->findChild<QSpinBox*>(u"count"_s)->value(), 12);
    QCOMPARE(m_host->findChild<QAbstractButton*>(u"agree"_s)->isChecked(), true);
    TestLog::takeAll();
}

void TestZEFUIElementInterpolation::updateIgnoresFurtherPieces()
{
    show(u"names"_s);
    element()->updateProperties({{u"okButton_text_extra"_s, u"value"_s}, {u"agree_text_"_s, u"other"_s}});
    QCOMPARE(m_host->findChild<QPushButton*>(u"okButton"_s)->text(), u"value"_s);
    QCOMPARE(m_host->findChild<QAbstractButton*>(u"agree"_s)->text(), u"other"_s);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: set property on okButton.text=value"_s,
                          u"debug: set property on agree.text=other"_s}));
}

void TestZEFUIElementInterpolation::updateSkips_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("no underscore") << u"okButton"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("unknown widget") << u"nobody_text"_s;
    QTest::newRow("unknown property") << u"okButton_colour"_s;
    QTest::newRow("empty property") << u"okButton_"_s;
    QTest::newRow("name with an underscore") << u"under_score_text"_s;
    QTest::newRow("very long") << QString(100000, u'x') + u"_text"_s;
    QTest::newRow("the host itself") << u"host_windowTitle"_s;
}

void TestZEFUIElementInterpolation::updateSkips()
{
    QFETCH(QString, key);
    show(u"names"_s);
    m_host->setObjectName(u"host"_s);
    element()->updateProperties({{key, u"value"_s}});
    QCOMPARE(TestLog::takeAll(), QStringList());
    QCOMPARE(m_host->windowTitle(), QString());
}

void TestZEFUIElementInterpolation::hiddenTextsAreNotShown()
{
    show(u"names"_s);
    const auto edits = m_host->findChildren<QLineEdit*>(u"nameEdit"_s);
    edits.at(0)->setEchoMode(QLineEdit::Password);
    element()->updateProperties({{u"nameEdit_text"_s, u"secret"_s}});
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: set property on nameEdit.text=********"_s,
                          u"debug: set property on nameEdit.text=secret"_s}));
    QCOMPARE(edits.at(0)->text(), u"secret"_s);
}

void TestZEFUIElementInterpolation::updateLinesAreData()
{
    show(u"names"_s);
    const QString value = u"100%s%n%1%2 %{other} <b>"_s;
    element()->updateProperties({{u"okButton_text"_s, value}});
    QCOMPARE(TestLog::takeAll(), QStringList(u"debug: set property on okButton.text="_s + value));
    QCOMPARE(m_host->findChild<QPushButton*>(u"okButton"_s)->text(), value);
    const QString long1MiB(1024 * 1024, u'%');
    element()->updateProperties({{u"okButton_toolTip"_s, long1MiB}});
    QCOMPARE(TestLog::takeAll(), QStringList(u"debug: set property on okButton.toolTip="_s + long1MiB));
    QCOMPARE(m_host->findChild<QPushButton*>(u"okButton"_s)->toolTip(), long1MiB);
}

void TestZEFUIElementInterpolation::updateReportsRefusedWrites()
{
    show(u"names"_s);
    // The line is written for each property that exists, whether or not Qt took the value.
    element()->updateProperties({{u"count_value"_s, u"no number"_s}, {u"okButton_x"_s, u"5"_s}});
    QCOMPARE(m_host->findChild<QSpinBox*>(u"count"_s)->value(), 0);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: set property on count.value=no number"_s,
                          u"debug: set property on okButton.x=5"_s}));
}

void TestZEFUIElementInterpolation::updateEmptyNameMeansNamelessWidgets()
{
    show(u"names"_s);
    element()->updateProperties({{u"_toolTip"_s, u"x"_s}});
    for (const QWidget* widget : m_host->findChildren<QWidget*>())
        QCOMPARE(widget->toolTip(), widget->objectName().isEmpty() ? u"x"_s : QString());
    QVERIFY(TestLog::takeAll().contains(u"debug: set property on .toolTip=x"_s));
}

void TestZEFUIElementInterpolation::updateNamesAreLatin1()
{
    show(u"names"_s);
    auto* button = m_host->findChild<QPushButton*>(u"okButton"_s);
    button->setObjectName(u"gr\u00fcn"_s);
    element()->updateProperties({{u"gr\u00fcn_text"_s, u"\u20ac"_s}});
    QCOMPARE(button->text(), u"\u20ac"_s);
    QCOMPARE(TestLog::takeAll(), QStringList(u"debug: set property on gr\u00fcn.text=\u20ac"_s));
}

void TestZEFUIElementInterpolation::updateOfTheObjectName()
{
    show(u"names"_s);
    auto* button = m_host->findChild<QPushButton*>(u"okButton"_s);
    element()->updateProperties({{u"okButton_text"_s, u"first"_s},
                                 {u"okButton_objectName"_s, u"renamed"_s},
                                 {u"okButton_toolTip"_s, u"never"_s},
                                 {u"renamed_text"_s, u"second"_s}});
    QCOMPARE(button->text(), u"second"_s);
    QCOMPARE(button->toolTip(), QString());
    // the line is written after the write, with the name that the widget has then
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: set property on okButton.text=first"_s,
                          u"debug: set property on renamed.objectName=renamed"_s,
                          u"debug: set property on renamed.text=second"_s}));
}

void TestZEFUIElementInterpolation::updateSeesWidgetsThatSlotsMake()
{
    show(u"names"_s);
    auto* edit = m_host->findChild<QLineEdit*>(u"nameEdit"_s);
    connect(edit, &QLineEdit::textChanged, this,
            [&] { (new QLabel(edit->parentWidget()))->setObjectName(u"fresh"_s); });
    connect(m_host->findChild<QAbstractButton*>(u"agree"_s), &QAbstractButton::toggled, this,
            [&] { delete m_host->findChild<QPushButton*>(u"okButton"_s); });
    element()->updateProperties({{u"nameEdit_text"_s, u"x"_s},
                                 {u"fresh_text"_s, u"made"_s},
                                 {u"agree_checked"_s, u"true"_s},
                                 {u"okButton_text"_s, u"gone"_s}});
    QCOMPARE(text(u"fresh"_s), u"made"_s);
    QCOMPARE(
        TestLog::takeAll(),
        QStringList({u"debug: set property on nameEdit.text=x"_s, u"debug: set property on nameEdit.text=x"_s,
                     u"debug: set property on fresh.text=made"_s,
                     u"debug: set property on agree.checked=true"_s}));
}

void TestZEFUIElementInterpolation::updateWithManyUnknownNames()
{
    show(u"names"_s);
    ZEFDictionary many;
    for (int i = 0; i < 50000; ++i)
        many.setString(u"unknown%1_text"_s.arg(i), u"x"_s);
    many.setString(u"okButton_text"_s, u"last"_s);
    element()->updateProperties(many);
    QCOMPARE(m_host->findChild<QPushButton*>(u"okButton"_s)->text(), u"last"_s);
    QCOMPARE(TestLog::takeAll(), QStringList(u"debug: set property on okButton.text=last"_s));
}

void TestZEFUIElementInterpolation::updateSurvivesASlotThatDeletesTheHost()
{
    show(u"names"_s);
    auto* announcing = new Announcing(m_host.get());
    announcing->setObjectName(u"announcing"_s);
    connect(announcing, &Announcing::noted, this, [this] { m_host.reset(); });
    element()->updateProperties({{u"announcing_note"_s, u"gone"_s}, {u"okButton_text"_s, u"never"_s}});
    QVERIFY(!m_host);
    TestLog::takeAll();
}

void TestZEFUIElementInterpolation::fillsPlaceholders()
{
    show(u"templates"_s);
    ZEFDictionary front{{u"first"_s, u"1"_s}};
    ZEFDictionary back{{u"first"_s, u"hidden"_s}, {u"second"_s, u"2"_s}, {u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&front);
    list.append(&back);
    element()->interpolate(list);
    QCOMPARE(text(u"hello"_s), u"Hello Ann"_s);
    QCOMPARE(text(u"both"_s), u"1 and 2"_s);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"log: new value for property text on hello :Hello Ann"_s,
                          u"log: new value for property text on both :1 and 2"_s}));
}

void TestZEFUIElementInterpolation::secondRunStartsFromTheTemplates()
{
    show(u"templates"_s);
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    dictionary.setString(u"user"_s, u"Bob"_s);
    TestLog::takeAll();
    element()->interpolate(list);
    QCOMPARE(text(u"hello"_s), u"Hello Bob"_s);
    QCOMPARE(TestLog::takeAll(), QStringList(u"log: new value for property text on hello :Hello Bob"_s));
    element()->interpolate(list); // the same values again are written again, from the template
    QCOMPARE(TestLog::takeAll(), QStringList(u"log: new value for property text on hello :Hello Bob"_s));
    const auto& sources = ZEFUIElementPrivate::get(element())->interpolationSources;
    QCOMPARE(
        sources,
        (QMap<QString, QString>{{u"Hello Ann"_s, u"Hello %{user}"_s}, {u"Hello Bob"_s, u"Hello %{user}"_s}}));
}

void TestZEFUIElementInterpolation::untouchedTextsLeaveNoLine()
{
    show(u"templates"_s);
    const ZEFDictionaryList empty;
    element()->interpolate(empty);
    QCOMPARE(TestLog::takeAll(), QStringList());
    QCOMPARE(text(u"both"_s), u"%{first} and %{second}"_s);
    QVERIFY(ZEFUIElementPrivate::get(element())->interpolationSources.isEmpty());
}

void TestZEFUIElementInterpolation::missingValuesLeaveTheEarlierText()
{
    show(u"templates"_s);
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    TestLog::takeAll();
    element()->interpolate(ZEFDictionaryList());
    QCOMPARE(text(u"hello"_s), u"Hello Ann"_s);
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFUIElementInterpolation::translationAloneIsNotWritten()
{
    show(u"templates"_s, u"de"_s);
    element()->interpolate(ZEFDictionaryList());
    // "OK" has a translation, but nothing is filled in: the result equals the translated text
    QCOMPARE(m_host->findChild<QPushButton*>(u"okButton"_s)->text(), u"OK"_s);
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFUIElementInterpolation::translatorIsLookedUpOnEachRun()
{
    show(u"templates"_s);
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->setLocale(u"de"_s);
    element()->interpolate(list);
    QCOMPARE(text(u"hello"_s), u"Hallo Ann"_s);
}

void TestZEFUIElementInterpolation::sameResultKeepsTheLaterTemplate()
{
    show(u"templates"_s);
    QLabel first(u"%{first}"_s, m_host.get());
    QLabel second(u"%{second}"_s, m_host.get());
    ZEFDictionary dictionary{{u"first"_s, u"same"_s}, {u"second"_s, u"same"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QCOMPARE(ZEFUIElementPrivate::get(element())->interpolationSources.value(u"same"_s), u"%{second}"_s);
    dictionary.setString(u"first"_s, u"1"_s);
    dictionary.setString(u"second"_s, u"2"_s);
    element()->interpolate(list);
    QCOMPARE(first.text(), u"2"_s);
    QCOMPARE(second.text(), u"2"_s);
}

void TestZEFUIElementInterpolation::hostComesFirst()
{
    show(u"templates"_s);
    m_host->setWindowTitle(u"%{user}"_s);
    m_host->setObjectName(u"host"_s);
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"log: new value for property windowTitle on host :Ann"_s,
                          u"log: new value for property text on hello :Hello Ann"_s}));
}

void TestZEFUIElementInterpolation::propertiesInMetaObjectOrder()
{
    show(u"templates"_s);
    Texts texts;
    texts.setObjectName(u"texts"_s);
    texts.setToolTip(u"%{key}1"_s);
    texts.setWindowTitle(u"%{key}2"_s);
    texts.setWhatsThis(u"%{key}3"_s);
    texts.first = u"%{key}4"_s;
    texts.bytes = "%{key}";
    texts.list = {u"%{key}"_s};
    texts.second = u"%{key}5"_s;
    ZEFDictionary dictionary{{u"key"_s, u"v"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolateWidget(&texts, list);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"log: new value for property windowTitle on texts :v2"_s,
                          u"log: new value for property toolTip on texts :v1"_s,
                          u"log: new value for property whatsThis on texts :v3"_s,
                          u"log: new value for property first on texts :v4"_s,
                          u"log: new value for property fixed on texts :v"_s,
                          u"log: new value for property second on texts :v5"_s}));
    QCOMPARE(texts.bytes, "%{key}"_ba);
    QCOMPARE(texts.list, QStringList(u"%{key}"_s));
}

void TestZEFUIElementInterpolation::translatesTemplatesAndValues()
{
    show(u"templates"_s, u"de"_s);
    ZEFDictionary dictionary{{u"user"_s, u"guest"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QCOMPARE(text(u"hello"_s), u"Hallo Gast"_s);
    // the template that is remembered is the translated one
    QCOMPARE(ZEFUIElementPrivate::get(element())->interpolationSources.value(u"Hallo Gast"_s),
             u"Hallo %{user}"_s);
    dictionary.setString(u"user"_s, u"Eva"_s);
    element()->interpolate(list);
    QCOMPARE(text(u"hello"_s), u"Hallo Eva"_s);
}

void TestZEFUIElementInterpolation::valuesAreNeverTemplates()
{
    show(u"templates"_s);
    ZEFDictionary dictionary{{u"user"_s, u"%{second} %{user}"_s}, {u"second"_s, u"secret"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QCOMPARE(text(u"hello"_s), u"Hello %{second} %{user}"_s);
}

void TestZEFUIElementInterpolation::valuesAreDataInLines()
{
    show(u"templates"_s);
    const QString value = u"100%s%n%1%2%3 <b>bold</b>"_s;
    ZEFDictionary dictionary{{u"user"_s, value}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QCOMPARE(TestLog::takeAll(), QStringList(u"log: new value for property text on hello :Hello "_s + value));
    QCOMPARE(text(u"hello"_s), u"Hello "_s + value);
    const QString long1MiB(1024 * 1024, u'%');
    dictionary.setString(u"user"_s, long1MiB);
    element()->interpolate(list);
    QCOMPARE(TestLog::takeAll(),
             QStringList(u"log: new value for property text on hello :Hello "_s + long1MiB));
}

void TestZEFUIElementInterpolation::objectNamesAndStyleSheetsAreTexts()
{
    show(u"templates"_s);
    QLabel label(m_host.get());
    label.setObjectName(u"%{name}"_s);
    label.setStyleSheet(u"QLabel { color: %{colour}; }"_s);
    ZEFDictionary dictionary{{u"name"_s, u"renamed"_s}, {u"colour"_s, u"#112233"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    TestLog::take(u"warning: Could not parse stylesheet"_s); // Qt, of the template
    QCOMPARE(label.objectName(), u"renamed"_s);
    QCOMPARE(label.styleSheet(), u"QLabel { color: #112233; }"_s);
}

void TestZEFUIElementInterpolation::readOnlyTextIsReportedButStays()
{
    show(u"templates"_s);
    Texts texts;
    ZEFDictionary dictionary{{u"key"_s, u"v"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolateWidget(&texts, list);
    QCOMPARE(texts.fixed(), u"%{key}"_s);
    QCOMPARE(TestLog::takeAll(), QStringList(u"log: new value for property fixed on  :v"_s));
}

void TestZEFUIElementInterpolation::templatesSurviveAReload()
{
    show(u"templates"_s);
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    element()->setFormPath(u"labels"_s);
    m_host->findChild<QLabel*>(u"one"_s)->setText(u"Hello Ann"_s);
    dictionary.setString(u"user"_s, u"Bob"_s);
    element()->interpolate(list);
    // a text of the later form that equals a produced one is traced back to the old template
    QCOMPARE(text(u"one"_s), u"Hello Bob"_s);
}

void TestZEFUIElementInterpolation::emptyResultsTraceBackToo()
{
    show(u"templates"_s);
    QLabel label(u"%{user}"_s, m_host.get());
    label.setObjectName(u"label"_s);
    ZEFDictionary dictionary{{u"user"_s, QString()}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QCOMPARE(label.text(), QString());
    dictionary.setString(u"user"_s, u"Ann"_s);
    element()->interpolate(list);
    // Every empty text equals the one that was produced; the manual warns of it.
    QCOMPARE(label.text(), u"Ann"_s);
    QCOMPARE(label.toolTip(), u"Ann"_s);
}

void TestZEFUIElementInterpolation::nullsAndForgottenWidget()
{
    show(u"templates"_s);
    const ZEFDictionaryList list;
    element()->interpolateWidget(nullptr, list);
    element()->setClosing(false);
    element()->interpolate(list);
    element()->updateProperties({{u"hello_text"_s, u"x"_s}});
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFUIElementInterpolation::interpolationMayDeleteTheHost()
{
    show(u"templates"_s);
    connect(new Announcing(m_host.get()), &Announcing::noted, this, [this] { m_host.reset(); });
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolate(list);
    QVERIFY(!m_host);
}

void TestZEFUIElementInterpolation::theElementMayOutliveItsHost()
{
    auto* host = new Announcing;
    ZEFUIElement element(host, nullptr, u"templates"_s, u"en"_s, nullptr, 0);
    connect(host, &Announcing::noted, this, [host] { delete host; });
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element.interpolate(list);
    QVERIFY(!element.widget());
    TestLog::takeAll();
}

void TestZEFUIElementInterpolation::theLineComesBeforeTheWrite()
{
    show(u"templates"_s);
    Texts texts;
    texts.setWindowTitle(u"%{user}"_s);
    connect(&texts, &QWidget::windowTitleChanged, this, [] { qDebug("written"); });
    ZEFDictionary dictionary{{u"user"_s, u"Ann"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->interpolateWidget(&texts, list);
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"log: new value for property windowTitle on  :Ann"_s, u"debug: written"_s}));
}

ZEF_TEST_MAIN(TestZEFUIElementInterpolation)
#include "test_zefuielement_interpolation.moc"
