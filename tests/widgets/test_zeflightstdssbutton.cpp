#include "controlStyleProbing.h"

#include <ZEFTest.h>

#include <ZEFLightStdSSButton.h>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleOption>

class TestZEFLightStdSSButton : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void objectNames();
    void selectors_data();
    void selectors();
    void textIsCentred();
    void neverShowsAFocusRectangle_data();
    void neverShowsAFocusRectangle();
    void disabledTextIsFlat();
    void childrenKeepTheirStyle();
    void sizeHints_data();
    void sizeHints();
    void painting_data();
    void painting();
    void takesItsStyleOffBeforeItDies();
    void diesUnderStyleSheets_data();
    void diesUnderStyleSheets();
    void diesAfterTheWidgetsInside();
    void diesAfterItsStyleWasReplaced();
    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
};

void TestZEFLightStdSSButton::metaObject()
{
    const QMetaObject& meta = ZEFLightStdSSButton::staticMetaObject;
    QCOMPARE(QLatin1String(meta.className()), QLatin1String("ZEFLightStdSSButton"));
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("ZEFStdSSButton"));
    QCOMPARE(QLatin1String(meta.superClass()->superClass()->className()), QLatin1String("QPushButton"));
    QCOMPARE(ownProperties(meta) + ownMethods(meta), QStringList());
    QCOMPARE(ownProperties(*meta.superClass()) + ownMethods(*meta.superClass()), QStringList());
}

void TestZEFLightStdSSButton::objectNames()
{
    QWidget parent;
    const NameLog log(&parent);
    const ZEFLightStdSSButton button(&parent);
    QCOMPARE(log.names,
             QStringList({QStringLiteral("ZEFStdSSButton"), QStringLiteral("ZEFLightStdSSButton")}));
    QCOMPARE(button.objectName(), QStringLiteral("ZEFLightStdSSButton"));
}

void TestZEFLightStdSSButton::selectors_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<bool>("matches");
    QTest::newRow("the name of the light variant") << QStringLiteral("#ZEFLightStdSSButton") << true;
    QTest::newRow("the name of the base") << QStringLiteral("#ZEFStdSSButton") << false;
    QTest::newRow("the class") << QStringLiteral("ZEFLightStdSSButton") << true;
}

void TestZEFLightStdSSButton::selectors()
{
    QFETCH(const QString, selector);
    QFETCH(const bool, matches);
    QWidget parent;
    parent.setStyleSheet(selector + QStringLiteral(" { background: #ff0000; border: none; }"));
    ZEFLightStdSSButton button(&parent);
    button.resize(78, 28);
    QCOMPARE(isFilled(painted(button, 1), button.rect(), Qt::red), matches);
}

void TestZEFLightStdSSButton::textIsCentred()
{
    ZEFLightStdSSButton button;
    const RecordingStyle* base = recordBelow(button);
    QVERIFY(base);
    const QFontMetrics metrics = button.fontMetrics();
    button.style()->itemTextRect(metrics, QRect(0, 0, 50, 50), Qt::AlignRight | Qt::TextWordWrap, true,
                                 QStringLiteral("text"));
    QCOMPARE(base->textFlags, QList<int>({0x84 | Qt::AlignRight | Qt::TextWordWrap}));
    button.style()->itemTextRect(metrics, QRect(0, 0, 50, 50), 0, true, QStringLiteral("text"));
    QCOMPARE(base->textFlags.last(), 0x84);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    button.style()->drawItemText(&painter, image.rect(), 0, button.palette(), true, QStringLiteral("text"));
    QCOMPARE(base->textFlags.last(), 0x84);
}

void TestZEFLightStdSSButton::neverShowsAFocusRectangle_data()
{
    addRatioRows();
}

