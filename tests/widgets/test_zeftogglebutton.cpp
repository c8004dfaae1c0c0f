#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFToggleButton.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

#include <limits>

namespace {

QPixmap filled(Qt::GlobalColor color)
{
    QPixmap pixmap(8, 6);
    pixmap.fill(color);
    return pixmap;
}

QLabel* textLabel(const QWidget& button)
{
    return button.findChild<QLabel*>(QStringLiteral("title"));
}

QLabel* imageLabel(const QWidget& button)
{
    return button.findChild<QLabel*>(QStringLiteral("image"));
}

//! A button with a text and an image for each state.
class Labelled : public ZEFToggleButton {
public:
    Labelled()
    {
        setOffText(QStringLiteral("no"));
        setOnText(QStringLiteral("yes"));
        setOffImage(filled(Qt::red));
        setOnImage(filled(Qt::green));
    }
};

bool shows(const QWidget& button, const QString& text, Qt::GlobalColor color)
{
    return textLabel(button)->text() == text
        && imageLabel(button)->pixmap().toImage() == filled(color).toImage();
}

bool setOn(QObject& button, bool on)
{
    return QMetaObject::invokeMethod(&button, "setOn", Q_ARG(bool, on));
}

} // namespace

class TestZEFToggleButton : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void newButton();
    void labels();
    void layout();

    void survivesTheDeletionOfItsLabels();
    void settersOfTheOtherStateChangeNothingVisible();
    void settersOfTheCurrentState();
    void currentSettersUpdate_data();
    void currentSettersUpdate();
    void labelsStayEmptyUntilSet();
    void firstChangeShowsTheNewState();

    void setOnSignalsOnce();
    void setOnWithoutArgument();
    void isOnProperty();
    void toggleByName();
    void signalsComeBeforeTheLabels();

    void everyReleaseToggles_data();
    void everyReleaseToggles();
    void releaseWithoutPressToggles();
    void releaseOutsideToggles();
    void releaseOnALabelToggles_data();
    void releaseOnALabelToggles();
    void keysDoNothing_data();
    void keysDoNothing();

    void imageSizeIsOnlyKept_data();
    void imageSizeIsOnlyKept();
    void spacing_data();
    void spacing();
    void painting_data();
    void painting();

    void receiverSwitchesBack();
    void receiverDeletesTheButton_data();
    void receiverDeletesTheButton();
    void receiverDeletesTheWindow();

    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
    void nullImages();
};

void TestZEFToggleButton::metaObject()
{
    const QMetaObject& meta = ZEFToggleButton::staticMetaObject;
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("QWidget"));
    QCOMPARE(ownProperties(meta),
             QStringList({QStringLiteral("QString offText"), QStringLiteral("QString onText"),
                          QStringLiteral("QPixmap offImage"), QStringLiteral("QPixmap onImage"),
                          QStringLiteral("bool isOn"), QStringLiteral("QSize imageSize"),
                          QStringLiteral("int spacing")}));
    QCOMPARE(ownMethods(meta),
             QStringList({QStringLiteral("signal off()"), QStringLiteral("signal on()"),
                          QStringLiteral("private slot toggle()"), QStringLiteral("private slot setOn(bool)"),
                          QStringLiteral("private slot setOn()")}));
}

