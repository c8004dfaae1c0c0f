#include <ZEFTest.h>

#include <ZEFFormatCell.h>

#include "../../formatinput/SignatureConnection.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QRandomGenerator>
#include <QtGui/QClipboard>
#include <QtGui/QIntValidator>
#include <QtGui/QRegularExpressionValidator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A subclass that turns the selection of whole edits on.
class SelectingCell : public ZEFFormatCell {
public:
    using ZEFFormatCell::ZEFFormatCell;
    void setSelectOutside(bool on) override { storeSelectOutside(on); }
};

class CountingCell : public ZEFFormatCell {
public:
    using ZEFFormatCell::ZEFFormatCell;
    int textsSet = 0;
    int reselections = 0;

    void setText(const QString& text) override
    {
        ++textsSet;
        ZEFFormatCell::setText(text);
    }
    void setSelectOutside(bool on) override { storeSelectOutside(on); }
    void reselect() override
    {
        ++reselections;
        ZEFFormatCell::reselect();
    }
};

// What a parent of a cell must have to listen to the clipboard.
class Listener : public QWidget {
    Q_OBJECT

public:
    int deselections = 0;

public Q_SLOTS:
    void deselect() { ++deselections; }
};

QString keyName(const QKeyEvent* e)
{
    return e ? QKeySequence(e->key()).toString() : u"none"_s;
}

// Writes down every signal of a cell, one line for each.
QStringList* recordSignals(ZEFFormatCell* cell, QStringList* lines)
{
    QObject::connect(cell, &ZEFFormatCell::moveLeft, cell,
                     [lines](int id, QKeyEvent* e) { *lines += u"moveLeft %1 "_s.arg(id) + keyName(e); });
    QObject::connect(cell, &ZEFFormatCell::moveRight, cell,
                     [lines](int id, QKeyEvent* e) { *lines += u"moveRight %1 "_s.arg(id) + keyName(e); });
    QObject::connect(cell, &ZEFFormatCell::moveTo, cell, [lines](int from, int to, QKeyEvent* e) {
        *lines += u"moveTo %1 %2 "_s.arg(from).arg(to) + keyName(e);
    });
    QObject::connect(cell, qOverload<int, QString&>(&ZEFFormatCell::textChanged), cell,
                     [lines](int id, const QString& text) { *lines += u"textChanged %1 "_s.arg(id) + text; });
    QObject::connect(cell, &ZEFFormatCell::copyMe, cell, [lines] { *lines += u"copyMe"_s; });
    QObject::connect(cell, &ZEFFormatCell::pasteMe, cell, [lines] { *lines += u"pasteMe"_s; });
    QObject::connect(cell, &ZEFFormatCell::cutMe, cell, [lines] { *lines += u"cutMe"_s; });
    QObject::connect(cell, &ZEFFormatCell::deleteMe, cell, [lines] { *lines += u"deleteMe"_s; });
    QObject::connect(cell, qOverload<bool>(&ZEFFormatCell::selectOutside), cell,
                     [lines](bool on) { *lines += on ? u"selectOutside true"_s : u"selectOutside false"_s; });
    return lines;
}

void sendMouse(QWidget* widget, QEvent::Type type, const QPoint& position, Qt::MouseButton button,
               Qt::MouseButtons buttons)
{
    QMouseEvent e(type, position, widget->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &e);
}

QImage rendered(QWidget* widget)
{
    QImage image(widget->size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    widget->render(&image);
    return image;
}

// What an input method or a dead key sends.
void compose(QWidget* widget, const QString& text)
{
    QInputMethodEvent preedit(text, {});
    QCoreApplication::sendEvent(widget, &preedit);
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(widget, &commit);
}

QString clipboardText(QClipboard::Mode mode = QClipboard::Clipboard)
{
    return QApplication::clipboard()->text(mode);
}

} // namespace

class TestZEFFormatCell : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void takesItsNameFromTheConstructor();
    void listsItsMethodsInOrder();
    void namesTheParametersOfItsSignals();
    void stores();
    void installsAPatternValidator();
    void refusesAnInvalidPatternInSilence_data();
    void refusesAnInvalidPatternInSilence();
    void isAsWideAsItsLength_data();
    void isAsWideAsItsLength();
    void isAsWideAsItsFontAsks();
    void marksOptionalCells();
    void darkensTheOptionalBase_data();
    void darkensTheOptionalBase();
    void keepsOptionalTextReadable_data();
    void keepsOptionalTextReadable();
    void followsTheApplicationPalette_data();
    void followsTheApplicationPalette();
    void keepsColoursOfOthers();
    void followsItsFont();
    void keepsAWidthOfOthers();
    void offersASelectedPalette();
    void enforcesCase_data();
    void enforcesCase();
    void doesNotRecaseWhatIsThereOrTyped();
    void cannotBeSelectedOutside();
    void announcesItsText();
    void announcesACopyOfItsText();

    void handlesKeys_data();
    void handlesKeys();
    void swallowsKeysWhenFull_data();
    void swallowsKeysWhenFull();
    void leavesTheseKeysToTheLineEdit_data();
    void leavesTheseKeysToTheLineEdit();
    void handlesKeysWhileSelectedOutside_data();
    void handlesKeysWhileSelectedOutside();
    void acceptsKeysBeforeTheyDelete_data();
    void acceptsKeysBeforeTheyDelete();
    void swallowsIgnoredCharacters();
    void neverEntersHalfACharacter();
    void neverKeepsHalfACharacter_data();
    void neverKeepsHalfACharacter();
    void composes_data();
    void composes();
    void typesWithAltGr_data();
    void typesWithAltGr();
    void advancesAfterACharacterOfTwoUnits();
    void pastesNothingWhenReadOnly();

    void validates_data();
    void validates();
    void asksSpecJAboutPositionJ();
    void combinesSubstitutionsOverPasses();
    void findsTheFirstVariantThatPasses();
    void searchesAsDescribed_data();
    void searchesAsDescribed();
    void givesUpAfterAWhile();
    void passesOverPositionsThatCannotChange();
    void givesUpBeforeTextsFillTheMemory();
    void setsNoTextThatDoesNotDiffer();
    void patternsRespectCase();
    void makesNoConnectionOfUnknownNames();
    void survivesARewritingThatNeverEnds();
    void keepsNoSpecOfTheCaller();
    void ownsItsEquivalents();

    void copiesItsSelection();
    void asksForACopyWithoutSelection();
    void silencesItsParentWhileCopying();
    void leavesOtherParentsAlone();
    void pastes_data();
    void pastes();
    void pastesOverTheSelection();
    void keepsSpeakingAfterARefusedPaste();
    void takesAHugePaste();
    void asksForCutAndClear();
    void pastesOnceWithTheMiddleButton();
    void asksForAPasteWithTheMiddleButton();
    void worksWithTheContextMenu();

    void placesTheCaretWithTheLeftButton();
    void announcesTheMouseLeaving_data();
    void announcesTheMouseLeaving();
    void reselectsWhenTheMouseComesBack();
    void keepsTheSelectionOfTheMouse();
    void forgetsASelectionThatNoLongerFits();
    void releasesTheMouseInSilence();
    void announcesTheLossOfFocus();

    void drawsTheBottomLine_data();
    void drawsTheBottomLine();
    void drawsNoLineInANarrowMargin();
    void keepsTheColourOfAHighlightThatEnds();
    void limitsTheHighlight();

protected:
    void tidyUp() override
    {
        QApplication::clipboard()->clear();
        QToolTip::setPalette(m_toolTipPalette);
        QApplication::setPalette(m_palette);
    }

private:
    const QPalette m_toolTipPalette = QToolTip::palette();
    const QPalette m_palette = QApplication::palette();
};

void TestZEFFormatCell::startsEmpty()
{
    const ZEFFormatCell cell(nullptr, nullptr);
    QCOMPARE(cell.objectName(), QString());
    QCOMPARE(cell.id(), 0);
    QCOMPARE(cell.minLength(), -1);
    QCOMPARE(cell.ignore(), QString());
    QCOMPARE(cell.prefix(), QString());
    QCOMPARE(cell.suffix(), QString());
    QCOMPARE(cell.equivs(), QString());
    QCOMPARE(cell.finalRegExp(), QString());
    QCOMPARE(cell.regexp(), QString());
    QCOMPARE(cell.enforceCase(), 0);
    QVERIFY(!cell.selectOutside());
    QVERIFY(!cell.validator());
    QVERIFY(!cell.dragEnabled());
}

void TestZEFFormatCell::takesItsNameFromTheConstructor()
{
    QWidget parent;
    const auto* cell = new ZEFFormatCell(&parent, "schl\xc3\xbcssel");
    QCOMPARE(cell->objectName(), u"schlüssel"_s);
    QCOMPARE(cell->parentWidget(), &parent);
}

void TestZEFFormatCell::listsItsMethodsInOrder()
{
    const QMetaObject& meta = ZEFFormatCell::staticMetaObject;
    QCOMPARE(meta.superClass(), &QLineEdit::staticMetaObject);
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods.append(meta.method(i).methodSignature());
    QCOMPARE(methods,
             (QByteArrayList{"moveLeft(int,QKeyEvent*)",
                             "moveRight(int,QKeyEvent*)",
                             "moveTo(int,int,QKeyEvent*)",
                             "focusOut(int,QFocusEvent*)",
                             "textChanged(int,QString&)",
                             "copyMe()",
                             "pasteMe()",
                             "cutMe()",
                             "deleteMe()",
                             "selectOutside(bool)",
                             "validate()",
                             "addCoercionSpec(ZEFCoercionSpec*)",
                             "setRegexp(QString)",
                             "setFinalRegExp(QString)",
                             "setEquivs(QString)",
                             "setId(int)",
                             "setMaxLength(int)",
                             "setIgnore(QString)",
                             "setPrefix(QString)",
                             "setSuffix(QString)",
                             "copy()",
                             "paste()",
                             "cut()",
                             "clear()",
                             "setMinLength(int)",
                             "setSelectOutside(bool)",
                             "setEnforceCase(int)",
                             "setText(QString)",
                             "insert(QString)",
                             "reselect()",
                             "textChanged(QString)",
                             "checkInput(QString)"}));
    QCOMPARE(meta.method(meta.indexOfMethod("textChanged(QString)")).access(), QMetaMethod::Protected);
    QCOMPARE(meta.method(meta.indexOfMethod("textChanged(QString)")).methodType(), QMetaMethod::Slot);
}

