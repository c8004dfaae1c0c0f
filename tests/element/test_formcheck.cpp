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
}

void TestFormCheck::judges()
{
    QFETCH(QByteArray, form);
    QBuffer file(&form);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QTEST(isSafeToBuild(&file, ZEFUILoader(nullptr).availableLayouts()), "safe");
}

ZEF_TEST_MAIN(TestFormCheck)
#include "test_formcheck.moc"
