#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFFlatButton.h>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>

namespace {

//! A window that counts the keys which its children leave to it.
class KeyWindow : public QWidget {
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent* e) override { keys.append(e->key()); }
};

class OpenFlatButton : public ZEFFlatButton {
public:
    using ZEFFlatButton::keyPressEvent;
    using ZEFFlatButton::ZEFFlatButton;
};

} // namespace

class TestZEFFlatButton : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void newButton();
    void click_data();
    void click();
    void twoPressesOneRelease();
    void releaseWithoutPress();
    void releaseOutside();
    void secondReleaseDoesNothing();
    void labelSeesTheMouse();
    void enterKey_data();
    void enterKey();
    void otherKeysGoOn_data();
    void otherKeysGoOn();
    void nullKeyEvent();
    void enterIsAcceptedAlsoWhenItCameIgnored();
    void enterIsAcceptedBeforeItIsAnnounced();
    void releaseInsideTheReceiver();
    void pressInsideTheReceiverCountsForTheNextRelease();
    void receiverDeletesTheButton_data();
    void receiverDeletesTheButton();
    void receiverDeletesTheWindow();
    void painting_data();
    void painting();
    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
};

void TestZEFFlatButton::metaObject()
{
    const QMetaObject& meta = ZEFFlatButton::staticMetaObject;
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("QLabel"));
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(
        ownMethods(meta),
        QStringList({QStringLiteral("signal mouseClicked()"), QStringLiteral("signal enterKeyClicked()")}));
}

void TestZEFFlatButton::newButton()
{
    const ZEFFlatButton button;
    const QLabel plain;
    QCOMPARE(button.focusPolicy(), plain.focusPolicy());
    QCOMPARE(button.cursor().shape(), plain.cursor().shape());
    QCOMPARE(button.windowFlags(), plain.windowFlags());
    QCOMPARE(button.text(), QString());
    QCOMPARE(button.alignment(), plain.alignment());
}

void TestZEFFlatButton::click_data()
{
    QTest::addColumn<Qt::MouseButton>("mouseButton");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void TestZEFFlatButton::click()
{
    QFETCH(const Qt::MouseButton, mouseButton);
    ZEFFlatButton button;
    button.setText(QStringLiteral("<a href='x'>rich</a>"));
    QVERIFY(showActive(button));
    QSignalSpy clicks(&button, &ZEFFlatButton::mouseClicked);
    QTest::mousePress(&button, mouseButton);
    QCOMPARE(clicks.count(), 0);
    QTest::mouseRelease(&button, mouseButton);
    QCOMPARE(clicks.count(), 1);
}

void TestZEFFlatButton::twoPressesOneRelease()
{
    ZEFFlatButton button;
    QVERIFY(showActive(button));
    QSignalSpy clicks(&button, &ZEFFlatButton::mouseClicked);
    QTest::mousePress(&button, Qt::LeftButton);
    QTest::mousePress(&button, Qt::RightButton);
    QTest::mouseRelease(&button, Qt::RightButton);
    QCOMPARE(clicks.count(), 1);
}

void TestZEFFlatButton::releaseWithoutPress()
{
    ZEFFlatButton button;
    QVERIFY(showActive(button));
    QSignalSpy clicks(&button, &ZEFFlatButton::mouseClicked);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(clicks.count(), 0);
}

void TestZEFFlatButton::releaseOutside()
{
    QWidget window;
    window.resize(200, 100);
    ZEFFlatButton button(&window);
    button.setGeometry(10, 10, 40, 20);
    QVERIFY(showActive(window));
    QSignalSpy clicks(&button, &ZEFFlatButton::mouseClicked);
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(190, 90));
    QCOMPARE(clicks.count(), 1);
}

void TestZEFFlatButton::secondReleaseDoesNothing()
{
    ZEFFlatButton button;
    QVERIFY(showActive(button));
    QSignalSpy clicks(&button, &ZEFFlatButton::mouseClicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
}

void TestZEFFlatButton::labelSeesTheMouse()
{
    ZEFFlatButton button;
    button.setText(QStringLiteral("<a href='there'>a link</a>"));
    button.resize(button.sizeHint());
    QVERIFY(showActive(button));
    QStringList order;
    connect(&button, &ZEFFlatButton::mouseClicked, this, [&] { order.append(QStringLiteral("clicked")); });
    connect(&button, &QLabel::linkActivated, this, [&](const QString& link) { order.append(link); });
    QTest::mouseClick(&button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button.height() / 2));
    QCOMPARE(order, QStringList({QStringLiteral("clicked"), QStringLiteral("there")}));
}

void TestZEFFlatButton::enterKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

void TestZEFFlatButton::enterKey()
{
    QFETCH(const Qt::Key, key);
    KeyWindow window;
    ZEFFlatButton button(&window);
    button.setFocusPolicy(Qt::StrongFocus);
    QVERIFY(showActive(window));
    button.setFocus();
    QSignalSpy enters(&button, &ZEFFlatButton::enterKeyClicked);
    QSignalSpy clicks(&button, &ZEFFlatButton::mouseClicked);
    QTest::keyClick(&button, key);
    QCOMPARE(enters.count(), 1);
    QCOMPARE(clicks.count(), 0);
    QCOMPARE(window.keys, QList<int>());
}