void TestZEFFormatCell::namesTheParametersOfItsSignals()
{
    const QMetaObject& meta = ZEFFormatCell::staticMetaObject;
    QCOMPARE(meta.method(meta.indexOfSignal("moveTo(int,int,QKeyEvent*)")).parameterNames(),
             (QByteArrayList{"idFrom", "idTo", "e"}));
    QCOMPARE(meta.method(meta.indexOfSignal("textChanged(int,QString&)")).parameterNames(),
             (QByteArrayList{"id", "text"}));
}

void TestZEFFormatCell::stores()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setId(7);
    cell.setIgnore(u"- "_s);
    cell.setPrefix(u"/"_s);
    cell.setSuffix(u"kg"_s);
    cell.setEnforceCase(2);
    cell.setFinalRegExp(u"[A-Z]+"_s);
    cell.setMinLength(3);
    QCOMPARE(cell.id(), 7);
    QCOMPARE(cell.ignore(), u"- "_s);
    QCOMPARE(cell.prefix(), u"/"_s);
    QCOMPARE(cell.suffix(), u"kg"_s);
    QCOMPARE(cell.enforceCase(), 2);
    QCOMPARE(cell.finalRegExp(), u"[A-Z]+"_s);
    QCOMPARE(cell.minLength(), 3);

    cell.setEquivs(u"0O"_s);
    QCOMPARE(cell.equivs(), u"0O"_s);
    // Pairs of an odd length coerce, but are not remembered.
    cell.setEquivs(u"1IX"_s);
    QCOMPARE(cell.equivs(), u"0O"_s);
    cell.setText(u"A1"_s);
    cell.setFinalRegExp(u"AI"_s);
    cell.setEquivs(u"1I"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"AI"_s);
}

void TestZEFFormatCell::installsAPatternValidator()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setRegexp(u"[a-c]*"_s);
    QCOMPARE(cell.regexp(), u"[a-c]*"_s);
    QCOMPARE(cell.validator()->metaObject()->className(), "QRegularExpressionValidator");
    QTest::keyClicks(&cell, u"axbyc"_s);
    QCOMPARE(cell.text(), u"abc"_s);

    const QPointer<const QValidator> first(cell.validator());
    cell.setRegexp(u"[0-9]*"_s);
    QVERIFY(!first);
    QCOMPARE(cell.regexp(), u"[0-9]*"_s);

    // A validator of somebody else goes the same way.
    const QPointer<QValidator> foreign(new QIntValidator(this));
    cell.setValidator(foreign);
    QCOMPARE(cell.regexp(), QString());
    cell.setRegexp(u"x"_s);
    QVERIFY(!foreign);
    QCOMPARE(cell.regexp(), u"x"_s);

    cell.setValidator(nullptr);
    QCOMPARE(cell.regexp(), QString());
}

void TestZEFFormatCell::refusesAnInvalidPatternInSilence_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addRow("invalid") << u"[a-"_s;
    // Valid patterns, but not between the anchors.
    QTest::addRow("unfinished quotation") << u"\\Qab"_s;
    QTest::addRow("unfinished comment") << u"(?x)a # b"_s;
    QTest::addRow("valid only between anchors") << u"a)(?:b"_s;
}

void TestZEFFormatCell::refusesAnInvalidPatternInSilence()
{
    QFETCH(QString, pattern);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setRegexp(pattern);
    QCOMPARE(cell.regexp(), pattern);
    QTest::keyClicks(&cell, u"ab-"_s);
    QCOMPARE(cell.text(), QString());
    QVERIFY(!cell.hasAcceptableInput());
    QVERIFY(TestLog::take(u"warning: "_s).isEmpty());

    // The verdicts are those of Qt's own validator, which warns.
    TestLog::allow(QRegularExpression(u"warning: .*invalid QRegularExpression.*"_s));
    const QRegularExpressionValidator plain(QRegularExpression(u"[a-"_s));
    const QStringList texts = {u""_s, u"a"_s};
    for (QString text : texts) {
        int position = 0;
        int plainPosition = 0;
        QCOMPARE(cell.validator()->validate(text, position), plain.validate(text, plainPosition));
        QCOMPARE(position, plainPosition);
    }

    cell.setFinalRegExp(u"("_s);
    QVERIFY(cell.validate());
    cell.setText(u"a"_s);
    QVERIFY(!cell.validate());
}

void TestZEFFormatCell::isAsWideAsItsLength_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("expectedLength");
    QTest::addRow("negative") << -5 << 0;
    QTest::addRow("none") << 0 << 0;
    QTest::addRow("one") << 1 << 1;
    QTest::addRow("seven") << 7 << 7;
    QTest::addRow("many") << 40'000 << 40'000;
    QTest::addRow("the greatest") << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
}

void TestZEFFormatCell::isAsWideAsItsLength()
{
    QFETCH(int, length);
    QFETCH(int, expectedLength);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(length);
    QCOMPARE(cell.maxLength(), expectedLength);
    const qint64 ten = cell.fontMetrics().boundingRect(u"XXXWWWWWWW"_s).width();
    const qint64 width = std::min<qint64>(ten * (qint64(expectedLength) + 1) / 10 + 10, QWIDGETSIZE_MAX - 1);
    QCOMPARE(qint64(cell.minimumWidth()), width);
    QCOMPARE(qint64(cell.maximumWidth()), width);
}

void TestZEFFormatCell::isAsWideAsItsFontAsks()
{
    // Cells of different fonts, in turn.
    QFont large;
    large.setPixelSize(40);
    QFont small;
    small.setPixelSize(9);
    for (const QFont& font : {large, small, large}) {
        ZEFFormatCell cell(nullptr, nullptr);
        cell.setFont(font);
        cell.setMaxLength(5);
        const int ten = QFontMetrics(font, &cell).boundingRect(u"XXXWWWWWWW"_s).width();
        QCOMPARE(cell.minimumWidth(), ten * 6 / 10 + 10);
        QCOMPARE(cell.maximumWidth(), ten * 6 / 10 + 10);
    }
}

void TestZEFFormatCell::marksOptionalCells()
{
    ZEFFormatCell cell(nullptr, nullptr);
    const QColor optional = ZEFFormatCell::optionalPalette().color(QPalette::Base);
    const QColor usual = QApplication::palette().color(QPalette::Base);
    QVERIFY(optional != usual);

    // The rest of an optional cell's palette stays as it is.
    QPalette own = cell.palette();
    own.setColor(QPalette::Text, Qt::red);
    cell.setPalette(own);
    cell.setMinLength(0);
    QCOMPARE(cell.minLength(), 0);
    QCOMPARE(cell.palette().color(QPalette::Active, QPalette::Base), optional);
    QCOMPARE(cell.palette().color(QPalette::Disabled, QPalette::Base), optional);
    QCOMPARE(cell.palette().color(QPalette::Text), QColor(Qt::red));

    cell.setMinLength(2);
    QCOMPARE(cell.palette().color(QPalette::Base), usual);
    QCOMPARE(cell.palette().color(QPalette::Text), QApplication::palette().color(QPalette::Text));

    cell.setMinLength(0);
    cell.setMinLength(-1);
    QCOMPARE(cell.palette().color(QPalette::Base), usual);
}

void TestZEFFormatCell::darkensTheOptionalBase_data()
{
    QTest::addColumn<QColor>("toolTip");
    QTest::addColumn<QColor>("application");
    QTest::addColumn<QColor>("expected");
    QTest::addRow("different") << QColor(255, 255, 220) << QColor(200, 201, 202) << QColor(255, 255, 220);
    QTest::addRow("the same") << QColor(200, 201, 202) << QColor(200, 201, 202) << QColor(190, 191, 172);
    QTest::addRow("the same and white") << QColor(Qt::white) << QColor(Qt::white) << QColor(245, 245, 225);
    QTest::addRow("the same and black") << QColor(Qt::black) << QColor(Qt::black) << QColor(0, 0, 0);
    QTest::addRow("the same and dark") << QColor(10, 9, 29) << QColor(10, 9, 29) << QColor(0, 0, 0);
    QTest::addRow("the same and translucent")
        << QColor(50, 60, 70, 80) << QColor(50, 60, 70, 80) << QColor(40, 50, 40, 255);
}

void TestZEFFormatCell::darkensTheOptionalBase()
{
    QFETCH(QColor, toolTip);
    QFETCH(QColor, application);
    QFETCH(QColor, expected);
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::Base, toolTip);
    QToolTip::setPalette(palette);
    palette = QApplication::palette();
    palette.setColor(QPalette::Base, application);
    QApplication::setPalette(palette);

    const QPalette optional = ZEFFormatCell::optionalPalette();
    QCOMPARE(optional.color(QPalette::Active, QPalette::Base), expected);
    QCOMPARE(optional.color(QPalette::Inactive, QPalette::Base), expected);
    QCOMPARE(optional.color(QPalette::Disabled, QPalette::Base), expected);
    QCOMPARE(optional.color(QPalette::Text), QApplication::palette().color(QPalette::Text));
}

