#include "commandLinkProbing.h"
#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFCommandLinkButton.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

Q_DECLARE_METATYPE(std::function<void(ZEFCommandLinkButton&)>)
Q_DECLARE_METATYPE(std::function<void(ZEFCommandLinkButton*)>)

namespace {

constexpr QSize ButtonSize(60, 40);

} // namespace

class TestZEFCommandLinkButton : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void newButton();
    void labels_data();
    void labels();
    void layouts();
    void survivesTheDeletionOfItsLabels();
    void heightFollowsWidth();
    void textProperties();
    void iconProperty();
    void colorProperties_data();
    void colorProperties();
    void everySetterUpdates_data();
    void everySetterUpdates();

    void frames_data();
    void frames();
    void whiteFocusColorGivesBlackDots();
    void translucentFocusColorIsInvertedOpaque();
    void disabledPaintsNothing_data();
    void disabledPaintsNothing();
    void noBackgroundOfItsOwn();
    void invalidColorsArePainted();

    void hoverByTheMouse();
    void hoverNeedsEnabledOrVisible_data();
    void hoverNeedsEnabledOrVisible();
    void hoverOutlivesDisabling();

    void everyReleaseClicks_data();
    void everyReleaseClicks();
    void releaseOutsideClicks();
    void releaseWithoutPressClicks();
    void releaseOnALabelClicks_data();
    void releaseOnALabelClicks();
    void releaseReachesTheBaseClassAfterwards();
    void keys_data();
    void keys();
    void heldKeyClicksOnce_data();
    void heldKeyClicksOnce();
    void shortcutClicksOnce_data();
    void shortcutClicksOnce();
    void shortcutOfADisabledButton();
    void ambiguousShortcutOnlyFocuses();
    void foreignShortcutIsLeftAlone();
    void receiverOfAShortcutDeletesTheButton();
    void spaceReachesTheBaseClass();
    void signatureMeansOwnSignal();

    void keyPressByDefault();
    void keyPressByDefaultIgnoresNull();

    void receiverDeletesTheButton_data();
    void receiverDeletesTheButton();

    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
};

void TestZEFCommandLinkButton::metaObject()
{
    const QMetaObject& meta = ZEFCommandLinkButton::staticMetaObject;
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("QPushButton"));
    QCOMPARE(ownProperties(meta),
             QStringList({QStringLiteral("QString title"), QStringLiteral("QString description"),
                          QStringLiteral("QPixmap icon"), QStringLiteral("QColor frameColor")}));
    QCOMPARE(ownMethods(meta),
             QStringList({QStringLiteral("signal clicked(bool)"), QStringLiteral("signal clicked()")}));
    QCOMPARE(meta.method(meta.methodOffset()).parameterNames(), QList<QByteArray>({"checked"}));
}

void TestZEFCommandLinkButton::newButton()
{
    const ZEFCommandLinkButton button;
    QVERIFY(button.testAttribute(Qt::WA_Hover));
    QVERIFY(button.sizePolicy().hasHeightForWidth());
    const QSizePolicy base = QPushButton().sizePolicy();
    QCOMPARE(button.sizePolicy().horizontalPolicy(), base.horizontalPolicy());
    QCOMPARE(button.sizePolicy().verticalPolicy(), base.verticalPolicy());
    QCOMPARE(button.sizePolicy().controlType(), base.controlType());
    QCOMPARE(button.title(), QString());
    QCOMPARE(button.description(), QString());
    QVERIFY(button.icon().isNull());
    QCOMPARE(button.frameColor(), QColor(Qt::black));
    QCOMPARE(button.defaultFrameColor(), QColor(Qt::cyan));
    QCOMPARE(button.kbdFocusFrameColor(), QColor(Qt::gray));
}

void TestZEFCommandLinkButton::labels_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isText");
    QTest::newRow("title") << QStringLiteral("title") << true;
    QTest::newRow("description") << QStringLiteral("description") << true;
    QTest::newRow("icon") << QStringLiteral("icon") << false;
}

