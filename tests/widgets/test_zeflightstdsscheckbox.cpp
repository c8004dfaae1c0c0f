#include "controlStyleProbing.h"

#include <ZEFTest.h>

#include <ZEFLightStdSSCheckbox.h>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QStyleOption>

namespace {

const QString LongText = QStringLiteral("a text of a check box that is so long that it wraps to many lines");
constexpr int WrappedText = Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic | Qt::TextWordWrap;

//! What a style adds to the contents of a check box of this text.
QSize withMargins(const ZEFLightStdSSCheckbox& box, const QSize& contents)
{
    QStyleOptionButton option;
    option.initFrom(&box);
    option.text = box.text();
    return box.style()->sizeFromContents(QStyle::CT_CheckBox, &option, contents, &box);
}

int indicatorAndSpacing(const ZEFLightStdSSCheckbox& box)
{
    return box.style()->pixelMetric(QStyle::PM_IndicatorWidth)
        + box.style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
}

} // namespace

class TestZEFLightStdSSCheckbox : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void objectNames();
    void textIsAtTheTopLeftAndWraps();
    void showsAFocusRectangle();
    void disabledTextIsFlat();
    void emptyTextGivesTheBaseHint();
    void sizeHint_data();
    void sizeHint();
    void narrowerIsTaller();
    void wrapsOnlyWhatDoesNotFit();
    void neverBelowTheCurrentHeight();
    void minimumSizeHintEnds();
    void fixedDialogWithMaximumHeightStays();
    void fixedDialogGrowsWithoutMaximumHeight();
    void painting_data();
    void painting();
    void clicks();
    void takesItsStyleOffBeforeItDies();
    void diesUnderStyleSheets_data();
    void diesUnderStyleSheets();
    void diesAfterTheWidgetsInside();
    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
};

void TestZEFLightStdSSCheckbox::metaObject()
{
    const QMetaObject& meta = ZEFLightStdSSCheckbox::staticMetaObject;
    QCOMPARE(QLatin1String(meta.className()), QLatin1String("ZEFLightStdSSCheckbox"));
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("ZEFStdSSCheckbox"));
    QCOMPARE(QLatin1String(meta.superClass()->superClass()->className()), QLatin1String("QCheckBox"));
    QCOMPARE(ownProperties(meta) + ownMethods(meta), QStringList());
    QCOMPARE(ownProperties(*meta.superClass()) + ownMethods(*meta.superClass()), QStringList());
}

void TestZEFLightStdSSCheckbox::objectNames()
{
    QWidget parent;
    const NameLog log(&parent);
    const ZEFLightStdSSCheckbox box(&parent);
    QCOMPARE(log.names,
             QStringList({QStringLiteral("ZEFStdSSCheckbox"), QStringLiteral("ZEFLightStdSSCheckbox")}));
    QCOMPARE(box.objectName(), QStringLiteral("ZEFLightStdSSCheckbox"));
}

void TestZEFLightStdSSCheckbox::textIsAtTheTopLeftAndWraps()
{
    ZEFLightStdSSCheckbox box;
    const RecordingStyle* base = recordBelow(box);
    QVERIFY(base);
    QCOMPARE(WrappedText, 0x1821);
    box.style()->itemTextRect(box.fontMetrics(), QRect(0, 0, 50, 50), Qt::AlignVCenter, true,
                              QStringLiteral("text"));
    QCOMPARE(base->textFlags, QList<int>({WrappedText}));
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    box.style()->drawItemText(&painter, image.rect(), Qt::AlignVCenter | Qt::TextHideMnemonic, box.palette(),
                              true, QStringLiteral("text"));
    QCOMPARE(base->textFlags.last(), WrappedText | Qt::TextHideMnemonic);
}

void TestZEFLightStdSSCheckbox::showsAFocusRectangle()
{
    ZEFLightStdSSCheckbox box;
    box.setText(QStringLiteral("text"));
    const RecordingStyle* base = recordBelow(box);
    QStyleOptionFocusRect option;
    option.initFrom(&box);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    box.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, &box);
    QCOMPARE(base->primitives, QList<QStyle::PrimitiveElement>({QStyle::PE_FrameFocusRect}));
}

