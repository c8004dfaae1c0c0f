#include "accessibleProbing.h"

#include <ZEFFormatEdit.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QLabel>

namespace {

const QString KeyFormat = u"{3}([A-Z0-9]*)-{3}([A-Z0-9]*)-{2}([0-9]*)"_s;

QAccessibleEditableTextInterface* writing(QObject* cell)
{
    return seen(cell)->editableTextInterface();
}

QAccessibleTextInterface* reading(QObject* cell)
{
    return seen(cell)->textInterface();
}

} // namespace

class TestAccessibleFormatCell : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void isATextField();
    void names();
    void namesInTheLanguageOfTheForm_data();
    void namesInTheLanguageOfTheForm();
    void describedAsItsEdit();
    void writingObeysTheRules_data();
    void writingObeysTheRules();
    void writingAll();
    void writingEmitsTheSignals();
    void readOnlyAndDisabled();
    void badOffsets();
    void selectionAndCaret();
    void characters();
    void password();
    void deletedByItsOwnText();
};

void TestAccessibleFormatCell::isATextField()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    edit.setText(u"AB1-CD2-34"_s);
    ZEFFormatCell* cell = edit.editor(1);
    QCOMPARE(seen(cell)->role(), QAccessible::EditableText);
    QVERIFY(seen(cell)->state().editable);
    QVERIFY(seen(cell)->state().selectableText);
    QVERIFY(seen(cell)->state().focusable);
    QVERIFY(!seen(cell)->state().readOnly);
    QVERIFY(!seen(cell)->state().passwordEdit);
    QCOMPARE(seen(cell)->text(QAccessible::Value), u"CD2"_s);
    QCOMPARE(seen(cell)->parent(), seen(&edit));
    QCOMPARE(seen(cell)->childCount(), 0);
}

void TestAccessibleFormatCell::names()
{
    QWidget form;
    auto* edit = new ZEFFormatEdit(&form);
    auto* caption = new QLabel(u"Product &key"_s, &form);
    caption->setBuddy(edit);
    edit->setFormat(KeyFormat);
    QCOMPARE(nameOf(edit->editor(0)), u"part 1 of 3"_s);
    QCOMPARE(nameOf(edit->editor(2)), u"part 3 of 3"_s);
    edit->editor(2)->setAccessibleName(u"check digits"_s);
    QCOMPARE(nameOf(edit->editor(2)), u"check digits"_s);
    // the only part is the whole
    edit->setFormat(u"{3}(\\d*)kg{}"_s);
    QCOMPARE(nameOf(edit->editor(0)), u"Product key"_s);

    auto* alone = new ZEFFormatCell(&form);
    QCOMPARE(nameOf(alone), QString());
    caption->setBuddy(alone);
    QCOMPARE(nameOf(alone), u"Product key"_s);
    QCOMPARE(descriptionOf(alone), QString());
}

void TestAccessibleFormatCell::namesInTheLanguageOfTheForm_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("name");
    QTest::newRow("English") << u"en"_s << u"part 2 of 3"_s;
    QTest::newRow("German") << u"de"_s << u"Teil 2 von 3"_s;
    QTest::newRow("Austrian") << u"de_AT"_s << u"Teil 2 von 3"_s;
    QTest::newRow("not translated") << u"fr"_s << u"part 2 of 3"_s;
}

void TestAccessibleFormatCell::namesInTheLanguageOfTheForm()
{
    QFETCH(const QString, locale);
    TestLog::allow(QRegularExpression(u"(warning: QObject|debug: formpath).*"_s));
    const ZEFUIDialog dialog(u"everything"_s, locale, nullptr, Qt::Dialog, nullptr);
    const auto* edit = dialog.findChild<ZEFFormatEdit*>(u"keyEdit"_s);
    QVERIFY(edit);
    QTEST(nameOf(edit->editor(1)), "name");
}

void TestAccessibleFormatCell::describedAsItsEdit()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    QCOMPARE(descriptionOf(edit.editor(0)), QString());
    edit.setAccessibleDescription(u"Too short"_s);
    QCOMPARE(descriptionOf(edit.editor(0)), u"Too short"_s);
    edit.editor(0)->setAccessibleDescription(u"own"_s);
    QCOMPARE(descriptionOf(edit.editor(0)), u"own"_s);
}