void TestZEFCommandLinkButton::labels()
{
    QFETCH(const QString, name);
    QFETCH(const bool, isText);
    const ZEFCommandLinkButton button;
    const QList<QLabel*> labels = button.findChildren<QLabel*>(name, Qt::FindDirectChildrenOnly);
    QCOMPARE(labels.size(), 1);
    const QLabel* label = labels.first();
    const QLabel plain;
    QCOMPARE(label->wordWrap(), isText);
    QCOMPARE(label->alignment(), isText ? Qt::Alignment(Qt::AlignLeft) : plain.alignment());
    QCOMPARE(label->sizePolicy().horizontalPolicy(),
             isText ? QSizePolicy::Expanding : QSizePolicy::Preferred);
    QCOMPARE(label->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QVERIFY(!label->isWindow());
}

void TestZEFCommandLinkButton::layouts()
{
    const ZEFCommandLinkButton button;
    const auto* main = qobject_cast<QHBoxLayout*>(button.layout());
    QVERIFY(main);
    QCOMPARE(main->count(), 2);
    const auto* icons = qobject_cast<QVBoxLayout*>(main->itemAt(0)->layout());
    const auto* texts = qobject_cast<QVBoxLayout*>(main->itemAt(1)->layout());
    QVERIFY(icons);
    QVERIFY(texts);
    QCOMPARE(main->stretch(0), 0);
    QCOMPARE(main->stretch(1), 0);

    QCOMPARE(texts->spacing(), 2);
    QCOMPARE(texts->count(), 2);
    QCOMPARE(texts->itemAt(0)->widget()->objectName(), QStringLiteral("title"));
    QCOMPARE(texts->itemAt(1)->widget()->objectName(), QStringLiteral("description"));
    QCOMPARE(texts->itemAt(0)->alignment(), Qt::Alignment());
    QCOMPARE(texts->stretch(0), 0);
    QCOMPARE(texts->stretch(1), 0);

    QWidget reference;
    QCOMPARE(icons->spacing(), (new QVBoxLayout(&reference))->spacing());
    QCOMPARE(icons->count(), 2);
    QCOMPARE(icons->itemAt(0)->widget()->objectName(), QStringLiteral("icon"));
    QSpacerItem* spacer = icons->itemAt(1)->spacerItem();
    QVERIFY(spacer);
    QCOMPARE(spacer->sizeHint(), QSize(0, 0));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
}

void TestZEFCommandLinkButton::heightFollowsWidth()
{
    ZEFCommandLinkButton button;
    button.setDescription(QStringLiteral("a description that is long enough to wrap a few times"));
    QVERIFY(button.hasHeightForWidth());
    QVERIFY(button.heightForWidth(120) > button.heightForWidth(600));
}

void TestZEFCommandLinkButton::textProperties()
{
    ZEFCommandLinkButton button;
    QVERIFY(button.setProperty("title", QStringLiteral("Save")));
    QVERIFY(button.setProperty("description", QStringLiteral("Keeps what you wrote")));
    QCOMPARE(button.title(), QStringLiteral("Save"));
    QCOMPARE(button.description(), QStringLiteral("Keeps what you wrote"));
    QCOMPARE(button.findChild<QLabel*>(QStringLiteral("title"))->text(), QStringLiteral("Save"));
    QCOMPARE(button.findChild<QLabel*>(QStringLiteral("description"))->text(),
             QStringLiteral("Keeps what you wrote"));
    QCOMPARE(button.text(), QString());
}

void TestZEFCommandLinkButton::iconProperty()
{
    ZEFCommandLinkButton button;
    QPixmap pixmap(7, 5);
    pixmap.fill(Qt::red);
    QVERIFY(button.setProperty("icon", pixmap));
    QCOMPARE(button.icon().toImage(), pixmap.toImage());
    QCOMPARE(button.property("icon").value<QPixmap>().size(), QSize(7, 5));
    QVERIFY(button.QAbstractButton::icon().isNull());
    button.setIcon(QPixmap());
    QVERIFY(button.icon().isNull());
}

void TestZEFCommandLinkButton::colorProperties_data()
{
    QTest::addColumn<QColor>("color");
    QTest::newRow("opaque") << QColor(1, 2, 3);
    QTest::newRow("translucent") << QColor(1, 2, 3, 4);
    QTest::newRow("invalid") << QColor();
}

void TestZEFCommandLinkButton::colorProperties()
{
    QFETCH(const QColor, color);
    ZEFCommandLinkButton button;
    QVERIFY(button.setProperty("frameColor", color));
    QCOMPARE(button.frameColor(), color);
    button.setDefaultFrameColor(color);
    QCOMPARE(button.defaultFrameColor(), color);
    button.setKbdFocusFrameColor(color);
    QCOMPARE(button.kbdFocusFrameColor(), color);
}

void TestZEFCommandLinkButton::everySetterUpdates_data()
{
    using Setter = std::function<void(ZEFCommandLinkButton&)>;
    QTest::addColumn<Setter>("set");
    QTest::newRow("title") << Setter([](auto& button) { button.setTitle(button.title()); });
    QTest::newRow("description") << Setter([](auto& button) { button.setDescription(button.description()); });
    QTest::newRow("icon") << Setter([](auto& button) { button.setIcon(button.icon()); });
    QTest::newRow("frame colour") << Setter([](auto& button) { button.setFrameColor(button.frameColor()); });
    QTest::newRow("default frame colour")
        << Setter([](auto& button) { button.setDefaultFrameColor(button.defaultFrameColor()); });
    QTest::newRow("focus frame colour")
        << Setter([](auto& button) { button.setKbdFocusFrameColor(button.kbdFocusFrameColor()); });
}

void TestZEFCommandLinkButton::everySetterUpdates()
{
    QFETCH(const std::function<void(ZEFCommandLinkButton&)>, set);
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    button.setTitle(QStringLiteral("title"));
    QVERIFY(showActive(button));
    QCoreApplication::processEvents();
    EventCounter paints(&button, QEvent::Paint);
    set(button);
    QTRY_VERIFY(paints.count > 0);
}

void TestZEFCommandLinkButton::frames_data()
{
    QTest::addColumn<int>("ratio");
    QTest::addColumn<bool>("hovered");
    QTest::addColumn<bool>("isDefault");
    QTest::addColumn<bool>("focused");
    for (const int ratio : {1, 2}) {
        for (int states = 0; states < 8; ++states) {
            QTest::addRow("ratio %d%s%s%s", ratio, states & 1 ? ", hovered" : "",
                          states & 2 ? ", default" : "", states & 4 ? ", focused" : "")
                << ratio << bool(states & 1) << bool(states & 2) << bool(states & 4);
        }
    }
}

void TestZEFCommandLinkButton::frames()
{
    QFETCH(const int, ratio);
    QFETCH(const bool, hovered);
    QFETCH(const bool, isDefault);
    QFETCH(const bool, focused);
    QDialog window;
    window.resize(200, 100);
    ZEFCommandLinkButton button(&window);
    QLineEdit other(&window);
    other.move(0, 60);
    button.setAutoDefault(false);
    button.setGeometry(QRect(QPoint(20, 10), ButtonSize));
    QVERIFY(showActive(window));
    (focused ? static_cast<QWidget*>(&button) : &other)->setFocus();
    QCOMPARE(button.hasFocus(), focused);
    button.setDefault(isDefault);
    if (hovered) {
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(&button, &enter);
    } else {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&button, &leave);
    }

    const QImage image = painted(button, ratio);
    const int right = ButtonSize.width() - 1;
    const int bottom = ButtonSize.height() - 1;
    const QList<QRect> bars = {
        QRect(QPoint(4, 4), QPoint(right - 4, 4)),
        QRect(QPoint(4, bottom - 4), QPoint(right - 4, bottom - 4)),
        QRect(QPoint(4, 4), QPoint(4, bottom - 5)),
        QRect(QPoint(right - 4, 4), QPoint(right - 4, bottom - 5)),
    };
    // gray is (160, 160, 164)
    const QColor inverseGray(95, 95, 91);

    QImage expected(ButtonSize * ratio, QImage::Format_ARGB32_Premultiplied);
    expected.setDevicePixelRatio(ratio);
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    if (hovered) {
        painter.setPen(QPen(Qt::black));
        painter.drawRect(0, 0, right, bottom);
    }
    if (isDefault) {
        painter.setPen(QPen(Qt::cyan));
        painter.drawRect(2, 2, right - 4, bottom - 4);
    }
    if (focused) {
        for (const QRect& bar : bars)
            painter.fillRect(bar, QBrush(inverseGray, Qt::Dense4Pattern));
    }
    painter.end();
    QCOMPARE(image, expected);

    for (const QRect& bar : bars) {
        const Share share = shareOf(image, bar, inverseGray);
        QCOMPARE(share.other, 0);
        // every second pixel of a bar is drawn
        if (focused)
            QVERIFY(qAbs(share.colored - share.empty) <= 2 * ratio * ratio);
        else
            QCOMPARE(share.colored, 0);
    }
    QVERIFY(isFilled(image, QRect(QPoint(5, 5), QPoint(right - 5, bottom - 5)), Qt::transparent));
    // a pen of width 1 meets whole pixels only at the ratio 1
    if (ratio > 1)
        return;
    const auto frameIs = [&](int margin, const QColor& color) {
        const QRect frame(QPoint(margin, margin), QPoint(right - margin, bottom - margin));
        return isFilled(image, QRect(frame.topLeft(), frame.topRight()), color)
            && isFilled(image, QRect(frame.bottomLeft(), frame.bottomRight()), color)
            && isFilled(image, QRect(frame.topLeft(), frame.bottomLeft()), color)
            && isFilled(image, QRect(frame.topRight(), frame.bottomRight()), color);
    };
    QVERIFY(frameIs(0, hovered ? QColor(Qt::black) : QColor(Qt::transparent)));
    QVERIFY(frameIs(1, Qt::transparent));
    QVERIFY(frameIs(2, isDefault ? QColor(Qt::cyan) : QColor(Qt::transparent)));
    QVERIFY(frameIs(3, Qt::transparent));
}