void TestZEFFormatCell::keepsOptionalTextReadable_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("toolTip");
    QTest::addColumn<QColor>("application");
    QTest::addColumn<QColor>("expected");
    const QColor light(255, 255, 220);
    const QColor dark(30, 30, 30);
    QTest::addRow("dark on light") << QColor(Qt::black) << light << QColor(Qt::white) << light;
    // A program that sets a dark palette leaves the tool tips light.
    QTest::addRow("light on light") << QColor(Qt::white) << light << dark << QColor(143, 143, 125);
    QTest::addRow("dark on dark") << QColor(Qt::black) << QColor(1, 2, 3) << QColor(200, 201, 202)
                                  << QColor(100, 101, 102);
    QTest::addRow("light on dark") << QColor(Qt::white) << dark << QColor(Qt::black) << dark;
    // There is nothing to follow in colours that nobody can read.
    QTest::addRow("an unreadable application")
        << QColor(120, 120, 120) << QColor(130, 130, 130) << QColor(100, 100, 100) << QColor(130, 130, 130);
}

void TestZEFFormatCell::keepsOptionalTextReadable()
{
    QFETCH(QColor, text);
    QFETCH(QColor, toolTip);
    QFETCH(QColor, application);
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::Base, toolTip);
    QToolTip::setPalette(palette);
    palette = QApplication::palette();
    palette.setColor(QPalette::Base, application);
    palette.setColor(QPalette::Text, text);
    QApplication::setPalette(palette);
    QTEST(ZEFFormatCell::optionalPalette().color(QPalette::Base), "expected");
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMinLength(0);
    QTEST(cell.palette().color(QPalette::Base), "expected");
}

void TestZEFFormatCell::followsTheApplicationPalette_data()
{
    QTest::addColumn<int>("minLength");
    QTest::addRow("optional") << 0;
    QTest::addRow("not optional") << 2;
    QTest::addRow("nothing said") << -1;
}

void TestZEFFormatCell::followsTheApplicationPalette()
{
    // Qt's Windows plug-in, where the system cannot tell the colour of its borders, as under Wine
    TestLog::allow(QRegularExpression(u"warning: queryDarkBorder: .*"_s));
    QFETCH(int, minLength);
    QWidget form;
    auto* cell = new ZEFFormatCell(&form, nullptr);
    if (minLength >= 0)
        cell->setMinLength(minLength);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    const QPalette expected = minLength == 0 ? ZEFFormatCell::optionalPalette() : dark;
    QTRY_COMPARE(cell->palette().color(QPalette::Base), expected.color(QPalette::Base));
    QTRY_COMPARE(cell->palette().color(QPalette::Text), QColor(Qt::white));
    QApplication::setPalette(m_palette);
    const QPalette back = minLength == 0 ? ZEFFormatCell::optionalPalette() : m_palette;
    QTRY_COMPARE(cell->palette().color(QPalette::Base), back.color(QPalette::Base));
    QTRY_COMPARE(cell->palette().color(QPalette::Text), m_palette.color(QPalette::Text));
}

void TestZEFFormatCell::keepsColoursOfOthers()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMinLength(0);
    QPalette own = cell.palette();
    own.setColor(QPalette::Base, Qt::yellow);
    cell.setPalette(own);
    QCOMPARE(cell.palette().color(QPalette::Base), QColor(Qt::yellow));
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Window, Qt::black);
    QApplication::setPalette(dark);
    QTRY_COMPARE(cell.palette().color(QPalette::Window), QColor(Qt::black));
    QCOMPARE(cell.palette().color(QPalette::Base), QColor(Qt::yellow));
}

void TestZEFFormatCell::followsItsFont()
{
    QWidget form;
    auto* cell = new ZEFFormatCell(&form, nullptr);
    cell->setMaxLength(5);
    const auto expected = [cell] {
        return cell->fontMetrics().boundingRect(u"XXXWWWWWWW"_s).width() * 6 / 10 + 10;
    };
    const int before = cell->minimumWidth();
    QCOMPARE(before, expected());
    QFont large;
    large.setPixelSize(40);
    form.setFont(large);
    QCOMPARE(cell->minimumWidth(), expected());
    QCOMPARE(cell->maximumWidth(), expected());
    QVERIFY(cell->minimumWidth() > before);
    // The sheet of a form comes after the format has been read.
    form.setStyleSheet(u"* { font-size: 50px }"_s);
    cell->ensurePolished();
    QCOMPARE(cell->font().pixelSize(), 50);
    QCOMPARE(cell->minimumWidth(), expected());
}

void TestZEFFormatCell::keepsAWidthOfOthers()
{
    QFont large;
    large.setPixelSize(40);
    ZEFFormatCell untouched(nullptr, nullptr);
    untouched.setFont(large);
    QCOMPARE(untouched.minimumWidth(), 0);
    QCOMPARE(untouched.maximumWidth(), QWIDGETSIZE_MAX);

    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(5);
    cell.setFixedWidth(123);
    cell.setFont(large);
    QCOMPARE(cell.minimumWidth(), 123);
    QCOMPARE(cell.maximumWidth(), 123);
    cell.setMaxLength(5);
    cell.setMaximumWidth(QWIDGETSIZE_MAX);
    const int width = cell.minimumWidth();
    cell.setFont(QFont());
    QCOMPARE(cell.minimumWidth(), width);
    QCOMPARE(cell.maximumWidth(), QWIDGETSIZE_MAX);
}

void TestZEFFormatCell::offersASelectedPalette()
{
    const QPalette selected = ZEFFormatCell::selectedPalette();
    const QPalette application = QApplication::palette();
    QCOMPARE(selected.color(QPalette::Active, QPalette::Base), application.color(QPalette::Highlight));
    QCOMPARE(selected.color(QPalette::Disabled, QPalette::Base), application.color(QPalette::Highlight));
    QCOMPARE(selected.color(QPalette::Active, QPalette::Text), application.color(QPalette::HighlightedText));
    QCOMPARE(selected.color(QPalette::Window), application.color(QPalette::Window));
}

void TestZEFFormatCell::enforcesCase_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    QTest::addRow("none") << 0 << u"aBc"_s;
    QTest::addRow("lower") << 1 << u"abc"_s;
    QTest::addRow("upper") << 2 << u"ABC"_s;
    QTest::addRow("unknown") << 3 << u"aBc"_s;
    QTest::addRow("negative") << -1 << u"aBc"_s;
}

void TestZEFFormatCell::enforcesCase()
{
    QFETCH(int, mode);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setEnforceCase(mode);
    QTEST(cell.checkInput(u"aBc"_s), "expected");
    cell.setText(u"aBc"_s);
    QTEST(cell.text(), "expected");
    cell.setText(QString());
    cell.insert(u"aBc"_s);
    QTEST(cell.text(), "expected");
}

void TestZEFFormatCell::doesNotRecaseWhatIsThereOrTyped()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setText(u"ab"_s);
    cell.setEnforceCase(2);
    QCOMPARE(cell.text(), u"ab"_s);
    QTest::keyClicks(&cell, u"cd"_s);
    QCOMPARE(cell.text(), u"abcd"_s);
}

void TestZEFFormatCell::cannotBeSelectedOutside()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setSelectOutside(true);
    QVERIFY(!cell.selectOutside());
}

void TestZEFFormatCell::announcesItsText()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setId(4);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.setText(u"a"_s);
    QTest::keyClick(&cell, Qt::Key_B);
    static_cast<QLineEdit&>(cell).setText(u"xyz"_s);
    cell.setText(u"xyz"_s);
    QCOMPARE(lines, (QStringList{u"textChanged 4 a"_s, u"textChanged 4 ab"_s, u"textChanged 4 xyz"_s}));
}

void TestZEFFormatCell::announcesACopyOfItsText()
{
    ZEFFormatCell cell(nullptr, nullptr);
    QString second;
    connect(&cell, qOverload<int, QString&>(&ZEFFormatCell::textChanged), this,
            [](int, QString& text) { text = u"other"_s; });
    connect(&cell, qOverload<int, QString&>(&ZEFFormatCell::textChanged), this,
            [&](int, const QString& text) { second = text; });
    cell.setText(u"abc"_s);
    QCOMPARE(cell.text(), u"abc"_s);
    QCOMPARE(second, u"other"_s);
}

