#include "controlStyleProbing.h"

#include <ZEFTest.h>

#include <ZEFLightStdButton.h>

#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>

namespace {

constexpr QSize ButtonSize(78, 28);

//! The light button with its data in reach.
class Open : public ZEFLightStdButton {
public:
    using ZEFLightStdButton::drawButton;
    using ZEFLightStdButton::m_accentColor;
    using ZEFLightStdButton::m_borderColor;
    using ZEFLightStdButton::m_borderWidth;
    using ZEFLightStdButton::m_disabledBorderColor;
    using ZEFLightStdButton::m_disabledFourthColor;
    using ZEFLightStdButton::m_disabledGradient;
    using ZEFLightStdButton::m_disabledSecondColor;
    using ZEFLightStdButton::m_disabledTextColor;
    using ZEFLightStdButton::m_disabledThirdColor;
    using ZEFLightStdButton::m_focused;
    using ZEFLightStdButton::m_focusRingWidth;
    using ZEFLightStdButton::m_fourthColor;
    using ZEFLightStdButton::m_hovered;
    using ZEFLightStdButton::m_hoverGradient;
    using ZEFLightStdButton::m_initialised;
    using ZEFLightStdButton::m_normalGradient;
    using ZEFLightStdButton::m_padding;
    using ZEFLightStdButton::m_pressed;
    using ZEFLightStdButton::m_pressedGradient;
    using ZEFLightStdButton::m_secondColor;
    using ZEFLightStdButton::m_sideMargin;
    using ZEFLightStdButton::m_spareColor;
    using ZEFLightStdButton::m_spareWidth1;
    using ZEFLightStdButton::m_spareWidth2;
    using ZEFLightStdButton::m_textColor;
    using ZEFLightStdButton::m_textMargin;
    using ZEFLightStdButton::m_thirdColor;
    using ZEFLightStdButton::m_workingBorderColor;
    using ZEFLightStdButton::m_workingFourthColor;
    using ZEFLightStdButton::m_workingGradient;
    using ZEFLightStdButton::m_workingSecondColor;
    using ZEFLightStdButton::m_workingTextColor;
    using ZEFLightStdButton::m_workingThirdColor;
    using ZEFLightStdButton::setProperties;
};

//! A variant that counts its initialisation and has colours for everything.
class Variant : public Open {
public:
    int initialisations = 0;

protected:
    void setProperties() override
    {
        ++initialisations;
        Open::setProperties();
        m_secondColor = QColor(2, 2, 2);
        m_thirdColor = QColor(3, 3, 3);
        m_fourthColor = QColor(4, 4, 4);
        m_disabledSecondColor = QColor(22, 22, 22);
        m_disabledThirdColor = QColor(33, 33, 33);
        m_disabledFourthColor = QColor(44, 44, 44);
    }
};

QGradientStops stops(const QColor& top, const QColor& bottom)
{
    return {{0.0, top}, {1.0, bottom}};
}

const QString Font = QStringLiteral("debug: Font: ");

//! The lines about the state that a painting writes.
QStringList stateLines()
{
    QStringList lines = TestLog::take(QStringLiteral("debug: "));
    lines.removeIf([](const QString& line) { return line.startsWith(Font); });
    return lines;
}

} // namespace

Q_DECLARE_METATYPE(bool Open::*)
Q_DECLARE_METATYPE(std::function<void(Open&)>)

class TestZEFLightStdButton : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        allowPlatformLines();
        TestLog::allow(QRegularExpression(QStringLiteral("debug: (Font|Idle|Hover|Pressed|Disabled): .*")));
        TestLog::allow(QRegularExpression(QStringLiteral(
            "debug: (enter|leave|focusIn|focusOut|keyPress|keyRelease|mouseRelease)Event\\(\\)")));
    }

