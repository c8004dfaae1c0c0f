// What the widgets announce. They do so only while assistive technology is there.

#include "accessibleProbing.h"

#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFormatEdit.h>
#include <ZEFToggleButton.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QLabel>

#include <memory>

class TestAnnouncements : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        TestLog::allow(QRegularExpression(u"(warning: QObject|debug: ).*"_s));
        QTRY_VERIFY(QAccessible::isActive());
        s_announced.clear();
        m_former = QAccessible::installUpdateHandler(record);
    }
    void tidyUp() override
    {
        m_dialog.reset();
        QAccessible::installUpdateHandler(m_former);
    }

private Q_SLOTS:
    void textsOfACommandLink();
    void ellipsisLabelSaysNothingWhenItIsCut();
    void ellipsisLabelAnnouncesItsOwnTexts();
    void toggleAfterItsLabelsChanged();
    void toggleTextOnlyInItsState();
    void messageOnce();
    void messageForTheFocusedCell();

private:
    /*!
     * What was announced since the last call, of the kinds below: "name Class", "description Class", or
     * "checked Class", followed by the object name if there is one.
     */
    static QStringList announced() { return std::exchange(s_announced, {}); }

    static void record(QAccessibleEvent* event)
    {
        QString what;
        if (event->type() == QAccessible::NameChanged)
            what = u"name"_s;
        else if (event->type() == QAccessible::DescriptionChanged)
            what = u"description"_s;
        else if (event->type() == QAccessible::StateChanged
                 && static_cast<QAccessibleStateChangeEvent*>(event)->changedStates().checked)
            what = u"checked"_s;
        else
            return;
        what += u' ' + QLatin1StringView(event->object()->metaObject()->className());
        if (!event->object()->objectName().isEmpty())
            what += u' ' + event->object()->objectName();
        s_announced.append(what);
    }

    ZEFUIDialog* openForm()
    {
        m_dialog = std::make_unique<ZEFUIDialog>(u"everything"_s, u"en"_s, nullptr, Qt::Dialog, nullptr);
        return m_dialog.get();
    }

    inline static QStringList s_announced;
    QAccessible::UpdateHandler m_former = nullptr;
    std::unique_ptr<ZEFUIDialog> m_dialog;
};

void TestAnnouncements::textsOfACommandLink()
{
    ZEFCommandLinkButton button;
    announced();
    button.setTitle(u"title"_s);
    QCOMPARE(announced(), QStringList{u"name ZEFCommandLinkButton"_s});
    button.setDescription(u"description"_s);
    QCOMPARE(announced(), QStringList{u"description ZEFCommandLinkButton"_s});
}

void TestAnnouncements::ellipsisLabelSaysNothingWhenItIsCut()
{
    ZEFEllipsisLabel label;
    label.setText(u"Quarterly report of the northern branch office.pdf"_s);
    announced();
    for (const int width : {80, 60, 100, 800, 60}) {
        label.resize(width, 20);
        label.grab();
        QCOMPARE(label.text().endsWith(u'…'), width < 800);
    }
    QCOMPARE(announced(), QStringList());
}

void TestAnnouncements::ellipsisLabelAnnouncesItsOwnTexts()
{
    ZEFEllipsisLabel label;
    announced();
    label.setText(u"first"_s);
    QCOMPARE(announced(), QStringList{u"name ZEFEllipsisLabel"_s});
    // also after a cut, which is silent itself
    label.resize(10, 20);
    label.grab();
    label.setText(u"second"_s);
    QCOMPARE(announced(), QStringList{u"name ZEFEllipsisLabel"_s});
}

void TestAnnouncements::toggleAfterItsLabelsChanged()
{
    ZEFToggleButton button;
    button.setOffText(u"off"_s);
    button.setOnText(u"on"_s);
    announced();
    QString announcedInSignal;
    connect(&button, &ZEFToggleButton::on, &button, [&] { announcedInSignal = announced().join(u','); });
    button.setProperty("isOn", true);
    // The signal goes out before the labels change.
    QCOMPARE(announcedInSignal, QString());
    QCOMPARE(announced(), (QStringList{u"checked ZEFToggleButton"_s, u"name ZEFToggleButton"_s}));

    static QString nameSeen;
    nameSeen.clear();
    const auto former = QAccessible::installUpdateHandler(
        [](QAccessibleEvent* event) { nameSeen += nameOf(event->object()); });
    button.setProperty("isOn", false);
    QAccessible::installUpdateHandler(former);
    QCOMPARE(nameSeen, u"offoff"_s);
}

void TestAnnouncements::toggleTextOnlyInItsState()
{
    ZEFToggleButton button;
    announced();
    button.setOnText(u"on"_s);
    QCOMPARE(announced(), QStringList());
    button.setOffText(u"off"_s);
    QCOMPARE(announced(), QStringList{u"name ZEFToggleButton"_s});
    button.setProperty("isOn", true);
    announced();
    button.setOffText(u"off again"_s);
    QCOMPARE(announced(), QStringList());
    button.setOnText(u"on again"_s);
    QCOMPARE(announced(), QStringList{u"name ZEFToggleButton"_s});
}

void TestAnnouncements::messageOnce()
{
    ZEFUIDialog* const dialog = openForm();
    auto* key = dialog->findChild<ZEFFormatEdit*>(u"keyEdit"_s);
    auto* keyMessage = dialog->findChild<QLabel*>(u"keyMessage"_s);
    auto* nameMessage = dialog->findChild<QLabel*>(u"nameMessage"_s);
    dialog->show();
    QCoreApplication::processEvents();
    announced();
    keyMessage->setText(u"%{placeholder}"_s);
    keyMessage->setText(u"filled"_s);
    QTRY_COMPARE(key->accessibleDescription(), u"filled"_s);
    QCOMPARE(announced().filter(u"description"_s), QStringList{u"description ZEFFormatEdit keyEdit"_s});
    dialog->resize(dialog->size() + QSize(50, 50));
    nameMessage->show();
    QCoreApplication::processEvents();
    QCOMPARE(announced().filter(u"description"_s), QStringList{u"description QLineEdit nameEdit"_s});
}

void TestAnnouncements::messageForTheFocusedCell()
{
    ZEFUIDialog* const dialog = openForm();
    auto* key = dialog->findChild<ZEFFormatEdit*>(u"keyEdit"_s);
    auto* keyMessage = dialog->findChild<QLabel*>(u"keyMessage"_s);
    dialog->show();
    dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    key->editor(1)->setFocus();
    QCoreApplication::processEvents();
    announced();
    keyMessage->setText(u"Too short."_s);
    QTRY_COMPARE(key->accessibleDescription(), u"Too short."_s);
    QCOMPARE(announced().filter(u"description"_s),
             (QStringList{u"description ZEFFormatEdit keyEdit"_s, u"description ZEFFormatCell"_s}));
    QCOMPARE(descriptionOf(key->editor(1)), u"Too short."_s);
}

ZEF_TEST_MAIN(TestAnnouncements)
#include "test_announcements.moc"