void TestAccessibleFormatCell::writingObeysTheRules_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("expected");
    QTest::newRow("inserted") << 1 << 1 << u"X"_s << u"AXB"_s;
    QTest::newRow("at the end") << 2 << 2 << u"X"_s << u"ABX"_s;
    QTest::newRow("replaced") << 0 << 2 << u"XYZ"_s << u"XYZ"_s;
    QTest::newRow("deleted") << 0 << 1 << QString() << u"B"_s;
    QTest::newRow("emptied") << 0 << 2 << QString() << QString();
    QTest::newRow("against the pattern") << 0 << 2 << u"X*Z"_s << u"AB"_s;
    QTest::newRow("inserted against the pattern") << 1 << 1 << u"*"_s << u"AB"_s;
    QTest::newRow("too long") << 0 << 2 << u"WXYZ"_s << u"WXY"_s;
    QTest::newRow("ignored characters") << 0 << 2 << u"X.Y."_s << u"XY"_s;
    QTest::newRow("another case") << 0 << 2 << u"xyz"_s << u"XYZ"_s;
}

void TestAccessibleFormatCell::writingObeysTheRules()
{
    QFETCH(const int, start);
    QFETCH(const int, end);
    QFETCH(const QString, written);
    QFETCH(const QString, expected);
    ZEFFormatEdit edit(nullptr);
    edit.setIgnore(u"."_s);
    edit.setEnforceCase(2);
    edit.setFormat(KeyFormat);
    ZEFFormatCell* cell = edit.editor(0);
    cell->setText(u"AB"_s);
    if (start == end)
        writing(cell)->insertText(start, written);
    else if (written.isEmpty())
        writing(cell)->deleteText(start, end);
    else
        writing(cell)->replaceText(start, end, written);
    QCOMPARE(cell->text(), expected);
}

void TestAccessibleFormatCell::writingAll()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    seen(edit.editor(2))->setText(QAccessible::Value, u"12"_s);
    QCOMPARE(edit.editor(2)->text(), u"12"_s);
    seen(edit.editor(2))->setText(QAccessible::Value, u"3"_s);
    QCOMPARE(edit.editor(2)->text(), u"3"_s);
    seen(edit.editor(2))->setText(QAccessible::Value, u"X"_s);
    QCOMPARE(edit.editor(2)->text(), u"3"_s);
    seen(edit.editor(2))->setText(QAccessible::Name, u"4"_s);
    QCOMPARE(edit.editor(2)->text(), u"3"_s);
}

void TestAccessibleFormatCell::writingEmitsTheSignals()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    QSignalSpy changed(&edit, &ZEFFormatEdit::textChanged);
    QSignalSpy edited(edit.editor(0), &QLineEdit::textEdited);
    writing(edit.editor(0))->insertText(0, u"AB1"_s);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(edited.size(), 1);
}

void TestAccessibleFormatCell::readOnlyAndDisabled()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    ZEFFormatCell* cell = edit.editor(0);
    auto* interface = writing(cell);
    QVERIFY(interface);
    cell->setReadOnly(true);
    QCOMPARE(writing(cell), nullptr);
    QVERIFY(seen(cell)->state().readOnly);
    interface->insertText(0, u"A"_s);
    seen(cell)->setText(QAccessible::Value, u"A"_s);
    QCOMPARE(cell->text(), QString());
    cell->setReadOnly(false);
    edit.setEnabled(false);
    writing(cell)->insertText(0, u"A"_s);
    QCOMPARE(cell->text(), QString());
}

void TestAccessibleFormatCell::badOffsets()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    ZEFFormatCell* cell = edit.editor(0);
    cell->setText(u"AB"_s);
    writing(cell)->insertText(-1, u"X"_s);
    writing(cell)->insertText(3, u"X"_s);
    writing(cell)->replaceText(0, 3, u"X"_s);
    writing(cell)->deleteText(2, 1);
    QCOMPARE(cell->text(), u"AB"_s);
    QCOMPARE(reading(cell)->text(1, 0), QString());
    QCOMPARE(reading(cell)->text(1, 99), u"B"_s);
    QCOMPARE(reading(cell)->characterRect(-1), QRect());
    QCOMPARE(reading(cell)->characterRect(3), QRect());
}