void TestZEFLightStdSSCheckbox::disabledTextIsFlat()
{
    const ZEFLightStdSSCheckbox box;
    QCOMPARE(box.style()->styleHint(QStyle::SH_EtchDisabledText), 0);
    QCOMPARE(box.style()->styleHint(QStyle::SH_DitherDisabledText), 0);
}

void TestZEFLightStdSSCheckbox::emptyTextGivesTheBaseHint()
{
    ZEFLightStdSSCheckbox box;
    box.resize(100, 300);
    QCOMPARE(box.sizeHint(), box.QCheckBox::sizeHint());
}

void TestZEFLightStdSSCheckbox::sizeHint_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("parentHeight");
    QTest::newRow("short, no parent") << QStringLiteral("text") << QSize(200, 20) << 0;
    QTest::newRow("long, no parent") << LongText << QSize(200, 20) << 0;
    QTest::newRow("long, a low parent") << LongText << QSize(200, 20) << 10;
    QTest::newRow("long, a high parent") << LongText << QSize(200, 20) << 500;
    QTest::newRow("long, high already") << LongText << QSize(200, 400) << 0;
    QTest::newRow("a mnemonic") << QStringLiteral("&text") << QSize(200, 20) << 0;
    QTest::newRow("narrower than the indicator") << LongText << QSize(5, 20) << 0;
}

void TestZEFLightStdSSCheckbox::sizeHint()
{
    QFETCH(const QString, text);
    QFETCH(const QSize, size);
    QFETCH(const int, parentHeight);
    QWidget parent;
    parent.resize(300, parentHeight);
    ZEFLightStdSSCheckbox box(parentHeight > 0 ? &parent : nullptr);
    box.setText(text);
    box.resize(size);
    const QRect label(0, 0, size.width() - indicatorAndSpacing(box), size.height());
    QRect wrapping = label;
    wrapping.setHeight(qMax(label.height(), parentHeight));
    const QRect bounding = box.fontMetrics().boundingRect(wrapping, WrappedText, text);
    const QSize contents(bounding.width(), qMax(bounding.height(), label.height()));
    QCOMPARE(box.sizeHint(), withMargins(box, contents));
}

void TestZEFLightStdSSCheckbox::narrowerIsTaller()
{
    ZEFLightStdSSCheckbox box;
    box.setText(LongText);
    box.resize(600, 10);
    const int wide = box.sizeHint().height();
    box.resize(100, 10);
    QVERIFY(box.sizeHint().height() > wide);
}

void TestZEFLightStdSSCheckbox::wrapsOnlyWhatDoesNotFit()
{
    ZEFLightStdSSCheckbox box;
    box.setText(LongText);
    box.resize(2000, 1);
    const int oneLine = box.sizeHint().height();
    const int text = box.fontMetrics().boundingRect(QRect(0, 0, 2000, 1), WrappedText, LongText).width();
    box.resize(text + indicatorAndSpacing(box), 1);
    QCOMPARE(box.sizeHint().height(), oneLine);
    box.resize(box.width() - 1, 1);
    QVERIFY(box.sizeHint().height() > oneLine);
}

void TestZEFLightStdSSCheckbox::neverBelowTheCurrentHeight()
{
    ZEFLightStdSSCheckbox box;
    box.setText(QStringLiteral("text"));
    box.resize(200, 333);
    QCOMPARE(box.sizeHint().height(), withMargins(box, QSize(1, 333)).height());
    QVERIFY(box.sizeHint().height() > 333);
}

void TestZEFLightStdSSCheckbox::minimumSizeHintEnds()
{
    ZEFLightStdSSCheckbox box;
    box.setText(LongText);
    box.resize(100, 30);
    QCOMPARE(box.minimumSizeHint(), box.sizeHint());
    box.setText(QString());
    QCOMPARE(box.minimumSizeHint(), box.sizeHint());
}