private Q_SLOTS:
    void metaObject();
    void objectNames();
    void newButton();
    void lightColors();

    void sizeHintOfEmptyText();
    void sizeHintOfText_data();
    void sizeHintOfText();

    void aHugeButtonHasSmoothCornersToo();

    void firstPaintInitialises();
    void eachPaintWritesItsState_data();
    void eachPaintWritesItsState();
    void textIsNeverAFormat();
    void workingColors_data();
    void workingColors();

    void body_data();
    void body();
    void referencePainting_data();
    void referencePainting();
    void focusRing_data();
    void focusRing();
    void pressedTextSinks();
    void disabledIgnoresTheFlags_data();
    void disabledIgnoresTheFlags();
    void cornersAreRound_data();
    void cornersAreRound();
    void sharpAtRatioTwo();
    void painterThatHasABrush();
    void changedLooksAreDrawn_data();
    void changedLooksAreDrawn();
    void elsewhereAndScaled();

    void handlers_data();
    void handlers();
    void handlersOfADisabledButton_data();
    void handlersOfADisabledButton();
    void flagsOutliveDisabling();
    void anyKeyPresses_data();
    void anyKeyPresses();
    void pressedLookEndsWithTheFocus_data();
    void pressedLookEndsWithTheFocus();
    void leavingWhilePressedKeepsThePressedLook();
    void hoverByTheMouse();
    void clicks();

    void receiverDeletesTheButton_data();
    void receiverDeletesTheButton();
    void styleSheet();
    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
    void noEndlessRepaint();
    void paintEventOutsideOfPainting();
};

void TestZEFLightStdButton::metaObject()
{
    const QMetaObject& meta = ZEFLightStdButton::staticMetaObject;
    QCOMPARE(QLatin1String(meta.className()), QLatin1String("ZEFLightStdButton"));
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("ZEFStdButton"));
    QCOMPARE(QLatin1String(meta.superClass()->superClass()->className()), QLatin1String("QPushButton"));
    QCOMPARE(ownProperties(meta) + ownMethods(meta), QStringList());
    QCOMPARE(ownProperties(*meta.superClass()) + ownMethods(*meta.superClass()), QStringList());
    static_assert(std::is_abstract_v<ZEFStdButton>);
}

void TestZEFLightStdButton::objectNames()
{
    QWidget parent;
    const NameLog log(&parent);
    const ZEFLightStdButton button(&parent);
    QCOMPARE(log.names, QStringList({QStringLiteral("ZEFStdButton"), QStringLiteral("ZEFLightStdButton")}));
    QCOMPARE(button.objectName(), QStringLiteral("ZEFLightStdButton"));
}

