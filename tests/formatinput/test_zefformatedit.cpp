#include <ZEFTest.h>

#include <ZEFFormatEdit.h>
#include <ZEFListValidator.h>

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
const QString noSizeHints = u"warning: This plugin does not support propagateSizeHints()"_s;

QString clipboardText(QClipboard::Mode mode = QClipboard::Clipboard)
{
    return QApplication::clipboard()->text(mode);
}

std::unique_ptr<ZEFFormatEdit> madeFrom(const QString& format)
{
    auto edit = std::make_unique<ZEFFormatEdit>(nullptr);
    edit->setFormat(format);
    return edit;
}

QStringList texts(const ZEFFormatEdit* edit)
{
    QStringList all;
    for (int i = 0; i < edit->lineEditCount(); ++i)
        all.append(edit->editor(i)->text());
    return all;
}

QStringList separators(const ZEFFormatEdit* edit)
{
    QStringList all;
    for (const QLabel* label : edit->findChildren<QLabel*>())
        all.append(label->text());
    return all;
}

// Measures processor time, so that a busy machine disturbs no limit.
class ProcessorTimer {
public:
    void start() { m_start = std::clock(); }
    //! In milliseconds.
    qint64 elapsed() const { return qint64(std::clock() - m_start) * 1000 / CLOCKS_PER_SEC; }

private:
    std::clock_t m_start = 0;
};

// Counts how often the objects that it filters are shown.
class ShowCounter : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == QEvent::Show ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

// A window that holds an edit, so that cells can have the focus.
class Form : public QWidget {
public:
    ZEFFormatEdit* edit = new ZEFFormatEdit(this);

    explicit Form(const QString& format)
    {
        TestLog::allow(noSizeHints);
        (new QVBoxLayout(this))->addWidget(edit);
        edit->setFormat(format);
    }

    bool activate()
    {
        show();
        activateWindow();
        if (!QTest::qWaitForWindowActive(this))
            return false;
        edit->editor(0)->setFocus();
        return edit->editor(0)->hasFocus();
    }

    //! Types to whatever has the focus, as a user does.
    void type(const QString& text) const
    {
        for (const QChar c : text)
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    int focused() const
    {
        const auto* cell = qobject_cast<ZEFFormatCell*>(QApplication::focusWidget());
        return cell && cell->parentWidget() == edit ? cell->id() : -1;
    }
};

// A subclass that remembers which of the edit's operations were called.
class Observed : public ZEFFormatEdit {
public:
    using ZEFFormatEdit::fallbackText;
    using ZEFFormatEdit::pendingText;
    using ZEFFormatEdit::setAlternateId;
    using ZEFFormatEdit::setFallbackText;
    using ZEFFormatEdit::setPendingText;
    using ZEFFormatEdit::ZEFFormatEdit;

    QStringList calls;

    bool setText(const QString& text) override
    {
        calls += u"setText "_s + text;
        return ZEFFormatEdit::setText(text);
    }
    void editorTextChanged(int id) override
    {
        calls += u"editorTextChanged %1"_s.arg(id);
        ZEFFormatEdit::editorTextChanged(id);
    }
    void childFocusedOut(int id, QFocusEvent* e) override
    {
        calls += u"childFocusedOut %1"_s.arg(id);
        ZEFFormatEdit::childFocusedOut(id, e);
    }
    void copy() override
    {
        calls += u"copy"_s;
        ZEFFormatEdit::copy();
    }
    void clear() override
    {
        calls += u"clear"_s;
        ZEFFormatEdit::clear();
    }
    void globalSelect(bool on) override
    {
        calls += on ? u"globalSelect true"_s : u"globalSelect false"_s;
        ZEFFormatEdit::globalSelect(on);
    }
    void restoreFocus() override
    {
        calls += u"restoreFocus"_s;
        ZEFFormatEdit::restoreFocus();
    }
    void moveTo(int from, int to, QKeyEvent* e) override
    {
        calls += u"moveTo %1 %2"_s.arg(from).arg(to);
        ZEFFormatEdit::moveTo(from, to, e);
    }
};

// Accepts everything, and does something first.
class ActingValidator : public QValidator {
public:
    std::function<void()> act;

    State validate(QString&, int&) const override
    {
        if (act)
            act();
        return Acceptable;
    }
};

const QString twoCells = uR"({3}(\d*)-{4}(\d*))"_s;
const QString threeCells = u"{2}([a-z]*)-{2}([a-z]*)/{2}([a-z]*)"_s;

} // namespace

class TestZEFFormatEdit : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void listsItsMethodsInOrder();
    void namesItsParameters();
    void listsItsPropertiesInOrder();

    void buildsCellsAndSeparators();
    void buildsASuffix();
    void carriesTheMinimumOver();
    void handsItsSettingsToCells();
    void handsCoercionsToAllLaterCells();
    void startsTheOpenCoercionWhereTheClosedOnesEnd();
    void doesWhatTheManualSays();
    void doesWhatTheHeaderSays();
    void buildsNothingFromAnEmptyFormat();
    void buildsCellsThatAcceptNothing();
    void showsSeparatorsAsTheyAreWritten();
    void reportsSyntaxErrors_data();
    void reportsSyntaxErrors();
    void translatesSyntaxErrors();
    void repaintsAfterAFormat_data();
    void repaintsAfterAFormat();
    void keepsHugeCounts();
    void acceptsInvalidPatterns();
    void buildsFromAMegabyte();
    void limitsItsCells();
    void makesItsConnections();
    void showsWhatItRebuilds();

    void storesAlternates();
    void alternatesDropTheCells();
    void checksAlternates();

    void joinsItsText();
    void returnsTheFallbackText();
    void emptiesTheFallbackTextAfterARebuild();
    void spreadsAText_data();
    void spreadsAText();
    void spreadsTextsThroughTheCase();

    void validates();
    void neverSaysIntermediate();
    void asksTheOutsideValidator();
    void survivesTheOutsideValidator();
    void announcesItsValidity();
    void judgesAnEmptyCellItself();
    void clearsAlternatesInSilence();

    void typesAcrossCells();
    void backspacesAcrossCells();
    void movesWithTheArrowKeys();
    void navigatesToAnyId_data();
    void navigatesToAnyId();
    void sendsTheKeyOn();
    void savesAndRestoresTheFocus();
    void savesTheFocusOfItsOwnCellsOnly();
    void ignoresFocusThatLeaves();

    void copies();
    void pastes();
    void pastesFromTheSelectionFirst();
    void pastesAcrossCellsFromACell();
    void pastesAcrossCellsWithTheMiddleButton();
    void cuts();
    void clearsAllButTheFirst();
    void selectsGlobally();
    void endsAGlobalSelectionWithTheClipboard();
    void listensToTheClipboardOnce();
    void twoEditsCopyApart();

    void keepsItsMargins();
    void limitsItsMargins_data();
    void limitsItsMargins();
    void highlightsItsCells();

    void mayBeRebuiltOrDeletedFromASlot_data();
    void mayBeRebuiltOrDeletedFromASlot();
    void givesDroppedCellsBackAfterNestedLoops();
    void neverShowsADroppedCell();
    void mayBeDeletedByTheClipboard();
    void mayBeRebuiltWhileAKeyMovesOn();
    void mayBeDeletedWhileTheFocusMoves();
    void mayBeDeletedWhileItIsRebuilt();
    void mayBeDeletedWhileItIsFilled();
    void mayBeRebuiltFromTheContextMenu();
    void forgetsCellsThatOthersDelete();
    void forgetsACellBeforeItIsDestroyed();
    void survivesAValidatorThatDeletesItsCell();
    void survivesAValidatorThatRebuilds();
    void storesItsOwnVerdictAfterARewriting();
    void deletesNestedLabelsOnce();
    void survivesASlotThatSetsTexts();
    void survivesTheLossOfItsLayout();

    void refusesTextsBeyondTheCeiling_data();
    void refusesTextsBeyondTheCeiling();
    void refusesHostileTextsInTime_data();
    void refusesHostileTextsInTime();
    void pastes64Mebibytes();
    void boundsTheTimeOfAnAction();
    void searchesAFailedTextOnce();
    void searchesManyRangesQuickly_data();
    void searchesManyRangesQuickly();
    void staysInTheTabOrder_data();
    void staysInTheTabOrder();
    void staysWhereItsCellsWereMovedTo();
    void keepsTheFocus();
    void buildsVisibleCellsInLinearTime();
    void composesAcrossCells();
    void pastesNothingIntoProtectedCells_data();
    void pastesNothingIntoProtectedCells();
    void backspacesThroughAllEmptyCells();
    void setsWholeCharacters();
    void deletesCellsMadeBeforeTheEventLoop();
    void pastesFromTheKeyboard_data();
    void pastesFromTheKeyboard();

protected:
    void tidyUp() override
    {
        QApplication::clipboard()->clear();
        if (QApplication::clipboard()->supportsSelection())
            QApplication::clipboard()->clear(QClipboard::Selection);
    }
};

