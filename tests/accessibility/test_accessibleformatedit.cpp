#include "accessibleProbing.h"

#include <ZEFFormatEdit.h>

#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>

namespace {

const QString KeyFormat = u"{3}([A-Z0-9]{0,3})-{3}([A-Z0-9]{0,3})-{2}([0-9]{0,2})"_s;

} // namespace

class TestAccessibleFormatEdit : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void isAGroupOfItsCells();
    void nameOfTheBuddy();
    void valueIsTheText();
    void writtenText_data();
    void writtenText();
    void partsOfTheText();
    void disabled();
    void cellAtAPoint();
    void rebuilt();
    void noCaretOfItsOwn();
};

void TestAccessibleFormatEdit::isAGroupOfItsCells()
{
    ZEFFormatEdit edit(nullptr);
    QCOMPARE(seen(&edit)->role(), QAccessible::Grouping);
    QCOMPARE(seen(&edit)->childCount(), 0);
    edit.setFormat(KeyFormat);
    // not the separators
    QCOMPARE(seen(&edit)->childCount(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(seen(&edit)->child(i), seen(edit.editor(i)));
        QCOMPARE(seen(&edit)->indexOfChild(seen(edit.editor(i))), i);
    }
    QCOMPARE(seen(&edit)->child(3), nullptr);
    QCOMPARE(seen(&edit)->child(-1), nullptr);
    QCOMPARE(seen(&edit)->indexOfChild(seen(edit.findChild<QLabel*>())), -1);
    QCOMPARE(seen(&edit)->indexOfChild(nullptr), -1);
}

void TestAccessibleFormatEdit::nameOfTheBuddy()
{
    QGroupBox form(u"Order"_s);
    auto* edit = new ZEFFormatEdit(&form);
    QCOMPARE(nameOf(edit), u"Order"_s);
    auto* caption = new QLabel(u"Product &key"_s, &form);
    caption->setBuddy(edit);
    QCOMPARE(nameOf(edit), u"Product key"_s);
    edit->setAccessibleName(u"Key"_s);
    QCOMPARE(nameOf(edit), u"Key"_s);
}

void TestAccessibleFormatEdit::valueIsTheText()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    QCOMPARE(seen(&edit)->text(QAccessible::Value), QString());
    edit.setText(u"AB1-CD2-34"_s);
    QCOMPARE(seen(&edit)->text(QAccessible::Value), u"AB1-CD2-34"_s);
    QCOMPARE(seen(&edit)->textInterface()->text(0, 10), u"AB1-CD2-34"_s);
    QCOMPARE(seen(&edit)->textInterface()->characterCount(), 10);
}

void TestAccessibleFormatEdit::writtenText_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("expected");
    QTest::newRow("whole") << u"XY1-ZZ9-56"_s << u"XY1-ZZ9-56"_s;
    QTest::newRow("without separators") << u"XY1ZZ956"_s << u"XY1-ZZ9-56"_s;
    QTest::newRow("against the pattern") << u"XY1-ZZ9-5X"_s << u"AB1-CD2-34"_s;
}

void TestAccessibleFormatEdit::writtenText()
{
    QFETCH(const QString, written);
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    edit.setText(u"AB1-CD2-34"_s);
    seen(&edit)->setText(QAccessible::Value, written);
    QTEST(edit.text(), "expected");
    edit.setText(u"AB1-CD2-34"_s);
    seen(&edit)->editableTextInterface()->replaceText(0, 10, written);
    QTEST(edit.text(), "expected");
    seen(&edit)->setText(QAccessible::Description, u"XY1-ZZ9-56"_s);
    QTEST(edit.text(), "expected");
}

void TestAccessibleFormatEdit::partsOfTheText()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    auto* writing = seen(&edit)->editableTextInterface();
    writing->insertText(0, u"AB1-CD2-34"_s);
    QCOMPARE(edit.text(), u"AB1-CD2-34"_s);
    writing->replaceText(4, 7, u"EF5"_s);
    QCOMPARE(edit.text(), u"AB1-EF5-34"_s);
    writing->replaceText(8, 11, u"56"_s);
    writing->replaceText(-1, 2, u"56"_s);
    writing->deleteText(3, 2);
    writing->insertText(11, u"5"_s);
    QCOMPARE(edit.text(), u"AB1-EF5-34"_s);
    QCOMPARE(seen(&edit)->textInterface()->text(4, 7), u"EF5"_s);
    QCOMPARE(seen(&edit)->textInterface()->text(4, 3), QString());
}

void TestAccessibleFormatEdit::disabled()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    edit.setEnabled(false);
    seen(&edit)->setText(QAccessible::Value, u"AB1-CD2-34"_s);
    QCOMPARE(edit.text(), QString());
}

void TestAccessibleFormatEdit::cellAtAPoint()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    edit.resize(edit.sizeHint());
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    for (int i = 0; i < 3; ++i) {
        const QPoint center = edit.editor(i)->mapToGlobal(edit.editor(i)->rect().center());
        QCOMPARE(seen(&edit)->childAt(center.x(), center.y()), seen(edit.editor(i)));
    }
    const QPoint separator = edit.findChild<QLabel*>()->mapToGlobal(QPoint(2, 2));
    QCOMPARE(seen(&edit)->childAt(separator.x(), separator.y()), nullptr);
}

void TestAccessibleFormatEdit::rebuilt()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    const QAccessible::Id id = QAccessible::uniqueId(seen(&edit)->child(0));
    QVERIFY(QAccessible::accessibleInterface(id));
    edit.setFormat(u"{3}(\\d*)"_s);
    QCOMPARE(seen(&edit)->childCount(), 1);
    QVERIFY(QAccessible::uniqueId(seen(&edit)->child(0)) != id);
    QTRY_COMPARE(QAccessible::accessibleInterface(id), nullptr);
}

void TestAccessibleFormatEdit::noCaretOfItsOwn()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    edit.setText(u"AB1-CD2-34"_s);
    auto* reading = seen(&edit)->textInterface();
    reading->addSelection(0, 3);
    reading->setSelection(0, 0, 3);
    reading->removeSelection(0);
    reading->setCursorPosition(2);
    reading->scrollToSubstring(0, 3);
    int start = -1;
    int end = -1;
    reading->selection(0, &start, &end);
    QCOMPARE(start, 0);
    QCOMPARE(end, 0);
    QCOMPARE(reading->selectionCount(), 0);
    QCOMPARE(reading->cursorPosition(), -1);
    QCOMPARE(reading->offsetAtPoint(QPoint()), -1);
    QCOMPARE(reading->characterRect(0), seen(&edit)->rect());
    QCOMPARE(reading->attributes(0, &start, &end), QString());
    QCOMPARE(end, 10);
    QVERIFY(!edit.editor(0)->hasSelectedText());
}

ZEF_TEST_MAIN(TestAccessibleFormatEdit)
#include "test_accessibleformatedit.moc"