void TestZEFFormatCell::handlesKeys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QKeyCombination>("key");
    QTest::addColumn<QString>("expectedText");
    QTest::addColumn<int>("expectedCursor");
    QTest::addColumn<QStringList>("signalLines");

    // The cell takes four letters, and its id is 2.
    const auto key = [](Qt::Key code) { return QKeyCombination(code); };
    const QStringList none;
    QTest::addRow("Backspace inside")
        << u"abc"_s << 2 << key(Qt::Key_Backspace) << u"ac"_s << 1 << QStringList{u"textChanged 2 ac"_s};
    QTest::addRow("Backspace at the start")
        << u"abc"_s << 0 << key(Qt::Key_Backspace) << u"abc"_s << 0 << QStringList{u"moveLeft 2 Backspace"_s};
    QTest::addRow("Backspace in an empty cell")
        << u""_s << 0 << key(Qt::Key_Backspace) << u""_s << 0 << QStringList{u"moveLeft 2 Backspace"_s};
    QTest::addRow("Delete") << u"abc"_s << 0 << key(Qt::Key_Delete) << u"bc"_s << 0
                            << QStringList{u"textChanged 2 bc"_s};
    QTest::addRow("Home") << u"abc"_s << 2 << key(Qt::Key_Home) << u"abc"_s << 0 << none;
    QTest::addRow("End") << u"abc"_s << 1 << key(Qt::Key_End) << u"abc"_s << 3 << none;
    QTest::addRow("Left inside") << u"abc"_s << 2 << key(Qt::Key_Left) << u"abc"_s << 1 << none;
    QTest::addRow("Left at the start")
        << u"abc"_s << 0 << key(Qt::Key_Left) << u"abc"_s << 0 << QStringList{u"moveLeft 2 none"_s};
    QTest::addRow("Right inside") << u"abc"_s << 1 << key(Qt::Key_Right) << u"abc"_s << 2 << none;
    QTest::addRow("Right at the end of a cell that is not full")
        << u"abc"_s << 3 << key(Qt::Key_Right) << u"abc"_s << 3 << none;
    QTest::addRow("Right at the end of a full cell")
        << u"abcd"_s << 4 << key(Qt::Key_Right) << u"abcd"_s << 4 << QStringList{u"moveRight 2 none"_s};
    QTest::addRow("Right inside a full cell")
        << u"abcd"_s << 3 << key(Qt::Key_Right) << u"abcd"_s << 4 << none;
    QTest::addRow("a letter") << u"ab"_s << 1 << key(Qt::Key_X) << u"axb"_s << 2
                              << QStringList{u"textChanged 2 axb"_s};
    QTest::addRow("the last letter") << u"abc"_s << 3 << key(Qt::Key_X) << u"abcx"_s << 4
                                     << QStringList{u"textChanged 2 abcx"_s, u"moveRight 2 none"_s};
    QTest::addRow("the last free place, but inside")
        << u"abc"_s << 1 << key(Qt::Key_X) << u"axbc"_s << 2 << QStringList{u"textChanged 2 axbc"_s};
    QTest::addRow("a digit, which the pattern refuses")
        << u"ab"_s << 2 << key(Qt::Key_1) << u"ab"_s << 2 << none;
    QTest::addRow("a refused last character does not move on")
        << u"abc"_s << 3 << key(Qt::Key_1) << u"abc"_s << 3 << none;
    QTest::addRow("a letter into a full cell") << u"abcd"_s << 2 << key(Qt::Key_X) << u"abcd"_s << 2 << none;
    QTest::addRow("a letter behind a full cell")
        << u"abcd"_s << 4 << key(Qt::Key_X) << u"abcd"_s << 4 << none;
    QTest::addRow("Control and a letter that does nothing")
        << u"abc"_s << 3 << QKeyCombination(Qt::CTRL, Qt::Key_B) << u"abc"_s << 3 << none;
    QTest::addRow("Control and C leave the selection to the line edit")
        << u"abc"_s << 3 << QKeyCombination(Qt::CTRL, Qt::Key_C) << u"abc"_s << 3 << none;
    QTest::addRow("Control and X") << u"abc"_s << 3 << QKeyCombination(Qt::CTRL, Qt::Key_X) << u"abc"_s << 3
                                   << none;
    QTest::addRow("Up") << u"ab"_s << 1 << key(Qt::Key_Up) << u"ab"_s << 1 << none;
}

void TestZEFFormatCell::handlesKeys()
{
    QFETCH(QString, text);
    QFETCH(int, cursor);
    QFETCH(QKeyCombination, key);
    QFETCH(QStringList, signalLines);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setId(2);
    cell.setMaxLength(4);
    cell.setRegexp(u"[a-z]*"_s);
    cell.setText(text);
    cell.setCursorPosition(cursor);
    QStringList lines;
    recordSignals(&cell, &lines);
    QTest::keyClick(&cell, key.key(), key.keyboardModifiers());
    QTEST(cell.text(), "expectedText");
    QTEST(cell.cursorPosition(), "expectedCursor");
    QCOMPARE(lines, signalLines);
}

void TestZEFFormatCell::swallowsKeysWhenFull_data()
{
    QTest::addColumn<int>("maxLength");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("expected");
    QTest::addRow("a cell without a length") << 0 << u""_s << 0 << u""_s;
    QTest::addRow("full") << 2 << u"ab"_s << 0 << u"ab"_s;
    QTest::addRow("full, one selected") << 2 << u"ab"_s << 1 << u"xb"_s;
    QTest::addRow("full, all selected") << 2 << u"ab"_s << 2 << u"xy"_s;
}

void TestZEFFormatCell::swallowsKeysWhenFull()
{
    QFETCH(int, maxLength);
    QFETCH(QString, text);
    QFETCH(int, selected);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(maxLength);
    cell.setText(text);
    cell.setSelection(0, selected);
    for (const QChar c : u"xy"_s) {
        QKeyEvent e(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, c);
        e.ignore();
        QApplication::sendEvent(&cell, &e);
        QVERIFY(e.isAccepted());
    }
    QTEST(cell.text(), "expected");
}

void TestZEFFormatCell::leavesTheseKeysToTheLineEdit_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("swallowed");
    // A full cell swallows other keys; these reach the line edit, which passes most of them on.
    QTest::addRow("Escape") << Qt::Key_Escape << false;
    QTest::addRow("Return") << Qt::Key_Return << false;
    QTest::addRow("Enter") << Qt::Key_Enter << false;
    QTest::addRow("Insert") << Qt::Key_Insert << false;
    QTest::addRow("Shift") << Qt::Key_Shift << false;
    QTest::addRow("F14") << Qt::Key_F14 << false;
    QTest::addRow("F16") << Qt::Key_F16 << false;
    QTest::addRow("F18") << Qt::Key_F18 << false;
    QTest::addRow("F20") << Qt::Key_F20 << false;
    QTest::addRow("F13") << Qt::Key_F13 << true;
    QTest::addRow("F15") << Qt::Key_F15 << true;
    QTest::addRow("Up") << Qt::Key_Up << true;
    QTest::addRow("Down") << Qt::Key_Down << true;
    QTest::addRow("Alt") << Qt::Key_Alt << true;
}

void TestZEFFormatCell::leavesTheseKeysToTheLineEdit()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, swallowed);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(2);
    cell.setText(u"ab"_s);
    QLineEdit plain(u"ab"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier);
    QKeyEvent same(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&cell, &e);
    QApplication::sendEvent(&plain, &same);
    QCOMPARE(e.isAccepted(), swallowed || same.isAccepted());
    QCOMPARE(cell.text(), plain.text());
    QCOMPARE(lines, QStringList());
}

void TestZEFFormatCell::handlesKeysWhileSelectedOutside_data()
{
    QTest::addColumn<QKeyCombination>("key");
    QTest::addColumn<QStringList>("signalLines");
    QTest::addColumn<QString>("expectedText");

    const auto key = [](Qt::Key code) { return QKeyCombination(code); };
    QTest::addRow("Backspace") << key(Qt::Key_Backspace) << QStringList{u"deleteMe"_s} << u"ab"_s;
    QTest::addRow("Delete") << key(Qt::Key_Delete) << QStringList{u"deleteMe"_s} << u"ab"_s;
    QTest::addRow("Home") << key(Qt::Key_Home) << QStringList{u"deleteMe"_s} << u"ab"_s;
    QTest::addRow("End") << key(Qt::Key_End) << QStringList{u"deleteMe"_s} << u"ab"_s;
    QTest::addRow("a letter") << key(Qt::Key_X) << QStringList{u"deleteMe"_s, u"moveTo 2 0 X"_s} << u"ab"_s;
    QTest::addRow("a key without a text") << key(Qt::Key_F5) << QStringList{} << u"ab"_s;
    QTest::addRow("Control and C") << QKeyCombination(Qt::CTRL, Qt::Key_C) << QStringList{u"copyMe"_s}
                                   << u"ab"_s;
    QTest::addRow("Control and X") << QKeyCombination(Qt::CTRL, Qt::Key_X) << QStringList{u"cutMe"_s}
                                   << u"ab"_s;
    QTest::addRow("Control and another letter")
        << QKeyCombination(Qt::CTRL, Qt::Key_B) << QStringList{} << u"ab"_s;
    QTest::addRow("Left") << key(Qt::Key_Left) << QStringList{} << u"ab"_s;
}

void TestZEFFormatCell::handlesKeysWhileSelectedOutside()
{
    QFETCH(QKeyCombination, key);
    QFETCH(QStringList, signalLines);
    SelectingCell cell(nullptr, nullptr);
    cell.setId(2);
    cell.setMaxLength(4);
    cell.setText(u"ab"_s);
    cell.setSelectOutside(true);
    QVERIFY(cell.selectOutside());
    QStringList lines;
    recordSignals(&cell, &lines);
    QTest::keyClick(&cell, key.key(), key.keyboardModifiers());
    QCOMPARE(lines, signalLines);
    QTEST(cell.text(), "expectedText");
}

void TestZEFFormatCell::acceptsKeysBeforeTheyDelete_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addRow("Backspace") << Qt::Key_Backspace;
    QTest::addRow("Delete") << Qt::Key_Delete;
}

// A receiver may do away with the cell and whoever else would get the key.
void TestZEFFormatCell::acceptsKeysBeforeTheyDelete()
{
    QFETCH(Qt::Key, key);
    SelectingCell cell(nullptr, nullptr);
    cell.setText(u"ab"_s);
    cell.setSelectOutside(true);
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    event.ignore();
    bool accepted = false;
    connect(&cell, &ZEFFormatCell::deleteMe, this, [&] { accepted = event.isAccepted(); });
    QApplication::sendEvent(&cell, &event);
    QVERIFY(accepted);
}

void TestZEFFormatCell::swallowsIgnoredCharacters()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(9);
    cell.setIgnore(u"-x😀"_s);
    QTest::keyClicks(&cell, u"a-xX"_s);
    QCOMPARE(cell.text(), u"aX"_s);

    QKeyEvent smile(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, u"😀"_s);
    QApplication::sendEvent(&cell, &smile);
    QVERIFY(smile.isAccepted());
    QCOMPARE(cell.text(), u"aX"_s);

    // Only a single character is looked up, and only a typed one.
    QKeyEvent two(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, u"-x"_s);
    QApplication::sendEvent(&cell, &two);
    QCOMPARE(cell.text(), u"aX-x"_s);
    cell.setText(u"--"_s);
    QCOMPARE(cell.text(), u"--"_s);
}