void TestZEFLightStdButton::newButton()
{
    const Open button;
    QCOMPARE(button.sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(button.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QVERIFY(!button.m_initialised);
    QCOMPARE(button.m_sideMargin, 3.0);
    QCOMPARE(button.m_borderWidth, 1.0);
    QCOMPARE(button.m_spareWidth1, 1.0);
    QCOMPARE(button.m_padding, 1.0);
    QCOMPARE(button.m_spareWidth2, 1.0);
    QCOMPARE(button.m_focusRingWidth, 1.0);
    QCOMPARE(button.m_textMargin, 2.0);
    QVERIFY(!button.m_textColor.isValid());
    QVERIFY(!button.m_hovered);
    QVERIFY(!button.m_focused);
    QVERIFY(!button.m_pressed);
}

void TestZEFLightStdButton::lightColors()
{
    Open button;
    button.setProperties();
    QCOMPARE(button.m_normalGradient.stops(), stops(QColor(233, 233, 234), QColor(184, 184, 187)));
    QCOMPARE(button.m_hoverGradient.stops(), stops(QColor(243, 243, 244), QColor(212, 212, 214)));
    QCOMPARE(button.m_pressedGradient.stops(), stops(QColor(200, 200, 201), QColor(157, 157, 159)));
    const QGradientStops disabled = button.m_disabledGradient.stops();
    QCOMPARE(disabled.size(), 2);
    QCOMPARE(disabled[0].second.rgba(), qRgba(233, 233, 234, 128));
    QCOMPARE(disabled[1].second.rgba(), qRgba(184, 184, 187, 128));
    QCOMPARE(button.m_accentColor, QColor(6, 150, 215));
    QCOMPARE(button.m_borderColor, QColor(110, 111, 117));
    QCOMPARE(button.m_disabledBorderColor.rgba(), qRgba(110, 111, 117, 128));
    QCOMPARE(button.m_textColor, QColor(51, 51, 51));
    QCOMPARE(button.m_disabledTextColor.rgba(), qRgba(51, 51, 51, 128));
    QVERIFY(!button.m_spareColor.isValid());
    QVERIFY(!button.m_secondColor.isValid());
    QVERIFY(!button.m_thirdColor.isValid());
    QVERIFY(!button.m_fourthColor.isValid());
}

void TestZEFLightStdButton::sizeHintOfEmptyText()
{
    ZEFLightStdButton button;
    QCOMPARE(button.minimumSizeHint(), QSize(78, 28));
    QCOMPARE(button.sizeHint(), QSize(qMax(78, button.QPushButton::sizeHint().width()), 28));
    button.setIcon(QPixmap(400, 10));
    button.setIconSize(QSize(400, 10));
    QVERIFY(button.sizeHint().width() > 78);
    QCOMPARE(button.sizeHint().height(), 28);
}

void TestZEFLightStdButton::sizeHintOfText_data()
{
    QTest::addColumn<QString>("text");
    // shorter than the least width on purpose: the hint follows the text alone
    QTest::newRow("short") << QStringLiteral("OK");
    QTest::newRow("long") << QStringLiteral("a text that is much longer than the smallest button");
    QTest::newRow("two lines") << QStringLiteral("one\ntwo");
}

void TestZEFLightStdButton::sizeHintOfText()
{
    QFETCH(const QString, text);
    ZEFLightStdButton button;
    button.setText(text);
    QCOMPARE(button.sizeHint(), QSize(button.fontMetrics().boundingRect(text).width() + 14, 28));
    QCOMPARE(button.minimumSizeHint(), QSize(78, 28));
}

// Too large for an image of its own.
void TestZEFLightStdButton::aHugeButtonHasSmoothCornersToo()
{
    ZEFLightStdButton button;
    button.resize(5000, 4000);
    QImage corner(8, 8, QImage::Format_ARGB32_Premultiplied);
    corner.fill(Qt::transparent);
    button.render(&corner, QPoint(), corner.rect(), QWidget::DrawChildren);
    QCOMPARE(qAlpha(corner.pixel(0, 0)), 0);
    bool smooth = false;
    for (int x = 0; x < corner.width(); ++x) {
        const int alpha = qAlpha(corner.pixel(x, 0));
        smooth = smooth || (alpha > 0 && alpha < 255);
    }
    QVERIFY(smooth);
    TestLog::takeAll();
}

void TestZEFLightStdButton::firstPaintInitialises()
{
    Variant button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    const QFont font = button.font();
    QCOMPARE(button.initialisations, 0);
    painted(button, 1);
    QCOMPARE(button.initialisations, 1);
    QVERIFY(button.m_initialised);
    QCOMPARE(button.font().styleStrategy(), QFont::PreferAntialias);
    QCOMPARE(TestLog::take(Font),
             QStringList({Font + font.family() + QStringLiteral(", ") + QString::number(font.pointSize())}));
    painted(button, 1);
    painted(button, 2);
    QCOMPARE(button.initialisations, 1);
    QCOMPARE(TestLog::take(Font), QStringList());
}

void TestZEFLightStdButton::eachPaintWritesItsState_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("hovered");
    QTest::addColumn<bool>("pressed");
    QTest::addColumn<QString>("line");
    QTest::newRow("idle") << true << false << false << QStringLiteral("debug: Idle: text");
    QTest::newRow("hovered") << true << true << false << QStringLiteral("debug: Hover: text");
    QTest::newRow("pressed") << true << false << true << QStringLiteral("debug: Pressed: text");
    QTest::newRow("hovered and pressed") << true << true << true << QStringLiteral("debug: Pressed: text");
    QTest::newRow("disabled") << false << false << false << QStringLiteral("debug: Disabled: text");
    QTest::newRow("disabled while pressed")
        << false << true << true << QStringLiteral("debug: Disabled: text");
}

void TestZEFLightStdButton::eachPaintWritesItsState()
{
    QFETCH(const bool, enabled);
    QFETCH(const bool, hovered);
    QFETCH(const bool, pressed);
    QFETCH(const QString, line);
    Open button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    button.setEnabled(enabled);
    button.m_hovered = hovered;
    button.m_pressed = pressed;
    painted(button, 1);
    QCOMPARE(stateLines(), QStringList({line}));
    painted(button, 1);
    QCOMPARE(stateLines(), QStringList({line}));
}

void TestZEFLightStdButton::textIsNeverAFormat()
{
    ZEFLightStdButton button;
    button.setText(QStringLiteral("%s %n %1 \"quoted\""));
    button.resize(ButtonSize);
    painted(button, 1);
    QCOMPARE(stateLines(), QStringList({QStringLiteral("debug: Idle: %s %n %1 \"quoted\"")}));
}

void TestZEFLightStdButton::workingColors_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("enabled") << true;
    QTest::newRow("disabled") << false;
}

