#include <ElementTest.h>
#include <TestResources.h>

#include <element/FormCheck.h>
#include <element/ZEFUILoader.h>

namespace {

//! A form whose innermost element stands in \a depth elements, itself included.
QByteArray nested(qsizetype depth)
{
    const QByteArray open = "<widget class=\"QWidget\">";
    const QByteArray close = "</widget>";
    return "<ui version=\"4.0\">" + open.repeated(depth - 1) + close.repeated(depth - 1) + "</ui>";
}

QByteArray inForm(const QByteArray& content)
{
    return "<ui version=\"4.0\"><widget class=\"QWidget\">" + content + "</widget></ui>";
}

QByteArray withItem(const QByteArray& place)
{
    return inForm("<layout class=\"QGridLayout\"><item " + place + "/></layout>");
}

QByteArray withProperty(const QByteArray& name, const QByteArray& number)
{
    return inForm("<property name=\"" + name + "\"><number>" + number + "</number></property>");
}

QByteArray promotion(const QByteArray& className, const QByteArray& base)
{
    return "<customwidget><class>" + className + "</class><extends>" + base + "</extends></customwidget>";
}

//! A form with a widget of the class A and these promotions, each "class extends class".
QByteArray promoted(const QList<QByteArray>& promotions)
{
    QByteArray form = "<ui version=\"4.0\"><class>A</class><widget class=\"QWidget\"><widget class=\"A\" "
                      "name=\"a\"/></widget><customwidgets>";
    for (const QByteArray& text : promotions)
        form += promotion(text.first(text.indexOf(' ')), text.sliced(text.lastIndexOf(' ') + 1));
    return form + "</customwidgets></ui>";
}

//! A form where C1 extends C2 and so on up to a QLabel, and the first \a used classes are in use.
QByteArray chain(int length, int used)
{
    const auto nameOf = [](int i) { return QByteArray("C" + QByteArray::number(i)); };
    QByteArray widgets;
    QByteArray promotions;
    for (int i = 1; i <= length; ++i) {
        const QByteArray name = nameOf(i);
        if (i <= used)
            widgets += "<widget class=\"" + name + "\" name=\"w\"/>";
        promotions += promotion(name, i == length ? QByteArray("QLabel") : nameOf(i + 1));
    }
    return "<ui version=\"4.0\"><widget class=\"QWidget\">" + widgets + "</widget><customwidgets>"
        + promotions + "</customwidgets></ui>";
}

FormCheck::Classes classes()
{
    const ZEFUILoader loader(nullptr);
    const QStringList layouts = loader.availableLayouts();
    const QStringList widgets =
        loader.availableWidgets() + QStringList{u"ZEFFlatButton"_s, u"ZEFFormatEdit"_s};
    return {{layouts.cbegin(), layouts.cend()}, {widgets.cbegin(), widgets.cend()}};
}

} // namespace

class TestFormCheck : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void judges_data();
    void judges();
    void saysWhereAndWhy();
    void hugeFormsAreJudgedToo_data();
    void hugeFormsAreJudgedToo();
    void theLibraryAsksAgainWhenAFormChanges();
};