void TestZEFFormatCell::neverEntersHalfACharacter()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(3);
    cell.setText(u"a"_s);
    QKeyEvent smile(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, u"😀"_s);
    QApplication::sendEvent(&cell, &smile);
    QCOMPARE(cell.text(), u"a😀"_s);
    cell.setText(u"ab"_s);
    QApplication::sendEvent(&cell, &smile);
    QVERIFY(smile.isAccepted());
    QCOMPARE(cell.text(), u"ab"_s);
}

void TestZEFFormatCell::neverKeepsHalfACharacter_data()
{
    QTest::addColumn<QString>("act");
    for (const QString& act : {u"setText"_s, u"insert"_s, u"paste"_s, u"line setText"_s, u"property"_s,
                               u"line insert"_s, u"keyboard paste"_s, u"compose"_s, u"setMaxLength"_s})
        QTest::addRow("%s", qUtf8Printable(act)) << act;
}

void TestZEFFormatCell::neverKeepsHalfACharacter()
{
    QFETCH(QString, act);
    for (const bool withPattern : {false, true}) {
        ZEFFormatCell cell(nullptr, nullptr);
        cell.setMaxLength(3);
        if (withPattern)
            cell.setRegexp(u".*"_s);
        QApplication::clipboard()->setText(u"b😀"_s);
        QStringList lines;
        recordSignals(&cell, &lines);
        if (act == u"setText") {
            cell.setText(u"ab😀"_s);
        } else if (act == u"line setText") {
            cell.QLineEdit::setText(u"ab😀"_s);
        } else if (act == u"property") {
            cell.setProperty("text", u"ab😀"_s);
        } else if (act == u"setMaxLength") {
            cell.setMaxLength(4);
            cell.setText(u"ab😀"_s);
            QCOMPARE(cell.text(), u"ab😀"_s);
            cell.setMaxLength(3);
        } else {
            cell.setText(u"a!"_s);
            cell.setSelection(1, 1);
            if (act == u"insert")
                cell.insert(u"b😀"_s);
            else if (act == u"paste")
                cell.paste();
            else if (act == u"line insert")
                cell.QLineEdit::insert(u"b😀"_s);
            else if (act == u"keyboard paste")
                QTest::keySequence(&cell, QKeySequence::Paste);
            else
                compose(&cell, u"b😀"_s);
        }
        // Where Qt's own functions ask the pattern first, it refuses the whole insertion.
        const bool refused = withPattern && (cell.text() == u"a!" || cell.text() == u"a");
        if (!refused) {
            QCOMPARE(cell.text(), u"ab"_s);
            QVERIFY(lines.contains(u"textChanged 0 ab"_s));
        }
        QVERIFY(cell.text().isValidUtf16());
    }
}

void TestZEFFormatCell::composes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("composed");
    QTest::addColumn<QString>("expectedText");
    QTest::addColumn<QStringList>("signalLines");

    // The cell takes four letters, ignores x, and its id is 2.
    QTest::addRow("inside") << u"ab"_s << 1 << u"é"_s << u"aéb"_s << QStringList{u"textChanged 2 aéb"_s};
    QTest::addRow("the last one") << u"abc"_s << 3 << u"é"_s << u"abcé"_s
                                  << QStringList{u"textChanged 2 abcé"_s, u"moveRight 2 none"_s};
    QTest::addRow("the last free place, but inside")
        << u"abc"_s << 1 << u"é"_s << u"aébc"_s << QStringList{u"textChanged 2 aébc"_s};
    QTest::addRow("several that fill the cell")
        << u"ab"_s << 2 << u"éè"_s << u"abéè"_s
        << QStringList{u"textChanged 2 abéè"_s, u"moveRight 2 none"_s};
    QTest::addRow("more than fit") << u"ab"_s << 2 << u"éèê"_s << u"abéè"_s
                                   << QStringList{u"textChanged 2 abéè"_s, u"moveRight 2 none"_s};
    QTest::addRow("into a full cell") << u"abcd"_s << 2 << u"é"_s << u"abcd"_s << QStringList{};
    QTest::addRow("ignored") << u"ab"_s << 2 << u"x"_s << u"ab"_s << QStringList{};
    QTest::addRow("refused by the pattern") << u"abc"_s << 3 << u"1"_s << u"abc"_s << QStringList{};
}

void TestZEFFormatCell::composes()
{
    QFETCH(QString, text);
    QFETCH(int, cursor);
    QFETCH(QString, composed);
    QFETCH(QStringList, signalLines);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setId(2);
    cell.setMaxLength(4);
    cell.setIgnore(u"x"_s);
    cell.setRegexp(u"\\p{L}*"_s);
    cell.setText(text);
    cell.setCursorPosition(cursor);
    QStringList lines;
    recordSignals(&cell, &lines);
    compose(&cell, composed);
    QTEST(cell.text(), "expectedText");
    QCOMPARE(lines, signalLines);
    // The composition has ended, whether its text was taken or not.
    QCOMPARE(cell.displayText(), cell.text());

    // Like a typed character it replaces a selection.
    cell.setText(u"abcd"_s);
    cell.selectAll();
    compose(&cell, u"é"_s);
    QCOMPARE(cell.text(), u"é"_s);
}

void TestZEFFormatCell::typesWithAltGr_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected");
    const Qt::KeyboardModifiers altGr = Qt::ControlModifier | Qt::AltModifier;
    QTest::addRow("AltGr") << altGr << u"@"_s << u"abc@"_s;
    QTest::addRow("AltGr and Shift") << (altGr | Qt::ShiftModifier) << u"@"_s << u"abc@"_s;
    QTest::addRow("AltGr, private use") << altGr << u"\ue000"_s << u"abc\ue000"_s;
    QTest::addRow("AltGr, ignored") << altGr << u"#"_s << u"abc"_s;
    QTest::addRow("AltGr without a text") << altGr << u""_s << u"abc"_s;
    QTest::addRow("AltGr and a control character") << altGr << u"\x1"_s << u"abc"_s;
    QTest::addRow("Control alone") << Qt::KeyboardModifiers(Qt::ControlModifier) << u"@"_s << u"abc"_s;
}

void TestZEFFormatCell::typesWithAltGr()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, typed);
    QFETCH(QString, expected);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(4);
    cell.setIgnore(u"#"_s);
    cell.setText(u"abc"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    QKeyEvent e(QEvent::KeyPress, Qt::Key_Q, modifiers, typed);
    QApplication::sendEvent(&cell, &e);
    QCOMPARE(cell.text(), expected);
    QCOMPARE(lines.contains(u"moveRight 0 none"_s), expected.size() == 4);

    // A full cell takes no more, and what is typed replaces a selection of the whole edit.
    if (expected.size() == 4) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Q, modifiers, typed);
        QApplication::sendEvent(&cell, &again);
        QCOMPARE(cell.text(), expected);
        SelectingCell selecting(nullptr, nullptr);
        selecting.setSelectOutside(true);
        lines.clear();
        recordSignals(&selecting, &lines);
        QApplication::sendEvent(&selecting, &e);
        QCOMPARE(lines, (QStringList{u"deleteMe"_s, u"moveTo 0 0 Q"_s}));
    }
}

void TestZEFFormatCell::advancesAfterACharacterOfTwoUnits()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(3);
    cell.setText(u"a"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    QKeyEvent smile(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, u"😀"_s);
    QApplication::sendEvent(&cell, &smile);
    QCOMPARE(lines, (QStringList{u"textChanged 0 a😀"_s, u"moveRight 0 none"_s}));
}

void TestZEFFormatCell::pastesNothingWhenReadOnly()
{
    QApplication::clipboard()->setText(u"xy"_s);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(4);
    cell.setReadOnly(true);
    QStringList lines;
    recordSignals(&cell, &lines);
    QTest::mouseClick(&cell, Qt::MiddleButton);
    QApplication::clipboard()->setText(u"too long"_s);
    QTest::mouseClick(&cell, Qt::MiddleButton);
    QCOMPARE(cell.text(), QString());
    QCOMPARE(lines, QStringList());
}

void TestZEFFormatCell::validates_data()
{
    QTest::addColumn<QString>("finalPattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::addColumn<QString>("expectedText");

    QTest::addRow("no final pattern") << u""_s << u"anything"_s << true << u"anything"_s;
    QTest::addRow("match") << u"[a-z]{2}"_s << u"ab"_s << true << u"ab"_s;
    QTest::addRow("match of a part") << u"[a-z]{2}"_s << u"abc"_s << false << u"abc"_s;
    QTest::addRow("match of a later part") << u"bc"_s << u"abc"_s << false << u"abc"_s;
    QTest::addRow("the first alternative counts, though another would fit")
        << u"a|ab"_s << u"ab"_s << false << u"ab"_s;
    QTest::addRow("upper case") << u"[A-Z]{2}[0-9]*"_s << u"ab1"_s << true << u"AB1"_s;
    QTest::addRow("lower case") << u"[a-z]*1"_s << u"AB1"_s << true << u"ab1"_s;
    QTest::addRow("mixed case passes as it stands") << u"(?i)ab"_s << u"aB"_s << true << u"aB"_s;
    QTest::addRow("upper case comes first") << u"AB|ab"_s << u"aB"_s << true << u"AB"_s;
    QTest::addRow("an empty text always passes") << u"[a-z]{2}"_s << u""_s << true << u""_s;
    QTest::addRow("the minimum is not asked") << u"a"_s << u"a"_s << true << u"a"_s;
    QTest::addRow("outside the basic plane") << u"😀"_s << u"😀"_s << true << u"😀"_s;
}

void TestZEFFormatCell::validates()
{
    QFETCH(QString, finalPattern);
    QFETCH(QString, text);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMinLength(5);
    cell.setFinalRegExp(finalPattern);
    cell.setText(text);
    QTEST(cell.validate(), "expected");
    QTEST(cell.text(), "expectedText");
}

void TestZEFFormatCell::asksSpecJAboutPositionJ()
{
    ZEFCoercionSpec first(u"0O"_s, 0, -1);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.addCoercionSpec(&first);
    cell.setFinalRegExp(u"[A-Z]+"_s);

    cell.setText(u"0A"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"OA"_s);

    // One spec never speaks about the second position, although its range covers it.
    cell.setText(u"A0"_s);
    QVERIFY(!cell.validate());
    QCOMPARE(cell.text(), u"A0"_s);

    // A second one does, unless that position is out of its range.
    ZEFCoercionSpec second(u"0O"_s, 0, 0);
    cell.addCoercionSpec(&second);
    QVERIFY(!cell.validate());
    second.setEnd(1);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"AO"_s);

    // Specs for positions behind the text give nothing.
    cell.addCoercionSpec(&second);
    cell.addCoercionSpec(&second);
    cell.addCoercionSpec(nullptr);
    cell.setText(u"0"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"O"_s);
    cell.setText(u"?"_s);
    QVERIFY(!cell.validate());
}

