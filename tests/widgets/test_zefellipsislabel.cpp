#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFEllipsisLabel.h>

#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

namespace {

const QString LongText = QStringLiteral("a text that is far too long for the label");
const QChar Ellipsis(0x2026);

//! Paints the label once and lets nothing else happen.
void paint(QWidget& label)
{
    painted(label, 1);
}

int widthOf(const QLabel& label, const QString& text)
{
    return QFontMetrics(label.font()).horizontalAdvance(text);
}

//! The least width that needs no ellipsis; advances are rounded, so that it is not just the advance.
int exactWidthOf(const QLabel& label, const QString& text)
{
    const QFontMetrics metrics(label.font());
    int width = metrics.horizontalAdvance(text) - 2;
    while (metrics.elidedText(text, Qt::ElideRight, width) != text)
        ++width;
    return width;
}

QString shownToolTip(QWidget& label)
{
    const QPoint position = label.rect().center();
    QHelpEvent help(QEvent::ToolTip, position, label.mapToGlobal(position));
    QCoreApplication::sendEvent(&label, &help);
    return QToolTip::text();
}

} // namespace

class TestZEFEllipsisLabel : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        allowPlatformLines();
        TestLog::allow(QStringLiteral("warning: This plugin does not support raise()"));
    }
    void tidyUp() override
    {
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
    }

private Q_SLOTS:
    void metaObject();
    void fittingTextStays();
    void longTextIsCut();
    void wideningRestores();
    void cutFollowsTheWidth();
    void exactWidth();
    void mnemonicTakesNoRoom_data();
    void mnemonicTakesNoRoom();
    void mnemonicAtItsOwnSizeHint();
    void laterBuddy();
    void reservedWidth_data();
    void reservedWidth();
    void textIsCapturedOnce();
    void laterTextIsReplacedAgain();
    void emptyLabelCapturesLater();
    void templateTextStaysForGood();
    void foreignToolTipStaysWhileTextFits();
    void foreignToolTipIsReplacedWhileCut();
    void foreignToolTipStaysOnceTheTextFitsAgain();
    void fontChangeCutsAgain();
    void markupIsCutAsItStands();
    void toolTipIsPlain_data();
    void toolTipIsPlain();
    void foreignToolTipIsShownAsItIs();
    void painting_data();
    void painting();
    void inALayoutItComesToRest_data();
    void inALayoutItComesToRest();
    void repaintWithoutChangeSetsNothing();
    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
    void pixmapOnly();
};

void TestZEFEllipsisLabel::metaObject()
{
    const QMetaObject& meta = ZEFEllipsisLabel::staticMetaObject;
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("QLabel"));
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(ownMethods(meta), QStringList());
}

void TestZEFEllipsisLabel::fittingTextStays()
{
    ZEFEllipsisLabel label;
    label.setText(QStringLiteral("short"));
    label.resize(200, 20);
    paint(label);
    QCOMPARE(label.text(), QStringLiteral("short"));
    QCOMPARE(label.toolTip(), QString());
}

void TestZEFEllipsisLabel::longTextIsCut()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
    QVERIFY(LongText.startsWith(label.text().chopped(1)));
    QVERIFY(widthOf(label, label.text()) <= 80);
    QCOMPARE(label.toolTip(), LongText);
}

void TestZEFEllipsisLabel::wideningRestores()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    label.resize(600, 20);
    paint(label);
    QCOMPARE(label.text(), LongText);
    QCOMPARE(label.toolTip(), QString());
    label.resize(80, 20);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
    QCOMPARE(label.toolTip(), LongText);
}

void TestZEFEllipsisLabel::cutFollowsTheWidth()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(60, 20);
    paint(label);
    const QString narrow = label.text();
    label.resize(120, 20);
    paint(label);
    QVERIFY(label.text().size() > narrow.size());
    QVERIFY(label.text().endsWith(Ellipsis));
    label.resize(60, 20);
    paint(label);
    QCOMPARE(label.text(), narrow);
}

void TestZEFEllipsisLabel::exactWidth()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(exactWidthOf(label, LongText), 20);
    paint(label);
    QCOMPARE(label.text(), LongText);
    label.resize(label.width() - 1, 20);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
}

