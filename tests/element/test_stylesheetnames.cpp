#include <ElementTest.h>
#include <TestResources.h>

#include <element/StyleSheetNames.h>
namespace {

QByteArray formWith(const QString& objectName)
{
    return "<ui version=\"4.0\"><class>F</class><widget class=\"QWidget\" name=\"form\"><widget "
           "class=\"QLabel\" "
           "name=\""
        + objectName.toHtmlEscaped().toUtf8() + "\"/></widget></ui>";
}

} // namespace

class TestStyleSheetNames : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void knowsTheNamesOfTheMoment();
    void oddNamesAreStyledLikeByName_data();
    void oddNamesAreStyledLikeByName();
    void sheetsMayComeAndGoBetweenLoads();
};

void TestStyleSheetNames::knowsTheNamesOfTheMoment()
{
    const StyleSheetNames before;
    QVERIFY(!before.mayContain(u"ok"_s));
    const TestResources resources({{u"css/ok.css"_s, "a"},
                                   {u"css/win_title.css"_s, "b"},
                                   {u"css/.css"_s, "c"},
                                   {u"css/note.txt"_s, "d"}});
    const TestResources more({{u"css/later.css"_s, "e"}});
    const StyleSheetNames names;
    QVERIFY(!before.mayContain(u"ok"_s));
    for (const QString& name : {u"ok"_s, u"title"_s, u"win_title"_s, QString(), u"later"_s})
        QVERIFY2(names.mayContain(name), qPrintable(name));
    for (const QString& name :
         {u"OK"_s, u"ok.css"_s, u"win_ok"_s, u"note"_s, u"note.txt"_s, u"other"_s, u"win_"_s})
        QVERIFY2(!names.mayContain(name), qPrintable(name));
}

void TestStyleSheetNames::oddNamesAreStyledLikeByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("sheet");
    const auto row = [](const QString& name, const QString& sheet) {
        QTest::newRow(name.isEmpty() ? "none" : qPrintable(name)) << name << sheet;
    };
    row(u"ok"_s, u"QLabel { color: #000001 }"_s);
    row(u"OK"_s, QString());
    row(u"win_ok"_s, QString());
    row(u"title"_s, u"QLabel { color: #000002 }"_s);
    row(u"win_title"_s, u"QLabel { color: #000002 }"_s);
    row(QString(), u"QLabel { color: #000003 }"_s);
    row(u"./ok"_s, u"QLabel { color: #000001 }"_s);
    row(u"../css/ok"_s, u"QLabel { color: #000001 }"_s);
    row(u"../other/ok"_s, u"QLabel { color: #000004 }"_s);
    row(u"sub/../ok"_s, u"QLabel { color: #000001 }"_s);
    row(u"sub/ok"_s, QString());
    row(u"two words %1"_s, u"QLabel { color: #000005 }"_s);
    row(u"gr\u00fcn"_s, u"QLabel { color: #000006 }"_s);
    row(u"."_s, u"QLabel { color: #000007 }"_s);
    row(u"ok.css"_s, QString());
}

void TestStyleSheetNames::oddNamesAreStyledLikeByName()
{
    QFETCH(QString, name);
    QFETCH(QString, sheet);
    const TestResources resources({{u"forms/odd.ui"_s, formWith(name)},
                                   {u"css/ok.css"_s, "QLabel { color: #000001 }"},
                                   {u"css/win_title.css"_s, "QLabel { color: #000002 }"},
                                   {u"css/.css"_s, "QLabel { color: #000003 }"},
                                   {u"other/ok.css"_s, "QLabel { color: #000004 }"},
                                   {u"css/two words %1.css"_s, "QLabel { color: #000005 }"},
                                   {u"css/gr\u00fcn.css"_s, "QLabel { color: #000006 }"},
                                   {u"css/..css"_s, "QLabel { color: #000007 }"}});
    const ZEFUIWidget host(u"odd"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QVERIFY(host.element()->loaded());
    const auto* label = host.findChild<QWidget*>(u"form"_s)->findChild<QWidget*>();
    QCOMPARE(label->objectName(), name);
    QCOMPARE(label->styleSheet(), sheet);

    QWidget byName;
    byName.setObjectName(name);
    host.element()->setWidgetStyleSheet(&byName, QString());
    QCOMPARE(byName.styleSheet(), sheet);
}

void TestStyleSheetNames::sheetsMayComeAndGoBetweenLoads()
{
    const TestResources form({{u"forms/odd.ui"_s, formWith(u"ok"_s)}});
    const ZEFUIWidget host(u"odd"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    const auto reloadedSheet = [&] {
        host.element()->setFormPath(u"odd"_s);
        return host.findChild<QWidget*>(u"ok"_s)->styleSheet();
    };
    QCOMPARE(reloadedSheet(), QString());
    {
        const TestResources sheet({{u"css/ok.css"_s, "QLabel { color: blue }"}});
        QCOMPARE(reloadedSheet(), u"QLabel { color: blue }"_s);
        const TestResources sheetForWindows({{u"css/win_ok.css"_s, "QLabel { color: red }"}});
        QCOMPARE(reloadedSheet(), u"QLabel { color: red }"_s);
    }
    QCOMPARE(reloadedSheet(), QString());
}

ZEF_TEST_MAIN(TestStyleSheetNames)
#include "test_stylesheetnames.moc"