void TestZEFFormatCell::combinesSubstitutionsOverPasses()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setEquivs(u"0O"_s);
    cell.setEquivs(u"0O"_s);
    cell.setEquivs(u"0O"_s);
    cell.setFinalRegExp(u"[A-Z]+"_s);
    cell.setText(u"000"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"OOO"_s);

    // There are as many passes as characters: one here, and a chain of two needs two.
    ZEFFormatCell chain(nullptr, nullptr);
    chain.setEquivs(u"0aaO"_s);
    chain.setFinalRegExp(u"O.*"_s);
    chain.setText(u"0"_s);
    QVERIFY(!chain.validate());
    chain.setText(u"0x"_s);
    QVERIFY(chain.validate());
    QCOMPARE(chain.text(), u"Ox"_s);
}

void TestZEFFormatCell::findsTheFirstVariantThatPasses()
{
    // By passes, then candidates, then specs, then pairs; coerced forms go before upper case.
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setEquivs(u"xyxz"_s);
    cell.setEquivs(u"xw"_s);
    cell.setFinalRegExp(u"zx|xw|XX"_s);
    cell.setText(u"xx"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"zx"_s);

    cell.setFinalRegExp(u"yw|xw|XX"_s);
    cell.setText(u"xx"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"xw"_s);

    // What the first pass gave and failed is the base of the second.
    cell.setFinalRegExp(u"zw|yw"_s);
    cell.setText(u"xx"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"yw"_s);

    cell.setFinalRegExp(u"XX"_s);
    cell.setText(u"xx"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), u"XX"_s);
}

void TestZEFFormatCell::searchesAsDescribed_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 300; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

// The search told step by step, with every repetition, compared with what the cell finds.
void TestZEFFormatCell::searchesAsDescribed()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const auto randomText = [&](int length, int letters) {
        QString text;
        for (int i = 0; i < length; ++i)
            text += QChar(u'a' + random.bounded(letters));
        return text;
    };
    const QString start = randomText(random.bounded(1, 4), 4);
    QList<ZEFCoercionSpec> specs;
    for (int i = random.bounded(1, 4); i > 0; --i)
        specs.append({randomText(random.bounded(2, 7), 4), random.bounded(3), random.bounded(-1, 4)});
    const QStringList targets = {randomText(int(start.size()), 4), randomText(int(start.size()), 4)};
    const auto passes = [&](const QString& text) { return targets.contains(text); };

    QString expected = passes(start) ? start : QString();
    QStringList candidates = {start};
    QStringList variants;
    for (qsizetype pass = 0; pass < start.size() && expected.isNull(); ++pass) {
        QStringList failed;
        for (qsizetype i = 0; i < candidates.size() && expected.isNull(); ++i) {
            for (int j = 0; j < specs.size() && expected.isNull(); ++j) {
                if (specs.at(j).coerce(j, candidates.at(i), variants) == 0)
                    continue;
                const auto found = std::find_if(variants.cbegin(), variants.cend(), passes);
                if (found != variants.cend())
                    expected = *found;
                else
                    failed += variants;
            }
        }
        // Repetitions beyond the first change nothing but the time.
        failed.removeDuplicates();
        candidates = failed;
    }

    ZEFFormatCell cell(nullptr, nullptr);
    for (ZEFCoercionSpec& spec : specs)
        cell.addCoercionSpec(&spec);
    cell.setFinalRegExp(targets.join(u'|'));
    cell.setText(start);
    QCOMPARE(cell.validate(), !expected.isNull());
    QCOMPARE(cell.text(), expected.isNull() ? start : expected);
}

void TestZEFFormatCell::givesUpAfterAWhile()
{
    // Every single text takes this pattern long.
    ZEFFormatCell cell(nullptr, nullptr);
    for (int i = 0; i < 18; ++i)
        cell.setEquivs(u"ab"_s);
    cell.setFinalRegExp(u"((a|b)+)+[cd]"_s);
    cell.setText(QString(30, u'a'));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!cell.validate());
    QVERIFY2(timer.elapsed() < 20'000, qPrintable(QString::number(timer.elapsed())));
}

void TestZEFFormatCell::passesOverPositionsThatCannotChange()
{
    ZEFFormatCell cell(nullptr, nullptr);
    for (int i = 0; i < 982; ++i)
        cell.setEquivs(u"ab"_s);
    for (int i = 0; i < 18; ++i)
        cell.setEquivs(u"01"_s);
    cell.setText(QString(1000, u'0'));
    QElapsedTimer timer;
    timer.start();
    cell.setFinalRegExp(u"0+1{17}"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), QString(QString(983, u'0') + QString(17, u'1')));
    cell.setText(QString(1000, u'0'));
    cell.setFinalRegExp(u"0+1{3}"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.text(), QString(QString(997, u'0') + QString(3, u'1')));
    QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
}

void TestZEFFormatCell::givesUpBeforeTextsFillTheMemory()
{
    // As many pairs as this for a text as long as this: 12 gigabytes of texts, if all were made.
    QString pairs;
    for (char16_t c = 0x100; c < 0xd800; ++c)
        pairs.append(u'0').append(c);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(1 << 20);
    cell.setEquivs(pairs);
    cell.setFinalRegExp(u"2"_s);
    const QString text = u'0' + QString(100'000, u'x');
    cell.setText(text);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!cell.validate());
    QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(cell.text(), text);
}

void TestZEFFormatCell::setsNoTextThatDoesNotDiffer()
{
    CountingCell cell(nullptr, nullptr);
    cell.setFinalRegExp(u"[A-Z]+"_s);
    cell.setText(u"AB"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.textsSet, 1);
    cell.setText(u"ab"_s);
    QVERIFY(cell.validate());
    QCOMPARE(cell.textsSet, 3);
    QCOMPARE(cell.text(), u"AB"_s);
}

void TestZEFFormatCell::patternsRespectCase()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setRegexp(u"[a-z]*"_s);
    cell.setFinalRegExp(u"aB"_s);
    QTest::keyClick(&cell, 'A');
    QCOMPARE(cell.text(), QString());
    cell.setText(u"Ab"_s);
    QVERIFY(!cell.validate());
    cell.setText(u"aB"_s);
    QVERIFY(cell.validate());
    const auto* validator = qobject_cast<const QRegularExpressionValidator*>(cell.validator());
    QVERIFY(validator);
    QCOMPARE(validator->regularExpression().patternOptions(), QRegularExpression::NoPatternOption);
    // A dot is no line feed, and spaces count.
    cell.setFinalRegExp(u"a.b c"_s);
    cell.setText(u"a-b c"_s);
    QVERIFY(cell.validate());
    cell.setText(u"a-bc"_s);
    QVERIFY(!cell.validate());
}

void TestZEFFormatCell::makesNoConnectionOfUnknownNames()
{
    const ZEFFormatCell cell(nullptr, nullptr);
    using Connection = SignatureConnection<ZEFFormatCell, ZEFFormatCell>;
    Connection("2nothing()", "1copy( void )").make(&cell, &cell);
    QCOMPARE(TestLog::takeAll(),
             QStringList{u"warning: QObject::connect: No such signal ZEFFormatCell::nothing()"_s});
    Connection("2copyMe( void )", "1nothing()").make(&cell, &cell);
    QCOMPARE(TestLog::takeAll(),
             QStringList{u"warning: QObject::connect: No such slot ZEFFormatCell::nothing()"_s});
}

void TestZEFFormatCell::survivesARewritingThatNeverEnds()
{
    // The accepted form is lowered when it is set, and the lowered form passes in yet another form.
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setEnforceCase(1);
    cell.setEquivs(u"aBbA"_s);
    cell.setFinalRegExp(u"[A-Z]"_s);
    connect(&cell, qOverload<int, QString&>(&ZEFFormatCell::textChanged), this, [&] { cell.validate(); });
    cell.setText(u"a"_s);
    QVERIFY(cell.validate());
}

void TestZEFFormatCell::keepsNoSpecOfTheCaller()
{
    ZEFCoercionSpec onTheStack(u"0O"_s, 0, -1);
    const auto onTheHeap = std::make_unique<ZEFCoercionSpec>(u"1I"_s, 0, -1);
    {
        ZEFFormatCell cell(nullptr, nullptr);
        ZEFFormatCell other(nullptr, nullptr);
        cell.addCoercionSpec(&onTheStack);
        cell.addCoercionSpec(onTheHeap.get());
        other.addCoercionSpec(&onTheStack);
        other.addCoercionSpec(onTheHeap.get());
        other.setFinalRegExp(u"OI"_s);
        other.setText(u"01"_s);
        QVERIFY(other.validate());
    }
    QCOMPARE(onTheStack.spec(), u"0O"_s);
    QCOMPARE(onTheHeap->spec(), u"1I"_s);
}

