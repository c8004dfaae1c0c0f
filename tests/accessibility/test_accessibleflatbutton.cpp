#include "accessibleProbing.h"

#include <ZEFFlatButton.h>

#include <QtGui/QMouseEvent>

namespace {

//! Writes down the mouse events that a widget gets.
class MouseWatch : public QObject {
    Q_OBJECT

public:
    explicit MouseWatch(QWidget* widget)
        : QObject(widget)
    {
        widget->installEventFilter(this);
    }

    QStringList events;

    bool eventFilter(QObject* watched, QEvent* e) override
    {
        if (e->type() == QEvent::MouseButtonPress || e->type() == QEvent::MouseButtonRelease) {
            const auto* mouse = static_cast<QMouseEvent*>(e);
            events.append(
                u"%1 %2 %3 %4,%5"_s.arg(e->type() == QEvent::MouseButtonPress ? u"press"_s : u"release"_s)
                    .arg(int(mouse->button()))
                    .arg(mouse->buttons().toInt())
                    .arg(mouse->position().x())
                    .arg(mouse->position().y()));
        }
        return QObject::eventFilter(watched, e);
    }
};

} // namespace

class TestAccessibleFlatButton : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void isAButton();
    void pressSendsPressAndRelease();
    void pressMayDeleteTheButton_data();
    void pressMayDeleteTheButton();
    void disabledHasNoAction();
};

void TestAccessibleFlatButton::isAButton()
{
    ZEFFlatButton button;
    button.setText(u"<u>Forgot</u> your password?"_s);
    QCOMPARE(seen(&button)->role(), QAccessible::Button);
    QCOMPARE(nameOf(&button), u"Forgot your password?"_s);
    QCOMPARE(actionsOf(&button), QStringList{Press});
    QVERIFY(!seen(&button)->state().focusable);
    button.setFocusPolicy(Qt::StrongFocus);
    QVERIFY(seen(&button)->state().focusable);
    QCOMPARE(actionsOf(&button), (QStringList{Press, QAccessibleActionInterface::setFocusAction()}));
    // An image has no words of its own.
    button.setPixmap(QPixmap(8, 8));
    QCOMPARE(nameOf(&button), QString());
    button.setAccessibleName(u"Close"_s);
    QCOMPARE(nameOf(&button), u"Close"_s);
}

void TestAccessibleFlatButton::pressSendsPressAndRelease()
{
    ZEFFlatButton button;
    button.resize(80, 20);
    const auto* watch = new MouseWatch(&button);
    QSignalSpy clicked(&button, &ZEFFlatButton::mouseClicked);
    QSignalSpy entered(&button, &ZEFFlatButton::enterKeyClicked);
    act(&button, Press);
    QCOMPARE(clicked.size(), 0);
    QTRY_COMPARE(clicked.size(), 1);
    QCOMPARE(watch->events, (QStringList{u"press 1 1 40,10"_s, u"release 1 0 40,10"_s}));
    QCOMPARE(entered.size(), 0);
}

void TestAccessibleFlatButton::pressMayDeleteTheButton_data()
{
    QTest::addColumn<bool>("atThePress");
    QTest::newRow("at the press") << true;
    QTest::newRow("at the click") << false;
}

void TestAccessibleFlatButton::pressMayDeleteTheButton()
{
    QFETCH(const bool, atThePress);
    class Deleting : public ZEFFlatButton {
    public:
        void mousePressEvent(QMouseEvent*) override { delete this; }
    };
    QPointer<ZEFFlatButton> button = atThePress ? new Deleting : new ZEFFlatButton;
    connect(button, &ZEFFlatButton::mouseClicked, button, [button] { delete button; });
    act(button, Press);
    QTRY_VERIFY(button.isNull());
}

void TestAccessibleFlatButton::disabledHasNoAction()
{
    ZEFFlatButton button;
    button.setEnabled(false);
    QSignalSpy clicked(&button, &ZEFFlatButton::mouseClicked);
    QCOMPARE(actionsOf(&button), QStringList());
    act(&button, Press);
    QCoreApplication::processEvents();
    QCOMPARE(clicked.size(), 0);
}

ZEF_TEST_MAIN(TestAccessibleFlatButton)
#include "test_accessibleflatbutton.moc"