void TestZEFFormatEdit::startsEmpty()
{
    QWidget parent;
    const auto* edit = new ZEFFormatEdit(&parent, "sch\xc3\xbc", Qt::Tool);
    QCOMPARE(edit->objectName(), u"schü"_s);
    QCOMPARE(edit->windowType(), Qt::Tool);
    QCOMPARE(edit->format(), QString());
    QCOMPARE(edit->ignore(), QString());
    QCOMPARE(edit->masterRegexp(), QString());
    QCOMPARE(edit->text(), QString());
    QCOMPARE(edit->lineEditCount(), 0);
    QCOMPARE(edit->state(), QValidator::Invalid);
    QCOMPARE(edit->enforceCase(), 0);
    QCOMPARE(edit->alternateCount(), 0);
    QCOMPARE(edit->alternateId(), 0);
    QVERIFY(!edit->validator());
    QCOMPARE(edit->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
    QVERIFY(qobject_cast<QHBoxLayout*>(edit->layout()));
    QCOMPARE(edit->layout()->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(edit->layout()->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(ZEFFormatEdit(nullptr, nullptr, Qt::WindowFlags()).objectName(), QString());
}

void TestZEFFormatEdit::listsItsMethodsInOrder()
{
    const QMetaObject& meta = ZEFFormatEdit::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods.append(meta.method(i).methodSignature());
    QCOMPARE(methods,
             (QByteArrayList{"validityChanged(QValidator::State)",
                             "textChanged(QValidator::State)",
                             "clearFormatList()",
                             "setText(QString)",
                             "setFormat(QString)",
                             "setIgnore(QString)",
                             "moveLeft(int,QKeyEvent*)",
                             "moveRight(int,QKeyEvent*)",
                             "moveTo(int,int,QKeyEvent*)",
                             "childFocusedOut(int,QFocusEvent*)",
                             "editorTextChanged(int)",
                             "copy()",
                             "paste()",
                             "cut()",
                             "clear()",
                             "globalSelect(bool)",
                             "deselect()",
                             "setEnforceCase(int)",
                             "addAlternateCheck(QString,int)",
                             "clearAlternate()",
                             "saveFocus()",
                             "restoreFocus()"}));
    QCOMPARE(meta.method(meta.indexOfSlot("setText(QString)")).typeName(), "bool");
}

void TestZEFFormatEdit::namesItsParameters()
{
    const auto names = [](const char* method) {
        const QMetaObject& meta = ZEFFormatEdit::staticMetaObject;
        return meta.method(meta.indexOfMethod(method)).parameterNames();
    };
    QCOMPARE(names("validityChanged(QValidator::State)"), QByteArrayList{"nValid"});
    QCOMPARE(names("textChanged(QValidator::State)"), QByteArrayList{"validity"});
    QCOMPARE(names("moveTo(int,int,QKeyEvent*)"), (QByteArrayList{"nIdFrom", "nIdTo", "e"}));
    QCOMPARE(names("globalSelect(bool)"), QByteArrayList{"bGlobal"});
    QCOMPARE(names("setEnforceCase(int)"), QByteArrayList{"nEnforce"});
}

void TestZEFFormatEdit::listsItsPropertiesInOrder()
{
    const QMetaObject& meta = ZEFFormatEdit::staticMetaObject;
    QByteArrayList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        properties.append(QByteArray(meta.property(i).name()) + ' ' + meta.property(i).typeName());
    QCOMPARE(properties,
             (QByteArrayList{"format QString", "ignore QString", "spacing int", "leftMargin int",
                             "rightMargin int", "topMargin int", "bottomMargin int"}));
    ZEFFormatEdit edit(nullptr);
    QVERIFY(edit.setProperty("format", twoCells));
    QCOMPARE(edit.property("format").toString(), twoCells);
    QCOMPARE(edit.lineEditCount(), 2);
    QVERIFY(edit.setProperty("ignore", u"-"_s));
    QCOMPARE(edit.editor(1)->ignore(), u"-"_s);
}

void TestZEFFormatEdit::buildsCellsAndSeparators()
{
    const auto edit = madeFrom(twoCells);
    QCOMPARE(edit->format(), twoCells);
    QCOMPARE(edit->masterRegexp(), uR"(^(\d*)(?:-)?(\d*)$)"_s);
    QCOMPARE(edit->lineEditCount(), 2);
    const ZEFFormatCell* first = edit->editor(0);
    const ZEFFormatCell* second = edit->editor(1);
    QCOMPARE(first->objectName(), QString());
    QCOMPARE(first->id(), 0);
    QCOMPARE(first->regexp(), uR"(\d*)"_s);
    QCOMPARE(first->maxLength(), 3);
    QCOMPARE(first->minLength(), -1);
    QCOMPARE(first->prefix(), QString());
    QCOMPARE(first->suffix(), QString());
    QCOMPARE(first->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
    QCOMPARE(first->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(second->id(), 1);
    QCOMPARE(second->maxLength(), 4);
    QCOMPARE(second->prefix(), u"-"_s);
    QCOMPARE(edit->focusProxy(), first);

    const QList<QLabel*> labels = edit->findChildren<QLabel*>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.at(0)->text(), u" - "_s);
    QCOMPARE(labels.at(0)->alignment(), Qt::AlignCenter);
    QCOMPARE(labels.at(0)->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
    QCOMPARE(edit->layout()->count(), 3);
    QCOMPARE(edit->layout()->itemAt(0)->widget(), first);
    QCOMPARE(edit->layout()->itemAt(1)->widget(), labels.at(0));
    QCOMPARE(edit->layout()->itemAt(2)->widget(), second);

    edit->setFormat(u"{2,4}([A-Z0-9]*)([A-Z]{2}[0-9]*)"_s);
    QCOMPARE(edit->lineEditCount(), 1);
    QCOMPARE(edit->layout()->count(), 1);
    QCOMPARE(edit->masterRegexp(), u"^([A-Z0-9]*)$"_s);
    QCOMPARE(edit->editor(0)->regexp(), u"[A-Z0-9]*"_s);
    QCOMPARE(edit->editor(0)->finalRegExp(), u"[A-Z]{2}[0-9]*"_s);
    QCOMPARE(edit->editor(0)->minLength(), 2);
    QCOMPARE(edit->editor(0)->maxLength(), 4);
}

void TestZEFFormatEdit::buildsASuffix()
{
    const auto edit = madeFrom(uR"({5}(\w*)kg{})"_s);
    QCOMPARE(edit->masterRegexp(), uR"(^(\w*)(?:kg)?$)"_s);
    QCOMPARE(edit->editor(0)->suffix(), u"kg"_s);
    QCOMPARE(separators(edit.get()), QStringList{u" kg "_s});
    edit->editor(0)->setText(u"12"_s);
    QCOMPARE(edit->text(), u"12kg"_s);

    // Without the empty count block the separator is dropped.
    edit->setFormat(uR"({5}(\w*)kg)"_s);
    QCOMPARE(edit->masterRegexp(), uR"(^(\w*)$)"_s);
    QCOMPARE(edit->editor(0)->suffix(), QString());
    QCOMPARE(separators(edit.get()), QStringList());
}

void TestZEFFormatEdit::carriesTheMinimumOver()
{
    const auto edit = madeFrom(uR"({2,3}(\d*)/{2}(\d*))"_s);
    QCOMPARE(edit->editor(0)->minLength(), 2);
    QCOMPARE(edit->editor(0)->maxLength(), 3);
    QCOMPARE(edit->editor(1)->minLength(), 2);
    QCOMPARE(edit->editor(1)->maxLength(), 2);
}

void TestZEFFormatEdit::handsItsSettingsToCells()
{
    ZEFFormatEdit edit(nullptr);
    edit.setIgnore(u"- "_s);
    edit.setEnforceCase(2);
    edit.setFormat(twoCells);
    QCOMPARE(edit.editor(0)->ignore(), u"- "_s);
    QCOMPARE(edit.editor(1)->enforceCase(), 2);

    edit.setIgnore(u"x"_s);
    edit.setEnforceCase(1);
    QCOMPARE(edit.ignore(), u"x"_s);
    QCOMPARE(edit.enforceCase(), 1);
    QCOMPARE(edit.editor(0)->ignore(), u"x"_s);
    QCOMPARE(edit.editor(1)->enforceCase(), 1);

    // The same mode again is not handed on.
    edit.editor(0)->setEnforceCase(0);
    edit.setEnforceCase(1);
    QCOMPARE(edit.editor(0)->enforceCase(), 0);
}

void TestZEFFormatEdit::handsCoercionsToAllLaterCells()
{
    const auto edit = madeFrom(u"{2:0O|3:1I}([A-Z0-9]*)([A-Z]*)-{5}([A-Z0-9]*)([A-Z]*)"_s);
    QCOMPARE(edit->editor(0)->maxLength(), 5);
    // The example "{2:ab|3:cd}": the open range starts where the closed one ends, at position 2. A further
    // spec in front of the open one would be asked about position 1; only as the third it is in range.
    // Position 0 belongs to the closed range, which reads 0 as O. The open one comes second in the first
    // cell, and it starts at position 2: position 1, which it is asked about, is out of its range.
    edit->editor(0)->setText(u"0AAAA"_s);
    QVERIFY(edit->editor(0)->validate());
    QCOMPARE(edit->editor(0)->text(), u"OAAAA"_s);
    edit->editor(0)->setText(u"A1AAA"_s);
    QVERIFY(!edit->editor(0)->validate());
    // The second cell has only the closed range.
    edit->editor(1)->setText(u"0AAAA"_s);
    QVERIFY(edit->editor(1)->validate());
    QCOMPARE(edit->editor(1)->text(), u"OAAAA"_s);

    // An open coercion at position 0 stays with its cell.
    edit->setFormat(u"{5:0O}([A-Z0-9]*)([A-Z]*)-{5}([A-Z0-9]*)([A-Z]*)"_s);
    edit->editor(0)->setText(u"0A"_s);
    edit->editor(1)->setText(u"0A"_s);
    QVERIFY(edit->editor(0)->validate());
    QVERIFY(!edit->editor(1)->validate());
}

void TestZEFFormatEdit::startsTheOpenCoercionWhereTheClosedOnesEnd()
{
    const auto coerced = [](const QString& format, const QString& text) {
        const auto edit = madeFrom(format);
        edit->editor(0)->setText(text);
        edit->editor(0)->validate();
        return edit->editor(0)->text();
    };
    // The closed range is asked about position 0, the open one about position 1, before its start.
    const QString two = uR"({2:ab|3:cd}(\w*)(b\w*|\wd\w*))"_s;
    QCOMPARE(madeFrom(two)->editor(0)->maxLength(), 5);
    QCOMPARE(coerced(two, u"aAAAA"_s), u"bAAAA"_s);
    QCOMPARE(coerced(two, u"AcAAA"_s), u"AcAAA"_s);
    // As the third one it is asked about position 2, which is its start here and lies before it below.
    QCOMPARE(coerced(uR"({1:ab|1:ab|3:cd}(\w*)(\w\wd\w*))"_s, u"AAcAA"_s), u"AAdAA"_s);
    QCOMPARE(coerced(uR"({1:ab|2:ab|3:cd}(\w*)(\w\wd\w*))"_s, u"AAcAA"_s), u"AAcAA"_s);
}

void TestZEFFormatEdit::doesWhatTheManualSays()
{
    const auto edit = madeFrom(u"{1,5}([A-Z0-9]{0,5})-{1,5}([A-Z0-9]{0,5})-{1,5}([A-Z0-9]{0,5})"_s);
    QVERIFY(edit->setText(u"AB123CD456EF789"_s));
    QCOMPARE(edit->text(), u"AB123-CD456-EF789"_s);
    QCOMPARE(edit->state(), QValidator::Acceptable);

    // The letter O for a 0, at any place of any cell
    edit->setFormat(u"{1:O0|1:O0|1:O0|0}([0-9O]{0,3})([0-9]{3})-{3}([0-9O]{0,3})([0-9]{3})"_s);
    QVERIFY(edit->setText(u"1O3OOO"_s));
    QCOMPARE(edit->text(), u"103-000"_s);

    // Inner groups
    edit->setFormat(uR"({4}(\(AB|CD\)*)-{3}([0-9]*))"_s);
    QCOMPARE(edit->editor(0)->regexp(), u"(AB|CD)*"_s);
    edit->setFormat(uR"({3}(\(A|B\)[0-9]*)-{3}([0-9]*))"_s);
    QVERIFY(edit->setText(u"A1-23"_s));
    QCOMPARE(texts(edit.get()), (QStringList{u"A1"_s, u"A"_s}));
    edit->setFormat(uR"({3}(\(?:A|B\)[0-9]*)-{3}([0-9]*))"_s);
    QVERIFY(edit->setText(u"A1-23"_s));
    QCOMPARE(texts(edit.get()), (QStringList{u"A1"_s, u"23"_s}));

    // A separator that is no pattern leaves typing alone, but nothing can be spread.
    edit->setFormat(uR"({2}(\d*)+{2}(\d*))"_s);
    QVERIFY(!edit->setText(u"12+34"_s));
    QTest::keyClicks(edit->editor(0), u"12"_s);
    QCOMPARE(edit->text(), u"12"_s);
    edit->setFormat(uR"({2}(\d*)\+{2}(\d*))"_s);
    QCOMPARE(separators(edit.get()), QStringList{uR"( \+ )"_s});
    QVERIFY(edit->setText(u"12+34"_s));
}

void TestZEFFormatEdit::doesWhatTheHeaderSays()
{
    const auto key = madeFrom(u"{1:0O|1:0O|1:0O|1:0O|1:0O|}([A-Z0-9]*)([A-Z1-9]*)"
                              u"-{5}([A-Z0-9]*)([A-Z1-9]*)-{5}([A-Z0-9]*)([A-Z1-9]*)"_s);
    QVERIFY(key->setText(u"00000-00000-00000"_s));
    QCOMPARE(key->validate(), QValidator::Acceptable);
    QCOMPARE(key->text(), u"OOOOO-OOOOO-OOOOO"_s);
}

void TestZEFFormatEdit::buildsNothingFromAnEmptyFormat()
{
    const auto edit = madeFrom(twoCells);
    edit->setFormat(QString());
    QCOMPARE(edit->lineEditCount(), 0);
    QCOMPARE(edit->masterRegexp(), u"^$"_s);
    QCOMPARE(edit->findChildren<QWidget*>().size(), 0);
    QVERIFY(!edit->focusProxy());
}

void TestZEFFormatEdit::buildsCellsThatAcceptNothing()
{
    const auto edit = madeFrom(u"([a-z]*)-([a-z]*)"_s);
    QCOMPARE(edit->lineEditCount(), 2);
    QCOMPARE(edit->editor(0)->maxLength(), 0);
    QTest::keyClicks(edit->editor(0), u"abc"_s);
    QCOMPARE(edit->text(), QString());
}

void TestZEFFormatEdit::showsSeparatorsAsTheyAreWritten()
{
    const auto edit = madeFrom(u"<b>&x</b>{2}(a)"_s);
    const auto* label = edit->findChild<QLabel*>();
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(label->text(), u" <b>&x</b> "_s);
    edit->setFormat(u"%1%n{2}(a)"_s);
    QCOMPARE(separators(edit.get()), QStringList{u" %1%n "_s});
    QCOMPARE(edit->masterRegexp(), u"^(?:%1%n)?(a)$"_s);
}

void TestZEFFormatEdit::reportsSyntaxErrors_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("id");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("a letter") << u"{2x}(a)"_s << 0 << QStringList{u"debug: Syntax error: x unexpected"_s};
    QTest::addRow("a percent sign and what looks like a format")
        << u"{%s%n}(a)"_s << 0
        << QStringList{u"debug: Syntax error: % unexpected"_s, u"debug: Syntax error: s unexpected"_s,
                       u"debug: Syntax error: % unexpected"_s, u"debug: Syntax error: n unexpected"_s};
    QTest::addRow("a bar after a minimum")
        << u"{2,3|4}(a)"_s << 0 << QStringList{u"debug: Syntax error: | unexpected after explicit minimum"_s};
    QTest::addRow("for an alternate") << u"{x}"_s << 3 << QStringList{u"debug: Syntax error: x unexpected"_s};
    QTest::addRow("outside the basic plane")
        << u"{😀}"_s << 0 << QStringList{u"debug: Syntax error: 😀 unexpected"_s};
}

void TestZEFFormatEdit::reportsSyntaxErrors()
{
    QFETCH(QString, format);
    QFETCH(int, id);
    ZEFFormatEdit edit(nullptr);
    QVERIFY(!edit.parseFormat(format, id));
    QTEST(TestLog::takeAll(), "expected");
    if (format.startsWith(u"{2,3|4}")) {
        QCOMPARE(edit.editor(0)->maxLength(), 34);
        QCOMPARE(edit.editor(0)->minLength(), 2);
    }
}

void TestZEFFormatEdit::translatesSyntaxErrors()
{
    class Translator : public QTranslator {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return QByteArrayView(context) == "ZEFFormatEdit"
                ? u"<%1> "_s + QString::fromUtf8(text).remove(u"%1"_s)
                : QString();
        }
        bool isEmpty() const override { return false; }
    };
    Translator translator;
    QCoreApplication::installTranslator(&translator);
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(u"{x}{1,2|}"_s);
    QCOMPARE(TestLog::takeAll(),
             (QStringList{u"debug: <x> Syntax error:  unexpected"_s,
                          u"debug: <|> Syntax error:  unexpected after explicit minimum"_s}));
}

void TestZEFFormatEdit::repaintsAfterAFormat_data()
{
    QTest::addColumn<QString>("act");
    for (const QString& act : {u"format"_s, u"alternate"_s, u"spacing"_s})
        QTest::addRow("%s", qUtf8Printable(act)) << act;
}

void TestZEFFormatEdit::repaintsAfterAFormat()
{
    class Painted : public ZEFFormatEdit {
    public:
        using ZEFFormatEdit::ZEFFormatEdit;
        int paintings = 0;

    protected:
        void paintEvent(QPaintEvent*) override { ++paintings; }
    };
    QFETCH(QString, act);
    TestLog::allow(noSizeHints);
    Painted edit(nullptr);
    // Without a layout nothing but the edit itself asks for a painting.
    delete edit.layout();
    edit.resize(100, 40);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    QTRY_VERIFY(edit.paintings > 0);
    QCoreApplication::processEvents();
    edit.paintings = 0;
    if (act == u"format")
        edit.parseFormat(QString(), 0);
    else if (act == u"alternate")
        edit.parseFormat(QString(), 7);
    else
        edit.setSpacing(3);
    QTRY_COMPARE(edit.paintings, 1);
}

void TestZEFFormatEdit::keepsHugeCounts()
{
    TestLog::allow(noSizeHints);
    const auto edit = madeFrom(u"{99999999999999999999}([a-z]*)-{2147483647:ab|9:cd}(x*)"_s);
    QCOMPARE(edit->editor(0)->maxLength(), most);
    QCOMPARE(edit->editor(1)->maxLength(), most);
    QVERIFY(edit->editor(0)->maximumWidth() <= QWIDGETSIZE_MAX);
    QTest::keyClicks(edit->editor(0), u"abc"_s);
    QCOMPARE(edit->text(), u"abc"_s);
}

void TestZEFFormatEdit::acceptsInvalidPatterns()
{
    const auto edit = madeFrom(u"{3}([a-)([b-){3}(a)"_s);
    QCOMPARE(edit->lineEditCount(), 2);
    QTest::keyClicks(edit->editor(0), u"abc"_s);
    QCOMPARE(edit->text(), QString());
    QVERIFY(!edit->setText(u"aaa"_s));
    QCOMPARE(edit->validate(), QValidator::Invalid);
    edit->editor(0)->setText(u"x"_s);
    QCOMPARE(edit->state(), QValidator::Invalid);

    edit->addAlternateCheck(u"([a-)"_s, 1);
    QCOMPARE(edit->alternatePattern(1), u"([a-)"_s);
    QCOMPARE(edit->checkAlternates(u"a"_s), 0);
    QCOMPARE(edit->checkAlternates(QString()), 0);
}

void TestZEFFormatEdit::buildsFromAMegabyte()
{
    const auto edit = madeFrom(u"{3}("_s + QString(1024 * 1024, u'a') + u")"_s);
    QCOMPARE(edit->lineEditCount(), 1);
    QCOMPARE(edit->editor(0)->regexp().size(), 1024 * 1024);
    QTest::keyClick(edit->editor(0), Qt::Key_A);
    edit->setFormat(u"{3:ab|}(a)"_s.repeated(100'000));
    QCOMPARE(edit->lineEditCount(), 1000);
    edit->setFormat(QString());
}

void TestZEFFormatEdit::limitsItsCells()
{
    // The thousandth cell keeps its own final pattern and has no suffix; groups behind it are passed over.
    const auto edit = madeFrom(u"-{1}(a)(a|b)"_s.repeated(1000) + u"+{1}(c?)(d)=(e?)(f)!{}"_s);
    QCOMPARE(edit->lineEditCount(), 1000);
    QCOMPARE(edit->findChildren<ZEFFormatCell*>().size(), 1000);
    QCOMPARE(separators(edit.get()).size(), 1001);
    QCOMPARE(edit->editor(999)->finalRegExp(), u"a|b"_s);
    QCOMPARE(edit->editor(999)->suffix(), QString());
    QVERIFY(edit->masterRegexp().endsWith(u"(a)(?:+)?(c?)(?:=)?(e?)(?:!)?$"_s));
    edit->setFormat(u"a{}"_s.repeated(5000));
    QCOMPARE(separators(edit.get()).size(), 1001);
    edit->setFormat(u"(a)"_s.repeated(3) + u"b(c)"_s);
    QCOMPARE(edit->lineEditCount(), 2);
}

void TestZEFFormatEdit::makesItsConnections()
{
    // Each can be broken by its strings, and only once.
    const char* const connections[][2] = {
        {SIGNAL(moveLeft(int, QKeyEvent*)), SLOT(moveLeft(int, QKeyEvent*))},
        {SIGNAL(moveRight(int, QKeyEvent*)), SLOT(moveRight(int, QKeyEvent*))},
        {"2textChanged(int, QString&)", "1editorTextChanged(int)"},
        {"2copyMe(void)", "1copy(void)"},
        {"2pasteMe(void)", "1paste(void)"},
        {"2cutMe(void)", "1cut(void)"},
        {"2deleteMe(void)", "1clear(void)"},
        {"2moveTo(int, int, QKeyEvent*)", "1moveTo(int, int, QKeyEvent*)"},
        {"2focusOut( int, QFocusEvent*)", "1childFocusedOut( int, QFocusEvent*)"}};
    const auto edit = madeFrom(twoCells);
    for (const auto& [signal, slot] : connections) {
        QVERIFY2(disconnect(edit->editor(1), signal, edit.get(), slot), signal);
        QVERIFY2(!disconnect(edit->editor(1), signal, edit.get(), slot), signal);
    }
    // Qt makes the same of the strings, without a warning.
    for (const auto& [signal, slot] : connections)
        QVERIFY2(connect(edit->editor(1), signal, edit.get(), slot), signal);
}

void TestZEFFormatEdit::showsWhatItRebuilds()
{
    Form form(twoCells);
    QVERIFY(form.activate());
    form.edit->setFormat(threeCells);
    QVERIFY(form.edit->editor(0)->isVisible());
    QVERIFY(form.edit->findChild<QLabel*>()->isVisible());
    form.edit->setFocus();
    QCOMPARE(form.focused(), 0);
}

void TestZEFFormatEdit::storesAlternates()
{
    ZEFFormatEdit edit(nullptr);
    edit.addAlternateCheck(uR"({3}(\d*)-{2}(x*)(y)z)"_s, 7);
    QCOMPARE(edit.alternateCount(), 1);
    // No anchors, no widgets, and the final pattern plays no part.
    QCOMPARE(edit.alternatePattern(7), uR"((\d*)(?:-)?(x*))"_s);
    QCOMPARE(edit.alternatePattern(8), QString());
    QCOMPARE(edit.findChildren<QWidget*>().size(), 0);
    edit.addAlternateCheck(u"(b)"_s, 7);
    QCOMPARE(edit.alternateCount(), 1);
    QCOMPARE(edit.alternatePattern(7), u"(b)"_s);
    QVERIFY(!edit.parseFormat(u"(c)"_s, -1));
    QCOMPARE(edit.alternateCount(), 2);

    // A new format leaves the alternates.
    edit.setFormat(twoCells);
    QCOMPARE(edit.alternateCount(), 2);
}

void TestZEFFormatEdit::alternatesDropTheCells()
{
    const auto edit = madeFrom(twoCells);
    const QPointer<ZEFFormatCell> cell(edit->editor(0));
    edit->addAlternateCheck(u"(a)"_s, 1);
    QCOMPARE(edit->lineEditCount(), 0);
    QVERIFY(!cell->parent());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!cell);
    QCOMPARE(edit->findChildren<QWidget*>().size(), 0);
    QCOMPARE(edit->format(), twoCells);
    QCOMPARE(edit->masterRegexp(), uR"(^(\d*)(?:-)?(\d*)$)"_s);
    QCOMPARE(edit->text(), QString());

    // With id 0 it is a format like any other, but it is not remembered as one.
    edit->addAlternateCheck(threeCells, 0);
    QCOMPARE(edit->lineEditCount(), 3);
    QCOMPARE(edit->format(), twoCells);
    QCOMPARE(edit->alternateCount(), 1);
}

void TestZEFFormatEdit::checksAlternates()
{
    ZEFFormatEdit edit(nullptr);
    QCOMPARE(edit.checkAlternates(u"1"_s), 0);
    edit.addAlternateCheck(uR"((\d+))"_s, 5);
    edit.addAlternateCheck(u"([a-f0-9]+)"_s, 3);
    edit.addAlternateCheck(u"(a)-(b)"_s, 9);
    QCOMPARE(edit.checkAlternates(u"12"_s), 3);
    QCOMPARE(edit.checkAlternates(u"ab"_s), 3);
    QCOMPARE(edit.checkAlternates(u"AB"_s), 0);
    QCOMPARE(edit.checkAlternates(u"a-b"_s), 9);
    QCOMPARE(edit.checkAlternates(u"12x"_s), 0);
    QCOMPARE(edit.checkAlternates(u"x12"_s), 0);
    QCOMPARE(edit.checkAlternates(QString()), 0);
    edit.addAlternateCheck(u"([a-f0-9]+x)"_s, 2);
    QCOMPARE(edit.checkAlternates(u"12x"_s), 2);
}

void TestZEFFormatEdit::joinsItsText()
{
    const auto edit = madeFrom(u"{2}([a-z]*)-{2}([a-z]*)/{2}([a-z]*)kg{}"_s);
    QCOMPARE(edit->text(), QString());
    edit->editor(0)->setText(u"ab"_s);
    edit->editor(2)->setText(u"ef"_s);
    QCOMPARE(edit->text(), u"ab/efkg"_s);
    edit->editor(1)->setText(u"cd"_s);
    QCOMPARE(edit->text(), u"ab-cd/efkg"_s);
    edit->editor(0)->setText(QString());
    edit->editor(2)->setText(QString());
    QCOMPARE(edit->text(), u"-cd"_s);
}

void TestZEFFormatEdit::returnsTheFallbackText()
{
    Observed edit(nullptr);
    edit.setFormat(twoCells);
    edit.setFallbackText(u"fallback"_s);
    edit.setAlternateId(4);
    QCOMPARE(edit.text(), u"fallback"_s);
    QCOMPARE(edit.alternateId(), 4);
    edit.setPendingText(u"pending"_s);
    edit.editor(0)->setText(u"1"_s);
    QCOMPARE(edit.text(), u"1"_s);
    QCOMPARE(edit.pendingText(), QString());
    QVERIFY(!edit.setText(u"no"_s));
    QCOMPARE(edit.fallbackText(), u"fallback"_s);
    QVERIFY(edit.setText(QString()));
    QCOMPARE(edit.text(), QString());

    edit.setFallbackText(u"fallback"_s);
    edit.clearAlternate();
    QCOMPARE(edit.text(), QString());
}

void TestZEFFormatEdit::emptiesTheFallbackTextAfterARebuild()
{
    Observed edit(nullptr);
    edit.setFormat(twoCells);
    edit.setFallbackText(u"nothing"_s);
    connect(&edit, &ZEFFormatEdit::textChanged, this, [&] { edit.setFormat(threeCells); });
    QVERIFY(edit.ZEFFormatEdit::setText(u"1-2"_s));
    QCOMPARE(edit.lineEditCount(), 3);
    QCOMPARE(edit.text(), QString());
}

void TestZEFFormatEdit::spreadsAText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::addColumn<QStringList>("expectedTexts");
    const QStringList before = {u"9"_s, u"9"_s};
    QTest::addRow("with the separator") << u"123-4567"_s << true << QStringList{u"123"_s, u"4567"_s};
    QTest::addRow("white space around") << u" \t123-4567\n"_s << true << QStringList{u"123"_s, u"4567"_s};
    QTest::addRow("one group empty") << u"123-"_s << true << QStringList{u"123"_s, QString()};
    QTest::addRow("the other group empty") << u"-4567"_s << true << QStringList{QString(), u"4567"_s};
    QTest::addRow("empty") << u""_s << true << QStringList{QString(), QString()};
    QTest::addRow("greedy without the separator, and cut to length")
        << u"1234567"_s << true << QStringList{u"123"_s, QString()};
    QTest::addRow("does not fit") << u"12a-4567"_s << false << before;
    QTest::addRow("white space inside") << u"123 4567"_s << false << before;
}

void TestZEFFormatEdit::spreadsAText()
{
    QFETCH(QString, text);
    const auto edit = madeFrom(twoCells);
    edit->editor(0)->setText(u"9"_s);
    edit->editor(1)->setText(u"9"_s);
    QTEST(edit->setText(text), "expected");
    QTEST(texts(edit.get()), "expectedTexts");
}

void TestZEFFormatEdit::spreadsTextsThroughTheCase()
{
    ZEFFormatEdit edit(nullptr);
    edit.setEnforceCase(2);
    edit.setFormat(u"{3}([a-z]{3})-{3}([a-z]{3})"_s);
    // A pattern of a fixed length needs no separators, and white space goes in with none.
    QVERIFY(edit.setText(u"abcdef"_s));
    QCOMPARE(texts(&edit), (QStringList{u"ABC"_s, u"DEF"_s}));

    // Captures inside a cell's pattern shift the groups.
    edit.setFormat(uR"({3}(\(a\)[a-z]*)-{3}([a-z]*))"_s);
    QVERIFY(edit.setText(u"abc-def"_s));
    QCOMPARE(texts(&edit), (QStringList{u"ABC"_s, u"A"_s}));
}

void TestZEFFormatEdit::validates()
{
    ZEFFormatEdit none(nullptr);
    QCOMPARE(none.validate(), QValidator::Acceptable);

    const auto edit = madeFrom(u"{2,3}([a-z]*)-{0,3}([a-z]*)([a-c]+)-{3}([a-z]{2})"_s);
    // The first cell has a minimum, so it may not be empty; whether it is long enough, nobody asks.
    QCOMPARE(edit->validate(), QValidator::Invalid);
    edit->editor(0)->setText(u"a"_s);
    edit->editor(2)->setText(u"xy"_s);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
    edit->editor(1)->setText(u"xyz"_s);
    QCOMPARE(edit->validate(), QValidator::Invalid);
    edit->editor(1)->setText(u"abc"_s);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
    edit->editor(1)->setText(QString());
    QCOMPARE(edit->validate(), QValidator::Acceptable);

    // An empty cell with a minimum fails before its validator is asked.
    class Counting : public QValidator {
    public:
        using QValidator::QValidator;
        mutable int asked = 0;
        State validate(QString&, int&) const override
        {
            ++asked;
            return Acceptable;
        }
    };
    Counting counting;
    edit->editor(0)->setText(QString());
    edit->editor(0)->setValidator(&counting);
    counting.asked = 0;
    QCOMPARE(edit->validate(), QValidator::Invalid);
    QCOMPARE(counting.asked, 0);
    edit->editor(0)->setValidator(nullptr);
    edit->editor(0)->setText(u"a"_s);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
}

void TestZEFFormatEdit::neverSaysIntermediate()
{
    const auto edit = madeFrom(uR"({2,3}(\d{3}))"_s);
    edit->editor(0)->setText(u"12"_s);
    QString text = u"12"_s;
    int position = 0;
    QCOMPARE(edit->editor(0)->validator()->validate(text, position), QValidator::Intermediate);
    QCOMPARE(edit->validate(), QValidator::Invalid);
    QCOMPARE(edit->state(), QValidator::Invalid);
}

void TestZEFFormatEdit::asksTheOutsideValidator()
{
    const auto edit = madeFrom(twoCells);
    const ZEFListValidator validator(nullptr, {u"1234567"_s});
    edit->setValidator(&validator);
    QCOMPARE(edit->validator(), &validator);
    edit->setText(u"123-4567"_s);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
    QCOMPARE(edit->state(), QValidator::Acceptable);
    // It judges the joined text and changes nothing of it.
    QCOMPARE(edit->text(), u"123-4567"_s);
    edit->setText(QString());
    QCOMPARE(edit->validate(), QValidator::Intermediate);
    QCOMPARE(edit->state(), QValidator::Intermediate);

    // It also overrules cells that fail.
    edit->editor(0)->setFinalRegExp(u"never"_s);
    edit->setText(u"123-4567"_s);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
    edit->setValidator(nullptr);
    QCOMPARE(edit->validate(), QValidator::Invalid);
}

void TestZEFFormatEdit::survivesTheOutsideValidator()
{
    const auto edit = madeFrom(twoCells);
    auto validator = std::make_unique<ZEFListValidator>(nullptr, QStringList{u"1"_s});
    edit->setValidator(validator.get());
    QCOMPARE(edit->validate(), QValidator::Intermediate);
    validator.reset();
    QVERIFY(!edit->validator());
    QCOMPARE(edit->validate(), QValidator::Acceptable);
}

void TestZEFFormatEdit::announcesItsValidity()
{
    const auto edit = madeFrom(uR"({1,2}(\d*)-{1,2}(\d*))"_s);
    QStringList lines;
    connect(edit.get(), &ZEFFormatEdit::validityChanged, this,
            [&](QValidator::State state) { lines += u"validity %1"_s.arg(state); });
    connect(edit.get(), &ZEFFormatEdit::textChanged, this,
            [&](QValidator::State state) { lines += u"text %1 %2"_s.arg(state).arg(edit->state()); });
    QTest::keyClick(edit->editor(0), Qt::Key_1);
    QTest::keyClick(edit->editor(1), Qt::Key_2);
    QTest::keyClick(edit->editor(1), Qt::Key_3);
    QTest::keyClick(edit->editor(0), Qt::Key_Backspace);
    QCOMPARE(lines,
             (QStringList{u"text 0 0"_s, u"validity 2"_s, u"text 2 2"_s, u"text 2 2"_s, u"validity 0"_s,
                          u"text 0 0"_s}));

    // A new format, clear() and so on announce nothing; a whole text announces through its cells.
    lines.clear();
    edit->setFormat(uR"({2}(\d*)-{2}(\d*))"_s);
    QCOMPARE(lines, QStringList());
    QCOMPARE(edit->state(), QValidator::Invalid);
    edit->setText(u"12-34"_s);
    QCOMPARE(lines, (QStringList{u"validity 2"_s, u"text 2 2"_s, u"text 2 2"_s}));

    // The slot may be called with any id.
    lines.clear();
    edit->editorTextChanged(99);
    edit->editorTextChanged(-1);
    edit->editorTextChanged(least);
    QCOMPARE(lines, (QStringList{u"text 2 2"_s, u"text 2 2"_s, u"text 2 2"_s}));
}

void TestZEFFormatEdit::judgesAnEmptyCellItself()
{
    const auto edit = madeFrom(u"{1,2}([a-z]*)"_s);
    ActingValidator validator;
    int asked = 0;
    validator.act = [&] { ++asked; };
    edit->setValidator(&validator);
    edit->setText(u"a"_s);
    QCOMPARE(edit->state(), QValidator::Acceptable);
    QCOMPARE(asked, 1);
    edit->editor(0)->setText(QString());
    QCOMPARE(edit->state(), QValidator::Invalid);
    QCOMPARE(asked, 1);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
    QCOMPARE(asked, 2);
}

void TestZEFFormatEdit::clearsAlternatesInSilence()
{
    const auto edit = madeFrom(twoCells);
    const QSignalSpy validities(edit.get(), &ZEFFormatEdit::validityChanged);
    const QSignalSpy changes(edit.get(), &ZEFFormatEdit::textChanged);
    QCOMPARE(edit->state(), QValidator::Invalid);
    edit->clearAlternate();
    QCOMPARE(edit->state(), QValidator::Acceptable);
    QCOMPARE(validities.size(), 0);
    QCOMPARE(changes.size(), 0);
}

void TestZEFFormatEdit::typesAcrossCells()
{
    Form form(threeCells);
    QVERIFY(form.activate());
    form.type(u"ab"_s);
    QCOMPARE(form.focused(), 1);
    QCOMPARE(form.edit->editor(1)->cursorPosition(), 0);
    form.type(u"cdef"_s);
    QCOMPARE(form.edit->text(), u"ab-cd/ef"_s);
    QCOMPARE(form.focused(), 2);
    form.type(u"x"_s);
    QCOMPARE(form.edit->text(), u"ab-cd/ef"_s);
    QCOMPARE(form.focused(), 2);

    // A full cell takes no more characters and does not move on.
    form.edit->editor(0)->setFocus();
    form.type(u"x"_s);
    QCOMPARE(form.edit->text(), u"ab-cd/ef"_s);
    QCOMPARE(form.focused(), 0);

    // A separator that is typed is refused by the pattern, or swallowed where it is to be ignored.
    form.edit->setText(QString());
    form.edit->setIgnore(u"-/"_s);
    form.edit->editor(0)->setFocus();
    form.type(u"a-b-c/d"_s);
    QCOMPARE(form.edit->text(), u"ab-cd"_s);
}

void TestZEFFormatEdit::backspacesAcrossCells()
{
    Form form(threeCells);
    QVERIFY(form.activate());
    form.type(u"abc"_s);
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.focused(), 1);
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.focused(), 0);
    QCOMPARE(form.edit->text(), u"a"_s);
    QCOMPARE(form.edit->editor(0)->cursorPosition(), 1);
    form.press(Qt::Key_Backspace);
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.edit->text(), QString());
    QCOMPARE(form.focused(), 0);

    // Through an empty cell to the one before it, in one go.
    form.edit->setText(u"ab-"_s);
    form.edit->editor(2)->setFocus();
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.focused(), 0);
    QCOMPARE(form.edit->text(), u"a"_s);

    // Also past a selection that begins at the start, which the loss of focus ends.
    form.edit->setText(u"ab-cd"_s);
    form.edit->editor(1)->setFocus();
    form.edit->editor(1)->setSelection(2, -2);
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.edit->text(), u"a-cd"_s);
}