void TestZEFCommandLinkButton::whiteFocusColorGivesBlackDots()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    button.setKbdFocusFrameColor(Qt::white);
    QVERIFY(showActive(button));
    button.setFocus();
    QTRY_VERIFY(button.hasFocus());
    const Share share = shareOf(painted(button, 1), QRect(4, 4, ButtonSize.width() - 8, 1), Qt::black);
    QVERIFY(share.colored > 0);
    QCOMPARE(share.other, 0);
}

void TestZEFCommandLinkButton::translucentFocusColorIsInvertedOpaque()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    button.setKbdFocusFrameColor(QColor(255, 200, 0, 10));
    QVERIFY(showActive(button));
    button.setFocus();
    QTRY_VERIFY(button.hasFocus());
    const Share share =
        shareOf(painted(button, 1), QRect(4, 4, ButtonSize.width() - 8, 1), QColor(0, 55, 255, 255));
    QVERIFY(share.colored > 0);
    QCOMPARE(share.other, 0);
}

void TestZEFCommandLinkButton::disabledPaintsNothing_data()
{
    addRatioRows();
}

void TestZEFCommandLinkButton::disabledPaintsNothing()
{
    QFETCH(const int, ratio);
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    button.setDefault(true);
    QVERIFY(showActive(button));
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(&button, &enter);
    QVERIFY(!isEmpty(painted(button, ratio)));
    button.setEnabled(false);
    QVERIFY(isEmpty(painted(button, ratio)));
}

