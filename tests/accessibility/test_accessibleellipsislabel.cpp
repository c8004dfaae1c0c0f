#include "accessibleProbing.h"

#include <ZEFEllipsisLabel.h>

#include <QtWidgets/QLineEdit>

class TestAccessibleEllipsisLabel : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void nameIsTheFullText();
    void mnemonic();
    void buddy();
};

void TestAccessibleEllipsisLabel::nameIsTheFullText()
{
    ZEFEllipsisLabel label;
    const QString full = u"Quarterly report of the northern branch office.pdf"_s;
    label.setText(full);
    QCOMPARE(seen(&label)->role(), QAccessible::StaticText);
    QCOMPARE(nameOf(&label), full);
    label.resize(80, 20);
    label.grab();
    QVERIFY(label.text() != full);
    QCOMPARE(nameOf(&label), full);
    label.resize(800, 20);
    label.grab();
    QCOMPARE(nameOf(&label), full);
    QCOMPARE(actionsOf(&label), QStringList());
    label.setAccessibleName(u"Report"_s);
    QCOMPARE(nameOf(&label), u"Report"_s);
}

void TestAccessibleEllipsisLabel::mnemonic()
{
    QWidget form;
    ZEFEllipsisLabel label(&form);
    QLineEdit field(&form);
    label.setText(u"&Name && address"_s);
    QCOMPARE(nameOf(&label), u"&Name && address"_s);
    label.setBuddy(&field);
    QCOMPARE(nameOf(&label), u"Name & address"_s);
}

void TestAccessibleEllipsisLabel::buddy()
{
    QWidget form;
    auto* label = new ZEFEllipsisLabel(&form);
    auto* field = new QLineEdit(&form);
    QCOMPARE(seen(label)->relations(QAccessible::Labelled).size(), 0);
    label->setBuddy(field);
    const auto relations = seen(label)->relations(QAccessible::Labelled);
    QCOMPARE(relations.size(), 1);
    QCOMPARE(relations.at(0).first, seen(field));
    QCOMPARE(relations.at(0).second, QAccessible::Relation(QAccessible::Labelled));
}

ZEF_TEST_MAIN(TestAccessibleEllipsisLabel)
#include "test_accessibleellipsislabel.moc"