void TestZEFFormatEdit::movesWithTheArrowKeys()
{
    Form form(threeCells);
    QVERIFY(form.activate());
    form.edit->setText(u"ab-c/"_s);
    form.edit->editor(0)->setCursorPosition(2);
    form.press(Qt::Key_Right);
    QCOMPARE(form.focused(), 1);
    QCOMPARE(form.edit->editor(1)->cursorPosition(), 0);
    // Not from the end of a cell that is not full.
    form.press(Qt::Key_Right);
    form.press(Qt::Key_Right);
    QCOMPARE(form.focused(), 1);
    QCOMPARE(form.edit->editor(1)->cursorPosition(), 1);
    form.press(Qt::Key_Left);
    form.press(Qt::Key_Left);
    QCOMPARE(form.focused(), 0);
    QCOMPARE(form.edit->editor(0)->cursorPosition(), 2);
    QCOMPARE(form.edit->text(), u"ab-c"_s);

    // Nothing lies beyond the ends.
    form.edit->editor(0)->setCursorPosition(0);
    form.press(Qt::Key_Left);
    QCOMPARE(form.focused(), 0);
    form.edit->setText(u"ab-cd/ef"_s);
    form.edit->editor(2)->setFocus();
    form.edit->editor(2)->setCursorPosition(2);
    form.press(Qt::Key_Right);
    QCOMPARE(form.focused(), 2);
}