void TestZEFLightStdSSButton::neverShowsAFocusRectangle()
{
    QFETCH(const int, ratio);
    ZEFLightStdSSButton button;
    button.setText(QStringLiteral("text"));
    const RecordingStyle* base = recordBelow(button);
    QVERIFY(showActive(button));
    button.setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(button.hasFocus());
    QVERIFY(!isEmpty(painted(button, ratio)));
    QVERIFY(!base->primitives.isEmpty());
    QVERIFY(!base->primitives.contains(QStyle::PE_FrameFocusRect));
    QStyleOptionFocusRect option;
    option.initFrom(&button);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    button.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, &button);
    painter.end();
    QVERIFY(isEmpty(image));
}

void TestZEFLightStdSSButton::disabledTextIsFlat()
{
    const ZEFLightStdSSButton button;
    QCOMPARE(button.style()->styleHint(QStyle::SH_EtchDisabledText), 0);
    QCOMPARE(button.style()->styleHint(QStyle::SH_DitherDisabledText), 0);
}

void TestZEFLightStdSSButton::childrenKeepTheirStyle()
{
    ZEFLightStdSSButton button;
    const QWidget child(&button);
    QCOMPARE(child.style(), QApplication::style());
    QVERIFY(button.style() != QApplication::style());
}

void TestZEFLightStdSSButton::sizeHints_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("short") << QStringLiteral("OK");
    QTest::newRow("long") << QStringLiteral("a text that is much longer than the smallest button");
}

void TestZEFLightStdSSButton::sizeHints()
{
    QFETCH(const QString, text);
    ZEFLightStdSSButton button;
    button.setText(text);
    QCOMPARE(button.minimumSizeHint(), QSize(78, 28));
    QCOMPARE(button.sizeHint(), button.QPushButton::sizeHint());
}

void TestZEFLightStdSSButton::painting_data()
{
    addRatioRows();
}

void TestZEFLightStdSSButton::painting()
{
    QFETCH(const int, ratio);
    ZEFLightStdSSButton button;
    button.setText(QString(QChar(0x2588)).repeated(2));
    button.setStyleSheet(QStringLiteral("background: white; color: black; border: none; padding: 0;"));
    button.resize(100, 40);
    const QImage image = painted(button, ratio);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128)
                ink |= QRect(x, y, 1, 1);
        }
    }
    QVERIFY(!ink.isEmpty());
    QVERIFY(qAbs(ink.center().x() - image.rect().center().x()) <= 2 * ratio);
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
}

void TestZEFLightStdSSButton::takesItsStyleOffBeforeItDies()
{
    QVERIFY(takesItsStyleOff<ZEFLightStdSSButton>());
}

void TestZEFLightStdSSButton::diesUnderStyleSheets_data()
{
    addStyleSheetRows();
}

void TestZEFLightStdSSButton::diesUnderStyleSheets()
{
    liveUnderStyleSheets<ZEFLightStdSSButton>();
}

void TestZEFLightStdSSButton::diesAfterTheWidgetsInside()
{
    dieAfterTheWidgetsInside<ZEFLightStdSSButton>();
}

void TestZEFLightStdSSButton::diesAfterItsStyleWasReplaced()
{
    QProxyStyle other;
    {
        ZEFLightStdSSButton button;
        button.setStyle(&other);
        button.setStyleSheet(QStringLiteral("color: red"));
        button.ensurePolished();
    }
    ZEFLightStdSSButton button;
    button.setStyle(nullptr);
    QCOMPARE(button.style(), QApplication::style());
}

void TestZEFLightStdSSButton::texts_data()
{
    addTextRows();
}

void TestZEFLightStdSSButton::texts()
{
    QFETCH(const QString, text);
    ZEFLightStdSSButton button;
    button.setText(text);
    QVERIFY(paintsInSmallWindow(button, QSize(100, 60)));
}

void TestZEFLightStdSSButton::sizes_data()
{
    addSizeRows();
}

void TestZEFLightStdSSButton::sizes()
{
    QFETCH(const QSize, size);
    ZEFLightStdSSButton button;
    button.setText(QStringLiteral("text"));
    button.setStyleSheet(QStringLiteral("background: white; border: 1px solid red;"));
    QVERIFY(paintsInSmallWindow(button, size));
}

ZEF_TEST_MAIN(TestZEFLightStdSSButton)
#include "test_zeflightstdssbutton.moc"