void TestFormCheck::judges_data()
{
    QTest::addColumn<QByteArray>("form");
    QTest::addColumn<bool>("sound");
    QTest::addRow("empty") << QByteArray() << true;
    QTest::addRow("no XML") << QByteArray("form") << true;
    QTest::addRow("box layout") << inForm("<layout class=\"QHBoxLayout\"/>") << true;
    QTest::addRow("grid layout") << inForm("<layout class=\"QGridLayout\"/>") << true;
    QTest::addRow("form layout") << inForm("<layout class=\"QFormLayout\"/>") << true;
    QTest::addRow("unknown layout") << inForm("<layout class=\"FlowLayout\"/>") << false;
    QTest::addRow("no layout but a widget") << inForm("<layout class=\"QLabel\"/>") << false;
    QTest::addRow("other case") << inForm("<layout class=\"qhboxlayout\"/>") << false;
    QTest::addRow("element in other case") << inForm("<Layout class=\"FlowLayout\"/>") << false;
    QTest::addRow("layout without a class") << inForm("<layout/>") << false;
    QTest::addRow("nested layout") << inForm(
        "<layout class=\"QHBoxLayout\"><item><layout class=\"x\"/></item></layout>")
                                   << false;
    QTest::addRow("before the text breaks off") << QByteArray("<ui><layout class=\"x\">") << false;
    QTest::addRow("deep") << nested(300) << true;
    QTest::addRow("too deep") << nested(301) << false;
    QTest::addRow("one after the other")
        << inForm(QByteArray("<widget class=\"QLabel\"><property/></widget>").repeated(1000)) << true;
    QTest::addRow("promoted") << promoted({"A extends QLabel"}) << true;
    QTest::addRow("promoted twice") << promoted({"A extends B", "B extends ZEFFlatButton"}) << true;
    QTest::addRow("promoted to nothing") << promoted({"A extends B"}) << true;
    QTest::addRow("promoted to itself") << promoted({"A extends A"}) << false;
    QTest::addRow("promoted in a circle") << promoted({"A extends B", "B extends C", "C extends B"}) << false;
    QTest::addRow("a circle that no widget enters")
        << promoted({"A extends QLabel", "B extends C", "C extends B"}) << true;
    QTest::addRow("a circle behind a known class")
        << promoted({"A extends QLabel", "QLabel extends A", "ZEFFormatEdit extends ZEFFormatEdit"}) << true;
    QTest::addRow("the last promotion counts") << promoted({"A extends A", "A extends QLabel"}) << true;
    QTest::addRow("promoted often") << chain(300, 1) << true;
    QTest::addRow("promoted too often") << chain(301, 1) << false;
    QTest::addRow("promoted too often before others") << chain(301, 301) << false;
    QTest::addRow("used behind a long chain") << chain(300, 300) << true;
    QTest::addRow("row") << withItem("row=\"10000\" column=\"10000\"") << true;
    QTest::addRow("huge row") << withItem("row=\"10001\"") << false;
    QTest::addRow("negative row") << withItem("row=\"-1\"") << false;
    QTest::addRow("huge column") << withItem("row=\"0\" column=\"10001\"") << false;
    QTest::addRow("negative column") << withItem("row=\"0\" column=\"-1\"") << false;
    QTest::addRow("down to the last row") << withItem("rowspan=\"-1\" colspan=\"-1\"") << true;
    QTest::addRow("huge row span") << withItem("rowspan=\"10001\"") << false;
    QTest::addRow("huge column span") << withItem("colspan=\"10001\"") << false;
    QTest::addRow("no numbers") << withItem("row=\"x\" column=\"99999999999\"") << true; // Qt takes 0
    QTest::addRow("rows") << withProperty("rowCount", "10000") << true;
    QTest::addRow("too many rows") << withProperty("rowCount", "10001") << false;
    QTest::addRow("too many columns") << withProperty("columnCount", " 10001 ") << false;
    QTest::addRow("another number") << withProperty("maximum", "10001") << true;
    QTest::addRow("another number after rows")
        << inForm("<property name=\"rowCount\"><number>1</number></property>"
                  "<property name=\"maximum\"><number>10001</number></property>")
        << true;
    QTest::addRow("characters by number") << withProperty("rowCount", "1&#48;&#48;&#48;1") << false;
}

void TestFormCheck::judges()
{
    QFETCH(QByteArray, form);
    QTEST(FormCheck::faultsOf(form, classes()).isEmpty(), "sound");
}