void TestZEFEllipsisLabel::mnemonicTakesNoRoom_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("drawn");
    QTest::newRow("mnemonic") << QStringLiteral("&Name of the branch")
                              << QStringLiteral("Name of the branch");
    QTest::newRow("in the middle") << QStringLiteral("Name &of") << QStringLiteral("Name of");
    QTest::newRow("an ampersand") << QStringLiteral("First && last") << QStringLiteral("First & last");
    QTest::newRow("both") << QStringLiteral("&First && last") << QStringLiteral("First & last");
}

void TestZEFEllipsisLabel::mnemonicTakesNoRoom()
{
    QFETCH(const QString, text);
    QFETCH(const QString, drawn);
    QWidget window;
    ZEFEllipsisLabel label(&window);
    QLineEdit field(&window);
    label.setText(text);
    label.setBuddy(&field);
    label.resize(exactWidthOf(label, drawn), 20);
    paint(label);
    QCOMPARE(label.text(), text);
    QCOMPARE(label.toolTip(), QString());
    label.resize(label.width() - 1, 20);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
    QCOMPARE(label.toolTip(), text);

    // Without a buddy the ampersands are drawn.
    ZEFEllipsisLabel plain;
    plain.setText(text);
    plain.resize(exactWidthOf(plain, text), 20);
    paint(plain);
    QCOMPARE(plain.text(), text);
    plain.resize(exactWidthOf(plain, drawn), 20);
    paint(plain);
    QVERIFY(plain.text().endsWith(Ellipsis));
}

void TestZEFEllipsisLabel::mnemonicAtItsOwnSizeHint()
{
    QWidget window;
    ZEFEllipsisLabel label(&window);
    QLineEdit field(&window);
    label.setText(QStringLiteral("&Name"));
    label.setBuddy(&field);
    label.resize(label.sizeHint());
    paint(label);
    QCOMPARE(label.text(), QStringLiteral("&Name"));
}

void TestZEFEllipsisLabel::laterBuddy()
{
    QWidget window;
    ZEFEllipsisLabel label(&window);
    QLineEdit field(&window);
    const QString text = QStringLiteral("&Name");
    label.setText(text);
    label.resize(exactWidthOf(label, QStringLiteral("Name")), 20);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
    label.setBuddy(&field);
    paint(label);
    QCOMPARE(label.text(), text);
}

void TestZEFEllipsisLabel::reservedWidth_data()
{
    QTest::addColumn<int>("indent");
    QTest::addColumn<int>("frameWidth");
    QTest::addColumn<int>("reserved");
    const int halfX = QFontMetrics(QApplication::font("QLabel")).horizontalAdvance(u'x') / 2;
    QTest::newRow("no frame, no indent of its own") << -1 << 0 << 0;
    QTest::newRow("no frame, no indent") << 0 << 0 << 0;
    QTest::newRow("no frame, an indent") << 10 << 0 << 10;
    QTest::newRow("a frame, no indent of its own") << -1 << 3 << halfX;
    QTest::newRow("a frame, no indent") << 0 << 3 << 0;
    QTest::newRow("a frame, an indent") << 10 << 3 << 10;
}

void TestZEFEllipsisLabel::reservedWidth()
{
    QFETCH(const int, indent);
    QFETCH(const int, frameWidth);
    QFETCH(const int, reserved);
    ZEFEllipsisLabel label;
    if (frameWidth > 0) {
        label.setFrameStyle(QFrame::Box | QFrame::Plain);
        label.setLineWidth(frameWidth);
    }
    QCOMPARE(label.frameWidth(), frameWidth);
    label.setIndent(indent);
    label.setText(LongText);
    const int exact = exactWidthOf(label, LongText) + reserved + 2 * frameWidth;
    label.resize(exact, 30);
    paint(label);
    QCOMPARE(label.text(), LongText);
    label.resize(exact - 1, 30);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
}

void TestZEFEllipsisLabel::textIsCapturedOnce()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    label.setText(QStringLiteral("another text, which is also far too long"));
    label.resize(600, 20);
    paint(label);
    QCOMPARE(label.text(), LongText);
}

void TestZEFEllipsisLabel::laterTextIsReplacedAgain()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    const QString cut = label.text();
    label.setText(QStringLiteral("other"));
    paint(label);
    QCOMPARE(label.text(), cut);
    QCOMPARE(label.toolTip(), LongText);
}

