#include "accessibleProbing.h"

#include <ZEFFormatEdit.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

class TestFieldDescription : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        TestLog::allow(QRegularExpression(u"(warning: QObject|debug: ).*"_s));
        TestLog::allow(u"warning: This plugin does not support propagateSizeHints()"_s);
        m_dialog = std::make_unique<ZEFUIDialog>(u"everything"_s, u"en"_s, nullptr, Qt::Dialog, nullptr);
        m_name = m_dialog->findChild<QLineEdit*>(u"nameEdit"_s);
        m_nameMessage = m_dialog->findChild<QLabel*>(u"nameMessage"_s);
        m_key = m_dialog->findChild<ZEFFormatEdit*>(u"keyEdit"_s);
        m_keyMessage = m_dialog->findChild<QLabel*>(u"keyMessage"_s);
    }
    void tidyUp() override { m_dialog.reset(); }

private Q_SLOTS:
    void describedWhileTheMessageIsShown();
    void describedByTheTextOfNow();
    void ownDescriptionComesBack();
    void hiddenWithItsFrame();
    void withoutItsLabel();

private:
    std::unique_ptr<ZEFUIDialog> m_dialog;
    QLineEdit* m_name = nullptr;
    QLabel* m_nameMessage = nullptr;
    ZEFFormatEdit* m_key = nullptr;
    QLabel* m_keyMessage = nullptr;
};

void TestFieldDescription::describedWhileTheMessageIsShown()
{
    // Already before the form is shown
    QCOMPARE(m_key->accessibleDescription(), u"Three groups."_s);
    QCOMPARE(m_name->accessibleDescription(), QString());
    m_keyMessage->hide();
    QCOMPARE(m_key->accessibleDescription(), QString());
    m_dialog->show();
    QCOMPARE(m_name->accessibleDescription(), QString());
    m_dialog->element()->showChild(u"nameMessage"_s);
    QCOMPARE(m_name->accessibleDescription(), u"Please enter a name."_s);
    m_dialog->element()->hideChild(u"nameMessage"_s);
    QCOMPARE(m_name->accessibleDescription(), QString());
}

void TestFieldDescription::describedByTheTextOfNow()
{
    m_dialog->show();
    m_keyMessage->setText(u"50 % of %1"_s);
    QTRY_COMPARE(m_key->accessibleDescription(), u"50 % of %1"_s);
    m_keyMessage->setTextFormat(Qt::RichText);
    m_keyMessage->setText(u"Too <b>short</b>"_s);
    QTRY_COMPARE(m_key->accessibleDescription(), u"Too short"_s);
    m_keyMessage->clear();
    QTRY_COMPARE(m_key->accessibleDescription(), QString());
    // set while hidden, and known when shown
    m_nameMessage->setText(u"later"_s);
    m_nameMessage->show();
    QCOMPARE(m_name->accessibleDescription(), u"later"_s);
}

void TestFieldDescription::ownDescriptionComesBack()
{
    QWidget host;
    // A form whose field has a description of its own
    ZEFUIElement element(&host, nullptr, u"described"_s, u"en"_s, nullptr, 0);
    QVERIFY(element.loaded());
    auto* field = host.findChild<QLineEdit*>(u"field"_s);
    QCOMPARE(field->accessibleDescription(), u"Letters only"_s);
    host.findChild<QLabel*>(u"message"_s)->show();
    host.show();
    QCOMPARE(field->accessibleDescription(), u"No digits, please."_s);
    host.findChild<QLabel*>(u"message"_s)->hide();
    QCOMPARE(field->accessibleDescription(), u"Letters only"_s);
    // a name that the form does not have
    QCOMPARE(host.findChild<QLineEdit*>(u"other"_s)->accessibleDescription(), QString());
}

void TestFieldDescription::hiddenWithItsFrame()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, u"described"_s, u"en"_s, nullptr, 0);
    auto* field = host.findChild<QLineEdit*>(u"field"_s);
    host.findChild<QLabel*>(u"message"_s)->show();
    host.show();
    for (const QString& name : {u"frame"_s, u"outerFrame"_s}) {
        auto* frame = host.findChild<QWidget*>(name);
        frame->hide();
        QCOMPARE(field->accessibleDescription(), u"Letters only"_s);
        frame->show();
        QCOMPARE(field->accessibleDescription(), u"No digits, please."_s);
    }
}

void TestFieldDescription::withoutItsLabel()
{
    m_dialog->show();
    delete m_keyMessage;
    QCoreApplication::processEvents();
    QCOMPARE(m_key->accessibleDescription(), u"Three groups."_s);
    delete m_name;
    m_nameMessage->show();
    QCoreApplication::processEvents();
}

ZEF_TEST_MAIN(TestFieldDescription)
#include "test_fielddescription.moc"