void TestZEFLightStdSSCheckbox::fixedDialogWithMaximumHeightStays()
{
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    auto* box = new ZEFLightStdSSCheckbox;
    box->setText(LongText);
    box->setFixedWidth(150);
    box->setMaximumHeight(80);
    layout->addWidget(box);
    QVERIFY(showActive(dialog));
    for (int i = 0; i < 20; ++i) {
        layout->invalidate();
        layout->activate();
    }
    const QSize size = dialog.size();
    QVERIFY(box->height() <= 80);
    for (int i = 0; i < 20; ++i) {
        layout->invalidate();
        layout->activate();
    }
    QCOMPARE(dialog.size(), size);
}

void TestZEFLightStdSSCheckbox::fixedDialogGrowsWithoutMaximumHeight()
{
    // as it is meant: the height of now is always the least one
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    auto* box = new ZEFLightStdSSCheckbox;
    box->setText(LongText);
    box->setFixedWidth(150);
    layout->addWidget(box);
    QVERIFY(showActive(dialog));
    const int height = box->height();
    for (int i = 0; i < 3; ++i) {
        box->updateGeometry();
        layout->activate();
    }
    QVERIFY(box->height() > height);
}

void TestZEFLightStdSSCheckbox::painting_data()
{
    addRatioRows();
}

void TestZEFLightStdSSCheckbox::painting()
{
    QFETCH(const int, ratio);
    ZEFLightStdSSCheckbox box;
    box.setText(QString(QChar(0x2588)));
    box.setStyleSheet(QStringLiteral("QCheckBox { color: #ff0000; }"));
    box.resize(150, 120);
    const QImage image = painted(box, ratio);
    // red ink in the upper part only: the text stands at the top although the box is high
    int upper = 0;
    int lower = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() > 128 && color.red() > 200 && color.green() < 60)
                ++(y < image.height() / 3 ? upper : lower);
        }
    }
    QVERIFY(upper > 0);
    QCOMPARE(lower, 0);
}

void TestZEFLightStdSSCheckbox::clicks()
{
    ZEFLightStdSSCheckbox box;
    box.setText(QStringLiteral("text"));
    QVERIFY(showActive(box));
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box.height() / 2));
    QVERIFY(box.isChecked());
    QTest::keyClick(&box, Qt::Key_Space);
    QVERIFY(!box.isChecked());
}

void TestZEFLightStdSSCheckbox::takesItsStyleOffBeforeItDies()
{
    QVERIFY(takesItsStyleOff<ZEFLightStdSSCheckbox>());
}

void TestZEFLightStdSSCheckbox::diesUnderStyleSheets_data()
{
    addStyleSheetRows();
}

void TestZEFLightStdSSCheckbox::diesUnderStyleSheets()
{
    liveUnderStyleSheets<ZEFLightStdSSCheckbox>();
}

void TestZEFLightStdSSCheckbox::diesAfterTheWidgetsInside()
{
    dieAfterTheWidgetsInside<ZEFLightStdSSCheckbox>();
}

void TestZEFLightStdSSCheckbox::texts_data()
{
    addTextRows();
}

void TestZEFLightStdSSCheckbox::texts()
{
    QFETCH(const QString, text);
    ZEFLightStdSSCheckbox box;
    box.setText(text);
    QVERIFY(box.sizeHint().isValid());
    QVERIFY(paintsInSmallWindow(box, QSize(100, 60)));
}

void TestZEFLightStdSSCheckbox::sizes_data()
{
    addSizeRows();
}

void TestZEFLightStdSSCheckbox::sizes()
{
    QFETCH(const QSize, size);
    ZEFLightStdSSCheckbox box;
    box.setText(LongText);
    QVERIFY(paintsInSmallWindow(box, size));
}

ZEF_TEST_MAIN(TestZEFLightStdSSCheckbox)
#include "test_zeflightstdsscheckbox.moc"