void TestAccessibleFormatCell::selectionAndCaret()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    ZEFFormatCell* cell = edit.editor(0);
    cell->setText(u"AB1"_s);
    int start = -1;
    int end = -1;
    QCOMPARE(reading(cell)->selectionCount(), 0);
    reading(cell)->selection(0, &start, &end);
    QCOMPARE(start, 0);
    QCOMPARE(end, 0);
    reading(cell)->addSelection(1, 3);
    QCOMPARE(cell->selectedText(), u"B1"_s);
    QCOMPARE(reading(cell)->selectionCount(), 1);
    reading(cell)->selection(0, &start, &end);
    QCOMPARE(start, 1);
    QCOMPARE(end, 3);
    reading(cell)->setSelection(0, 0, 1);
    QCOMPARE(cell->selectedText(), u"A"_s);
    reading(cell)->setSelection(1, 0, 3);
    reading(cell)->removeSelection(1);
    QCOMPARE(cell->selectedText(), u"A"_s);
    reading(cell)->removeSelection(0);
    QVERIFY(!cell->hasSelectedText());
    reading(cell)->setCursorPosition(2);
    QCOMPARE(cell->cursorPosition(), 2);
    QCOMPARE(reading(cell)->cursorPosition(), 2);
    reading(cell)->scrollToSubstring(1, 3);
    QCOMPARE(cell->cursorPosition(), 1);
}

void TestAccessibleFormatCell::characters()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(KeyFormat);
    edit.resize(edit.sizeHint());
    ZEFFormatCell* cell = edit.editor(0);
    cell->resize(cell->sizeHint());
    cell->setText(u"ABC"_s);
    QCOMPARE(reading(cell)->characterCount(), 3);
    QCOMPARE(reading(cell)->text(0, 3), u"ABC"_s);
    QCOMPARE(reading(cell)->text(1, 2), u"B"_s);
    for (int caret : {0, 3}) {
        cell->setCursorPosition(caret);
        for (int i = 0; i < 3; ++i) {
            const QRect character = reading(cell)->characterRect(i);
            QCOMPARE(character.width(),
                     cell->fontMetrics().horizontalAdvance(cell->text(), i + 1)
                         - cell->fontMetrics().horizontalAdvance(cell->text(), i));
            // its left half belongs to the place before it, its right half to the place behind
            const QPoint quarter(qMax(1, character.width() / 4), 0);
            QCOMPARE(reading(cell)->offsetAtPoint(QPoint(character.left(), character.center().y()) + quarter),
                     i);
            QCOMPARE(
                reading(cell)->offsetAtPoint(QPoint(character.right(), character.center().y()) - quarter),
                i + 1);
        }
    }
    QCOMPARE(reading(cell)->offsetAtPoint(cell->mapToGlobal(QPoint(-5, 5))), -1);
    int start = -1;
    int end = -1;
    QCOMPARE(reading(cell)->attributes(1, &start, &end), QString());
    QCOMPARE(start, 0);
    QCOMPARE(end, 3);
    QCOMPARE(reading(cell)->textAtOffset(1, QAccessible::CharBoundary, &start, &end), u"B"_s);
}

void TestAccessibleFormatCell::password()
{
    ZEFFormatCell cell(nullptr);
    cell.setText(u"secret"_s);
    cell.setEchoMode(QLineEdit::Password);
    QVERIFY(seen(&cell)->state().passwordEdit);
    QVERIFY(!seen(&cell)->text(QAccessible::Value).contains(u's'));
    QVERIFY(!reading(&cell)->text(0, 6).contains(u's'));
    QCOMPARE(reading(&cell)->characterCount(), 6);
}

void TestAccessibleFormatCell::deletedByItsOwnText()
{
    auto* edit = new ZEFFormatEdit(nullptr);
    edit->setFormat(KeyFormat);
    connect(edit, &ZEFFormatEdit::textChanged, edit, [edit] { edit->setFormat(KeyFormat); });
    writing(edit->editor(0))->insertText(0, u"AB1"_s);
    QCOMPARE(edit->text(), QString());
    delete edit;
}

ZEF_TEST_MAIN(TestAccessibleFormatCell)
#include "test_accessibleformatcell.moc"
