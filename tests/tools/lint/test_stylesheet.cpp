#include "ZEFTest.h"
#include "tools/lint/StyleSheet.h"

#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

//! "line: type.class#name > type …"
QString described(const Selector& selector)
{
    QStringList parts;
    for (const SimpleSelector& part : selector.parts) {
        QString text = part.isChild ? u"> "_s : QString();
        text += part.type;
        for (const QString& name : part.exactClasses)
            text += u'.' + name;
        if (!part.objectName.isEmpty())
            text += u'#' + part.objectName;
        parts.append(text.isEmpty() ? u"any"_s : text);
    }
    return QString::number(selector.line) + u": " + parts.join(u' ');
}

} // namespace

class TestStyleSheet : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void selectors_data();
    void selectors();
};

void TestStyleSheet::selectors_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QStringList>("selectors");
    QTest::newRow("empty") << QString() << QStringList();
    QTest::newRow("declarations only") << u"color: red; font: bold"_s << QStringList();
    QTest::newRow("types and names") << u"QLabel { } QLabel#a{}\n#b {}"_s
                                     << QStringList{u"1: QLabel"_s, u"1: QLabel#a"_s, u"2: #b"_s};
    QTest::newRow("lists") << u"A,\nB , C {}"_s << QStringList{u"1: A"_s, u"2: B"_s, u"2: C"_s};
    QTest::newRow("combinators") << u"A B>C  >  D {}"_s << QStringList{u"1: A B > C > D"_s};
    QTest::newRow("states and parts")
        << u"A:hover:!pressed::indicator:checked B::item {}"_s << QStringList{u"1: A B"_s};
    QTest::newRow("classes") << u".A.B {}"_s << QStringList{u"1: .A.B"_s};
    QTest::newRow("attributes") << u"A[x=\"] > B {\"] C {}"_s << QStringList{u"1: A C"_s};
    QTest::newRow("any type") << u"* {}"_s << QStringList{u"1: any"_s};
    QTest::newRow("braces in texts") << u"A { image: url(\"}\\\"}\"); }\nB {}"_s
                                     << QStringList{u"1: A"_s, u"2: B"_s};
    QTest::newRow("comments") << u"/* A {} */\nB /* , C */ {}\n/* D {}"_s << QStringList{u"2: B"_s};
    QTest::newRow("cut off") << u"A {"_s << QStringList{u"1: A"_s};
    QTest::newRow("signs only") << u"{}}{ ,,{} : [ {}"_s << QStringList{u"1: any"_s, u"1: any any"_s};
}

void TestStyleSheet::selectors()
{
    QFETCH(const QString, sheet);
    QFETCH(const QStringList, selectors);
    QStringList found;
    for (const Selector& selector : selectorsOf(sheet, 1))
        found.append(described(selector));
    QCOMPARE(found, selectors);
}

ZEF_TEST_MAIN(TestStyleSheet)
#include "test_stylesheet.moc"
