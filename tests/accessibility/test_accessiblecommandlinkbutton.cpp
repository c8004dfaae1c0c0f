#include "accessibleProbing.h"

#include <ZEFCommandLinkButton.h>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>

#include <memory>

namespace {

class OwnLink : public ZEFCommandLinkButton {
    Q_OBJECT
};

} // namespace

class TestAccessibleCommandLinkButton : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void isAButtonWithoutChildren();
    void nameAndDescription_data();
    void nameAndDescription();
    void givenTextsWin();
    void ownTitleWinsOverTheGroupBox();
    void pressEmitsTheOwnSignalOnce();
    void pressComesFromTheEventLoop();
    void pressMayDeleteTheButton();
    void disabledHasNoAction();
    void disabledMeanwhile();
    void states();
    void shortcut();
    void derivedClass();
};

void TestAccessibleCommandLinkButton::isAButtonWithoutChildren()
{
    ZEFCommandLinkButton button;
    button.resize(200, 60);
    QAccessibleInterface* interface = seen(&button);
    QVERIFY(interface);
    QVERIFY(interface->isValid());
    QCOMPARE(interface->role(), QAccessible::Button);
    QCOMPARE(interface->childCount(), 0);
    QCOMPARE(interface->child(0), nullptr);
    QCOMPARE(interface->indexOfChild(seen(button.findChild<QLabel*>(u"title"_s))), -1);
    QCOMPARE(interface->childAt(interface->rect().center().x(), interface->rect().center().y()), nullptr);
    QCOMPARE(actionsOf(&button), (QStringList{Press, QAccessibleActionInterface::setFocusAction()}));
}

void TestAccessibleCommandLinkButton::nameAndDescription_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("plain") << u"Save & close"_s << u"Save & close"_s;
    QTest::newRow("placeholder") << u"%1 %{key} 100 %"_s << u"%1 %{key} 100 %"_s;
    QTest::newRow("rich") << u"<qt>Save <b>all</b> &amp; close</qt>"_s << u"Save all & close"_s;
    QTest::newRow("German") << u"Prüfen und schließen"_s << u"Prüfen und schließen"_s;
}

void TestAccessibleCommandLinkButton::nameAndDescription()
{
    QFETCH(const QString, text);
    QFETCH(const QString, expected);
    ZEFCommandLinkButton button;
    button.setTitle(text);
    QCOMPARE(nameOf(&button), expected);
    QCOMPARE(descriptionOf(&button), QString());
    button.setTitle(QString());
    button.setDescription(text);
    QCOMPARE(nameOf(&button), QString());
    QCOMPARE(descriptionOf(&button), expected);
}

void TestAccessibleCommandLinkButton::givenTextsWin()
{
    ZEFCommandLinkButton button;
    button.setTitle(u"title"_s);
    button.setDescription(u"description"_s);
    button.setAccessibleName(u"name of the form"_s);
    button.setAccessibleDescription(u"description of the form"_s);
    QCOMPARE(nameOf(&button), u"name of the form"_s);
    QCOMPARE(descriptionOf(&button), u"description of the form"_s);
}

void TestAccessibleCommandLinkButton::ownTitleWinsOverTheGroupBox()
{
    QGroupBox box(u"box"_s);
    ZEFCommandLinkButton button(&box);
    QCOMPARE(nameOf(&button), u"box"_s);
    button.setTitle(u"title"_s);
    QCOMPARE(nameOf(&button), u"title"_s);
}

void TestAccessibleCommandLinkButton::pressEmitsTheOwnSignalOnce()
{
    ZEFCommandLinkButton button;
    QSignalSpy own(&button, &ZEFCommandLinkButton::clicked);
    QSignalSpy base(&button, &QAbstractButton::clicked);
    act(&button, Press);
    QTRY_COMPARE(own.size(), 1);
    QCOMPARE(own.at(0).at(0).toBool(), false);
    // as with a real Space, the release of which the base class takes for its click
    QCOMPARE(base.size(), 1);
    QVERIFY(!button.isDown());
    act(&button, u"No such action"_s);
    act(&button, Toggle);
    QCoreApplication::processEvents();
    QCOMPARE(own.size(), 1);
}

void TestAccessibleCommandLinkButton::pressComesFromTheEventLoop()
{
    ZEFCommandLinkButton button;
    QSignalSpy own(&button, &ZEFCommandLinkButton::clicked);
    act(&button, Press);
    // A delegate that opens a dialog must not keep a screen reader waiting for the end of it.
    QCOMPARE(own.size(), 0);
    QTRY_COMPARE(own.size(), 1);
}

void TestAccessibleCommandLinkButton::pressMayDeleteTheButton()
{
    QPointer<ZEFCommandLinkButton> button = new ZEFCommandLinkButton;
    connect(button, &ZEFCommandLinkButton::clicked, button, [button] { delete button; });
    act(button, Press);
    QTRY_VERIFY(button.isNull());

    button = new ZEFCommandLinkButton;
    act(button, Press);
    delete button;
    QCoreApplication::processEvents();
}

void TestAccessibleCommandLinkButton::disabledHasNoAction()
{
    ZEFCommandLinkButton button;
    button.setEnabled(false);
    QSignalSpy own(&button, &ZEFCommandLinkButton::clicked);
    QCOMPARE(actionsOf(&button), QStringList());
    QVERIFY(seen(&button)->state().disabled);
    act(&button, Press);
    QCoreApplication::processEvents();
    QCOMPARE(own.size(), 0);
}

void TestAccessibleCommandLinkButton::disabledMeanwhile()
{
    ZEFCommandLinkButton button;
    QSignalSpy own(&button, &ZEFCommandLinkButton::clicked);
    act(&button, Press);
    button.setEnabled(false);
    QCoreApplication::processEvents();
    QCOMPARE(own.size(), 0);
}

void TestAccessibleCommandLinkButton::states()
{
    ZEFCommandLinkButton button;
    QVERIFY(seen(&button)->state().focusable);
    QVERIFY(!seen(&button)->state().defaultButton);
    QVERIFY(!seen(&button)->state().pressed);
    button.setDefault(true);
    button.setDown(true);
    QVERIFY(seen(&button)->state().defaultButton);
    QVERIFY(seen(&button)->state().pressed);
}

void TestAccessibleCommandLinkButton::shortcut()
{
    ZEFCommandLinkButton button;
    QCOMPARE(seen(&button)->text(QAccessible::Accelerator), QString());
    QCOMPARE(seen(&button)->actionInterface()->keyBindingsForAction(Press), QStringList());
    button.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    QCOMPARE(seen(&button)->text(QAccessible::Accelerator), u"Ctrl+S"_s);
    QCOMPARE(seen(&button)->actionInterface()->keyBindingsForAction(Press), QStringList{u"Ctrl+S"_s});
    QCOMPARE(seen(&button)->actionInterface()->keyBindingsForAction(Toggle), QStringList());
}

void TestAccessibleCommandLinkButton::derivedClass()
{
    OwnLink button;
    button.setTitle(u"title"_s);
    QCOMPARE(seen(&button)->role(), QAccessible::Button);
    QCOMPARE(nameOf(&button), u"title"_s);
}

ZEF_TEST_MAIN(TestAccessibleCommandLinkButton)
#include "test_accessiblecommandlinkbutton.moc"