void TestZEFFormatCell::ownsItsEquivalents()
{
    // Under the leak sanitizer: nothing of these is left.
    ZEFFormatCell cell(nullptr, nullptr);
    for (int i = 0; i < 100; ++i)
        cell.setEquivs(u"0O"_s);
    QCOMPARE(cell.equivs(), u"0O"_s);
}

void TestZEFFormatCell::copiesItsSelection()
{
    ZEFFormatCell cell(nullptr, nullptr);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.setText(u"abcd"_s);
    cell.setSelection(1, 2);
    lines.clear();
    cell.copy();
    QCOMPARE(clipboardText(), u"bc"_s);
    QCOMPARE(lines, QStringList());
}

void TestZEFFormatCell::asksForACopyWithoutSelection()
{
    QApplication::clipboard()->setText(u"before"_s);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setText(u"abcd"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.copy();
    QCOMPARE(clipboardText(), u"before"_s);
    QCOMPARE(lines, QStringList{u"copyMe"_s});
}

void TestZEFFormatCell::silencesItsParentWhileCopying()
{
    QClipboard* clipboard = QApplication::clipboard();
    Listener listener;
    connect(clipboard, SIGNAL(selectionChanged()), &listener, SLOT(deselect()));
    auto* cell = new ZEFFormatCell(&listener, nullptr);
    connect(cell, &ZEFFormatCell::copyMe, this, [&] { Q_EMIT clipboard->selectionChanged(); });
    cell->copy();
    QCOMPARE(listener.deselections, 0);
    Q_EMIT clipboard->selectionChanged();
    QCOMPARE(listener.deselections, 1);

    // Once, however often it was broken and made.
    cell->copy();
    cell->copy();
    Q_EMIT clipboard->selectionChanged();
    QCOMPARE(listener.deselections, 2);
}

void TestZEFFormatCell::leavesOtherParentsAlone()
{
    // A parent that cannot or does not listen: no warning, and no connection that was not there.
    QWidget plain;
    (new ZEFFormatCell(&plain, nullptr))->copy();
    ZEFFormatCell(nullptr, nullptr).copy();

    Listener listener;
    (new ZEFFormatCell(&listener, nullptr))->copy();
    Q_EMIT QApplication::clipboard()->selectionChanged();
    QCOMPARE(listener.deselections, 0);
}

void TestZEFFormatCell::pastes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("expectedText");
    QTest::addColumn<QStringList>("signalLines");

    QTest::addRow("fits") << u"ab"_s << u"cd"_s << u"abcd"_s << QStringList{u"textChanged 3 abcd"_s};
    QTest::addRow("too long") << u"ab"_s << u"cde"_s << u"ab"_s << QStringList{u"pasteMe"_s};
    QTest::addRow("too long for an empty cell") << u""_s << u"abcde"_s << u""_s << QStringList{u"pasteMe"_s};
    QTest::addRow("refused by the pattern") << u"ab"_s << u"12"_s << u"ab"_s << QStringList{};
    QTest::addRow("an empty clipboard") << u"ab"_s << u""_s << u"ab"_s << QStringList{};
}

void TestZEFFormatCell::pastes()
{
    QFETCH(QString, text);
    QFETCH(QString, pasted);
    QFETCH(QStringList, signalLines);
    QApplication::clipboard()->setText(pasted);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setId(3);
    cell.setMaxLength(4);
    cell.setRegexp(u"[a-z]*"_s);
    cell.setText(text);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.paste();
    QTEST(cell.text(), "expectedText");
    QCOMPARE(lines, signalLines);
    QVERIFY(!cell.signalsBlocked());
}

void TestZEFFormatCell::pastesOverTheSelection()
{
    QApplication::clipboard()->setText(u"wxyz"_s);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(4);
    cell.setText(u"abcd"_s);
    cell.setSelection(1, 2);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.paste();
    QCOMPARE(cell.text(), u"awxd"_s);
    QCOMPARE(lines, QStringList{u"textChanged 0 awxd"_s});
}

void TestZEFFormatCell::keepsSpeakingAfterARefusedPaste()
{
    QApplication::clipboard()->setText(u"1"_s);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(4);
    cell.setRegexp(u"[a-z]*"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.paste();
    QTest::keyClick(&cell, Qt::Key_A);
    QCOMPARE(lines, QStringList{u"textChanged 0 a"_s});
}

void TestZEFFormatCell::takesAHugePaste()
{
    QApplication::clipboard()->setText(QString(10 * 1024 * 1024, u'a'));
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(4);
    cell.setRegexp(u"[a-z]*"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.paste();
    QCOMPARE(lines, QStringList{u"pasteMe"_s});
    cell.setText(u"bc"_s);
    cell.setSelection(0, 1);
    cell.paste();
    QCOMPARE(cell.text(), u"aaac"_s);
}

void TestZEFFormatCell::asksForCutAndClear()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setText(u"abc"_s);
    cell.selectAll();
    QStringList lines;
    recordSignals(&cell, &lines);
    cell.cut();
    cell.clear();
    QCOMPARE(cell.text(), u"abc"_s);
    QCOMPARE(lines, (QStringList{u"cutMe"_s, u"deleteMe"_s}));
}

void TestZEFFormatCell::pastesOnceWithTheMiddleButton()
{
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->setText(u"xy"_s);
    if (clipboard->supportsSelection())
        clipboard->setText(u"sel"_s, QClipboard::Selection);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(8);
    cell.show();
    QVERIFY(QTest::qWaitForWindowExposed(&cell));
    QStringList lines;
    recordSignals(&cell, &lines);
    QTest::mouseClick(&cell, Qt::MiddleButton);
    QCOMPARE(cell.text(), u"xy"_s);
    QCOMPARE(lines, QStringList{u"textChanged 0 xy"_s});

    // At the caret, which stays where it is: the press does nothing else.
    cell.setText(u"abcd"_s);
    cell.setCursorPosition(2);
    QTest::mouseClick(&cell, Qt::MiddleButton, Qt::NoModifier, QPoint(1, cell.height() / 2));
    QCOMPARE(cell.text(), u"abxycd"_s);
    QCOMPARE(cell.cursorPosition(), 4);
}

void TestZEFFormatCell::placesTheCaretWithTheLeftButton()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.resize(100, 30);
    cell.setText(u"abcd"_s);
    QTest::mouseClick(&cell, Qt::LeftButton, Qt::NoModifier, {1, 15});
    QCOMPARE(cell.cursorPosition(), 0);
    QTest::mouseClick(&cell, Qt::LeftButton, Qt::NoModifier, {99, 15});
    QCOMPARE(cell.cursorPosition(), 4);
}

void TestZEFFormatCell::asksForAPasteWithTheMiddleButton()
{
    QApplication::clipboard()->setText(u"much too long"_s);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setMaxLength(3);
    QStringList lines;
    recordSignals(&cell, &lines);
    QTest::mouseClick(&cell, Qt::MiddleButton);
    QCOMPARE(cell.text(), QString());
    QCOMPARE(lines, QStringList{u"pasteMe"_s});
}

void TestZEFFormatCell::worksWithTheContextMenu()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setText(u"abcd"_s);
    cell.setSelection(1, 2);
    QStringList lines;
    recordSignals(&cell, &lines);
    const std::unique_ptr<QMenu> menu(cell.createStandardContextMenu());
    const QList<QAction*> actions = menu->actions();
    const auto cut = std::find_if(actions.cbegin(), actions.cend(),
                                  [](const QAction* action) { return action->text().startsWith(u"Cu&t"); });
    QVERIFY(cut != actions.cend());
    (*cut)->trigger();
    // Qt calls the slot by its name, or its own function past the cell, as the version has it.
    if (lines == QStringList{u"cutMe"_s}) {
        QCOMPARE(cell.text(), u"abcd"_s);
        return;
    }
    QCOMPARE(clipboardText(), u"bc"_s);
    QCOMPARE(cell.text(), u"ad"_s);
    QCOMPARE(lines, QStringList{u"textChanged 0 ad"_s});
}

void TestZEFFormatCell::announcesTheMouseLeaving_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QStringList>("signalLines");
    const QStringList left = {u"selectOutside true"_s};
    QTest::addRow("inside") << QPoint(50, 10) << QStringList{};
    QTest::addRow("left") << QPoint(-1, 10) << left;
    QTest::addRow("above") << QPoint(50, -1) << left;
    QTest::addRow("right") << QPoint(101, 10) << left;
    QTest::addRow("below") << QPoint(50, 31) << left;
    QTest::addRow("on the right edge") << QPoint(100, 10) << QStringList{};
    QTest::addRow("on the bottom edge") << QPoint(50, 30) << QStringList{};
}