void TestZEFCommandLinkButton::noBackgroundOfItsOwn()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    button.setText(QStringLiteral("the push button's own text"));
    QVERIFY(isEmpty(painted(button, 1)));
}

void TestZEFCommandLinkButton::invalidColorsArePainted()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    button.setFrameColor(QColor());
    button.setDefaultFrameColor(QColor());
    button.setKbdFocusFrameColor(QColor());
    button.setDefault(true);
    QVERIFY(showActive(button));
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(&button, &enter);
    const QImage image = painted(button, 1);
    QVERIFY(isFilled(image, QRect(0, 0, ButtonSize.width(), 1), Qt::black));
    QVERIFY(isFilled(image, QRect(2, 2, ButtonSize.width() - 4, 1), Qt::black));
}

void TestZEFCommandLinkButton::hoverByTheMouse()
{
    QWidget window;
    window.setGeometry(100, 100, 200, 100);
    ZEFCommandLinkButton button(&window);
    button.setGeometry(QRect(QPoint(20, 10), ButtonSize));
    QVERIFY(showActive(window));
    const QRect frame(QPoint(), QSize(ButtonSize.width(), 1));
    QTest::mouseMove(&window, QPoint(150, 80));
    QTest::mouseMove(&window, button.geometry().center());
    QTRY_VERIFY(isFilled(painted(button, 1), frame, Qt::black));
    QTest::mouseMove(&window, QPoint(150, 80));
    QTRY_VERIFY(isFilled(painted(button, 1), frame, Qt::transparent));
}