void TestZEFLightStdButton::workingColors()
{
    QFETCH(const bool, enabled);
    Variant button;
    button.resize(ButtonSize);
    button.setEnabled(enabled);
    painted(button, 1);
    QCOMPARE(button.m_workingTextColor, enabled ? button.m_textColor : button.m_disabledTextColor);
    QCOMPARE(button.m_workingBorderColor, enabled ? button.m_borderColor : button.m_disabledBorderColor);
    QCOMPARE(button.m_workingSecondColor, enabled ? QColor(2, 2, 2) : QColor(22, 22, 22));
    QCOMPARE(button.m_workingThirdColor, enabled ? QColor(3, 3, 3) : QColor(33, 33, 33));
    QCOMPARE(button.m_workingFourthColor, enabled ? QColor(4, 4, 4) : QColor(44, 44, 44));
    QCOMPARE(button.m_workingGradient.stops(),
             enabled ? button.m_normalGradient.stops() : button.m_disabledGradient.stops());
    QCOMPARE(button.m_workingGradient.start(), QPointF(0, 0));
    QCOMPARE(button.m_workingGradient.finalStop(), QPointF(0, ButtonSize.height()));
}

void TestZEFLightStdButton::body_data()
{
    QTest::addColumn<int>("ratio");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("hovered");
    QTest::addColumn<bool>("pressed");
    QTest::addColumn<QColor>("top");
    QTest::addColumn<QColor>("bottom");
    for (const int ratio : {1, 2}) {
        QTest::addRow("normal, ratio %d", ratio)
            << ratio << true << false << false << QColor(233, 233, 234) << QColor(184, 184, 187);
        QTest::addRow("hovered, ratio %d", ratio)
            << ratio << true << true << false << QColor(243, 243, 244) << QColor(212, 212, 214);
        QTest::addRow("pressed, ratio %d", ratio)
            << ratio << true << false << true << QColor(200, 200, 201) << QColor(157, 157, 159);
        QTest::addRow("hovered and pressed, ratio %d", ratio)
            << ratio << true << true << true << QColor(200, 200, 201) << QColor(157, 157, 159);
        QTest::addRow("disabled, ratio %d", ratio)
            << ratio << false << true << true << QColor(233, 233, 234, 128) << QColor(184, 184, 187, 128);
    }
}

void TestZEFLightStdButton::body()
{
    QFETCH(const int, ratio);
    QFETCH(const bool, enabled);
    QFETCH(const bool, hovered);
    QFETCH(const bool, pressed);
    QFETCH(const QColor, top);
    QFETCH(const QColor, bottom);
    Open button;
    button.resize(ButtonSize);
    button.setEnabled(enabled);
    button.m_hovered = hovered;
    button.m_pressed = pressed;
    const QImage image = painted(button, ratio);
    const int x = image.width() / 2;
    // the gradient runs over the whole height, the body begins one border below
    for (const double y : {3.5, 14.5, 24.5}) {
        const double part = y / ButtonSize.height();
        const QColor color = image.pixelColor(x, int(y * ratio));
        const auto mixed = [&](int from, int to) { return from + (to - from) * part; };
        QVERIFY(qAbs(color.red() - mixed(top.red(), bottom.red())) <= 3);
        QVERIFY(qAbs(color.green() - mixed(top.green(), bottom.green())) <= 3);
        QVERIFY(qAbs(color.blue() - mixed(top.blue(), bottom.blue())) <= 3);
        QVERIFY(qAbs(color.alpha() - top.alpha()) <= 1);
    }
}

void TestZEFLightStdButton::referencePainting_data()
{
    QTest::addColumn<int>("ratio");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("focused");
    QTest::addColumn<bool>("pressed");
    for (const int ratio : {1, 2}) {
        for (int states = 0; states < 8; ++states) {
            QTest::addRow("ratio %d%s%s%s", ratio, states & 1 ? ", disabled" : "",
                          states & 2 ? ", focused" : "", states & 4 ? ", pressed" : "")
                << ratio << !(states & 1) << bool(states & 2) << bool(states & 4);
        }
    }
}

