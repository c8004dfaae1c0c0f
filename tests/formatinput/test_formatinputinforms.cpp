// Edits and cells that the form loader made.

#include <ElementTest.h>

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFListValidator.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include <memory>

class TestFormatInputInForms : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void comesFromAForm();
    void interpolatesTheMessagesOfAListValidator();
};

void TestFormatInputInForms::comesFromAForm()
{
    const std::unique_ptr<ZEFUIDialog> dialog(
        ZEFUIDialog::create(u"formatinput"_s, u"en"_s, nullptr, Qt::Dialog));
    QVERIFY(dialog);
    const QStringList lines = TestLog::takeAll();
    QVERIFY(lines.contains(u"log: ZEFUILoader creating custom ZEFFormatEdit"_s));
    QVERIFY(lines.contains(u"log: ZEFUILoader creating custom ZEFFormatCell"_s));
    const auto* edit = dialog->findChild<ZEFFormatEdit*>(u"productKey"_s);
    QVERIFY(edit);
    QCOMPARE(edit->lineEditCount(), 2);
    QCOMPARE(edit->ignore(), u"-"_s);
    QCOMPARE(edit->leftMargin(), 7);
    const auto* cell = dialog->findChild<ZEFFormatCell*>(u"pin"_s);
    QVERIFY(cell);
    QCOMPARE(cell->metaObject()->className(), "ZEFFormatCell");
    QCOMPARE(cell->maxLength(), 4);
}

void TestFormatInputInForms::interpolatesTheMessagesOfAListValidator()
{
    TestLog::allow(QRegularExpression(u"debug: .*"_s));
    const std::unique_ptr<ZEFUIDialog> dialog(
        ZEFUIDialog::create(u"formatinput"_s, u"en"_s, nullptr, Qt::Dialog));
    QVERIFY(dialog);
    auto* edit = dialog->findChild<ZEFFormatEdit*>(u"productKey"_s);
    auto* message = dialog->findChild<QLabel*>(u"message"_s);
    const ZEFListValidator validator(nullptr, {u"ABC123"_s});
    edit->setValidator(&validator);
    ZEFDictionary dictionary;
    dictionary.setString(u"list_valid_message"_s, u"100% right"_s);
    dictionary.setString(u"list_invalid_message"_s, u"Unknown key"_s);
    dictionary.setString(u"list_empty_message"_s, u"Enter a key"_s);
    ZEFDictionaryList dictionaries;
    dictionaries.append(&dictionary);
    connect(&validator, &ZEFListValidator::validityMessageChanged, message, [&](const QString& text) {
        message->setText(text);
        dialog->element()->interpolateWidget(message, dictionaries);
    });
    edit->setText(u"ABC-123"_s);
    QCOMPARE(message->text(), u"100% right"_s);
    edit->setText(u"ABC-124"_s);
    QCOMPARE(message->text(), u"Unknown key"_s);
    edit->setText(QString());
    QCOMPARE(message->text(), u"Enter a key"_s);
}

ZEF_TEST_MAIN(TestFormatInputInForms)

#include "test_formatinputinforms.moc"