void TestZEFToggleButton::newButton()
{
    const ZEFToggleButton button;
    QVERIFY(!button.isOn());
    QCOMPARE(button.offText(), QString());
    QCOMPARE(button.onText(), QString());
    QVERIFY(button.offImage().isNull());
    QVERIFY(button.onImage().isNull());
    QCOMPARE(button.imageSize(), QSize(32, 32));
    QCOMPARE(button.spacing(), 4);
    QVERIFY(button.testAttribute(Qt::WA_Hover));
    QVERIFY(!button.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void TestZEFToggleButton::labels()
{
    const ZEFToggleButton button;
    const QLabel* text = textLabel(button);
    QVERIFY(text);
    QCOMPARE(text->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QVERIFY(text->wordWrap());
    QCOMPARE(text->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(text->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    const QLabel* image = imageLabel(button);
    QVERIFY(image);
    QVERIFY(!image->wordWrap());
    QCOMPARE(image->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(image->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
}

void TestZEFToggleButton::layout()
{
    const ZEFToggleButton button;
    const auto* layout = qobject_cast<QHBoxLayout*>(button.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->spacing(), 4);
    QCOMPARE(layout->count(), 2);
    QCOMPARE(layout->itemAt(0)->widget(), imageLabel(button));
    QCOMPARE(layout->itemAt(1)->widget(), textLabel(button));
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(layout->stretch(1), 0);
    QCOMPARE(layout->itemAt(0)->alignment(), Qt::Alignment());
    QCOMPARE(layout->itemAt(1)->alignment(), Qt::Alignment());
}

void TestZEFToggleButton::settersOfTheOtherStateChangeNothingVisible()
{
    Labelled button;
    button.setOnText(QStringLiteral("indeed"));
    button.setOnImage(filled(Qt::blue));
    QCOMPARE(button.onText(), QStringLiteral("indeed"));
    QVERIFY(shows(button, QStringLiteral("no"), Qt::red));
    QVERIFY(setOn(button, true));
    QVERIFY(shows(button, QStringLiteral("indeed"), Qt::blue));
    button.setOffText(QStringLiteral("never"));
    button.setOffImage(filled(Qt::yellow));
    QVERIFY(shows(button, QStringLiteral("indeed"), Qt::blue));
    QVERIFY(setOn(button, false));
    QVERIFY(shows(button, QStringLiteral("never"), Qt::yellow));
}

void TestZEFToggleButton::settersOfTheCurrentState()
{
    Labelled button;
    QVERIFY(button.setProperty("offText", QStringLiteral("never")));
    QVERIFY(button.setProperty("offImage", filled(Qt::yellow)));
    QVERIFY(shows(button, QStringLiteral("never"), Qt::yellow));
    QVERIFY(setOn(button, true));
    QVERIFY(button.setProperty("onText", QStringLiteral("always")));
    QVERIFY(button.setProperty("onImage", filled(Qt::cyan)));
    QVERIFY(shows(button, QStringLiteral("always"), Qt::cyan));
    QCOMPARE(button.property("onImage").value<QPixmap>().toImage(), filled(Qt::cyan).toImage());
    QCOMPARE(button.property("offImage").value<QPixmap>().toImage(), filled(Qt::yellow).toImage());
}

void TestZEFToggleButton::currentSettersUpdate_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<QByteArray>("property");
    QTest::newRow("off text") << false << QByteArray("offText");
    QTest::newRow("off image") << false << QByteArray("offImage");
    QTest::newRow("on text") << true << QByteArray("onText");
    QTest::newRow("on image") << true << QByteArray("onImage");
}

void TestZEFToggleButton::currentSettersUpdate()
{
    QFETCH(const bool, on);
    QFETCH(const QByteArray, property);
    Labelled button;
    button.setProperty("isOn", on);
    QVERIFY(showActive(button));
    QCoreApplication::processEvents();
    EventCounter paints(&button, QEvent::Paint);
    QVERIFY(button.setProperty(property.constData(), button.property(property.constData())));
    QTRY_VERIFY(paints.count > 0);
}

void TestZEFToggleButton::labelsStayEmptyUntilSet()
{
    ZEFToggleButton button;
    button.setOnText(QStringLiteral("yes"));
    button.setOnImage(filled(Qt::green));
    QCOMPARE(textLabel(button)->text(), QString());
    QVERIFY(imageLabel(button)->pixmap().isNull());
}

void TestZEFToggleButton::firstChangeShowsTheNewState()
{
    ZEFToggleButton button;
    button.setOnText(QStringLiteral("yes"));
    button.setOnImage(filled(Qt::green));
    QVERIFY(setOn(button, true));
    QVERIFY(shows(button, QStringLiteral("yes"), Qt::green));
}

void TestZEFToggleButton::setOnSignalsOnce()
{
    ZEFToggleButton button;
    QStringList signalled;
    connect(&button, &ZEFToggleButton::on, this, [&] { signalled.append(QStringLiteral("on")); });
    connect(&button, &ZEFToggleButton::off, this, [&] { signalled.append(QStringLiteral("off")); });
    QVERIFY(setOn(button, false));
    QCOMPARE(signalled, QStringList());
    QVERIFY(setOn(button, true));
    QVERIFY(setOn(button, true));
    QCOMPARE(signalled, QStringList({QStringLiteral("on")}));
    QVERIFY(setOn(button, false));
    QVERIFY(setOn(button, false));
    QCOMPARE(signalled, QStringList({QStringLiteral("on"), QStringLiteral("off")}));
}

void TestZEFToggleButton::setOnWithoutArgument()
{
    ZEFToggleButton button;
    QVERIFY(QMetaObject::invokeMethod(&button, "setOn"));
    QVERIFY(button.isOn());
    QVERIFY(QMetaObject::invokeMethod(&button, "setOn"));
    QVERIFY(button.isOn());
}

void TestZEFToggleButton::isOnProperty()
{
    ZEFToggleButton button;
    QVERIFY(button.setProperty("isOn", true));
    QVERIFY(button.isOn());
    QCOMPARE(button.property("isOn"), QVariant(true));
    QVERIFY(button.setProperty("isOn", false));
    QVERIFY(!button.isOn());
}

void TestZEFToggleButton::toggleByName()
{
    ZEFToggleButton button;
    QVERIFY(QMetaObject::invokeMethod(&button, "toggle"));
    QVERIFY(button.isOn());
    QVERIFY(QMetaObject::invokeMethod(&button, "toggle"));
    QVERIFY(!button.isOn());
}

void TestZEFToggleButton::signalsComeBeforeTheLabels()
{
    Labelled button;
    QStringList texts;
    QList<bool> states;
    const auto note = [&] {
        texts.append(textLabel(button)->text());
        states.append(button.isOn());
    };
    connect(&button, &ZEFToggleButton::on, this, note);
    connect(&button, &ZEFToggleButton::off, this, note);
    setOn(button, true);
    setOn(button, false);
    QCOMPARE(texts, QStringList({QStringLiteral("no"), QStringLiteral("yes")}));
    QCOMPARE(states, QList<bool>({true, false}));
}

void TestZEFToggleButton::everyReleaseToggles_data()
{
    QTest::addColumn<Qt::MouseButton>("mouseButton");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void TestZEFToggleButton::everyReleaseToggles()
{
    QFETCH(const Qt::MouseButton, mouseButton);
    Labelled button;
    button.resize(100, 40);
    QVERIFY(showActive(button));
    QTest::mouseClick(&button, mouseButton);
    QVERIFY(button.isOn());
    QVERIFY(shows(button, QStringLiteral("yes"), Qt::green));
    QTest::mouseClick(&button, mouseButton);
    QVERIFY(!button.isOn());
    QVERIFY(shows(button, QStringLiteral("no"), Qt::red));
}

void TestZEFToggleButton::releaseWithoutPressToggles()
{
    Labelled button;
    QVERIFY(showActive(button));
    QTest::mouseRelease(&button, Qt::LeftButton);
    QVERIFY(button.isOn());
}

void TestZEFToggleButton::releaseOutsideToggles()
{
    QWidget window;
    window.resize(300, 100);
    Labelled button;
    button.setParent(&window);
    button.setGeometry(10, 10, 100, 40);
    QVERIFY(showActive(window));
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QVERIFY(!button.isOn());
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(290, 90));
    QVERIFY(button.isOn());
}

void TestZEFToggleButton::releaseOnALabelToggles_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("label");
    QTest::newRow("plain text") << QStringLiteral("no") << QStringLiteral("title");
    QTest::newRow("rich text") << QStringLiteral("<a href='x'>no</a>") << QStringLiteral("title");
    QTest::newRow("image") << QStringLiteral("no") << QStringLiteral("image");
}

void TestZEFToggleButton::releaseOnALabelToggles()
{
    QFETCH(const QString, text);
    QFETCH(const QString, label);
    Labelled button;
    button.setOffText(text);
    button.resize(100, 40);
    QVERIFY(showActive(button));
    const QRect place = button.findChild<QLabel*>(label)->geometry();
    const QPoint position(place.left() + 6, place.center().y());
    QCOMPARE(button.childAt(position)->objectName(), label);
    QTest::mouseClick(button.windowHandle(), Qt::LeftButton, Qt::NoModifier, position);
    QVERIFY(button.isOn());
}

void TestZEFToggleButton::keysDoNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("return") << Qt::Key_Return;
}

void TestZEFToggleButton::keysDoNothing()
{
    QFETCH(const Qt::Key, key);
    Labelled button;
    button.setFocusPolicy(Qt::StrongFocus);
    QVERIFY(showActive(button));
    button.setFocus();
    QTest::keyClick(&button, key);
    QVERIFY(!button.isOn());
}

void TestZEFToggleButton::imageSizeIsOnlyKept_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("large") << QSize(640, 480);
    QTest::newRow("empty") << QSize(0, 0);
    QTest::newRow("invalid") << QSize();
}

void TestZEFToggleButton::imageSizeIsOnlyKept()
{
    QFETCH(const QSize, size);
    Labelled button;
    QVERIFY(button.setProperty("imageSize", size));
    QCOMPARE(button.imageSize(), size);
    QVERIFY(shows(button, QStringLiteral("no"), Qt::red));
    setOn(button, true);
    QCOMPARE(imageLabel(button)->pixmap().size(), QSize(8, 6));
}

void TestZEFToggleButton::spacing_data()
{
    QTest::addColumn<int>("spacing");
    QTest::addColumn<int>("gap");
    QTest::newRow("wider") << 10 << 10;
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("the style's own") << -1 << -1;
    QTest::newRow("the least") << std::numeric_limits<int>::min() << -1;
    QTest::newRow("the greatest") << std::numeric_limits<int>::max() << QWIDGETSIZE_MAX;
}

void TestZEFToggleButton::spacing()
{
    QFETCH(const int, spacing);
    QFETCH(const int, gap);
    Labelled button;
    button.resize(200, 40);
    QVERIFY(button.setProperty("spacing", spacing));
    QCOMPARE(button.spacing(), spacing);
    // The gap alone is as wide as Qt lets the button be.
    if (gap == QWIDGETSIZE_MAX)
        TestLog::allow(QRegularExpression(QStringLiteral("warning: QWidget::setMinimumSize: .*")));
    button.layout()->activate();
    if (gap == QWIDGETSIZE_MAX) {
        QCOMPARE(button.layout()->spacing(), gap);
        return;
    }
    const int actual = textLabel(button)->x() - (imageLabel(button)->x() + imageLabel(button)->width());
    QCOMPARE(actual, gap < 0 ? button.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing) : gap);
}

void TestZEFToggleButton::painting_data()
{
    addRatioRows();
}

void TestZEFToggleButton::painting()
{
    QFETCH(const int, ratio);
    Labelled button;
    button.resize(200, 40);
    const auto colorOfImage = [&] {
        const QImage image = painted(button, ratio);
        const QRect label = imageLabel(button)->geometry();
        const QRect place(label.x(), label.y() + (label.height() - 6) / 2, 8, 6);
        for (const Qt::GlobalColor color : {Qt::red, Qt::green}) {
            if (isFilled(image, place, color))
                return QColor(color);
        }
        return QColor();
    };
    QCOMPARE(colorOfImage(), QColor(Qt::red));
    setOn(button, true);
    QCOMPARE(colorOfImage(), QColor(Qt::green));
}

void TestZEFToggleButton::receiverSwitchesBack()
{
    Labelled button;
    QStringList signalled;
    connect(&button, &ZEFToggleButton::on, this, [&] {
        signalled.append(QStringLiteral("on"));
        button.setProperty("isOn", false);
    });
    connect(&button, &ZEFToggleButton::off, this, [&] { signalled.append(QStringLiteral("off")); });
    QVERIFY(setOn(button, true));
    QCOMPARE(signalled, QStringList({QStringLiteral("on"), QStringLiteral("off")}));
    QVERIFY(!button.isOn());
    QVERIFY(shows(button, QStringLiteral("no"), Qt::red));
}

void TestZEFToggleButton::receiverDeletesTheButton_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("on, by the mouse") << true << true;
    QTest::newRow("off, by the mouse") << false << true;
    QTest::newRow("on, by name") << true << false;
    QTest::newRow("off, by name") << false << false;
}

void TestZEFToggleButton::receiverDeletesTheButton()
{
    QFETCH(const bool, on);
    QFETCH(const bool, byMouse);
    QWidget window;
    window.resize(200, 100);
    const QPointer<ZEFToggleButton> button(new Labelled);
    button->setParent(&window);
    button->setGeometry(0, 0, 100, 40);
    button->setProperty("isOn", !on);
    QVERIFY(showActive(window));
    connect(button, on ? &ZEFToggleButton::on : &ZEFToggleButton::off, this, [&] { delete button.data(); });
    if (byMouse)
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 20));
    else
        QVERIFY(setOn(*button, on));
    QTRY_VERIFY(!button);
}