void TestZEFFormatEdit::navigatesToAnyId_data()
{
    QTest::addColumn<QString>("slot");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("focused");
    // The focus starts in the middle one of three cells.
    QTest::addRow("left of 1") << u"left"_s << 1 << 0;
    QTest::addRow("left of 3") << u"left"_s << 3 << 2;
    QTest::addRow("left of 0") << u"left"_s << 0 << 1;
    QTest::addRow("left of 4") << u"left"_s << 4 << 1;
    QTest::addRow("left of -1") << u"left"_s << -1 << 1;
    QTest::addRow("left of the least") << u"left"_s << least << 1;
    QTest::addRow("left of the most") << u"left"_s << most << 1;
    QTest::addRow("right of 1") << u"right"_s << 1 << 2;
    QTest::addRow("right of -1") << u"right"_s << -1 << 0;
    QTest::addRow("right of 2") << u"right"_s << 2 << 1;
    QTest::addRow("right of -2") << u"right"_s << -2 << 1;
    QTest::addRow("right of the least") << u"right"_s << least << 1;
    QTest::addRow("right of the most") << u"right"_s << most << 1;
    QTest::addRow("to 2") << u"to"_s << 2 << 2;
    QTest::addRow("to 3") << u"to"_s << 3 << 1;
    QTest::addRow("to -1") << u"to"_s << -1 << 1;
    QTest::addRow("to the most") << u"to"_s << most << 1;
}