void TestZEFCommandLinkButton::hoverNeedsEnabledOrVisible_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<bool>("hovered");
    QTest::newRow("enabled and visible") << true << true << true;
    QTest::newRow("enabled but hidden") << true << false << true;
    QTest::newRow("visible but disabled") << false << true << true;
    QTest::newRow("disabled and hidden") << false << false << false;
}

void TestZEFCommandLinkButton::hoverNeedsEnabledOrVisible()
{
    QFETCH(const bool, enabled);
    QFETCH(const bool, visible);
    QFETCH(const bool, hovered);
    const QRect frame(QPoint(), QSize(ButtonSize.width(), 1));
    QWidget window;
    window.setGeometry(100, 100, 200, 100);
    ZEFCommandLinkButton button(&window);
    button.setGeometry(QRect(QPoint(20, 10), ButtonSize));
    button.setEnabled(enabled);
    button.setVisible(visible);
    QVERIFY(showActive(window));

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&button, &leave);
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(&button, &enter);
    button.setEnabled(true);
    QCOMPARE(isFilled(painted(button, 1), frame, Qt::black), hovered);

    // the same test decides whether a leave is noticed
    QCoreApplication::sendEvent(&button, &enter);
    button.setEnabled(enabled);
    QCoreApplication::sendEvent(&button, &leave);
    button.setEnabled(true);
    QCOMPARE(isFilled(painted(button, 1), frame, Qt::black), !hovered);
}

void TestZEFCommandLinkButton::hoverOutlivesDisabling()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(&button, &enter);
    button.setEnabled(false);
    QVERIFY(isEmpty(painted(button, 1)));
    button.setEnabled(true);
    QVERIFY(isFilled(painted(button, 1), QRect(0, 0, ButtonSize.width(), 1), Qt::black));
}

void TestZEFCommandLinkButton::everyReleaseClicks_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
    QTest::newRow("back") << Qt::BackButton;
}

void TestZEFCommandLinkButton::everyReleaseClicks()
{
    QFETCH(const Qt::MouseButton, button);
    ZEFCommandLinkButton link;
    link.resize(ButtonSize);
    QVERIFY(showActive(link));
    const Clicks clicks(&link);
    QTest::mouseClick(&link, button);
    QCOMPARE(clicks.values, QList<bool>({false}));
}

void TestZEFCommandLinkButton::releaseOutsideClicks()
{
    QWidget window;
    window.resize(200, 100);
    ZEFCommandLinkButton button(&window);
    button.setGeometry(QRect(QPoint(20, 10), ButtonSize));
    QVERIFY(showActive(window));
    const Clicks clicks(&button);
    int baseClicks = 0;
    connect(&button, &QAbstractButton::clicked, this, [&] { ++baseClicks; });
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(30, 20));
    QVERIFY(button.isDown());
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(190, 90));
    QCOMPARE(clicks.values, QList<bool>({false}));
    QCOMPARE(baseClicks, 0);
}

void TestZEFCommandLinkButton::releaseWithoutPressClicks()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    QVERIFY(showActive(button));
    const Clicks clicks(&button);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(clicks.values, QList<bool>({false}));
}