void TestZEFFormatCell::announcesTheMouseLeaving()
{
    QFETCH(QPoint, position);
    QFETCH(QStringList, signalLines);
    ZEFFormatCell cell(nullptr, nullptr);
    cell.resize(100, 30);
    cell.setText(u"abc"_s);
    QStringList lines;
    recordSignals(&cell, &lines);

    // Nothing is announced before a press, nor after a press of the middle button.
    sendMouse(&cell, QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
    sendMouse(&cell, QEvent::MouseButtonPress, {5, 5}, Qt::MiddleButton, Qt::MiddleButton);
    sendMouse(&cell, QEvent::MouseMove, position, Qt::NoButton, Qt::MiddleButton);
    sendMouse(&cell, QEvent::MouseButtonRelease, {5, 5}, Qt::MiddleButton, Qt::NoButton);
    QCOMPARE(lines, QStringList());

    sendMouse(&cell, QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton, Qt::LeftButton);
    sendMouse(&cell, QEvent::MouseMove, position, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(lines, signalLines);
    QVERIFY(!cell.selectOutside());
    sendMouse(&cell, QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
    lines.clear();
    sendMouse(&cell, QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
    QCOMPARE(lines, QStringList());
}

void TestZEFFormatCell::reselectsWhenTheMouseComesBack()
{
    CountingCell cell(nullptr, nullptr);
    cell.resize(200, 30);
    cell.setText(u"abc"_s);
    QStringList lines;
    recordSignals(&cell, &lines);
    sendMouse(&cell, QEvent::MouseButtonPress, {199, 10}, Qt::LeftButton, Qt::LeftButton);
    sendMouse(&cell, QEvent::MouseMove, {-5, 10}, Qt::NoButton, Qt::LeftButton);
    QVERIFY(cell.selectOutside());
    // While it is on, leaving again is not announced again.
    sendMouse(&cell, QEvent::MouseMove, {-6, 10}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(lines, QStringList{u"selectOutside true"_s});
    QCOMPARE(cell.selectedText(), u"abc"_s);
    QCOMPARE(cell.reselections, 0);
    sendMouse(&cell, QEvent::MouseMove, {199, 10}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(cell.reselections, 1);
    QCOMPARE(lines, (QStringList{u"selectOutside true"_s, u"selectOutside false"_s}));
}

void TestZEFFormatCell::keepsTheSelectionOfTheMouse()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.resize(200, 30);
    cell.setText(u"abcdef"_s);
    sendMouse(&cell, QEvent::MouseButtonPress, {5, 10}, Qt::LeftButton, Qt::LeftButton);
    cell.setSelection(1, 3);
    sendMouse(&cell, QEvent::MouseButtonRelease, {5, 10}, Qt::LeftButton, Qt::NoButton);
    cell.deselect();
    cell.setCursorPosition(0);
    cell.reselect();
    QCOMPARE(cell.selectedText(), u"bcd"_s);
    QCOMPARE(cell.cursorPosition(), 4);

    // The caret comes back to the end of the selection where it was.
    sendMouse(&cell, QEvent::MouseButtonPress, {5, 10}, Qt::LeftButton, Qt::LeftButton);
    cell.setSelection(5, -2);
    sendMouse(&cell, QEvent::MouseButtonRelease, {5, 10}, Qt::LeftButton, Qt::NoButton);
    cell.deselect();
    cell.reselect();
    QCOMPARE(cell.selectedText(), u"de"_s);
    QCOMPARE(cell.cursorPosition(), 3);

    // Without a selection only the caret comes back.
    sendMouse(&cell, QEvent::MouseButtonPress, {5, 10}, Qt::LeftButton, Qt::LeftButton);
    cell.setCursorPosition(2);
    sendMouse(&cell, QEvent::MouseButtonRelease, {5, 10}, Qt::LeftButton, Qt::NoButton);
    cell.setCursorPosition(5);
    cell.reselect();
    QCOMPARE(cell.selectedText(), QString());
    QCOMPARE(cell.cursorPosition(), 2);
}

void TestZEFFormatCell::forgetsASelectionThatNoLongerFits()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.resize(200, 30);
    cell.setText(u"abcdef"_s);
    sendMouse(&cell, QEvent::MouseButtonPress, {5, 10}, Qt::LeftButton, Qt::LeftButton);
    cell.setSelection(1, 3);
    sendMouse(&cell, QEvent::MouseButtonRelease, {5, 10}, Qt::LeftButton, Qt::NoButton);
    cell.setText(u"abc"_s);
    cell.setCursorPosition(1);
    cell.reselect();
    QCOMPARE(cell.selectedText(), QString());
    QCOMPARE(cell.cursorPosition(), 1);
    // It is forgotten for good.
    cell.setText(u"abcdef"_s);
    cell.setCursorPosition(0);
    cell.reselect();
    QCOMPARE(cell.selectedText(), QString());
    QCOMPARE(cell.cursorPosition(), 4);

    ZEFFormatCell fresh(nullptr, nullptr);
    fresh.setText(u"abc"_s);
    fresh.reselect();
    QCOMPARE(fresh.selectedText(), QString());
    QCOMPARE(fresh.cursorPosition(), 0);
}

void TestZEFFormatCell::releasesTheMouseInSilence()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.resize(200, 30);
    bool blocked = false;
    connect(QApplication::clipboard(), &QClipboard::changed, &cell, [&] { blocked = cell.signalsBlocked(); });
    cell.setText(u"abc"_s);
    sendMouse(&cell, QEvent::MouseButtonPress, {5, 10}, Qt::LeftButton, Qt::LeftButton);
    cell.setSelection(0, 3);
    sendMouse(&cell, QEvent::MouseButtonRelease, {5, 10}, Qt::LeftButton, Qt::NoButton);
    QVERIFY(!cell.signalsBlocked());
    if (!QApplication::clipboard()->supportsSelection())
        return;
    // The line edit's handling of the release has copied the selection.
    QCOMPARE(clipboardText(QClipboard::Selection), u"abc"_s);
    QVERIFY(blocked);
}

void TestZEFFormatCell::announcesTheLossOfFocus()
{
    TestLog::allow(u"warning: This plugin does not support propagateSizeHints()"_s);
    QWidget window;
    QVBoxLayout layout(&window);
    auto* cell = new ZEFFormatCell(&window, nullptr);
    auto* other = new QLineEdit(&window);
    layout.addWidget(cell);
    layout.addWidget(other);
    cell->setId(6);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    cell->setFocus();
    QTRY_VERIFY(cell->hasFocus());
    QTest::keyClick(cell, Qt::Key_A);
    QStringList order;
    connect(cell, &ZEFFormatCell::focusOut, this, [&](int id, QFocusEvent* e) {
        order += u"focusOut %1 %2"_s.arg(id).arg(e->reason() == Qt::TabFocusReason);
    });
    connect(cell, &QLineEdit::editingFinished, this, [&] { order += u"editingFinished"_s; });
    QTest::keyClick(cell, Qt::Key_Tab);
    QVERIFY(other->hasFocus());
    QCOMPARE(order, (QStringList{u"focusOut 6 1"_s, u"editingFinished"_s}));
}

void TestZEFFormatCell::drawsTheBottomLine_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("rows");
    // The line is centred on the last row but one, so half of it lies below the cell.
    QTest::addRow("none set") << -1 << 1;
    QTest::addRow("3 pixels") << 3 << 2;
    QTest::addRow("6 pixels") << 6 << 4;
}

void TestZEFFormatCell::drawsTheBottomLine()
{
    QFETCH(int, height);
    QFETCH(int, rows);
    ZEFFormatCell cell(nullptr, nullptr);
    // A frame and a base that cannot be mistaken for the line.
    cell.setFrame(false);
    QPalette palette = cell.palette();
    palette.setColor(QPalette::Base, Qt::blue);
    palette.setColor(QPalette::Window, Qt::blue);
    cell.setPalette(palette);
    const QColor colour = height > 0 ? QColor(Qt::red) : QColor(Qt::white);
    if (height > 0) {
        cell.setBottomHighlight(height, colour);
        QCOMPARE(cell.contentsMargins().bottom(), height);
    }
    cell.resize(60, 40);
    const QImage image = rendered(&cell);
    int full = 0;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(30, y) == colour)
            ++full;
    }
    // Antialiasing leaves the rows that the line only touches in a mixture.
    QVERIFY2(full >= rows - 1 && full <= rows + 1, qPrintable(QString::number(full)));
    QVERIFY(image.pixelColor(30, 10) == QColor(Qt::blue));
    if (height > 0)
        QCOMPARE(image.pixelColor(30, 39), colour);
    else
        QVERIFY(image.pixelColor(30, 39) != QColor(Qt::blue) || image.pixelColor(30, 38) != QColor(Qt::blue));
}

void TestZEFFormatCell::drawsNoLineInANarrowMargin()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setFrame(false);
    QPalette palette = cell.palette();
    palette.setColor(QPalette::Base, Qt::blue);
    palette.setColor(QPalette::Window, Qt::blue);
    cell.setPalette(palette);
    cell.setBottomHighlight(4, Qt::red);
    cell.setContentsMargins(0, 0, 0, 3);
    cell.resize(60, 40);
    const QImage image = rendered(&cell);
    for (int y = 0; y < image.height(); ++y)
        QCOMPARE(image.pixelColor(30, y), QColor(Qt::blue));
}

void TestZEFFormatCell::keepsTheColourOfAHighlightThatEnds()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setFrame(false);
    cell.setBottomHighlight(5, Qt::red);
    cell.setBottomHighlight(0, Qt::green);
    // The margin stays, and so does a line of one pixel in the old colour.
    QCOMPARE(cell.contentsMargins().bottom(), 5);
    cell.resize(60, 40);
    const QImage image = rendered(&cell);
    const QColor above = image.pixelColor(30, 38);
    const QColor below = image.pixelColor(30, 39);
    QVERIFY(above.red() > above.green() || below.red() > below.green());
    QVERIFY(above.green() <= above.red() && below.green() <= below.red());
}

void TestZEFFormatCell::limitsTheHighlight()
{
    ZEFFormatCell cell(nullptr, nullptr);
    cell.setContentsMargins(1, 2, 3, 20);
    cell.setBottomHighlight(5, Qt::red);
    QCOMPARE(cell.contentsMargins(), QMargins(1, 2, 3, 20));
    cell.setBottomHighlight(25, Qt::red);
    QCOMPARE(cell.contentsMargins(), QMargins(1, 2, 3, 25));
    cell.setBottomHighlight(std::numeric_limits<int>::max(), Qt::red);
    QCOMPARE(cell.contentsMargins(), QMargins(1, 2, 3, 32767));
    cell.setBottomHighlight(std::numeric_limits<int>::min(), Qt::red);
    QCOMPARE(cell.contentsMargins(), QMargins(1, 2, 3, 32767));
}

ZEF_TEST_MAIN(TestZEFFormatCell)
#include "test_zefformatcell.moc"