void TestZEFFormatEdit::navigatesToAnyId()
{
    QFETCH(QString, slot);
    QFETCH(int, id);
    Form form(threeCells);
    QVERIFY(form.activate());
    form.edit->editor(1)->setFocus();
    if (slot == u"left")
        form.edit->moveLeft(id, nullptr);
    else if (slot == u"right")
        form.edit->moveRight(id, nullptr);
    else
        form.edit->moveTo(1, id, nullptr);
    QTEST(form.focused(), "focused");
    form.edit->childFocusedOut(id, nullptr);
}

void TestZEFFormatEdit::sendsTheKeyOn()
{
    Form form(threeCells);
    QVERIFY(form.activate());
    form.edit->setText(u"a-c/e"_s);
    QKeyEvent x(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, u"x"_s);
    form.edit->moveLeft(1, &x);
    QCOMPARE(form.edit->text(), u"ax-c/e"_s);
    // That filled the cell, so the caret went on; now at the start of the last one.
    form.edit->moveRight(1, &x);
    QCOMPARE(form.edit->text(), u"ax-c/xe"_s);
    form.edit->editor(1)->setCursorPosition(1);
    form.edit->moveTo(0, 1, &x);
    QCOMPARE(form.edit->text(), u"ax-cx/xe"_s);
    // Not to where it came from.
    form.edit->setText(u"a-c/e"_s);
    form.edit->moveTo(1, 1, &x);
    QCOMPARE(form.edit->text(), u"a-c/e"_s);
    QCOMPARE(form.focused(), 1);
}

void TestZEFFormatEdit::savesAndRestoresTheFocus()
{
    Form form(threeCells);
    auto* other = new QLineEdit(&form);
    form.layout()->addWidget(other);
    QVERIFY(form.activate());
    form.edit->editor(1)->setFocus();
    form.edit->saveFocus();
    other->setFocus();
    form.edit->restoreFocus();
    QCOMPARE(form.focused(), 1);

    // Without a focused cell the first one is remembered, also without any saveFocus().
    other->setFocus();
    form.edit->saveFocus();
    form.edit->setFocus();
    QCOMPARE(form.focused(), 0);
    other->setFocus();
    static_cast<QWidget*>(form.edit)->setFocus();
    QCOMPARE(form.focused(), 0);

    // A cell that is gone is not remembered, and an edit without cells has nothing to focus.
    form.edit->editor(2)->setFocus();
    form.edit->saveFocus();
    form.edit->setFormat(twoCells);
    form.edit->restoreFocus();
    QCOMPARE(form.focused(), 0);
    form.edit->saveFocus();
    form.edit->setFormat(QString());
    form.edit->saveFocus();
    form.edit->restoreFocus();
    QCOMPARE(form.focused(), -1);

    // setFocus() goes by way of restoreFocus().
    Observed observed(nullptr);
    observed.setFocus();
    QCOMPARE(observed.calls, QStringList{u"restoreFocus"_s});
}

void TestZEFFormatEdit::savesTheFocusOfItsOwnCellsOnly()
{
    Form form(threeCells);
    auto* other = new ZEFFormatEdit(&form);
    form.layout()->addWidget(other);
    other->setFormat(threeCells);
    auto* plain = new QLineEdit(form.edit);
    QVERIFY(form.activate());

    form.edit->editor(1)->setFocus();
    form.edit->saveFocus();
    other->editor(2)->setFocus();
    form.edit->saveFocus();
    form.edit->restoreFocus();
    QCOMPARE(form.focused(), 0);

    form.edit->editor(1)->setFocus();
    form.edit->saveFocus();
    plain->show();
    plain->setFocus();
    QVERIFY(plain->hasFocus());
    form.edit->saveFocus();
    form.edit->restoreFocus();
    QCOMPARE(form.focused(), 0);
}

void TestZEFFormatEdit::ignoresFocusThatLeaves()
{
    Observed edit(nullptr);
    edit.setFormat(twoCells);
    Q_EMIT edit.editor(1)->focusOut(1, nullptr);
    QCOMPARE(edit.calls, QStringList{u"childFocusedOut 1"_s});
}

void TestZEFFormatEdit::copies()
{
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->setText(u"before"_s);
    const auto edit = madeFrom(twoCells);
    edit->copy();
    QCOMPARE(clipboardText(), u"before"_s);
    edit->setText(u"123-4567"_s);
    edit->editor(1)->copy();
    QCOMPARE(clipboardText(), u"123-4567"_s);
    if (clipboard->supportsSelection())
        QCOMPARE(clipboardText(QClipboard::Selection), u"123-4567"_s);
    edit->editor(1)->setSelection(0, 2);
    edit->editor(1)->copy();
    QCOMPARE(clipboardText(), u"45"_s);
}

void TestZEFFormatEdit::pastes()
{
    QClipboard* clipboard = QApplication::clipboard();
    const auto edit = madeFrom(twoCells);
    clipboard->setText(u" 123-4567\n"_s);
    edit->paste();
    QCOMPARE(edit->text(), u"123-4567"_s);
    clipboard->setText(u"something else"_s);
    edit->paste();
    QCOMPARE(edit->text(), u"123-4567"_s);
    clipboard->clear();
    edit->paste();
    QCOMPARE(edit->text(), u"123-4567"_s);

    Observed observed(nullptr);
    clipboard->setText(u"12"_s);
    observed.paste();
    QCOMPARE(observed.calls, QStringList{u"setText 12"_s});
}

void TestZEFFormatEdit::pastesFromTheSelectionFirst()
{
    QClipboard* clipboard = QApplication::clipboard();
    if (!clipboard->supportsSelection())
        QSKIP("This platform has no selection clipboard");
    const auto edit = madeFrom(twoCells);
    clipboard->setText(u"111-1111"_s);
    clipboard->setText(u"222-2222"_s, QClipboard::Selection);
    edit->paste();
    QCOMPARE(edit->text(), u"222-2222"_s);
    clipboard->setText(QString(), QClipboard::Selection);
    edit->paste();
    QCOMPARE(edit->text(), u"111-1111"_s);
}

void TestZEFFormatEdit::pastesAcrossCellsFromACell()
{
    const auto edit = madeFrom(u"{5}([A-Z0-9]{5})-{5}([A-Z0-9]{5})"_s);
    QApplication::clipboard()->setText(u"ABCDE-12345"_s);
    edit->editor(1)->paste();
    QCOMPARE(edit->text(), u"ABCDE-12345"_s);
    edit->editor(0)->setText(QString());
    edit->editor(1)->setText(QString());
    QApplication::clipboard()->setText(u"VWXYZ98765"_s);
    edit->editor(0)->paste();
    QCOMPARE(edit->text(), u"VWXYZ-98765"_s);
}

void TestZEFFormatEdit::pastesAcrossCellsWithTheMiddleButton()
{
    TestLog::allow(noSizeHints);
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->setText(u"12"_s);
    if (clipboard->supportsSelection())
        clipboard->setText(u"98"_s, QClipboard::Selection);
    Form form(twoCells);
    QVERIFY(form.activate());
    const QSignalSpy changes(form.edit, &ZEFFormatEdit::textChanged);
    QTest::mouseClick(form.edit->editor(0), Qt::MiddleButton);
    QCOMPARE(form.edit->text(), u"12"_s);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(form.edit->state(), QValidator::Acceptable);

    // What is too long for the cell is pasted by the edit, from the selection where there is one.
    clipboard->setText(u"123-4567"_s);
    QTest::mouseClick(form.edit->editor(0), Qt::MiddleButton);
    QCOMPARE(form.edit->text(), clipboard->supportsSelection() ? u"98"_s : u"123-4567"_s);
}

void TestZEFFormatEdit::cuts()
{
    QApplication::clipboard()->setText(u"before"_s);
    Observed edit(nullptr);
    edit.setFormat(threeCells);
    edit.cut();
    QCOMPARE(edit.calls, QStringList());
    QCOMPARE(clipboardText(), u"before"_s);
    edit.setText(u"ab-cd/ef"_s);
    edit.calls.clear();
    edit.editor(2)->cut();
    QCOMPARE(edit.calls.filter(u"copy"_s) + edit.calls.filter(u"clear"_s),
             (QStringList{u"copy"_s, u"clear"_s}));
    QCOMPARE(clipboardText(), u"ab-cd/ef"_s);
    QCOMPARE(edit.text(), u"ab"_s);
}

void TestZEFFormatEdit::clearsAllButTheFirst()
{
    Form form(threeCells);
    QVERIFY(form.activate());
    form.edit->setText(u"ab-cd/ef"_s);
    form.edit->editor(2)->setFocus();
    const QSignalSpy validities(form.edit, &ZEFFormatEdit::validityChanged);
    const QSignalSpy changes(form.edit, &ZEFFormatEdit::textChanged);
    form.edit->editor(2)->clear();
    QCOMPARE(texts(form.edit), (QStringList{u"ab"_s, QString(), QString()}));
    QCOMPARE(form.focused(), 0);
    QCOMPARE(validities.size(), 0);
    QCOMPARE(changes.size(), 0);
    // The cells are connected again, once.
    form.edit->editor(1)->setText(u"x"_s);
    QCOMPARE(changes.size(), 1);

    ZEFFormatEdit none(nullptr);
    none.clear();
}

void TestZEFFormatEdit::selectsGlobally()
{
    QClipboard* clipboard = QApplication::clipboard();
    const auto edit = madeFrom(twoCells);
    edit->setText(u"123-4567"_s);
    const QSignalSpy selections(clipboard, &QClipboard::selectionChanged);
    edit->globalSelect(true);
    QCOMPARE(selections.size(), 0);
    QVERIFY(!clipboard->signalsBlocked());
    QVERIFY(!edit->editor(0)->signalsBlocked());
    // Cells themselves take no part.
    QVERIFY(!edit->editor(0)->selectOutside());
    if (clipboard->supportsSelection())
        QCOMPARE(clipboardText(QClipboard::Selection), u"123-4567"_s);
    edit->globalSelect(false);
    if (clipboard->supportsSelection())
        QCOMPARE(clipboardText(QClipboard::Selection), u"123-4567"_s);
}

void TestZEFFormatEdit::endsAGlobalSelectionWithTheClipboard()
{
    Observed edit(nullptr);
    edit.setFormat(twoCells);
    edit.globalSelect(true);
    edit.calls.clear();
    Q_EMIT QApplication::clipboard()->selectionChanged();
    QCOMPARE(edit.calls, QStringList{u"globalSelect false"_s});

    // An edit of a cell ends it too, once.
    edit.globalSelect(true);
    edit.calls.clear();
    edit.editor(0)->setText(u"1"_s);
    edit.editor(0)->setText(u"2"_s);
    QCOMPARE(edit.calls,
             (QStringList{u"editorTextChanged 0"_s, u"globalSelect false"_s, u"editorTextChanged 0"_s}));

    // So do a new format and clear(), without being told.
    edit.globalSelect(true);
    edit.setFormat(twoCells);
    edit.calls.clear();
    edit.editor(0)->setText(u"1"_s);
    QCOMPARE(edit.calls, QStringList{u"editorTextChanged 0"_s});
    edit.globalSelect(true);
    edit.clear();
    edit.calls.clear();
    edit.editor(0)->setText(u"2"_s);
    QCOMPARE(edit.calls, QStringList{u"editorTextChanged 0"_s});
}

void TestZEFFormatEdit::listensToTheClipboardOnce()
{
    QClipboard* clipboard = QApplication::clipboard();
    auto edit = std::make_unique<Observed>(nullptr);
    edit->setFormat(twoCells);
    edit->setText(u"123"_s);
    edit->calls.clear();
    // Its own copies are no foreign selections.
    edit->editor(0)->copy();
    edit->copy();
    edit->editor(0)->selectAll();
    edit->editor(0)->copy();
    QCOMPARE(edit->calls.filter(u"globalSelect"_s), QStringList());
    Q_EMIT clipboard->selectionChanged();
    QCOMPARE(edit->calls.filter(u"globalSelect"_s), QStringList{u"globalSelect false"_s});

    // An edit that was disconnected on purpose stays so.
    QVERIFY(disconnect(clipboard, SIGNAL(selectionChanged()), edit.get(), SLOT(deselect())));
    edit->calls.clear();
    edit->copy();
    edit->editor(0)->copy();
    Q_EMIT clipboard->selectionChanged();
    QCOMPARE(edit->calls.filter(u"globalSelect"_s), QStringList());
    edit.reset();
    Q_EMIT clipboard->selectionChanged();
}

void TestZEFFormatEdit::twoEditsCopyApart()
{
    Observed one(nullptr);
    Observed two(nullptr);
    one.setFormat(twoCells);
    two.setFormat(twoCells);
    one.setText(u"111"_s);
    two.setText(u"222"_s);
    one.calls.clear();
    two.calls.clear();
    one.copy();
    QCOMPARE(clipboardText(), u"111"_s);
    two.copy();
    QCOMPARE(clipboardText(), u"222"_s);
    // Where there is a selection clipboard, the one's copy ends the other's selection.
    const qsizetype expected = QApplication::clipboard()->supportsSelection() ? 1 : 0;
    QCOMPARE(one.calls.filter(u"globalSelect false"_s).size(), expected);
    QCOMPARE(two.calls.filter(u"globalSelect false"_s).size(), expected);
}