void TestZEFLightStdButton::referencePainting()
{
    QFETCH(const int, ratio);
    QFETCH(const bool, enabled);
    QFETCH(const bool, focused);
    QFETCH(const bool, pressed);
    Open button;
    button.setText(QStringLiteral("&text"));
    button.resize(ButtonSize);
    button.setEnabled(enabled);
    button.m_focused = focused;
    button.m_pressed = pressed;
    const QImage image = painted(button, ratio);

    const auto rounded = [](const QRectF& rect, double radius) {
        QPainterPath path;
        path.addRoundedRect(rect, radius, radius);
        return path;
    };
    QImage expected(ButtonSize * ratio, QImage::Format_ARGB32_Premultiplied);
    expected.setDevicePixelRatio(ratio);
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(button.font());
    QRectF rect(0, 0, 78, 28);
    double radius = 4;
    if (enabled && focused) {
        painter.setPen(QPen(QColor(6, 150, 215), 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.drawPath(rounded(rect, radius));
        radius = 3;
        rect.adjust(1.5, 1.5, -1.5, -1.5);
    }
    const int alpha = enabled ? 255 : 128;
    painter.setPen(QPen(QColor(110, 111, 117, alpha), 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.drawPath(rounded(rect, radius));
    rect.adjust(1, 1, -1, -1);
    QLinearGradient gradient(0, 0, 0, 28);
    const QGradientStops colors = !enabled ? stops(QColor(233, 233, 234, alpha), QColor(184, 184, 187, alpha))
        : pressed                          ? stops(QColor(200, 200, 201), QColor(157, 157, 159))
                                           : stops(QColor(233, 233, 234), QColor(184, 184, 187));
    gradient.setStops(colors);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawPath(rounded(rect, radius));
    if (enabled && pressed)
        rect.translate(1, 1);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QColor(51, 51, 51, alpha));
    painter.drawText(rect,
                     Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine | Qt::TextIncludeTrailingSpaces
                         | Qt::TextShowMnemonic,
                     QStringLiteral("&text"));
    painter.end();

    int different = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb a = image.pixel(x, y);
            const QRgb b = expected.pixel(x, y);
            // arcs and rounded rectangles are not the same curve to the last bit
            if (qAbs(qAlpha(a) - qAlpha(b)) > 8 || qAbs(qGray(a) - qGray(b)) > 8)
                ++different;
        }
    }
    QCOMPARE(different, 0);
}

void TestZEFLightStdButton::focusRing_data()
{
    QTest::addColumn<int>("ratio");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("focused");
    QTest::addColumn<bool>("ring");
    for (const int ratio : {1, 2}) {
        QTest::addRow("focused, ratio %d", ratio) << ratio << true << true << true;
        QTest::addRow("not focused, ratio %d", ratio) << ratio << true << false << false;
        QTest::addRow("focused but disabled, ratio %d", ratio) << ratio << false << true << false;
    }
}

void TestZEFLightStdButton::focusRing()
{
    QFETCH(const int, ratio);
    QFETCH(const bool, enabled);
    QFETCH(const bool, focused);
    QFETCH(const bool, ring);
    Open button;
    button.resize(ButtonSize);
    button.setEnabled(enabled);
    button.m_focused = focused;
    const QImage image = painted(button, ratio);
    const QColor edge = image.pixelColor(image.width() / 2, 0);
    QCOMPARE(edge.blue() > edge.red() + 60, ring);
}

void TestZEFLightStdButton::pressedTextSinks()
{
    const auto inkOf = [](bool pressed) {
        Open button;
        button.setText(QString(QChar(0x2588)));
        button.resize(ButtonSize);
        button.m_pressed = pressed;
        const QImage image = painted(button, 1);
        QRect ink;
        for (int y = 4; y < image.height() - 4; ++y) {
            for (int x = 4; x < image.width() - 4; ++x) {
                if (qGray(image.pixel(x, y)) < 100)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    };
    QVERIFY(!inkOf(false).isEmpty());
    QCOMPARE(inkOf(true).topLeft(), inkOf(false).topLeft() + QPoint(1, 1));
}

void TestZEFLightStdButton::disabledIgnoresTheFlags_data()
{
    addRatioRows();
}

void TestZEFLightStdButton::disabledIgnoresTheFlags()
{
    QFETCH(const int, ratio);
    Open button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    button.setEnabled(false);
    const QImage image = painted(button, ratio);
    button.m_focused = true;
    button.m_hovered = true;
    button.m_pressed = true;
    QCOMPARE(painted(button, ratio), image);
}

void TestZEFLightStdButton::cornersAreRound_data()
{
    addRatioRows();
}

void TestZEFLightStdButton::cornersAreRound()
{
    QFETCH(const int, ratio);
    ZEFLightStdButton button;
    button.resize(ButtonSize);
    const QImage image = painted(button, ratio);
    QVERIFY(qAlpha(image.pixel(0, 0)) < 32);
    QVERIFY(qAlpha(image.pixel(image.width() - 1, 0)) < 32);
    QVERIFY(qAlpha(image.pixel(0, image.height() - 1)) < 32);
    QVERIFY(qAlpha(image.pixel(image.width() - 1, image.height() - 1)) < 32);
    QVERIFY(qAlpha(image.pixel(image.width() / 2, 0)) > 100);
}

void TestZEFLightStdButton::sharpAtRatioTwo()
{
    ZEFLightStdButton button;
    button.setText(QStringLiteral("sharp"));
    button.resize(ButtonSize);
    const QImage image = painted(button, 2);
    // an image of half the pixels, scaled up, would consist of equal squares
    bool finer = false;
    for (int y = 0; y < image.height() && !finer; y += 2) {
        for (int x = 0; x < image.width() && !finer; x += 2)
            finer = image.pixel(x, y) != image.pixel(x + 1, y);
    }
    QVERIFY(finer);
}

void TestZEFLightStdButton::painterThatHasABrush()
{
    Open button;
    button.resize(ButtonSize);
    button.m_focused = true;
    const QImage reference = painted(button, 1);
    QImage image(ButtonSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::red);
    button.drawButton(&painter, QRectF(button.rect()));
    painter.end();
    QCOMPARE(image, reference);
}

void TestZEFLightStdButton::changedLooksAreDrawn_data()
{
    using Change = std::function<void(Open&)>;
    QTest::addColumn<Change>("change");
    QTest::newRow("size") << Change([](Open& button) { button.resize(100, 28); });
    QTest::newRow("border colour") << Change([](Open& button) { button.m_borderColor = Qt::red; });
    QTest::newRow("accent colour") << Change([](Open& button) { button.m_accentColor = Qt::red; });
    QTest::newRow("text colour") << Change([](Open& button) { button.m_textColor = Qt::red; });
    QTest::newRow("gradient") << Change(
        [](Open& button) { button.m_normalGradient.setColorAt(0.5, Qt::red); });
    QTest::newRow("border width") << Change([](Open& button) { button.m_borderWidth = 3; });
    QTest::newRow("ring width") << Change([](Open& button) { button.m_focusRingWidth = 3; });
    QTest::newRow("focus") << Change([](Open& button) { button.m_focused = false; });
    QTest::newRow("text") << Change([](Open& button) { button.setText(QStringLiteral("other")); });
}

void TestZEFLightStdButton::changedLooksAreDrawn()
{
    QFETCH(const std::function<void(Open&)>, change);
    Open button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    button.m_focused = true;
    const QImage before = painted(button, 1);
    QCOMPARE(painted(button, 1), before);
    change(button);
    QVERIFY(painted(button, 1) != before);
}

void TestZEFLightStdButton::elsewhereAndScaled()
{
    Open button;
    button.resize(ButtonSize);
    const QImage reference = painted(button, 1);
    QImage image(ButtonSize * 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(10, 20);
    button.drawButton(&painter, QRectF(button.rect()));
    painter.end();
    QCOMPARE(image.copy(QRect(QPoint(10, 20), ButtonSize)), reference);
    image.fill(Qt::transparent);
    painter.begin(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(2, 2);
    button.drawButton(&painter, QRectF(button.rect()));
    painter.end();
    image.setDevicePixelRatio(2);
    QCOMPARE(image, painted(button, 2));
}

void TestZEFLightStdButton::handlers_data()
{
    using Flag = bool Open::*;
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<QString>("line");
    QTest::addColumn<Flag>("flag");
    QTest::addColumn<bool>("value");
    QTest::newRow("enter") << QEvent::Enter << QStringLiteral("enterEvent()") << Flag(&Open::m_hovered)
                           << true;
    QTest::newRow("leave") << QEvent::Leave << QStringLiteral("leaveEvent()") << Flag(&Open::m_hovered)
                           << false;
    QTest::newRow("focus in") << QEvent::FocusIn << QStringLiteral("focusInEvent()") << Flag(&Open::m_focused)
                              << true;
    QTest::newRow("focus out") << QEvent::FocusOut << QStringLiteral("focusOutEvent()")
                               << Flag(&Open::m_focused) << false;
    QTest::newRow("key press") << QEvent::KeyPress << QStringLiteral("keyPressEvent()")
                               << Flag(&Open::m_pressed) << true;
    QTest::newRow("key release") << QEvent::KeyRelease << QStringLiteral("keyReleaseEvent()")
                                 << Flag(&Open::m_pressed) << false;
    // the line of the release, as it is meant
    QTest::newRow("mouse press") << QEvent::MouseButtonPress << QStringLiteral("mouseReleaseEvent()")
                                 << Flag(&Open::m_pressed) << true;
    QTest::newRow("mouse release") << QEvent::MouseButtonRelease << QStringLiteral("mouseReleaseEvent()")
                                   << Flag(&Open::m_pressed) << false;
}

namespace {

void sendEvent(QWidget& widget, QEvent::Type type)
{
    const QPointF position(5, 5);
    switch (type) {
    case QEvent::Enter: {
        QEnterEvent event(position, position, position);
        QCoreApplication::sendEvent(&widget, &event);
        break;
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        QFocusEvent event(type);
        QCoreApplication::sendEvent(&widget, &event);
        break;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        QKeyEvent event(type, Qt::Key_A, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease: {
        QMouseEvent event(type, position, position, position, Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
        break;
    }
    default: {
        QEvent event(type);
        QCoreApplication::sendEvent(&widget, &event);
        break;
    }
    }
}

} // namespace

void TestZEFLightStdButton::handlers()
{
    QFETCH(const QEvent::Type, type);
    QFETCH(const QString, line);
    QFETCH(bool Open::*const, flag);
    QFETCH(const bool, value);
    Open button;
    button.resize(ButtonSize);
    QVERIFY(showActive(button));
    QCoreApplication::processEvents();
    button.*flag = !value;
    TestLog::takeAll();
    EventCounter paints(&button, QEvent::Paint);
    sendEvent(button, type);
    QCOMPARE(button.*flag, value);
    QVERIFY(TestLog::take(QStringLiteral("debug: ")).contains(u"debug: " + line));
    QTRY_VERIFY(paints.count > 0);
}

void TestZEFLightStdButton::handlersOfADisabledButton_data()
{
    handlers_data();
}

void TestZEFLightStdButton::handlersOfADisabledButton()
{
    QFETCH(const QEvent::Type, type);
    QFETCH(bool Open::*const, flag);
    QFETCH(const bool, value);
    Open button;
    button.resize(ButtonSize);
    button.setEnabled(false);
    button.*flag = !value;
    sendEvent(button, type);
    QCOMPARE(button.*flag, !value);
    QCOMPARE(TestLog::take(QStringLiteral("debug: ")), QStringList());
}

void TestZEFLightStdButton::flagsOutliveDisabling()
{
    Open button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    sendEvent(button, QEvent::Enter);
    sendEvent(button, QEvent::MouseButtonPress);
    button.setEnabled(false);
    sendEvent(button, QEvent::Leave);
    button.setEnabled(true);
    QVERIFY(button.m_hovered);
    QVERIFY(button.m_pressed);
    TestLog::takeAll();
    painted(button, 1);
    QCOMPARE(stateLines(), QStringList({QStringLiteral("debug: Pressed: text")}));
}

void TestZEFLightStdButton::anyKeyPresses_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("a letter") << Qt::Key_A;
    QTest::newRow("shift") << Qt::Key_Shift;
}

void TestZEFLightStdButton::anyKeyPresses()
{
    QFETCH(const Qt::Key, key);
    Open button;
    button.setText(QStringLiteral("text"));
    QVERIFY(showActive(button));
    button.setFocus();
    QTest::keyPress(&button, key);
    QVERIFY(button.m_pressed);
    QTest::keyRelease(&button, key);
    QVERIFY(!button.m_pressed);
}

void TestZEFLightStdButton::pressedLookEndsWithTheFocus_data()
{
    QTest::addColumn<bool>("disables");
    QTest::newRow("by an arrow key") << false;
    // The focus leaves a button that its own click disables.
    QTest::newRow("by its own end") << true;
}

void TestZEFLightStdButton::pressedLookEndsWithTheFocus()
{
    QFETCH(const bool, disables);
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    auto* button = new Open;
    button->setText(QStringLiteral("text"));
    auto* neighbour = new QPushButton(QStringLiteral("neighbour"));
    layout->addWidget(button);
    layout->addWidget(neighbour);
    QVERIFY(showActive(window));
    button->setFocus();
    if (disables) {
        connect(button, &QAbstractButton::clicked, button, [button] { button->setEnabled(false); });
        button->setAutoDefault(true);
    }
    QTest::keyPress(button, disables ? Qt::Key_Return : Qt::Key_Right);
    QTRY_VERIFY(neighbour->hasFocus());
    button->setEnabled(true);
    TestLog::takeAll();
    painted(*button, 1);
    QCOMPARE(stateLines(), QStringList({QStringLiteral("debug: Idle: text")}));
    // The release goes to the neighbour.
    QTest::keyRelease(neighbour, disables ? Qt::Key_Return : Qt::Key_Right);
    QVERIFY(!button->m_pressed);
}

void TestZEFLightStdButton::leavingWhilePressedKeepsThePressedLook()
{
    Open button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    sendEvent(button, QEvent::Enter);
    sendEvent(button, QEvent::MouseButtonPress);
    sendEvent(button, QEvent::Leave);
    TestLog::takeAll();
    painted(button, 1);
    QCOMPARE(stateLines(), QStringList({QStringLiteral("debug: Pressed: text")}));
    sendEvent(button, QEvent::MouseButtonRelease);
    TestLog::takeAll();
    painted(button, 1);
    QCOMPARE(stateLines(), QStringList({QStringLiteral("debug: Idle: text")}));
}

void TestZEFLightStdButton::hoverByTheMouse()
{
    QWidget window;
    window.setGeometry(100, 100, 200, 100);
    Open button;
    button.setParent(&window);
    button.setGeometry(QRect(QPoint(20, 10), ButtonSize));
    QVERIFY(showActive(window));
    QTest::mouseMove(&window, QPoint(150, 80));
    QTest::mouseMove(&window, button.geometry().center());
    QTRY_VERIFY(button.m_hovered);
    QTest::mouseMove(&window, QPoint(150, 80));
    QTRY_VERIFY(!button.m_hovered);
}

void TestZEFLightStdButton::clicks()
{
    QWidget window;
    QLineEdit edit(&window);
    Open button;
    button.setParent(&window);
    button.move(0, 50);
    QVERIFY(showActive(window));
    edit.setFocus();
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    button.setFocus();
    QTRY_VERIFY(button.m_focused);
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(clicks.count(), 2);
    edit.setFocus();
    QTRY_VERIFY(!button.m_focused);
}

void TestZEFLightStdButton::receiverDeletesTheButton_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("key") << false;
}

void TestZEFLightStdButton::receiverDeletesTheButton()
{
    QFETCH(const bool, byMouse);
    QWidget window;
    window.resize(200, 100);
    const QPointer<ZEFLightStdButton> button(new ZEFLightStdButton(&window));
    button->resize(ButtonSize);
    button->setFocus();
    QVERIFY(showActive(window));
    connect(button, &QAbstractButton::clicked, this, [&] { delete button.data(); });
    if (byMouse)
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    else
        QTest::keyClick(window.windowHandle(), Qt::Key_Space);
    QTRY_VERIFY(!button);
}

void TestZEFLightStdButton::styleSheet()
{
    ZEFLightStdButton button;
    button.setText(QStringLiteral("text"));
    button.resize(ButtonSize);
    const QImage plain = painted(button, 1);
    button.setStyleSheet(QStringLiteral("background: red"));
    QCOMPARE(painted(button, 1), plain);
}

void TestZEFLightStdButton::texts_data()
{
    addTextRows();
}

void TestZEFLightStdButton::texts()
{
    QFETCH(const QString, text);
    ZEFLightStdButton button;
    button.setText(text);
    QCOMPARE(button.sizeHint().height(), 28);
    QVERIFY(paintsInSmallWindow(button, QSize(100, 28)));
    QVERIFY(stateLines().contains(u"debug: Idle: " + text));
}

void TestZEFLightStdButton::sizes_data()
{
    addSizeRows();
    QTest::newRow("more pixels than an image of its own holds") << QSize(5000, 5000);
}

void TestZEFLightStdButton::sizes()
{
    QFETCH(const QSize, size);
    ZEFLightStdButton button;
    button.setText(QStringLiteral("text"));
    QVERIFY(paintsInSmallWindow(button, size));
}

void TestZEFLightStdButton::noEndlessRepaint()
{
    ZEFLightStdButton button;
    button.setText(QStringLiteral("text"));
    EventCounter paints(&button, QEvent::Paint);
    QVERIFY(showActive(button));
    QTRY_VERIFY(paints.count > 0);
    int before = -1;
    for (int round = 0; round < 100 && paints.count != before; ++round) {
        before = paints.count;
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
    }
    QCOMPARE(paints.count, before);
}

void TestZEFLightStdButton::paintEventOutsideOfPainting()
{
    TestLog::allow(QRegularExpression(QStringLiteral("warning: QWidget::paintEngine: .*")));
    TestLog::allow(QRegularExpression(QStringLiteral("warning: QPainter::.*")));
    Variant button;
    button.resize(ButtonSize);
    QPaintEvent event(button.rect());
    QApplication::sendEvent(&button, &event);
    QCOMPARE(button.initialisations, 1);
}

ZEF_TEST_MAIN(TestZEFLightStdButton)
#include "test_zeflightstdbutton.moc"
