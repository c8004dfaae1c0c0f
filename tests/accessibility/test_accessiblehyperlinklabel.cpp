#include "accessibleProbing.h"

#include <ZEFHyperlinkLabel.h>

#include <QtWidgets/QLineEdit>

namespace {

class Recording : public ZEFHyperlinkLabel {
public:
    void onLinkClick(const QString& link) override { followed.append(link); }
    QStringList followed;
};

QStringList linksSeen(QObject* label)
{
    QStringList links;
    for (int i = 0; i < seen(label)->childCount(); ++i)
        links.append(seen(label)->child(i)->text(QAccessible::Name));
    return links;
}

} // namespace

class TestAccessibleHyperlinkLabel : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void links_data();
    void links();
    void oneLink();
    void pressFollowsTheLink();
    void linksFollowTheText();
    void disabledLinksDoNothing();
    void linkOutlivesNothing();
    void buddy();
    void stillTakesNoFocus();
};

void TestAccessibleHyperlinkLabel::links_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("links");
    const int detect = Qt::AutoText;
    QTest::newRow("none") << detect << QString() << QString() << QStringList();
    QTest::newRow("plain") << detect << u"a < b & c"_s << u"a < b & c"_s << QStringList();
    QTest::newRow("one") << detect << u"See the <a href='x'>terms</a>."_s << u"See the terms."_s
                         << QStringList{u"terms"_s};
    QTest::newRow("two") << detect << u"<a href='x'>one</a> or <a href='y'>two</a>"_s << u"one or two"_s
                         << QStringList{u"one"_s, u"two"_s};
    QTest::newRow("the same twice") << detect << u"<a href='x'>one</a> or <a href='x'>two</a>"_s
                                    << u"one or two"_s << QStringList{u"one"_s, u"two"_s};
    QTest::newRow("side by side") << detect << u"<a href='x'>one</a><a href='y'>two</a>"_s << u"onetwo"_s
                                  << QStringList{u"one"_s, u"two"_s};
    QTest::newRow("bold inside") << detect << u"<a href='x'>the <b>terms</b> of use</a>"_s
                                 << u"the terms of use"_s << QStringList{u"the terms of use"_s};
    QTest::newRow("two paragraphs") << detect << u"<p><a href='x'>one</a></p><p><a href='x'>two</a></p>"_s
                                    << u"one\ntwo"_s << QStringList{u"one"_s, u"two"_s};
    QTest::newRow("an anchor") << detect << u"<a name='x'>here</a>"_s << u"here"_s << QStringList();
    QTest::newRow("plain text with markup")
        << int(Qt::PlainText) << u"<a href='x'>x</a>"_s << u"<a href='x'>x</a>"_s << QStringList();
    QTest::newRow("Markdown") << int(Qt::MarkdownText) << u"See the [terms](x)."_s << u"See the terms."_s
                              << QStringList{u"terms"_s};
}

void TestAccessibleHyperlinkLabel::links()
{
    QFETCH(const int, format);
    QFETCH(const QString, text);
    ZEFHyperlinkLabel label;
    label.setTextFormat(Qt::TextFormat(format));
    label.setText(text);
    QCOMPARE(seen(&label)->role(), QAccessible::StaticText);
    QTEST(nameOf(&label), "name");
    QTEST(linksSeen(&label), "links");
}

void TestAccessibleHyperlinkLabel::oneLink()
{
    ZEFHyperlinkLabel label;
    label.resize(100, 20);
    label.setText(u"<a href='x'>terms</a>"_s);
    label.show();
    QVERIFY(QTest::qWaitForWindowExposed(&label));
    QAccessibleInterface* interface = seen(&label);
    QAccessibleInterface* link = interface->child(0);
    QVERIFY(link->isValid());
    QCOMPARE(link->role(), QAccessible::Link);
    QVERIFY(link->state().linked);
    QCOMPARE(link->parent(), interface);
    QCOMPARE(interface->indexOfChild(link), 0);
    QCOMPARE(interface->child(0), link);
    QCOMPARE(interface->child(1), nullptr);
    QCOMPARE(interface->child(-1), nullptr);
    QCOMPARE(interface->indexOfChild(interface), -1);
    QCOMPARE(interface->indexOfChild(nullptr), -1);
    QCOMPARE(link->rect(), interface->rect());
    QCOMPARE(interface->childAt(interface->rect().x(), interface->rect().y()), link);
    QCOMPARE(interface->childAt(interface->rect().x() - 1, interface->rect().y()), nullptr);
    QCOMPARE(link->childCount(), 0);
    QCOMPARE(link->actionInterface()->actionNames(), QStringList{Press});
    label.setAccessibleName(u"name"_s);
    QCOMPARE(nameOf(&label), u"name"_s);
}