void TestZEFFormatEdit::keepsItsMargins()
{
    ZEFFormatEdit edit(nullptr);
    edit.setLeftMargin(3);
    QCOMPARE(edit.layout()->contentsMargins(), QMargins(3, 2, 2, 2));
    edit.setTopMargin(4);
    QCOMPARE(edit.layout()->contentsMargins(), QMargins(3, 4, 2, 2));
    edit.setRightMargin(5);
    QCOMPARE(edit.layout()->contentsMargins(), QMargins(3, 4, 5, 2));
    edit.setBottomMargin(6);
    QCOMPARE(edit.layout()->contentsMargins(), QMargins(3, 4, 5, 6));
    QCOMPARE(edit.leftMargin(), 3);
    QCOMPARE(edit.topMargin(), 4);
    QCOMPARE(edit.rightMargin(), 5);
    QCOMPARE(edit.bottomMargin(), 6);
    edit.setSpacing(9);
    QCOMPARE(edit.spacing(), 9);
    QCOMPARE(edit.layout()->spacing(), 9);
}

void TestZEFFormatEdit::limitsItsMargins_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");
    QTest::addRow("the greatest") << most << QWIDGETSIZE_MAX;
    QTest::addRow("the greatest that counts") << QWIDGETSIZE_MAX << QWIDGETSIZE_MAX;
    QTest::addRow("negative") << -5 << -5;
    QTest::addRow("the least") << least << -QWIDGETSIZE_MAX;
}

void TestZEFFormatEdit::limitsItsMargins()
{
    QFETCH(int, value);
    QFETCH(int, expected);
    const auto edit = madeFrom(twoCells);
    edit->setLeftMargin(value);
    edit->setTopMargin(value);
    edit->setRightMargin(value);
    edit->setBottomMargin(value);
    // Negative margins and spacings are the style's.
    QWidget plain;
    const QHBoxLayout plainLayout(&plain);
    QCOMPARE(edit->layout()->contentsMargins(),
             expected < 0 ? plainLayout.contentsMargins() : QMargins(expected, expected, expected, expected));
    edit->setSpacing(value);
    QCOMPARE(edit->spacing(), expected < 0 ? ZEFFormatEdit(nullptr).spacing() : expected);
    TestLog::allow(QRegularExpression(u"warning: QWidget::setMinimumSize: .*"_s));
    edit->layout()->activate();
}

void TestZEFFormatEdit::highlightsItsCells()
{
    const auto edit = madeFrom(twoCells);
    edit->setCellBottomHighlight(7, Qt::red);
    QCOMPARE(edit->editor(0)->contentsMargins().bottom(), 7);
    QCOMPARE(edit->editor(1)->contentsMargins().bottom(), 7);
    ZEFFormatEdit(nullptr).setCellBottomHighlight(7, Qt::red);
}

void TestZEFFormatEdit::mayBeRebuiltOrDeletedFromASlot_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("act");
    QTest::addColumn<QString>("reaction");

    const QStringList signalNames = {
        u"textChanged"_s,      u"validityChanged"_s,  u"cell textChanged"_s,
        u"moveRight"_s,        u"moveLeft"_s,         u"focusOut"_s,
        u"line textChanged"_s, u"selectionChanged"_s, u"cursorPositionChanged"_s};
    const QStringList acts = {u"type"_s,         u"backspace"_s, u"paste"_s,      u"middle"_s,
                              u"setText"_s,      u"cell text"_s, u"cut"_s,        u"insert"_s,
                              u"validate"_s,     u"left"_s,      u"select all"_s, u"property"_s,
                              u"line setText"_s, u"line clear"_s};
    const QStringList reactions = {
        u"rebuild"_s,     u"empty"_s,           u"alternate"_s,          u"delete edit"_s,
        u"delete form"_s, u"rebuild in exec"_s, u"delete edit in exec"_s};
    for (const QString& signal : signalNames) {
        for (const QString& act : acts) {
            for (const QString& reaction : reactions) {
                QTest::addRow("%s, %s, %s", qUtf8Printable(signal), qUtf8Printable(act),
                              qUtf8Printable(reaction))
                    << signal << act << reaction;
            }
        }
    }
}

void TestZEFFormatEdit::mayBeRebuiltOrDeletedFromASlot()
{
    QFETCH(QString, signal);
    QFETCH(QString, act);
    QFETCH(QString, reaction);

    const QString format = u"{3:0O}([A-Z0-9]*)([A-Z]*)-{3}([A-Z0-9]*)"_s;
    const QPointer<Form> form(new Form(format));
    QVERIFY(form->activate());
    const QPointer<ZEFFormatEdit> edit(form->edit);
    const QList<QPointer<ZEFFormatCell>> cells = {edit->editor(0), edit->editor(1)};
    if (act == u"left" || act == u"backspace") {
        edit->editor(0)->setText(u"AB"_s);
        edit->editor(1)->setFocus();
    } else if (act == u"cut") {
        edit->setText(u"AB-CD"_s);
    } else {
        edit->editor(0)->setText(u"0A"_s);
    }

    int reacted = 0;
    auto context = std::make_unique<QObject>();
    const bool inExec = reaction.endsWith(u" in exec");
    const QString action = reaction.chopped(inExec ? 8 : 0);
    const auto change = [&] {
        if (action == u"rebuild")
            edit->setFormat(threeCells);
        else if (action == u"empty")
            edit->setFormat(QString());
        else if (action == u"alternate")
            edit->addAlternateCheck(twoCells, 1);
        else if (action == u"delete edit")
            delete edit.data();
        else
            delete form.data();
    };
    const auto react = [&] {
        if (reacted++ > 0)
            return;
        if (inExec) {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                change();
                QTimer::singleShot(0, &loop, &QEventLoop::quit);
            });
            loop.exec();
        } else {
            change();
        }
        // The cells are gone for everybody, although one of them may still be working.
        if (edit) {
            QCOMPARE(edit->lineEditCount(), action == u"rebuild" ? 3 : 0);
            QCOMPARE(edit->findChildren<ZEFFormatCell*>().size(), edit->lineEditCount());
            QCOMPARE(edit->focusProxy(), edit->lineEditCount() > 0 ? edit->editor(0) : nullptr);
        }
        for (const QPointer<ZEFFormatCell>& cell : cells)
            QVERIFY(!cell || !cell->parent());
    };
    if (signal == u"textChanged")
        connect(edit, &ZEFFormatEdit::textChanged, context.get(), react);
    else if (signal == u"validityChanged")
        connect(edit, &ZEFFormatEdit::validityChanged, context.get(), react);
    for (const QPointer<ZEFFormatCell>& cell : cells) {
        if (signal == u"cell textChanged")
            connect(cell, qOverload<int, QString&>(&ZEFFormatCell::textChanged), context.get(), react);
        else if (signal == u"moveRight")
            connect(cell, &ZEFFormatCell::moveRight, context.get(), react);
        else if (signal == u"moveLeft")
            connect(cell, &ZEFFormatCell::moveLeft, context.get(), react);
        else if (signal == u"focusOut")
            connect(cell, &ZEFFormatCell::focusOut, context.get(), react);
        else if (signal == u"line textChanged")
            connect(cell, &QLineEdit::textChanged, context.get(), react);
        else if (signal == u"selectionChanged")
            connect(cell, &QLineEdit::selectionChanged, context.get(), react);
        else if (signal == u"cursorPositionChanged")
            connect(cell, &QLineEdit::cursorPositionChanged, context.get(), react);
    }
    if (signal == u"validityChanged")
        edit->editor(1)->setFinalRegExp(u"never"_s);

    QApplication::clipboard()->setText(act == u"middle" ? u"B"_s : u"ABC-XYZ"_s);
    if (act == u"type")
        QTest::keyClick(cells.at(0), Qt::Key_B);
    else if (act == u"backspace")
        QTest::keyClick(cells.at(1), Qt::Key_Backspace);
    else if (act == u"left")
        QTest::keyClick(cells.at(1), Qt::Key_Left);
    else if (act == u"paste")
        cells.at(0)->paste();
    else if (act == u"middle")
        QTest::mouseClick(cells.at(0), Qt::MiddleButton);
    else if (act == u"setText")
        edit->setText(u"A-Z"_s);
    else if (act == u"cell text")
        cells.at(1)->setText(u"Z"_s);
    else if (act == u"cut")
        cells.at(1)->cut();
    else if (act == u"insert")
        cells.at(0)->insert(u"z"_s);
    else if (act == u"select all")
        cells.at(0)->selectAll();
    else if (act == u"property")
        cells.at(0)->setProperty("text", u"B"_s);
    else if (act == u"line setText")
        cells.at(0)->QLineEdit::setText(u"B"_s);
    else if (act == u"line clear")
        cells.at(0)->QLineEdit::clear();
    else
        edit->validate();

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // A cell that was dropped in a nested event loop waits for the end of that loop and for the next one.
    if (reacted > 0 && !inExec) {
        for (const QPointer<ZEFFormatCell>& cell : cells)
            QVERIFY(!cell);
    }
    if (edit && edit->lineEditCount() == 3) {
        edit->editor(0)->setFocus();
        QTest::keyClick(edit->editor(0), Qt::Key_A);
        QCOMPARE(edit->text(), u"a"_s);
    }
    context.reset();
    delete form.data();
}

void TestZEFFormatEdit::givesDroppedCellsBackAfterNestedLoops()
{
    QPointer<ZEFFormatCell> dropped;
    bool aliveInside = false;
    QEventLoop outer;
    QTimer::singleShot(0, &outer, [&] {
        const auto edit = madeFrom(twoCells);
        dropped = edit->editor(0);
        connect(dropped, &QLineEdit::textChanged, &outer, [&] {
            QEventLoop inner;
            QTimer::singleShot(0, &inner, [&] { edit->setFormat(threeCells); });
            QTimer::singleShot(20, &inner, &QEventLoop::quit);
            inner.exec();
            aliveInside = !dropped.isNull() && !dropped->parent();
        });
        dropped->QLineEdit::setText(u"1"_s);
        QCOMPARE(edit->lineEditCount(), 3);
        QTimer::singleShot(0, &outer, [&] { QTimer::singleShot(20, &outer, &QEventLoop::quit); });
    });
    outer.exec();
    QVERIFY(aliveInside);
    QVERIFY(!dropped);
}

void TestZEFFormatEdit::neverShowsADroppedCell()
{
    Form form(twoCells);
    QVERIFY(form.activate());
    // The layout has Qt show these cells when events run again; they are dropped before that.
    form.edit->setFormat(threeCells);
    ShowCounter shown;
    for (int i = 0; i < form.edit->lineEditCount(); ++i)
        form.edit->editor(i)->installEventFilter(&shown);
    form.edit->setFormat(twoCells);
    QCoreApplication::processEvents();
    QCOMPARE(shown.count, 0);
    QVERIFY(form.isActiveWindow());
    form.edit->setFocus();
    QCOMPARE(form.focused(), 0);
}

void TestZEFFormatEdit::mayBeDeletedByTheClipboard()
{
    for (const bool byCell : {true, false}) {
        const QPointer<ZEFFormatEdit> edit(new ZEFFormatEdit(nullptr));
        edit->setFormat(twoCells);
        edit->setText(u"123"_s);
        const auto connection =
            connect(QApplication::clipboard(), &QClipboard::dataChanged, this, [&] { delete edit.data(); });
        if (byCell)
            edit->editor(0)->copy();
        else
            edit->cut();
        // Windows tells of a new clipboard by a message.
        QTRY_VERIFY(!edit);
        disconnect(connection);
    }
}

void TestZEFFormatEdit::mayBeRebuiltWhileAKeyMovesOn()
{
    // The last character of a cell moves on; the slot has replaced the row before that.
    Form form(threeCells);
    QVERIFY(form.activate());
    form.type(u"a"_s);
    const auto connection = connect(form.edit, &ZEFFormatEdit::textChanged, this,
                                    [&] { form.edit->setFormat(u"{4}([a-z]*)-{4}([a-z]*)"_s); });
    form.type(u"b"_s);
    disconnect(connection);
    QCOMPARE(form.edit->lineEditCount(), 2);
    QCOMPARE(form.edit->text(), QString());
    QCOMPARE(form.focused(), 0);
}

void TestZEFFormatEdit::mayBeDeletedWhileTheFocusMoves()
{
    auto* form = new Form(threeCells);
    const QPointer<Form> guard(form);
    QVERIFY(form->activate());
    const auto connection =
        connect(qApp, &QApplication::focusChanged, this, [&] { delete std::exchange(form, nullptr); });
    guard->type(u"ab"_s);
    disconnect(connection);
    QVERIFY(!guard);
}