void TestZEFCommandLinkButton::releaseOnALabelClicks_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QStringLiteral("Title");
    QTest::newRow("rich") << QStringLiteral("<b>Title</b>");
}

void TestZEFCommandLinkButton::releaseOnALabelClicks()
{
    QFETCH(const QString, text);
    ZEFCommandLinkButton button;
    button.setTitle(text);
    button.resize(200, 100);
    QVERIFY(showActive(button));
    const auto* label = button.findChild<QLabel*>(QStringLiteral("title"));
    const QPoint position = label->geometry().center();
    QCOMPARE(button.childAt(position), label);
    const Clicks clicks(&button);
    QTest::mouseClick(button.windowHandle(), Qt::LeftButton, Qt::NoModifier, position);
    QCOMPARE(clicks.values, QList<bool>({false}));
}

void TestZEFCommandLinkButton::releaseReachesTheBaseClassAfterwards()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    QVERIFY(showActive(button));
    QStringList order;
    connect(&button, &ZEFCommandLinkButton::clicked, this, [&] { order.append(QStringLiteral("own")); });
    connect(&button, &QAbstractButton::released, this, [&] { order.append(QStringLiteral("released")); });
    connect(&button, &QAbstractButton::clicked, this, [&] { order.append(QStringLiteral("base")); });
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(order, QStringList({QStringLiteral("own"), QStringLiteral("released"), QStringLiteral("base")}));
}

void TestZEFCommandLinkButton::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("autoDefault");
    QTest::addColumn<bool>("isDefault");
    QTest::addColumn<int>("clicks");
    QTest::newRow("space") << int(Qt::Key_Space) << false << false << 1;
    QTest::newRow("select") << int(Qt::Key_Select) << false << false << 1;
    QTest::newRow("return") << int(Qt::Key_Return) << false << false << 0;
    QTest::newRow("return, auto-default") << int(Qt::Key_Return) << true << false << 1;
    QTest::newRow("return, default") << int(Qt::Key_Return) << false << true << 1;
    QTest::newRow("enter") << int(Qt::Key_Enter) << false << false << 0;
    QTest::newRow("enter, auto-default") << int(Qt::Key_Enter) << true << false << 1;
    QTest::newRow("enter, default") << int(Qt::Key_Enter) << false << true << 1;
    QTest::newRow("a letter") << int(Qt::Key_A) << true << true << 0;
    QTest::newRow("escape") << int(Qt::Key_Escape) << true << true << 0;
    QTest::newRow("tab") << int(Qt::Key_Tab) << true << true << 0;
}

void TestZEFCommandLinkButton::keys()
{
    QFETCH(const int, key);
    QFETCH(const bool, autoDefault);
    QFETCH(const bool, isDefault);
    QFETCH(const int, clicks);
    QWidget window;
    ZEFCommandLinkButton button(&window);
    button.resize(ButtonSize);
    button.setAutoDefault(autoDefault);
    button.setDefault(isDefault);
    QVERIFY(showActive(window));
    button.setFocus();
    const Clicks own(&button);
    QTest::keyPress(&button, Qt::Key(key));
    QCOMPARE(own.values, QList<bool>(clicks, false));
    QTest::keyRelease(&button, Qt::Key(key));
    QCOMPARE(own.values, QList<bool>(clicks, false));
}

void TestZEFCommandLinkButton::heldKeyClicksOnce_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("select") << Qt::Key_Select;
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

void TestZEFCommandLinkButton::heldKeyClicksOnce()
{
    QFETCH(const Qt::Key, key);
    ZEFCommandLinkButton button;
    button.setDefault(true);
    const Clicks own(&button);
    const auto send = [&](QEvent::Type type, bool repeated) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), repeated);
        QCoreApplication::sendEvent(&button, &event);
    };
    send(QEvent::KeyPress, false);
    for (int i = 0; i < 10; ++i) {
        send(QEvent::KeyRelease, true);
        send(QEvent::KeyPress, true);
    }
    QCOMPARE(own.values, QList<bool>({false}));
    send(QEvent::KeyRelease, false);
    send(QEvent::KeyPress, false);
    QCOMPARE(own.values, QList<bool>({false, false}));
}

