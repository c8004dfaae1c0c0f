#include "accessibleProbing.h"

#include <ZEFToggleButton.h>

#include <QtWidgets/QLabel>

class TestAccessibleToggleButton : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void isACheckBoxWithoutChildren();
    void nameIsTheTextOfTheState();
    void toggle();
    void disabledHasNoAction();
    void toggleMayDeleteTheButton();
    void hasStillNoKeyboardHandling();
};

void TestAccessibleToggleButton::isACheckBoxWithoutChildren()
{
    ZEFToggleButton button;
    button.setOffText(u"off"_s);
    QAccessibleInterface* interface = seen(&button);
    QCOMPARE(interface->role(), QAccessible::CheckBox);
    QVERIFY(interface->state().checkable);
    QVERIFY(!interface->state().checked);
    QCOMPARE(interface->childCount(), 0);
    QCOMPARE(interface->child(0), nullptr);
    QCOMPARE(actionsOf(&button), QStringList{Toggle});
}

void TestAccessibleToggleButton::nameIsTheTextOfTheState()
{
    ZEFToggleButton button;
    QCOMPARE(nameOf(&button), QString());
    button.setOffText(u"Sound <b>off</b>"_s);
    button.setOnText(u"Sound on & loud"_s);
    QCOMPARE(nameOf(&button), u"Sound off"_s);
    button.setProperty("isOn", true);
    QCOMPARE(nameOf(&button), u"Sound on & loud"_s);
    QVERIFY(seen(&button)->state().checked);
    button.setAccessibleName(u"Sound"_s);
    QCOMPARE(nameOf(&button), u"Sound"_s);
}

void TestAccessibleToggleButton::toggle()
{
    ZEFToggleButton button;
    QSignalSpy on(&button, &ZEFToggleButton::on);
    QSignalSpy off(&button, &ZEFToggleButton::off);
    act(&button, Toggle);
    QTRY_VERIFY(button.isOn());
    QCOMPARE(on.size(), 1);
    act(&button, Toggle);
    QTRY_VERIFY(!button.isOn());
    QCOMPARE(off.size(), 1);
    act(&button, Press);
    QCoreApplication::processEvents();
    QVERIFY(!button.isOn());
}

void TestAccessibleToggleButton::disabledHasNoAction()
{
    ZEFToggleButton button;
    button.setEnabled(false);
    QCOMPARE(actionsOf(&button), QStringList());
    act(&button, Toggle);
    QCoreApplication::processEvents();
    QVERIFY(!button.isOn());
}

void TestAccessibleToggleButton::toggleMayDeleteTheButton()
{
    QPointer<ZEFToggleButton> button = new ZEFToggleButton;
    connect(button, &ZEFToggleButton::on, button, [button] { delete button; });
    act(button, Toggle);
    QTRY_VERIFY(button.isNull());
}

void TestAccessibleToggleButton::hasStillNoKeyboardHandling()
{
    // Keys do nothing on purpose; assistive technology toggles it all the same.
    ZEFToggleButton button;
    QCOMPARE(button.focusPolicy(), Qt::NoFocus);
    QVERIFY(!seen(&button)->state().focusable);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Select})
        QTest::keyClick(&button, key);
    QVERIFY(!button.isOn());
}

ZEF_TEST_MAIN(TestAccessibleToggleButton)
#include "test_accessibletogglebutton.moc"