void TestFormCheck::saysWhereAndWhy()
{
    const QByteArray form = "<ui version=\"4.0\">\n<customwidgets>" + promotion("A", "A")
        + promotion("B", "A")
        + "</customwidgets>\n<widget class=\"QWidget\">\n<widget class=\"B\" name=\"b\"/>\n"
          "<layout class=\"%1\" name=\"%s\">\n<item row=\"-1\"/>\n</layout>\n"
          "<property name=\"rowCount\"><number>77777</number></property>\n<layout class=\"y\"/>\n"
        + QByteArray("<x>").repeated(299) + "\n<x/><x/>" + QByteArray("</x>").repeated(299)
        + "</widget></ui>";
    QStringList faults;
    QStringList layouts;
    for (const FormFault& fault : FormCheck::faultsOf(form, classes())) {
        faults.append(QString::number(fault.line) + u' ' + fault.reason);
        layouts.append(fault.layoutClass);
    }
    QCOMPARE(
        faults,
        QStringList({
            u"4 the loader cannot create the class B of \"b\", which is promoted in a circle or more than 300 times"_s,
            u"5 the loader cannot create the layout class %1 of \"%s\""_s,
            u"6 an item lies outside of the rows and columns 0 to 10000"_s,
            u"8 a table has more than 10000 rows or columns"_s,
            u"9 the loader cannot create the layout class y of \"\""_s,
            u"10 more than 300 elements are nested here, which is too deep"_s,
        }));
    QCOMPARE(layouts, QStringList({QString(), u"%1"_s, QString(), QString(), u"y"_s, QString()}));
}

void TestFormCheck::hugeFormsAreJudgedToo_data()
{
    QTest::addColumn<QByteArray>("form");
    QTest::addColumn<bool>("sound");
    QTest::addRow("widgets in widgets") << nested(100'000) << false;
    QTest::addRow("elements in a class") << "<ui><class>" + QByteArray("<x>").repeated(60'000)
            + QByteArray("</x>").repeated(60'000)
            + "</class></ui>" << false;
    QTest::addRow("classes in a class that is promoted")
        << "<ui><customwidget>" + QByteArray("<class>").repeated(60'000) << false;
    QTest::addRow("promotions") << chain(3'000, 0) << true;
    QTest::addRow("promotions that are all used") << chain(3'000, 3'000) << false;
    QTest::addRow("a long chain") << chain(200'000, 1) << false;
    QTest::addRow("a long chain that is used everywhere") << chain(200'000, 200'000) << false;
    QByteArray used;
    QByteArray promotions;
    for (int i = 0; i < 100'000; ++i) {
        const QByteArray name = "P" + QByteArray::number(i);
        used += "<widget class=\"" + name + "\"/>";
        promotions += promotion(name, "C1");
    }
    QByteArray manyOnOne = chain(299, 1);
    manyOnOne.replace("</widget><customwidgets>", QByteArray(used + "</widget><customwidgets>" + promotions));
    QTest::addRow("one chain under all") << manyOnOne << true;
}

void TestFormCheck::hugeFormsAreJudgedToo()
{
    QFETCH(QByteArray, form);
    QTEST(FormCheck::faultsOf(form, classes()).isEmpty(), "sound");
}

// It remembers the forms that it found sound.
void TestFormCheck::theLibraryAsksAgainWhenAFormChanges()
{
    const QByteArray sound = inForm("<layout class=\"QHBoxLayout\"/>");
    const QByteArray faulty = inForm("<layout class=\"QHBoxlayout\"/>");
    ZEFUIWidget host;
    for (const QByteArray& form : {sound, faulty, sound, faulty, faulty, sound}) {
        const TestResources resources({{u"forms/made.ui"_s, form}});
        host.element()->setFormPath(u"made"_s);
        QCOMPARE(host.element()->loaded(), form == sound);
        QCOMPARE(TestLog::take(u"debug: "_s),
                 form == sound ? QStringList()
                               : QStringList(u"debug: Could not load UI file: :/forms/made.ui"_s));
    }
}

ZEF_TEST_MAIN(TestFormCheck)
#include "test_formcheck.moc"