void TestZEFCommandLinkButton::shortcutClicksOnce_data()
{
    QTest::addColumn<bool>("byText");
    QTest::addColumn<Qt::FocusPolicy>("policy");
    QTest::newRow("shortcut") << false << Qt::StrongFocus;
    QTest::newRow("mnemonic") << true << Qt::StrongFocus;
    QTest::newRow("shortcut, not focused by clicks") << false << Qt::TabFocus;
}

void TestZEFCommandLinkButton::shortcutClicksOnce()
{
    QFETCH(const bool, byText);
    QFETCH(const Qt::FocusPolicy, policy);
    QWidget window;
    QLineEdit other(&window);
    ZEFCommandLinkButton button(&window);
    button.setFocusPolicy(policy);
    if (byText)
        button.setText(QStringLiteral("&Order"));
    else
        button.setShortcut(QKeySequence(Qt::ALT | Qt::Key_O));
    QVERIFY(showActive(window));
    other.setFocus();
    const Clicks own(&button);
    QSignalSpy base(&button, &QAbstractButton::clicked);
    QTest::keyClick(&window, Qt::Key_O, Qt::AltModifier);
    QCOMPARE(own.values, QList<bool>({false}));
    // as of Space: its release is a click of the base class
    QCOMPARE(base.size(), 1);
    QVERIFY(!button.isDown());
    // as any button that a click focuses
    QCOMPARE(button.hasFocus(), policy == Qt::StrongFocus);
}

void TestZEFCommandLinkButton::shortcutOfADisabledButton()
{
    QWidget window;
    ZEFCommandLinkButton button(&window);
    button.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    button.setEnabled(false);
    QVERIFY(showActive(window));
    const Clicks own(&button);
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(own.values, QList<bool>());
}

void TestZEFCommandLinkButton::ambiguousShortcutOnlyFocuses()
{
    QWidget window;
    ZEFCommandLinkButton first(&window);
    ZEFCommandLinkButton second(&window);
    for (ZEFCommandLinkButton* button : {&first, &second})
        button->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    QVERIFY(showActive(window));
    const Clicks ofFirst(&first);
    const Clicks ofSecond(&second);
    second.setFocus();
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    QVERIFY(first.hasFocus());
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    QVERIFY(second.hasFocus());
    QCOMPARE(ofFirst.values + ofSecond.values, QList<bool>());
}

void TestZEFCommandLinkButton::foreignShortcutIsLeftAlone()
{
    // A subclass or a filter may grab further keys.
    class Grabbing : public ZEFCommandLinkButton {
    public:
        explicit Grabbing(QWidget* parent)
            : ZEFCommandLinkButton(parent)
        {
            setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
            grabShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
        }
    };
    QWidget window;
    Grabbing button(&window);
    QVERIFY(showActive(window));
    const Clicks own(&button);
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(own.values, QList<bool>());
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(own.values, QList<bool>({false}));
}

void TestZEFCommandLinkButton::receiverOfAShortcutDeletesTheButton()
{
    QWidget window;
    QPointer<ZEFCommandLinkButton> button = new ZEFCommandLinkButton(&window);
    button->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    connect(button, &ZEFCommandLinkButton::clicked, &window, [button] { delete button; });
    QVERIFY(showActive(window));
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    QVERIFY(button.isNull());
}

void TestZEFCommandLinkButton::spaceReachesTheBaseClass()
{
    ZEFCommandLinkButton button;
    button.resize(ButtonSize);
    QVERIFY(showActive(button));
    int baseClicks = 0;
    connect(&button, &QAbstractButton::clicked, this, [&] { ++baseClicks; });
    QTest::keyPress(&button, Qt::Key_Space);
    QVERIFY(button.isDown());
    QTest::keyRelease(&button, Qt::Key_Space);
    QCOMPARE(baseClicks, 1);
}

