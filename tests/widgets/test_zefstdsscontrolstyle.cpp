// The style is not exported: this program has a copy of its own.

#include <ZEFTest.h>

#include <widgets/ZEFStdSSControlStyle.h>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleOption>

namespace {

constexpr int CallersFlags = int(Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine);

//! The base style, which writes down what arrives.
class Base : public QProxyStyle {
public:
    mutable QStringList calls;
    mutable int flags = -1;
    mutable bool antialiasing = false;
    mutable bool textAntialiasing = false;

    QRect itemTextRect(const QFontMetrics&, const QRect& rect, int textFlags, bool,
                       const QString&) const override
    {
        calls.append(QStringLiteral("itemTextRect"));
        flags = textFlags;
        return rect.translated(1, 2);
    }

    void drawItemText(QPainter* painter, const QRect&, int textFlags, const QPalette&, bool,
                      const QString& text, QPalette::ColorRole) const override
    {
        calls.append(u"drawItemText " + text);
        flags = textFlags;
        noteHints(painter);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption*, QPainter* painter,
                       const QWidget*) const override
    {
        calls.append(QStringLiteral("drawPrimitive %1").arg(element));
        noteHints(painter);
    }

    int styleHint(StyleHint hint, const QStyleOption*, const QWidget*, QStyleHintReturn*) const override
    {
        calls.append(QStringLiteral("styleHint %1").arg(hint));
        return 4711;
    }

private:
    void noteHints(QPainter* painter) const
    {
        if (!painter)
            return;
        antialiasing = painter->testRenderHint(QPainter::Antialiasing);
        textAntialiasing = painter->testRenderHint(QPainter::TextAntialiasing);
    }
};

} // namespace

class TestZEFStdSSControlStyle : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void applicationStyleIsTheBase();
    void focusRectangle_data();
    void focusRectangle();
    void primitivesAreAntialiased();
    void primitivesWithoutPainter();
    void hints_data();
    void hints();
    void flags_data();
    void flags();
    void textIsNotAntialiasedAsShapes();
    void textWithoutPainter();
};

void TestZEFStdSSControlStyle::applicationStyleIsTheBase()
{
    ZEFStdSSControlStyle style(true, 0, 0);
    QVERIFY(style.baseStyle());
    QCOMPARE(style.pixelMetric(QStyle::PM_IndicatorWidth),
             style.baseStyle()->pixelMetric(QStyle::PM_IndicatorWidth));
    QVERIFY(!style.parent());
}

void TestZEFStdSSControlStyle::focusRectangle_data()
{
    QTest::addColumn<bool>("drawFocusRect");
    QTest::addColumn<QStyle::PrimitiveElement>("element");
    QTest::addColumn<bool>("drawn");
    QTest::newRow("focus rectangle, wanted") << true << QStyle::PE_FrameFocusRect << true;
    QTest::newRow("focus rectangle, not wanted") << false << QStyle::PE_FrameFocusRect << false;
    QTest::newRow("another, wanted") << true << QStyle::PE_PanelButtonCommand << true;
    QTest::newRow("another, not wanted") << false << QStyle::PE_PanelButtonCommand << true;
}

void TestZEFStdSSControlStyle::focusRectangle()
{
    QFETCH(const bool, drawFocusRect);
    QFETCH(const QStyle::PrimitiveElement, element);
    QFETCH(const bool, drawn);
    ZEFStdSSControlStyle style(drawFocusRect, 0, 0);
    auto* base = new Base;
    style.setBaseStyle(base);
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QStyleOptionFocusRect option;
    style.drawPrimitive(element, &option, &painter);
    QCOMPARE(base->calls.size(), drawn ? 1 : 0);
    QCOMPARE(painter.testRenderHint(QPainter::Antialiasing), drawn);
}

void TestZEFStdSSControlStyle::primitivesAreAntialiased()
{
    ZEFStdSSControlStyle style(false, 0, 0);
    auto* base = new Base;
    style.setBaseStyle(base);
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QStyleOption option;
    style.drawPrimitive(QStyle::PE_Frame, &option, &painter);
    QVERIFY(base->antialiasing);
}

void TestZEFStdSSControlStyle::primitivesWithoutPainter()
{
    ZEFStdSSControlStyle style(true, 0, 0);
    auto* base = new Base;
    style.setBaseStyle(base);
    QStyleOption option;
    style.drawPrimitive(QStyle::PE_Frame, &option, nullptr);
    QCOMPARE(base->calls.size(), 1);
}