void TestAccessibleHyperlinkLabel::pressFollowsTheLink()
{
    Recording label;
    label.setText(u"<a href='first:1'>one</a> or <a href='second:2'>two</a>"_s);
    const auto pressLink = [&](int index) { seen(&label)->child(index)->actionInterface()->doAction(Press); };
    pressLink(1);
    QCOMPARE(label.followed, QStringList());
    QTRY_COMPARE(label.followed, QStringList{u"second:2"_s});
    pressLink(0);
    QTRY_COMPARE(label.followed, (QStringList{u"second:2"_s, u"first:1"_s}));
    seen(&label)->child(0)->actionInterface()->doAction(Toggle);
    QCoreApplication::processEvents();
    QCOMPARE(label.followed.size(), 2);

    // By the way of the class itself: nobody says that the machine is online.
    ZEFHyperlinkLabel asking;
    asking.setText(u"<a href='nowhere:x'>one</a>"_s);
    QSignalSpy refused(&asking, &ZEFHyperlinkLabel::internetNotConnected);
    seen(&asking)->child(0)->actionInterface()->doAction(Press);
    QTRY_COMPARE(refused.size(), 1);
    QCOMPARE(refused.at(0).at(0).toString(), u"nowhere:x"_s);
}

void TestAccessibleHyperlinkLabel::linksFollowTheText()
{
    Recording label;
    label.setText(u"<a href='x'>one</a> or <a href='y'>two</a>"_s);
    QAccessibleInterface* second = seen(&label)->child(1);
    label.setText(u"only <a href='z'>this</a>"_s);
    QCOMPARE(linksSeen(&label), QStringList{u"this"_s});
    QVERIFY(!second->isValid());
    QVERIFY(second->state().invalid);
    QCOMPARE(second->text(QAccessible::Name), QString());
    second->actionInterface()->doAction(Press);
    QCoreApplication::processEvents();
    QCOMPARE(label.followed, QStringList());
    QCOMPARE(seen(&label)->indexOfChild(second), -1);
}

void TestAccessibleHyperlinkLabel::disabledLinksDoNothing()
{
    Recording label;
    label.setText(u"<a href='x'>one</a>"_s);
    QAccessibleInterface* link = seen(&label)->child(0);
    link->actionInterface()->doAction(Press);
    label.setEnabled(false);
    QCOMPARE(link->actionInterface()->actionNames(), QStringList());
    QVERIFY(link->state().disabled);
    QCoreApplication::processEvents();
    QCOMPARE(label.followed, QStringList());
}

void TestAccessibleHyperlinkLabel::linkOutlivesNothing()
{
    auto label = std::make_unique<ZEFHyperlinkLabel>();
    label->setText(u"<a href='x'>one</a>"_s);
    const QAccessible::Id id = QAccessible::uniqueId(seen(label.get())->child(0));
    QVERIFY(QAccessible::accessibleInterface(id));
    label.reset();
    QCOMPARE(QAccessible::accessibleInterface(id), nullptr);
}

void TestAccessibleHyperlinkLabel::buddy()
{
    QWidget form;
    auto* label = new ZEFHyperlinkLabel(&form);
    auto* field = new QLineEdit(&form);
    label->setBuddy(field);
    const auto relations = seen(label)->relations(QAccessible::Labelled);
    QCOMPARE(relations.size(), 1);
    QCOMPARE(relations.at(0).first, seen(field));
    QCOMPARE(seen(label)->relations(QAccessible::Controller).size(), 0);
}

void TestAccessibleHyperlinkLabel::stillTakesNoFocus()
{
    // On purpose; assistive technology follows the links all the same.
    ZEFHyperlinkLabel label;
    label.setText(u"<a href='x'>one</a>"_s);
    QCOMPARE(label.focusPolicy(), Qt::NoFocus);
    QVERIFY(!seen(&label)->state().focusable);
}

ZEF_TEST_MAIN(TestAccessibleHyperlinkLabel)
#include "test_accessiblehyperlinklabel.moc"
