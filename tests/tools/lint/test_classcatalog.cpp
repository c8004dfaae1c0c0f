#include "ZEFTest.h"
#include "element/customClasses.h"
#include "tools/lint/ClassCatalog.h"

#include <QtUiTools/QUiLoader>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

class TestClassCatalog : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void itKnowsWhatTheLoaderCreates();
    void itKnowsTheLibrarysOwnClasses();
    void itKnowsWhatTakesTheFocus();
    void itIsExactAboutNames_data();
    void itIsExactAboutNames();
    void theNearestName_data();
    void theNearestName();
    void aPromotedClassIsWhatItExtends();
    void aCircleOfPromotionsEnds();
};

void TestClassCatalog::itKnowsWhatTheLoaderCreates()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    QStringList available = loader.availableWidgets();
    // The loader creates this one too, without listing it.
    available.append(u"Line"_s);
    available.sort();
    QStringList known = ClassCatalog::qtClassNames();
    known.sort();
    QCOMPARE(known, available);

    QStringList layouts = loader.availableLayouts();
    layouts.sort();
    QCOMPARE(ClassCatalog::layoutClassNames(), layouts);
}

void TestClassCatalog::itKnowsTheLibrarysOwnClasses()
{
    QVERIFY(!customClasses().isEmpty());
    for (const CustomClass& entry : customClasses()) {
        QCOMPARE(ClassCatalog::find(entry.name), entry.metaObject);
        QCOMPARE(QLatin1String(entry.metaObject->className()), entry.name);
    }
}

void TestClassCatalog::itKnowsWhatTakesTheFocus()
{
    TestLog::allow(u"warning: QOpenGLWidget is not supported on this platform."_s);
    QUiLoader loader;
    loader.clearPluginPaths();
    QStringList wrong;
    for (const QString& name : loader.availableWidgets()) {
        const std::unique_ptr<QWidget> widget(loader.createWidget(name));
        QVERIFY2(widget, qPrintable(name));
        if (ClassCatalog::takesFocus(ClassCatalog::find(name)) != (widget->focusPolicy() != Qt::NoFocus))
            wrong.append(name);
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u',')));
    for (const CustomClass& entry : customClasses()) {
        const std::unique_ptr<QWidget> widget(entry.create(nullptr));
        QVERIFY2(ClassCatalog::takesFocus(entry.metaObject) == (widget->focusPolicy() != Qt::NoFocus),
                 entry.name.data());
    }
    QVERIFY(!ClassCatalog::takesFocus(nullptr));
}

void TestClassCatalog::itIsExactAboutNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("letter case") << u"qlabel"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("blank") << u"QLabel "_s;
    QTest::newRow("not in the table") << u"ZEFStdButton"_s;
    QTest::newRow("not a widget") << u"QTimer"_s;
}

void TestClassCatalog::itIsExactAboutNames()
{
    QFETCH(const QString, name);
    QVERIFY(!ClassCatalog::find(name));
}

void TestClassCatalog::theNearestName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("nearest");
    QTest::newRow("two letters swapped") << u"ZEFToggelButton"_s << u"ZEFToggleButton"_s;
    QTest::newRow("letter case") << u"zefflatbutton"_s << u"ZEFFlatButton"_s;
    QTest::newRow("base of a table class") << u"ZEFStdButton"_s << u"ZEFLightStdButton"_s;
    QTest::newRow("base of a style-sheet button") << u"ZEFStdSSButton"_s << u"ZEFLightStdSSButton"_s;
    QTest::newRow("base of a check box") << u"ZEFStdSSCheckbox"_s << u"ZEFLightStdSSCheckbox"_s;
    QTest::newRow("the library's, Qt's is near") << u"ZEFCalendarWidget"_s << u"QCalendarWidget"_s;
    QTest::newRow("Qt's") << u"QPushButon"_s << u"QPushButton"_s;
    QTest::newRow("nothing alike") << u"Gauge"_s << QString();
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("endless") << QString(1000000, u'Q') << QString();
}

void TestClassCatalog::theNearestName()
{
    QFETCH(const QString, name);
    QFETCH(const QString, nearest);
    QCOMPARE(ClassCatalog::nearest(name), nearest);
}

void TestClassCatalog::aPromotedClassIsWhatItExtends()
{
    Form form;
    form.promotedClasses = {
        {u"Fancy"_s, u"Fine"_s}, {u"Fine"_s, u"QPushButton"_s}, {u"Lost"_s, u"Nothing"_s}};
    FormWidget widget;
    widget.className = u"Fancy"_s;
    QCOMPARE(ClassCatalog::created(form, widget)->className(), "QPushButton");
    widget.className = u"Lost"_s;
    QVERIFY(!ClassCatalog::created(form, widget));
}

void TestClassCatalog::aCircleOfPromotionsEnds()
{
    Form form;
    form.promotedClasses = {{u"A"_s, u"B"_s}, {u"B"_s, u"A"_s}};
    FormWidget widget;
    widget.className = u"A"_s;
    QVERIFY(!ClassCatalog::created(form, widget));
    QVERIFY(ClassCatalog::isPromotedForever(form, widget));
    form.promotedClasses.insert(u"B"_s, u"QLabel"_s);
    QVERIFY(!ClassCatalog::isPromotedForever(form, widget));
    form.promotedClasses.insert(u"B"_s, u"Nothing"_s);
    QVERIFY(!ClassCatalog::isPromotedForever(form, widget));
}

ZEF_TEST_MAIN(TestClassCatalog)
#include "test_classcatalog.moc"