void TestZEFEllipsisLabel::emptyLabelCapturesLater()
{
    ZEFEllipsisLabel label;
    label.resize(80, 20);
    paint(label);
    label.setText(LongText);
    paint(label);
    QCOMPARE(label.toolTip(), LongText);
}

void TestZEFEllipsisLabel::templateTextStaysForGood()
{
    ZEFEllipsisLabel label;
    label.setText(QStringLiteral("%{name of the file}"));
    label.resize(600, 20);
    paint(label);
    label.setText(QStringLiteral("a.txt"));
    paint(label);
    // it fits and nothing was cut: the label does not interfere
    QCOMPARE(label.text(), QStringLiteral("a.txt"));
    label.resize(50, 20);
    paint(label);
    QCOMPARE(label.toolTip(), QStringLiteral("%{name of the file}"));
    label.resize(600, 20);
    paint(label);
    QCOMPARE(label.text(), QStringLiteral("%{name of the file}"));
}

void TestZEFEllipsisLabel::foreignToolTipStaysWhileTextFits()
{
    ZEFEllipsisLabel label;
    label.setText(QStringLiteral("short"));
    label.setToolTip(QStringLiteral("the form's own"));
    label.resize(200, 20);
    paint(label);
    QCOMPARE(label.toolTip(), QStringLiteral("the form's own"));
}

void TestZEFEllipsisLabel::foreignToolTipIsReplacedWhileCut()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    label.setToolTip(QStringLiteral("the form's own"));
    paint(label);
    QCOMPARE(label.toolTip(), LongText);
    label.resize(600, 20);
    paint(label);
    QCOMPARE(label.toolTip(), QString());
}

void TestZEFEllipsisLabel::foreignToolTipStaysOnceTheTextFitsAgain()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    label.resize(600, 20);
    paint(label);
    label.setToolTip(QStringLiteral("the form's own"));
    paint(label);
    QCOMPARE(label.toolTip(), QStringLiteral("the form's own"));
}

void TestZEFEllipsisLabel::fontChangeCutsAgain()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(exactWidthOf(label, LongText), 60);
    paint(label);
    QCOMPARE(label.text(), LongText);
    QFont large = label.font();
    large.setPointSize(large.pointSize() * 2);
    const QFont normal = label.font();
    label.setFont(large);
    paint(label);
    QVERIFY(label.text().endsWith(Ellipsis));
    label.setFont(normal);
    paint(label);
    QCOMPARE(label.text(), LongText);
}

void TestZEFEllipsisLabel::markupIsCutAsItStands()
{
    ZEFEllipsisLabel label;
    const QString rich = QStringLiteral("<b>bold</b> and ") + LongText;
    label.setText(rich);
    label.resize(80, 20);
    paint(label);
    QVERIFY(rich.startsWith(label.text().chopped(1)));
    QCOMPARE(label.toolTip(), rich);
}

void TestZEFEllipsisLabel::toolTipIsPlain_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << LongText;
    QTest::newRow("ampersands") << QStringLiteral("a &amp; b & c ") + LongText;
    QTest::newRow("bold") << QStringLiteral("<b>bold</b> ") + LongText;
    QTest::newRow("an image") << QStringLiteral("<img src='file:///etc/x.png'> ") + LongText;
    QTest::newRow("lines and markup") << QStringLiteral("<i>one</i>\ntwo ") + LongText;
}

void TestZEFEllipsisLabel::toolTipIsPlain()
{
    QFETCH(const QString, text);
    ZEFEllipsisLabel label;
    label.setTextFormat(Qt::PlainText);
    label.setText(text);
    label.resize(80, 20);
    QVERIFY(showActive(label));
    paint(label);
    QCOMPARE(label.toolTip(), text);
    const QString shown = shownToolTip(label);
    QTextDocument document;
    if (Qt::mightBeRichText(shown))
        document.setHtml(shown);
    else
        document.setPlainText(shown);
    QCOMPARE(document.toPlainText().simplified(), text.simplified());
    QVERIFY(!document.toPlainText().contains(QChar::ObjectReplacementCharacter));
    QCOMPARE(label.toolTip(), text);
}

void TestZEFEllipsisLabel::foreignToolTipIsShownAsItIs()
{
    ZEFEllipsisLabel label;
    label.setText(QStringLiteral("short"));
    label.setToolTip(QStringLiteral("<b>the form's own</b>"));
    label.resize(200, 20);
    QVERIFY(showActive(label));
    paint(label);
    QCOMPARE(shownToolTip(label), QStringLiteral("<b>the form's own</b>"));
}