void TestZEFFormatEdit::mayBeDeletedWhileItIsRebuilt()
{
    auto* form = new Form(threeCells);
    const QPointer<Form> guard(form);
    QVERIFY(form->activate());
    const auto connection =
        connect(qApp, &QApplication::focusChanged, this, [&] { delete std::exchange(form, nullptr); });
    QVERIFY(!guard->edit->parseFormat(twoCells, 0));
    disconnect(connection);
    QVERIFY(!guard);
}

void TestZEFFormatEdit::mayBeDeletedWhileItIsFilled()
{
    const QPointer<ZEFFormatEdit> edit = new ZEFFormatEdit(nullptr);
    edit->setFormat(twoCells);
    connect(edit, &ZEFFormatEdit::textChanged, this, [&] { delete edit; });
    QVERIFY(edit->setText(u"12"_s));
    QVERIFY(!edit);
}

void TestZEFFormatEdit::mayBeRebuiltFromTheContextMenu()
{
    TestLog::allow(QRegularExpression(u"warning: This plugin does not support .*"_s));
    Form form(twoCells);
    QVERIFY(form.activate());
    form.edit->editor(0)->setText(u"12"_s);
    form.edit->editor(0)->selectAll();
    connect(form.edit, &ZEFFormatEdit::textChanged, this, [&] { form.edit->setFormat(threeCells); });
    QMenu* menu = form.edit->editor(0)->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(form.mapToGlobal(QPoint()));
    QVERIFY(QTest::qWaitForWindowExposed(menu));
    for (QAction* action : menu->actions()) {
        if (action->text() == QLineEdit::tr("Delete")) {
            menu->setActiveAction(action);
            QTest::keyClick(menu, Qt::Key_Return);
            break;
        }
    }
    QCOMPARE(form.edit->lineEditCount(), 3);
}

void TestZEFFormatEdit::forgetsCellsThatOthersDelete()
{
    const auto edit = madeFrom(threeCells);
    edit->setText(u"ab-cd/ef"_s);
    edit->editor(1)->setFocus();
    edit->saveFocus();
    delete edit->editor(1);
    QCOMPARE(edit->lineEditCount(), 2);
    QCOMPARE(edit->text(), u"ab/ef"_s);
    QCOMPARE(edit->editor(1)->id(), 1);
    edit->restoreFocus();
    edit->moveRight(0, nullptr);
    delete edit->editor(0);
    QCOMPARE(edit->focusProxy(), edit->editor(0));
    QCOMPARE(edit->editor(0)->id(), 0);
    QCOMPARE(edit->text(), u"/ef"_s);
    delete edit->editor(0);
    QVERIFY(!edit->focusProxy());
    edit->setFormat(twoCells);
    QCOMPARE(edit->lineEditCount(), 2);
    // Nor those that others take away.
    const std::unique_ptr<ZEFFormatCell> taken(edit->editor(0));
    taken->setParent(nullptr);
    QCOMPARE(edit->lineEditCount(), 1);
    QSignalSpy changes(edit.get(), &ZEFFormatEdit::textChanged);
    taken->setText(u"ab"_s);
    QCOMPARE(changes.count(), 0);
}

void TestZEFFormatEdit::forgetsACellBeforeItIsDestroyed()
{
    const auto edit = madeFrom(threeCells);
    edit->setText(u"ab-cd/ef"_s);
    int cells = 0;
    QString text;
    connect(edit->editor(1), &QObject::destroyed, this, [&] {
        cells = edit->lineEditCount();
        text = edit->text();
    });
    delete edit->editor(1);
    QCOMPARE(cells, 2);
    QCOMPARE(text, u"ab/ef"_s);
}

void TestZEFFormatEdit::survivesAValidatorThatDeletesItsCell()
{
    const auto edit = madeFrom(threeCells);
    ActingValidator validator;
    edit->editor(0)->setValidator(&validator);
    edit->editor(2)->setFinalRegExp(u"never"_s);
    validator.act = [&] { delete edit->editor(0); };
    QCOMPARE(edit->validate(), QValidator::Acceptable);
    QCOMPARE(edit->lineEditCount(), 2);
    edit->editor(1)->setText(u"x"_s);
    QCOMPARE(edit->validate(), QValidator::Invalid);
}

void TestZEFFormatEdit::survivesAValidatorThatRebuilds()
{
    const auto edit = madeFrom(threeCells);
    ActingValidator validator;
    int rebuilds = 0;
    validator.act = [&] {
        ++rebuilds;
        edit->setFormat(threeCells);
        edit->editor(0)->setValidator(&validator);
    };
    edit->editor(0)->setValidator(&validator);
    QCOMPARE(edit->validate(), QValidator::Invalid);
    QCOMPARE(rebuilds, 2);
    validator.act = nullptr;
    QCOMPARE(edit->validate(), QValidator::Acceptable);
}

void TestZEFFormatEdit::storesItsOwnVerdictAfterARewriting()
{
    // While the second cell is rewritten to upper case, a receiver spoils the first one, which has been
    // judged already: the verdict of the outer change is announced after that of the inner one.
    const auto edit = madeFrom(u"{2}([a-z]*)([a-z]*)-{2}([A-Za-z]*)([A-Z]*)"_s);
    edit->setText(u"ab-CD"_s);
    QCOMPARE(edit->state(), QValidator::Acceptable);
    QStringList lines;
    connect(edit.get(), &ZEFFormatEdit::validityChanged, this,
            [&](QValidator::State state) { lines += u"validity %1"_s.arg(state); });
    connect(edit.get(), &ZEFFormatEdit::textChanged, this,
            [&](QValidator::State state) { lines += u"text %1"_s.arg(state); });
    connect(edit->editor(1), &QLineEdit::textChanged, this, [&](const QString& text) {
        if (text == u"XY")
            edit->editor(0)->setText(u"1"_s);
    });
    edit->editor(1)->setText(u"xy"_s);
    QCOMPARE(texts(edit.get()), (QStringList{u"1"_s, u"XY"_s}));
    QCOMPARE(lines, (QStringList{u"text 2"_s, u"validity 0"_s, u"text 0"_s, u"validity 2"_s, u"text 2"_s}));
    QCOMPARE(edit->state(), QValidator::Acceptable);
    QCOMPARE(edit->validate(), QValidator::Invalid);
}

void TestZEFFormatEdit::deletesNestedLabelsOnce()
{
    const auto edit = madeFrom(twoCells);
    const QPointer<QLabel> outer(new QLabel(edit.get()));
    const QPointer<QLabel> inner(new QLabel(outer));
    auto* box = new QWidget(edit.get());
    const QPointer<QLabel> boxed(new QLabel(box));
    edit->setFormat(twoCells);
    QVERIFY(!outer);
    QVERIFY(!inner);
    // All labels below the edit go, whoever made them; other widgets stay.
    QVERIFY(!boxed);
    QCOMPARE(box->parentWidget(), edit.get());
}

void TestZEFFormatEdit::survivesASlotThatSetsTexts()
{
    const auto edit = madeFrom(twoCells);
    int depth = 0;
    connect(edit.get(), &ZEFFormatEdit::textChanged, this, [&] {
        if (++depth < 5)
            edit->setText(QString::number(depth));
    });
    edit->editor(0)->setText(u"9"_s);
    QCOMPARE(edit->text(), u"4"_s);
}

void TestZEFFormatEdit::survivesTheLossOfItsLayout()
{
    const auto edit = madeFrom(twoCells);
    delete edit->layout();
    edit->setLeftMargin(3);
    edit->setSpacing(3);
    QCOMPARE(edit->leftMargin() + edit->rightMargin() + edit->topMargin() + edit->bottomMargin()
                 + edit->spacing(),
             0);
    edit->setFormat(threeCells);
    QCOMPARE(edit->lineEditCount(), 3);
}

void TestZEFFormatEdit::refusesTextsBeyondTheCeiling_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("padded");
    QTest::addColumn<bool>("expected");
    QTest::addRow("10,000") << 10'000 << false << true;
    QTest::addRow("10,000 and white space") << 10'000 << true << true;
    QTest::addRow("10,001") << 10'001 << false << false;
    QTest::addRow("10 MiB") << 10 * 1024 * 1024 << false << false;
}

void TestZEFFormatEdit::refusesTextsBeyondTheCeiling()
{
    QFETCH(int, length);
    QFETCH(bool, padded);
    QFETCH(bool, expected);
    const auto edit = madeFrom(twoCells);
    edit->editor(1)->setText(u"9"_s);
    const QString blanks(padded ? 20'000 : 0, u' ');
    QCOMPARE(edit->setText(blanks + QString(length, u'7') + blanks), expected);
    QCOMPARE(texts(edit.get()),
             expected ? (QStringList{u"777"_s, QString()}) : (QStringList{QString(), u"9"_s}));

    edit->addAlternateCheck(uR"((\d*))"_s, 3);
    QCOMPARE(edit->checkAlternates(QString(length, u'7')), expected ? 3 : 0);
}

void TestZEFFormatEdit::refusesHostileTextsInTime_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("piece");
    QTest::addColumn<int>("count");
    const QString letters = u"{3}(\\p{L}*)-{4}(\\p{L}*)"_s;
    const QString five = u"{3}(\\d*)-{3}(\\d*)-{3}(\\d*)-{3}(\\d*)-{3}(\\d*)"_s;
    const QString nested = u"{3}(\\(?:a*\\)*b)-{3}(\\(?:\\(?:a|b\\)+\\)+c)"_s;
    QTest::addRow("50,000 digits") << twoCells << u"7"_s << 50'000;
    QTest::addRow("64 MiB of digits") << twoCells << u"7"_s << 64 * 1024 * 1024;
    for (const int count : {30, 1000, 9999}) {
        QTest::addRow("%d digits for two cells", count) << twoCells << u"7"_s << count;
        QTest::addRow("%d digits for five cells", count) << five << u"7"_s << count;
        QTest::addRow("%d letters", count) << letters << u"é"_s << count;
        QTest::addRow("%d letters, nested", count) << nested << u"a"_s << count;
    }
}

void TestZEFFormatEdit::refusesHostileTextsInTime()
{
    QFETCH(QString, format);
    QFETCH(QString, piece);
    QFETCH(int, count);
    const auto edit = madeFrom(format);
    const QString text = piece.repeated(count) + u'!';
    ProcessorTimer timer;
    timer.start();
    QVERIFY(!edit->setText(text));
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(edit->text(), QString());
}

void TestZEFFormatEdit::pastes64Mebibytes()
{
    const auto edit = madeFrom(u"{3}(\\d*)-{100000000}(\\d*)"_s);
    QApplication::clipboard()->setText(QString(64 * 1024 * 1024, u'7'));
    ProcessorTimer timer;
    timer.start();
    edit->paste();
    edit->editor(0)->paste();
    // Nor into a cell that has room for it.
    edit->editor(1)->paste();
    QTest::keySequence(edit->editor(1), QKeySequence::Paste);
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(edit->text(), QString());
}

void TestZEFFormatEdit::boundsTheTimeOfAnAction()
{
    // Every single text takes this final pattern long, and each cell has many to try.
    QStringList parts;
    for (int i = 0; i < 20; ++i)
        parts += u"{30:ab|}([ab]*)(\\(\\(a|b\\)+\\)+[cd])"_s;
    const auto edit = madeFrom(parts.join(u'-'));
    QCOMPARE(edit->lineEditCount(), 20);
    for (int i = 0; i < 20; ++i) {
        for (int range = 0; range < 20; ++range)
            edit->editor(i)->setEquivs(u"ab"_s);
    }
    ProcessorTimer timer;
    timer.start();
    QVERIFY(edit->setText(QStringList(20, QString(30, u'a')).join(u'-')));
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(edit->state(), QValidator::Invalid);
    timer.start();
    QTest::keyClick(edit->editor(0), Qt::Key_Backspace);
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
}

void TestZEFFormatEdit::searchesAFailedTextOnce()
{
    const auto edit = madeFrom(u"{30}([ab]*)(\\(\\(a|b\\)+\\)+[cd])-{200}(\\d*)"_s);
    for (int range = 0; range < 20; ++range)
        edit->editor(0)->setEquivs(u"ab"_s);
    edit->editor(0)->setText(QString(30, u'a'));
    ProcessorTimer timer;
    timer.start();
    for (int i = 0; i < 100; ++i)
        QTest::keyClick(edit->editor(1), Qt::Key_1);
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(edit->editor(1)->text().size(), 100);
    QCOMPARE(edit->state(), QValidator::Invalid);
    // A new setting asks again.
    edit->editor(0)->setFinalRegExp(u"a+"_s);
    QCOMPARE(edit->validate(), QValidator::Acceptable);
}