void TestZEFCommandLinkButton::signatureMeansOwnSignal()
{
    ZEFCommandLinkButton button;
    const Clicks clicks(&button);
    Q_EMIT button.QAbstractButton::clicked(true);
    QCOMPARE(clicks.values, QList<bool>());
    Q_EMIT button.clicked(false);
    QCOMPARE(clicks.values, QList<bool>({false}));
}

void TestZEFCommandLinkButton::keyPressByDefault()
{
    class Derived : public ZEFCommandLinkButton {
    public:
        QList<int> keys;

    protected:
        void keyPressEvent(QKeyEvent* e) override { keys.append(e->key()); }
    };
    ZEFCommandLinkButton button;
    button.setDefault(true);
    const Clicks clicks(&button);
    QKeyEvent event = keyPress(Qt::Key_Return);
    button.keyPressByDefault(&event);
    QCOMPARE(clicks.values, QList<bool>({false}));

    Derived derived;
    derived.keyPressByDefault(&event);
    QCOMPARE(derived.keys, QList<int>({Qt::Key_Return}));
}

void TestZEFCommandLinkButton::keyPressByDefaultIgnoresNull()
{
    ZEFCommandLinkButton button;
    button.setDefault(true);
    const Clicks clicks(&button);
    button.keyPressByDefault(nullptr);
    QVERIFY(clicks.values.isEmpty());
}

void TestZEFCommandLinkButton::receiverDeletesTheButton_data()
{
    // QTest's own functions for widgets go on with the widget after the event
    using Use = std::function<void(ZEFCommandLinkButton*)>;
    QTest::addColumn<Use>("use");
    QTest::newRow("mouse") << Use([](auto* button) {
        QTest::mouseClick(button->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    });
    QTest::newRow("space") << Use(
        [](auto* button) { QTest::keyPress(button->window()->windowHandle(), Qt::Key_Space); });
    QTest::newRow("return") << Use(
        [](auto* button) { QTest::keyPress(button->window()->windowHandle(), Qt::Key_Return); });
    QTest::newRow("by default") << Use([](auto* button) {
        QKeyEvent event = keyPress(Qt::Key_Return);
        button->keyPressByDefault(&event);
    });
}

void TestZEFCommandLinkButton::receiverDeletesTheButton()
{
    QFETCH(const std::function<void(ZEFCommandLinkButton*)>, use);
    QWidget window;
    window.resize(200, 100);
    const QPointer<ZEFCommandLinkButton> button(new ZEFCommandLinkButton(&window));
    button->setDefault(true);
    button->setFocus();
    QVERIFY(showActive(window));
    connect(button, &ZEFCommandLinkButton::clicked, this, [&] { delete button.data(); });
    use(button);
    QTRY_VERIFY(!button);
}

void TestZEFCommandLinkButton::texts_data()
{
    addTextRows();
}

void TestZEFCommandLinkButton::texts()
{
    QFETCH(const QString, text);
    ZEFCommandLinkButton button;
    button.setTitle(text);
    button.setDescription(text);
    QCOMPARE(button.title(), text);
    QCOMPARE(button.description(), text);
    QVERIFY(paintsInSmallWindow(button, QSize(100, 60)));
}

void TestZEFCommandLinkButton::sizes_data()
{
    addSizeRows();
}

void TestZEFCommandLinkButton::sizes()
{
    QFETCH(const QSize, size);
    ZEFCommandLinkButton button;
    button.setTitle(QStringLiteral("title"));
    button.setDefault(true);
    QVERIFY(paintsInSmallWindow(button, size));
}

void TestZEFCommandLinkButton::survivesTheDeletionOfItsLabels()
{
    ZEFCommandLinkButton button;
    qDeleteAll(button.findChildren<QLabel*>());
    button.setTitle(QStringLiteral("title"));
    button.setDescription(QStringLiteral("description"));
    button.setIcon(QPixmap(2, 2));
    QCOMPARE(button.title(), QString());
    QCOMPARE(button.description(), QString());
    QVERIFY(button.icon().isNull());
}

ZEF_TEST_MAIN(TestZEFCommandLinkButton)
#include "test_zefcommandlinkbutton.moc"