void TestZEFEllipsisLabel::painting_data()
{
    QTest::addColumn<int>("ratio");
    QTest::addColumn<int>("width");
    QTest::newRow("fits, ratio 1") << 1 << 600;
    QTest::newRow("fits, ratio 2") << 2 << 600;
    QTest::newRow("cut, ratio 1") << 1 << 80;
    QTest::newRow("cut, ratio 2") << 2 << 80;
}

void TestZEFEllipsisLabel::painting()
{
    QFETCH(const int, ratio);
    QFETCH(const int, width);
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(width, 20);
    const QImage image = painted(label, ratio);
    // the very first painting shows the cut text already
    QLabel plain;
    plain.setText(QFontMetrics(label.font()).elidedText(LongText, Qt::ElideRight, width));
    plain.resize(width, 20);
    QVERIFY(!isEmpty(image));
    QCOMPARE(image, painted(plain, ratio));
}

void TestZEFEllipsisLabel::inALayoutItComesToRest_data()
{
    QTest::addColumn<QSizePolicy::Policy>("policy");
    QTest::newRow("preferred") << QSizePolicy::Preferred;
    QTest::newRow("maximum") << QSizePolicy::Maximum;
    QTest::newRow("fixed") << QSizePolicy::Fixed;
    QTest::newRow("expanding") << QSizePolicy::Expanding;
}

void TestZEFEllipsisLabel::inALayoutItComesToRest()
{
    QFETCH(const QSizePolicy::Policy, policy);
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* label = new ZEFEllipsisLabel;
    label->setSizePolicy(policy, QSizePolicy::Preferred);
    label->setText(LongText);
    label->setMaximumWidth(120);
    row->addWidget(label);
    row->addWidget(new QLabel(QStringLiteral("beside")));
    EventCounter paints(label, QEvent::Paint);
    QVERIFY(showActive(window));
    QTRY_VERIFY(label->text().endsWith(Ellipsis));
    // each step of a shrinking label takes one painting; then there are no more
    int before = -1;
    for (int round = 0; round < 100 && paints.count != before; ++round) {
        before = paints.count;
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
    }
    QCOMPARE(paints.count, before);
    QVERIFY(paints.count < 100);
    QCOMPARE(label->toolTip(), LongText);
}

void TestZEFEllipsisLabel::repaintWithoutChangeSetsNothing()
{
    ZEFEllipsisLabel label;
    label.setText(LongText);
    label.resize(80, 20);
    paint(label);
    EventCounter toolTips(&label, QEvent::ToolTipChange);
    EventCounter requests(&label, QEvent::LayoutRequest);
    paint(label);
    paint(label);
    QCOMPARE(toolTips.count, 0);
    QCOMPARE(requests.count, 0);
}

void TestZEFEllipsisLabel::texts_data()
{
    addTextRows();
}

void TestZEFEllipsisLabel::texts()
{
    QFETCH(const QString, text);
    ZEFEllipsisLabel label;
    label.setText(text);
    QVERIFY(paintsInSmallWindow(label, QSize(100, 60)));
    QVERIFY(label.toolTip().isEmpty() || label.toolTip() == text);
}

void TestZEFEllipsisLabel::sizes_data()
{
    addSizeRows();
}

void TestZEFEllipsisLabel::sizes()
{
    QFETCH(const QSize, size);
    ZEFEllipsisLabel label;
    label.setIndent(50);
    label.setText(LongText);
    QVERIFY(paintsInSmallWindow(label, size));
    label.setFixedSize(600, 20);
    paint(label);
    QCOMPARE(label.text(), LongText);
}

void TestZEFEllipsisLabel::pixmapOnly()
{
    ZEFEllipsisLabel label;
    QPixmap pixmap(8, 6);
    pixmap.fill(Qt::red);
    label.setPixmap(pixmap);
    label.resize(4, 4);
    paint(label);
    QCOMPARE(label.pixmap().toImage(), pixmap.toImage());
    QCOMPARE(label.toolTip(), QString());
}

ZEF_TEST_MAIN(TestZEFEllipsisLabel)
#include "test_zefellipsislabel.moc"