void TestZEFToggleButton::receiverDeletesTheWindow()
{
    const QPointer<QWidget> window(new QWidget);
    window->resize(200, 100);
    auto* button = new Labelled;
    button->setParent(window);
    button->setGeometry(0, 0, 100, 40);
    QVERIFY(showActive(*window));
    connect(button, &ZEFToggleButton::on, this, [&] { delete window.data(); });
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 20));
    QTRY_VERIFY(!window);
}

void TestZEFToggleButton::texts_data()
{
    addTextRows();
}

void TestZEFToggleButton::texts()
{
    QFETCH(const QString, text);
    ZEFToggleButton button;
    button.setOffText(text);
    button.setOnText(text);
    QCOMPARE(button.offText(), text);
    QCOMPARE(button.onText(), text);
    QVERIFY(setOn(button, true));
    QCOMPARE(textLabel(button)->text(), text);
    QVERIFY(paintsInSmallWindow(button, QSize(100, 60)));
}

void TestZEFToggleButton::sizes_data()
{
    addSizeRows();
}

void TestZEFToggleButton::sizes()
{
    QFETCH(const QSize, size);
    Labelled button;
    QVERIFY(paintsInSmallWindow(button, size));
}

void TestZEFToggleButton::nullImages()
{
    Labelled button;
    button.setOffImage(QPixmap());
    button.setOnImage(QPixmap());
    QVERIFY(imageLabel(button)->pixmap().isNull());
    setOn(button, true);
    QVERIFY(imageLabel(button)->pixmap().isNull());
    QVERIFY(paintsInSmallWindow(button, QSize(100, 60)));
}

void TestZEFToggleButton::survivesTheDeletionOfItsLabels()
{
    ZEFToggleButton button;
    button.setOnText(QStringLiteral("yes"));
    qDeleteAll(button.findChildren<QLabel*>());
    button.setOffText(QStringLiteral("no"));
    button.setOffImage(QPixmap(2, 2));
    QTest::mouseRelease(&button, Qt::LeftButton);
    QVERIFY(button.isOn());
    QCOMPARE(button.onText(), QStringLiteral("yes"));
    QCOMPARE(button.offText(), QStringLiteral("no"));
    QCOMPARE(button.offImage().size(), QSize(2, 2));
}

ZEF_TEST_MAIN(TestZEFToggleButton)
#include "test_zeftogglebutton.moc"