void TestZEFStdSSControlStyle::hints_data()
{
    QTest::addColumn<int>("hint");
    QTest::addColumn<int>("optionType");
    QTest::addColumn<int>("answer");
    const int none = -1;
    const int base = 4711;
    QTest::newRow("etched disabled text") << int(QStyle::SH_EtchDisabledText) << none << 0;
    QTest::newRow("etched disabled text, with an option")
        << int(QStyle::SH_EtchDisabledText) << int(QStyleOption::SO_FocusRect) << 0;
    QTest::newRow("dithered disabled text") << int(QStyle::SH_DitherDisabledText) << none << 0;
    QTest::newRow("41 for a focus rectangle") << 41 << int(QStyleOption::SO_FocusRect) << 1;
    QTest::newRow("41 for a button") << 41 << int(QStyleOption::SO_Button) << base;
    QTest::newRow("41 for nothing") << 41 << none << base;
    QTest::newRow("40 for a focus rectangle") << 40 << int(QStyleOption::SO_FocusRect) << base;
    QTest::newRow("42 for a focus rectangle") << 42 << int(QStyleOption::SO_FocusRect) << base;
    QTest::newRow("another") << int(QStyle::SH_Slider_SnapToValue) << none << base;
}

void TestZEFStdSSControlStyle::hints()
{
    QFETCH(const int, hint);
    QFETCH(const int, optionType);
    QFETCH(const int, answer);
    ZEFStdSSControlStyle style(false, Qt::AlignCenter, 0);
    auto* base = new Base;
    style.setBaseStyle(base);
    base->calls.clear();
    const QStyleOptionFocusRect focusRect;
    const QStyleOptionButton button;
    const QStyleOption* option = nullptr;
    if (optionType == QStyleOption::SO_FocusRect)
        option = &focusRect;
    else if (optionType == QStyleOption::SO_Button)
        option = &button;
    QCOMPARE(style.styleHint(QStyle::StyleHint(hint), option), answer);
    QCOMPARE(base->calls.size(), answer == 4711 ? 1 : 0);
}

void TestZEFStdSSControlStyle::flags_data()
{
    QTest::addColumn<int>("toAdd");
    QTest::addColumn<int>("toRemove");
    QTest::addColumn<int>("flags");
    QTest::newRow("neither") << 0 << 0 << CallersFlags;
    QTest::newRow("add") << int(Qt::TextWordWrap) << 0 << int(CallersFlags | Qt::TextWordWrap);
    QTest::newRow("remove") << 0 << int(Qt::AlignVCenter) << int(Qt::AlignRight | Qt::TextSingleLine);
    QTest::newRow("add and remove") << int(Qt::AlignTop) << int(Qt::AlignVCenter)
                                    << int(Qt::AlignRight | Qt::AlignTop | Qt::TextSingleLine);
    QTest::newRow("remove first, then add") << int(Qt::AlignVCenter) << int(Qt::AlignVCenter | Qt::AlignRight)
                                            << int(Qt::AlignVCenter | Qt::TextSingleLine);
    QTest::newRow("negative") << -1 << -1 << CallersFlags;
}

void TestZEFStdSSControlStyle::flags()
{
    QFETCH(const int, toAdd);
    QFETCH(const int, toRemove);
    QFETCH(const int, flags);
    ZEFStdSSControlStyle style(true, toAdd, toRemove);
    auto* base = new Base;
    style.setBaseStyle(base);
    const QRect rect(1, 2, 30, 40);
    QCOMPARE(style.itemTextRect(QFontMetrics(QFont()), rect, CallersFlags, true, QStringLiteral("text")),
             rect.translated(1, 2));
    QCOMPARE(base->flags, flags);
    base->flags = -1;
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    style.drawItemText(&painter, rect, CallersFlags, QPalette(), true, QStringLiteral("text"));
    QCOMPARE(base->flags, flags);
    QCOMPARE(base->calls, QStringList({QStringLiteral("itemTextRect"), QStringLiteral("drawItemText text")}));
}

void TestZEFStdSSControlStyle::textIsNotAntialiasedAsShapes()
{
    ZEFStdSSControlStyle style(true, 0, 0);
    auto* base = new Base;
    style.setBaseStyle(base);
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    style.drawItemText(&painter, QRect(), 0, QPalette(), true, QString());
    QVERIFY(!base->antialiasing);
    QVERIFY(base->textAntialiasing);
}

void TestZEFStdSSControlStyle::textWithoutPainter()
{
    ZEFStdSSControlStyle style(true, 0, 0);
    auto* base = new Base;
    style.setBaseStyle(base);
    style.drawItemText(nullptr, QRect(), 0, QPalette(), true, QString());
    QCOMPARE(base->calls.size(), 1);
}

ZEF_TEST_MAIN(TestZEFStdSSControlStyle)
#include "test_zefstdsscontrolstyle.moc"