void TestZEFFlatButton::otherKeysGoOn_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("escape") << Qt::Key_Escape;
    QTest::newRow("a letter") << Qt::Key_A;
}

void TestZEFFlatButton::otherKeysGoOn()
{
    QFETCH(const Qt::Key, key);
    KeyWindow window;
    ZEFFlatButton button(&window);
    button.setFocusPolicy(Qt::StrongFocus);
    QVERIFY(showActive(window));
    button.setFocus();
    QSignalSpy enters(&button, &ZEFFlatButton::enterKeyClicked);
    QTest::keyClick(&button, key);
    QCOMPARE(enters.count(), 0);
    QCOMPARE(window.keys, QList<int>({key}));
}

void TestZEFFlatButton::nullKeyEvent()
{
    OpenFlatButton button;
    QSignalSpy enters(&button, &ZEFFlatButton::enterKeyClicked);
    button.keyPressEvent(nullptr);
    QCOMPARE(enters.count(), 0);
}

void TestZEFFlatButton::enterIsAcceptedBeforeItIsAnnounced()
{
    ZEFFlatButton button(nullptr);
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    event.ignore();
    bool accepted = false;
    connect(&button, &ZEFFlatButton::enterKeyClicked, this, [&] { accepted = event.isAccepted(); });
    QApplication::sendEvent(&button, &event);
    QVERIFY(accepted);
}

void TestZEFFlatButton::enterIsAcceptedAlsoWhenItCameIgnored()
{
    OpenFlatButton button;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    event.ignore();
    button.keyPressEvent(&event);
    QVERIFY(event.isAccepted());
}

void TestZEFFlatButton::releaseInsideTheReceiver()
{
    ZEFFlatButton button;
    QVERIFY(showActive(button));
    int clicks = 0;
    connect(&button, &ZEFFlatButton::mouseClicked, this, [&] {
        if (++clicks < 10)
            QTest::mouseRelease(&button, Qt::LeftButton);
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicks, 1);
}

void TestZEFFlatButton::pressInsideTheReceiverCountsForTheNextRelease()
{
    ZEFFlatButton button;
    QVERIFY(showActive(button));
    int clicks = 0;
    connect(&button, &ZEFFlatButton::mouseClicked, this, [&] {
        if (++clicks == 1)
            QTest::mousePress(&button, Qt::LeftButton);
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicks, 1);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(clicks, 2);
}

void TestZEFFlatButton::receiverDeletesTheButton_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("key") << false;
}

void TestZEFFlatButton::receiverDeletesTheButton()
{
    QFETCH(const bool, byMouse);
    QWidget window;
    window.resize(200, 100);
    const QPointer<ZEFFlatButton> button(new ZEFFlatButton(&window));
    button->setFocusPolicy(Qt::StrongFocus);
    button->setText(QStringLiteral("<a href='x'>rich</a>"));
    button->setGeometry(0, 0, 100, 40);
    button->setFocus();
    QVERIFY(showActive(window));
    connect(button, &ZEFFlatButton::mouseClicked, this, [&] { delete button.data(); });
    connect(button, &ZEFFlatButton::enterKeyClicked, this, [&] { delete button.data(); });
    if (byMouse)
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 20));
    else
        QTest::keyClick(window.windowHandle(), Qt::Key_Return);
    QTRY_VERIFY(!button);
}

void TestZEFFlatButton::receiverDeletesTheWindow()
{
    const QPointer<QWidget> window(new QWidget);
    window->resize(200, 100);
    auto* button = new ZEFFlatButton(window);
    button->setGeometry(0, 0, 100, 40);
    QVERIFY(showActive(*window));
    connect(button, &ZEFFlatButton::mouseClicked, this, [&] { delete window.data(); });
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 20));
    QTRY_VERIFY(!window);
}

void TestZEFFlatButton::painting_data()
{
    addRatioRows();
}

void TestZEFFlatButton::painting()
{
    QFETCH(const int, ratio);
    ZEFFlatButton button;
    QLabel plain;
    button.setText(QStringLiteral("text"));
    plain.setText(QStringLiteral("text"));
    button.resize(60, 20);
    plain.resize(60, 20);
    const QImage image = painted(button, ratio);
    QVERIFY(!isEmpty(image));
    QCOMPARE(image, painted(plain, ratio));
    QTest::mousePress(&button, Qt::LeftButton);
    QCOMPARE(painted(button, ratio), image);
}

void TestZEFFlatButton::texts_data()
{
    addTextRows();
}

void TestZEFFlatButton::texts()
{
    QFETCH(const QString, text);
    ZEFFlatButton button;
    button.setText(text);
    QVERIFY(paintsInSmallWindow(button, QSize(100, 60)));
}

void TestZEFFlatButton::sizes_data()
{
    addSizeRows();
}

void TestZEFFlatButton::sizes()
{
    QFETCH(const QSize, size);
    ZEFFlatButton button;
    button.setText(QStringLiteral("text"));
    QVERIFY(paintsInSmallWindow(button, size));
}

ZEF_TEST_MAIN(TestZEFFlatButton)
#include "test_zefflatbutton.moc"
