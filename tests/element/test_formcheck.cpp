#include <ZEFTest.h>

#include <element/ZEFUILoader.h>
#include <element/formCheck.h>

#include <QtCore/QBuffer>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

//! A form whose innermost element stands in \a depth elements, itself included.
QByteArray nested(qsizetype depth)
{
    const QByteArray open = "<widget class=\"QWidget\">";
    const QByteArray close = "</widget>";
    return "<ui version=\"4.0\">" + open.repeated(depth - 1) + close.repeated(depth - 1) + "</ui>";
}

QByteArray withLayout(const QByteArray& layout)
{
    return "<ui version=\"4.0\"><widget class=\"QWidget\">" + layout + "</widget></ui>";
}

//! A form with a widget of the class A and these promotions, each "class extends class".
QByteArray promoted(const QList<QByteArray>& promotions)
{
    QByteArray form =
        "<ui version=\"4.0\"><class>A</class><widget class=\"QWidget\"><widget class=\"A\"/></widget>"
        "<customwidgets>";
    for (const QByteArray& promotion : promotions) {
        const qsizetype blank = promotion.indexOf(' ');
        form += "<customwidget><class>" + promotion.first(blank) + "</class><extends>"
            + promotion.sliced(promotion.lastIndexOf(' ') + 1) + "</extends></customwidget>";
    }
    return form + "</customwidgets></ui>";
}

} // namespace

class TestFormCheck : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void judges_data();
    void judges();
};

void TestFormCheck::judges_data()
{
    QTest::addColumn<QByteArray>("form");
    QTest::addColumn<bool>("safe");
    QTest::addRow("empty") << QByteArray() << true;
    QTest::addRow("no XML") << QByteArray("form") << true;
    QTest::addRow("box layout") << withLayout("<layout class=\"QHBoxLayout\"/>") << true;
    QTest::addRow("grid layout") << withLayout("<layout class=\"QGridLayout\"/>") << true;
    QTest::addRow("form layout") << withLayout("<layout class=\"QFormLayout\"/>") << true;
    QTest::addRow("unknown layout") << withLayout("<layout class=\"FlowLayout\"/>") << false;
    QTest::addRow("no layout but a widget") << withLayout("<layout class=\"QLabel\"/>") << false;
    QTest::addRow("other case") << withLayout("<layout class=\"qhboxlayout\"/>") << false;
    QTest::addRow("element in other case") << withLayout("<Layout class=\"FlowLayout\"/>") << false;
    QTest::addRow("layout without a class") << withLayout("<layout/>") << false;
    QTest::addRow("nested layout") << withLayout(
        "<layout class=\"QHBoxLayout\"><item><layout class=\"x\"/></item></layout>")
                                   << false;
    QTest::addRow("before the text breaks off") << QByteArray("<ui><layout class=\"x\">") << false;
    QTest::addRow("deep") << nested(300) << true;
    QTest::addRow("too deep") << nested(301) << false;
    QTest::addRow("much too deep") << nested(100'000) << false;
    QTest::addRow("promoted") << promoted({"A extends QLabel"}) << true;
    QTest::addRow("promoted twice") << promoted({"A extends B", "B extends ZEFFlatButton"}) << true;
    QTest::addRow("promoted to nothing") << promoted({"A extends B"}) << true;
    QTest::addRow("promoted to itself") << promoted({"A extends A"}) << false;
    QTest::addRow("promoted in a circle") << promoted({"A extends B", "B extends C", "C extends B"}) << false;
    QTest::addRow("a circle that no widget enters")
        << promoted({"A extends QLabel", "B extends C", "C extends B"}) << true;
    QTest::addRow("a circle behind a known class")
        << promoted({"A extends QLabel", "QLabel extends A", "ZEFFormatEdit extends ZEFFormatEdit"}) << true;
}

void TestFormCheck::judges()
{
    QFETCH(QByteArray, form);
    QBuffer file(&form);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const ZEFUILoader loader(nullptr);
    const QStringList widgets =
        loader.availableWidgets() + QStringList{u"ZEFFlatButton"_s, u"ZEFFormatEdit"_s};
    QTEST(isSafeToBuild(&file, loader.availableLayouts(), widgets), "safe");
}

ZEF_TEST_MAIN(TestFormCheck)
#include "test_formcheck.moc"