void TestZEFFormatEdit::searchesManyRangesQuickly_data()
{
    QTest::addColumn<QString>("finalPattern");
    QTest::addColumn<QString>("expected");
    QTest::addRow("letters, typed one by one") << u"[A-Z]*"_s << QString(20, u'O');
    QTest::addRow("twenty letters") << u"[A-Z]{20}"_s << QString(20, u'O');
    QTest::addRow("a letter at the end") << u"[A-Z0-9]{19}[A-Z]"_s << QString(19, u'0') + u'O';
    QTest::addRow("nothing that coercion can mend") << u"[A-Z0-9]{21}"_s << QString(20, u'0');
}

void TestZEFFormatEdit::searchesManyRangesQuickly()
{
    QFETCH(QString, finalPattern);
    QFETCH(QString, expected);
    const auto edit =
        madeFrom(u"{"_s + u"1:0O|"_s.repeated(20) + u"}([A-Z0-9]*)("_s + finalPattern + u")-{3}(\\d*)"_s);
    QCOMPARE(edit->editor(0)->maxLength(), 20);
    for (int i = 0; i < 20; ++i) {
        ProcessorTimer timer;
        timer.start();
        QTest::keyClick(edit->editor(0), Qt::Key_0);
        QVERIFY2(timer.elapsed() < 50, qPrintable(u"%1 ms for key %2"_s.arg(timer.elapsed()).arg(i)));
    }
    QCOMPARE(edit->editor(0)->text(), expected);
    // And all at once.
    ProcessorTimer timer;
    timer.start();
    QVERIFY(edit->setText(QString(20, u'0') + u"-1"_s));
    QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(edit->editor(0)->text(), expected);
}

void TestZEFFormatEdit::staysInTheTabOrder_data()
{
    QTest::addColumn<bool>("ordered");
    QTest::addColumn<bool>("alternates");
    QTest::addColumn<bool>("late");
    QTest::addRow("as made") << false << false << false;
    QTest::addRow("alternates first") << false << true << false;
    QTest::addRow("order given") << true << false << false;
    QTest::addRow("order given, alternates first") << true << true << false;
    QTest::addRow("order given before the format") << true << false << true;
}

void TestZEFFormatEdit::staysInTheTabOrder()
{
    QFETCH(bool, ordered);
    QFETCH(bool, alternates);
    QFETCH(bool, late);
    TestLog::allow(noSizeHints);
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    const auto field = [&](const QString& name) {
        auto* edit = new QLineEdit(&window);
        edit->setObjectName(name);
        layout->addWidget(edit);
        return edit;
    };
    QLineEdit* a = field(u"a"_s);
    QLineEdit* c = ordered ? field(u"c"_s) : nullptr;
    auto* key = new ZEFFormatEdit(&window);
    layout->addWidget(key);
    if (!late)
        key->setFormat(twoCells);
    QLineEdit* b = field(u"b"_s);
    if (ordered) {
        // a, key, b, c
        QWidget::setTabOrder(a, key);
        QWidget::setTabOrder(key, b);
        QWidget::setTabOrder(b, c);
    }
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto order = [&](Qt::Key tab) {
        QStringList names;
        a->setFocus();
        do {
            const QWidget* focused = QApplication::focusWidget();
            const auto* cell = qobject_cast<const ZEFFormatCell*>(focused);
            names += cell ? QString::number(cell->id()) : focused->objectName();
            QTest::keyClick(QApplication::focusWidget(), tab);
        } while (QApplication::focusWidget() != a && names.size() < 10);
        return names;
    };
    for (const QString& format : {threeCells, twoCells}) {
        if (alternates)
            key->addAlternateCheck(u"(x)"_s, 1);
        key->setFormat(format);
        QStringList expected = {u"a"_s, u"0"_s, u"1"_s, u"2"_s, u"b"_s};
        if (format == twoCells)
            expected.removeAt(3);
        if (ordered)
            expected += u"c"_s;
        QCOMPARE(order(Qt::Key_Tab), expected);
        std::reverse(expected.begin() + 1, expected.end());
        QCOMPARE(order(Qt::Key_Backtab), expected);
    }
}

void TestZEFFormatEdit::staysWhereItsCellsWereMovedTo()
{
    QWidget window;
    auto* key = new ZEFFormatEdit(&window);
    key->setFormat(u"/{2}(a)-{2}(b)"_s);
    auto* last = new QLineEdit(&window);
    QWidget::setTabOrder(last, key->editor(0));
    QWidget::setTabOrder(key->editor(0), key->editor(1));
    key->setFormat(threeCells);
    QCOMPARE(last->nextInFocusChain(), key);
    QCOMPARE(key->nextInFocusChain(), key->editor(0));
    const auto nextInTabOrder = [](const QWidget* widget) {
        do {
            widget = widget->nextInFocusChain();
        } while (!(widget->focusPolicy() & Qt::TabFocus));
        return widget;
    };
    QCOMPARE(nextInTabOrder(key->editor(0)), key->editor(1));
    QCOMPARE(nextInTabOrder(key->editor(1)), key->editor(2));
}

void TestZEFFormatEdit::keepsTheFocus()
{
    Form form(twoCells);
    auto* other = new QLineEdit(&form);
    form.layout()->addWidget(other);
    QVERIFY(form.activate());
    form.edit->editor(1)->setFocus();
    form.edit->setFormat(threeCells);
    QCOMPARE(form.focused(), 0);
    form.type(u"a"_s);
    QCOMPARE(form.edit->text(), u"a"_s);

    // Also over a time without cells.
    form.edit->editor(2)->setFocus();
    form.edit->addAlternateCheck(u"(x)"_s, 1);
    QCOMPARE(form.focused(), -1);
    form.edit->addAlternateCheck(u"(y)"_s, 2);
    form.edit->setFormat(twoCells);
    QCOMPARE(form.focused(), 0);

    // In a window that is not active, its next activation finds the first cell.
    form.edit->editor(1)->setFocus();
    form.hide();
    form.edit->setFormat(threeCells);
    QCOMPARE(form.focusWidget(), form.edit->editor(0));

    // A focus that is elsewhere stays there.
    other->setFocus();
    form.edit->setFormat(twoCells);
    QCOMPARE(form.focusWidget(), other);
    form.edit->editor(0)->setFocus();
    form.edit->addAlternateCheck(u"(y)"_s, 2);
    other->setFocus();
    form.edit->setFormat(threeCells);
    QCOMPARE(form.focusWidget(), other);
}

void TestZEFFormatEdit::buildsVisibleCellsInLinearTime()
{
    Form form(twoCells);
    QVERIFY(form.activate());
    const QString format = u"{2}(\\d*)-"_s.repeated(1000);
    ProcessorTimer timer;
    timer.start();
    form.edit->setFormat(format);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(form.edit->editor(999)->isVisible());
    QCOMPARE(form.focused(), 0);
    form.edit->setFormat(format);
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QTRY_VERIFY(form.edit->editor(1)->x() > form.edit->editor(0)->geometry().right());
}

void TestZEFFormatEdit::composesAcrossCells()
{
    Form form(threeCells);
    QVERIFY(form.activate());
    const auto compose = [](const QString& text) {
        QInputMethodEvent preedit(text, {});
        QCoreApplication::sendEvent(QApplication::focusWidget(), &preedit);
        QInputMethodEvent commit;
        commit.setCommitString(text);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &commit);
    };
    compose(u"a"_s);
    compose(u"b"_s);
    QCOMPARE(form.focused(), 1);
    form.type(u"c"_s);
    compose(u"d"_s);
    QCOMPARE(form.focused(), 2);
    QCOMPARE(form.edit->text(), u"ab-cd"_s);
}

void TestZEFFormatEdit::pastesNothingIntoProtectedCells_data()
{
    QTest::addColumn<bool>("disabled");
    QTest::addColumn<QString>("clip");
    for (const bool disabled : {false, true}) {
        const char* what = disabled ? "disabled" : "read-only";
        QTest::addRow("%s, fits", what) << disabled << u"12"_s;
        QTest::addRow("%s, spreads", what) << disabled << u"123-4567"_s;
    }
}

void TestZEFFormatEdit::pastesNothingIntoProtectedCells()
{
    QFETCH(bool, disabled);
    QFETCH(QString, clip);
    TestLog::allow(QRegularExpression(u"warning: Mouse event .* not accepted by receiving widget"_s));
    QApplication::clipboard()->setText(clip);
    Form form(twoCells);
    QVERIFY(form.activate());
    ZEFFormatCell* cell = form.edit->editor(1);
    if (disabled)
        cell->setEnabled(false);
    else
        cell->setReadOnly(true);
    QTest::mouseClick(cell, Qt::MiddleButton);
    QCOMPARE(form.edit->text(), QString());
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(2, 2), cell->mapToGlobal(QPointF(2, 2)),
                      Qt::MiddleButton, Qt::MiddleButton, Qt::NoModifier);
    QCoreApplication::sendEvent(cell, &press);
    QCOMPARE(form.edit->text(), QString());

    // Nor by way of a neighbour, over which the text is spread.
    QTest::mouseClick(form.edit->editor(0), Qt::MiddleButton);
    QCOMPARE(cell->text(), QString());
    QCOMPARE(form.edit->editor(0)->text(), clip.section(u'-', 0, 0));
    // What the service sets or pastes goes everywhere.
    form.edit->setText(u"1-2"_s);
    QCOMPARE(cell->text(), u"2"_s);
    form.edit->paste();
    QCOMPARE(cell->text(), clip.section(u'-', 1, 1));
}

void TestZEFFormatEdit::backspacesThroughAllEmptyCells()
{
    Form form(u"{1}(a){1}(b)"_s.repeated(500));
    QVERIFY(form.activate());
    form.edit->editor(0)->setText(u"a"_s);
    form.edit->editor(999)->setFocus();
    form.press(Qt::Key_Backspace);
    QCOMPARE(form.edit->text(), QString());
    QCOMPARE(form.focused(), 0);
}

void TestZEFFormatEdit::setsWholeCharacters()
{
    const auto edit = madeFrom(u"{3}(.*)-{2}(.*)"_s);
    // The first cell takes three code units, and half of the last character would be the third one.
    QVERIFY(edit->setText(u"ab😀"_s));
    QCOMPARE(edit->editor(0)->text(), u"ab"_s);
    QCOMPARE(edit->text(), u"ab"_s);
}

void TestZEFFormatEdit::deletesCellsMadeBeforeTheEventLoop()
{
    const auto edit = madeFrom(twoCells);
    edit->setText(u"12-34"_s);
    QTest::keyClick(edit->editor(0), Qt::Key_5);
    const QPointer<ZEFFormatCell> first(edit->editor(0));
    const QPointer<ZEFFormatCell> second(edit->editor(1));
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        edit->setFormat(threeCells);
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
    });
    loop.exec();
    QVERIFY(!first);
    QVERIFY(!second);
}

void TestZEFFormatEdit::pastesFromTheKeyboard_data()
{
    QTest::addColumn<bool>("spreads");
    QTest::addColumn<QKeySequence>("keys");
    const QKeySequence controlV(Qt::CTRL | Qt::Key_V);
    const QKeySequence shiftInsert(Qt::SHIFT | Qt::Key_Insert);
    QTest::addRow("Ctrl+V") << false << controlV;
    QTest::addRow("Shift+Insert") << false << shiftInsert;
    QTest::addRow("Ctrl+V, spread") << true << controlV;
    QTest::addRow("Shift+Insert, spread") << true << shiftInsert;
}

void TestZEFFormatEdit::pastesFromTheKeyboard()
{
    QFETCH(bool, spreads);
    QFETCH(QKeySequence, keys);
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->setText(u"123-4567"_s);
    Form form(twoCells);
    QVERIFY(form.activate());
    if (spreads)
        form.edit->setProperty("keyboardPasteSpreads", true);
    QTest::keySequence(form.edit->editor(0), keys);
    QCOMPARE(form.edit->text(), spreads ? u"123-4567"_s : u"123"_s);

    // What fits goes to the caret.
    form.edit->setText(QString());
    form.edit->editor(1)->setFocus();
    form.edit->editor(1)->setText(u"67"_s);
    form.edit->editor(1)->setCursorPosition(1);
    clipboard->setText(u"89"_s);
    QTest::keySequence(form.edit->editor(1), keys);
    QCOMPARE(form.edit->text(), u"-6897"_s);

    // A cell that is read-only takes nothing.
    form.edit->editor(1)->setReadOnly(true);
    QTest::keySequence(form.edit->editor(1), keys);
    clipboard->setText(u"123-4567"_s);
    QTest::keySequence(form.edit->editor(1), keys);
    QCOMPARE(form.edit->text(), u"-6897"_s);
}

ZEF_TEST_MAIN(TestZEFFormatEdit)
#include "test_zefformatedit.moc"
