// Every form of the demo and every page of the gallery, used without a mouse.

#include <examples/gallery/Page.h>
#include <examples/gallery/pages.h>
#include <service/FormSession.h>
#include <service/RequestContext.h>

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFTest.h>
#include <ZEFUIDialog.h>

#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

//! What no key reaches, as the manual lists it.
const QStringList WithoutKeyboard = {u"ZEFHyperlinkLabel"_s, u"ZEFToggleButton"_s};
//! What nobody operates.
const QStringList NothingToOperate = {u"ZEFEllipsisLabel"_s};

//! To the window that has the focus, as a real key.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QVERIFY(qApp->focusWindow());
    QTest::keyClick(qApp->focusWindow(), key, modifiers);
}

void type(const QString& text)
{
    for (const QChar character : text) {
        QVERIFY(qApp->focusWindow());
        QTest::keyClick(qApp->focusWindow(), character.toLatin1());
    }
}

//! Whether \a widget, or a part of it, has the focus.
bool isFocused(const QWidget* widget)
{
    const QWidget* focused = QApplication::focusWidget();
    return focused && (focused == widget || widget->isAncestorOf(focused));
}

//! Presses Tab until \a widget has the focus; false when it never has.
bool tabTo(const QWidget* widget)
{
    for (int i = 0; i < 100 && !isFocused(widget); ++i)
        press(Qt::Key_Tab);
    return isFocused(widget);
}

} // namespace

class TestKeyboard : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        TestLog::allow(
            QRegularExpression(u"(debug: .*|warning: QObject.*|.*This plugin does not support .*)"_s));
        m_answer.clear();
    }
    void tidyUp() override
    {
        m_window.reset();
        while (ZEFUIDialog* form = openForm())
            delete form;
    }

private Q_SLOTS:
    void signIn_data() { addLocales(); }
    void signIn();
    void signInCancelled();
    void activation_data() { addLocales(); }
    void activation();
    void activationByMnemonic_data();
    void activationByMnemonic();
    void activationPostponed_data() { addLocales(); }
    void activationPostponed();
    void galleryPages_data();
    void galleryPages();
    void manualListsTheRest();
    void leftAndRightInARow_data();
    void leftAndRightInARow();
    void otherKeysInARow();
    void clipboardInARow();
    void menuOfACell();
    void linksThatTakeTheFocus();

private:
    //! A row of two cells of four places in an active window.
    void showRow(const QString& first, const QString& second)
    {
        m_window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(m_window.get());
        m_row = new ZEFFormatEdit(m_window.get());
        m_row->setFormat(u"{4}(.{0,4})-{4}(.{0,4})"_s);
        m_row->editor(0)->setText(first);
        m_row->editor(1)->setText(second);
        layout->addWidget(m_row);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    //! The cell and the place in it that the caret is in.
    QString caret() const
    {
        for (int i = 0; i < m_row->lineEditCount(); ++i) {
            if (m_row->editor(i)->hasFocus())
                return u"%1:%2"_s.arg(i).arg(m_row->editor(i)->cursorPosition());
        }
        return u"nowhere"_s;
    }
    void setCaret(int cell, int place)
    {
        m_row->editor(cell)->setFocus();
        m_row->editor(cell)->deselect();
        m_row->editor(cell)->setCursorPosition(place);
    }

    static void addLocales()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::newRow("English") << QByteArray("en");
        QTest::newRow("German") << QByteArray("de");
    }

    static ZEFUIDialog* openForm()
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget* widget : widgets) {
            if (auto* form = qobject_cast<ZEFUIDialog*>(widget))
                return form;
        }
        return nullptr;
    }

    //! The form of the active window.
    static QWidget* form() { return QApplication::activeWindow(); }
    static QWidget* widget(const char* name) { return form()->findChild<QWidget*>(QLatin1StringView(name)); }

    void open(const QByteArray& request)
    {
        QString error;
        const FormRequest parsed = FormRequest::fromJson(request, &error);
        QCOMPARE(error, QString());
        auto context =
            std::make_unique<RequestContext>([this](const QByteArray& answer) { m_answer = answer; });
        QVERIFY(FormSession::open(parsed, std::move(context), 0));
        QTRY_VERIFY(openForm()->isVisible());
        openForm()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(openForm()));
    }
    void openActivation(const QByteArray& locale)
    {
        open("{\"form\": \"activation\", \"locale\": \"" + locale
             + "\", \"focus\": \"productKey\", "
               "\"dictionaries\": [{\"product\": \"Ledger 7\", \"days\": \"12\", "
               "\"product_keys\": \"7K02M3QX9PLD5T8R\"}], \"return\": [\"productKey.text\"]}");
    }

    QByteArray m_answer;
    std::unique_ptr<QWidget> m_window;
    ZEFFormatEdit* m_row = nullptr;
};

void TestKeyboard::signIn()
{
    QFETCH(const QByteArray, locale);
    open("{\"form\": \"signin\", \"locale\": \"" + locale
         + "\", \"focus\": \"user\", \"return\": [\"user.text\", \"remember.checked\"]}");
    // Enter before anything is there: the form says so, and asks for the name.
    press(Qt::Key_Return);
    QTRY_VERIFY(widget("errorLabel")->isVisible());
    QVERIFY(isFocused(widget("user")));
    type(u"anna"_s);
    QVERIFY(!widget("errorLabel")->isVisible());
    press(Qt::Key_Tab);
    QVERIFY(isFocused(widget("password")));
    type(u"secret"_s);
    press(Qt::Key_Tab);
    QVERIFY(isFocused(widget("remember")));
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    QVERIFY(isFocused(widget("okButton")));
    press(Qt::Key_Space);
    QTRY_COMPARE(m_answer,
                 "{\"selection\":1,\"values\":{\"remember.checked\":true,\"user.text\":\"anna\"}}\n");
}

void TestKeyboard::signInCancelled()
{
    open("{\"form\": \"signin\", \"focus\": \"user\"}");
    QVERIFY(tabTo(widget("cancelButton")));
    press(Qt::Key_Space);
    QTRY_COMPARE(m_answer, "{\"selection\":2,\"values\":{}}\n");
    tidyUp();
    open("{\"form\": \"signin\"}");
    press(Qt::Key_Escape);
    QTRY_COMPARE(m_answer, "{\"selection\":0,\"values\":{}}\n");
}

void TestKeyboard::activation()
{
    QFETCH(const QByteArray, locale);
    openActivation(locale);
    QVERIFY(isFocused(widget("productKey")));
    // Each full cell hands the caret on.
    type(u"7KO2M3QX9PLD5T8"_s);
    QVERIFY(!widget("okButton")->isEnabled());
    press(Qt::Key_Backspace);
    type(u"8R"_s);
    QVERIFY(widget("okButton")->isEnabled());
    QVERIFY(tabTo(widget("okButton")));
    press(Qt::Key_Return);
    QTRY_COMPARE(m_answer, "{\"selection\":1,\"values\":{\"productKey.text\":\"7K02-M3QX-9PLD-5T8R\"}}\n");
}

void TestKeyboard::activationByMnemonic_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("English") << QByteArray("en") << Qt::Key_K;
    QTest::newRow("German") << QByteArray("de") << Qt::Key_S;
}

void TestKeyboard::activationByMnemonic()
{
    QFETCH(const QByteArray, locale);
    QFETCH(const Qt::Key, key);
    openActivation(locale);
    QVERIFY(tabTo(widget("cancelButton")));
    press(key, Qt::AltModifier);
    QVERIFY(isFocused(widget("productKey")));
}

void TestKeyboard::activationPostponed()
{
    QFETCH(const QByteArray, locale);
    openActivation(locale);
    QPointer<QWidget> activation = form();
    const auto postpone = [&] {
        QVERIFY(tabTo(widget("laterButton")));
        press(Qt::Key_Space);
        QTRY_VERIFY(QApplication::activeWindow() && QApplication::activeWindow() != activation);
        QTRY_VERIFY(widget("okButton") && widget("consequenceLabel"));
    };
    // A window manager does this; the offscreen platform has none.
    const auto goBack = [&](const QPointer<QWidget>& question) {
        QTRY_VERIFY(question.isNull());
        activation->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(activation));
    };
    // Go back, and be where one was.
    postpone();
    QVERIFY(tabTo(widget("cancelButton")));
    QPointer<QWidget> question = form();
    press(Qt::Key_Space);
    goBack(question);
    QVERIFY(isFocused(widget("laterButton")));
    // Escape does the same.
    postpone();
    question = form();
    press(Qt::Key_Escape);
    goBack(question);
    // Enter goes on.
    postpone();
    press(Qt::Key_Return);
    QTRY_COMPARE(m_answer, "{\"selection\":3,\"values\":{\"productKey.text\":\"\"}}\n");
}

void TestKeyboard::galleryPages_data()
{
    QTest::addColumn<int>("index");
    const QList<Page*> pages = createPages();
    for (int i = 0; i < pages.size(); ++i)
        QTest::newRow(qPrintable(pages.at(i)->className())) << i;
    qDeleteAll(pages);
}

void TestKeyboard::galleryPages()
{
    QFETCH(const int, index);
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    const QList<Page*> pages = createPages();
    Page* page = pages.at(index);
    layout->addWidget(page);
    for (Page* other : pages) {
        if (other != page)
            delete other;
    }
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    press(Qt::Key_Tab);

    int operated = 0;
    const QList<QWidget*> widgets = page->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (QWidget* specimen : widgets) {
        if (page->className() != QLatin1StringView(specimen->metaObject()->className())
            || !specimen->isEnabled())
            continue;
        if (NothingToOperate.contains(page->className()))
            continue;
        if (WithoutKeyboard.contains(page->className())) {
            QVERIFY(!tabTo(specimen));
            continue;
        }
        QVERIFY2(tabTo(specimen), qPrintable(page->className()));
        ++operated;
        if (auto* link = qobject_cast<ZEFCommandLinkButton*>(specimen)) {
            QSignalSpy clicked(link, &ZEFCommandLinkButton::clicked);
            press(Qt::Key_Space);
            QCOMPARE(clicked.size(), 1);
        } else if (auto* box = qobject_cast<QCheckBox*>(specimen)) {
            const bool before = box->isChecked();
            press(Qt::Key_Space);
            QCOMPARE(box->isChecked(), !before);
        } else if (auto* button = qobject_cast<QPushButton*>(specimen)) {
            QSignalSpy clicked(button, &QPushButton::clicked);
            press(Qt::Key_Space);
            QCOMPARE(clicked.size(), 1);
        } else if (auto* flat = qobject_cast<ZEFFlatButton*>(specimen)) {
            QSignalSpy clicked(flat, &ZEFFlatButton::enterKeyClicked);
            press(Qt::Key_Return);
            QCOMPARE(clicked.size(), 1);
        } else if (auto* edit = qobject_cast<ZEFFormatEdit*>(specimen)) {
            for (int i = 0; i < edit->lineEditCount(); ++i) {
                QVERIFY(tabTo(edit->editor(i)));
                press(Qt::Key_A, Qt::ControlModifier);
                type(u"7"_s);
                QCOMPARE(edit->editor(i)->text(), u"7"_s);
            }
        } else if (auto* cell = qobject_cast<ZEFFormatCell*>(specimen)) {
            press(Qt::Key_A, Qt::ControlModifier);
            type(u"7"_s);
            QCOMPARE(cell->text(), u"7"_s);
        } else if (auto* calendar = qobject_cast<ZEFCalendarWidget*>(specimen)) {
            const QDate before = calendar->selectedDate();
            for (int i = 0; i < 10 && calendar->selectedDate() == before; ++i) {
                press(Qt::Key_Down);
                press(Qt::Key_Return);
                if (calendar->selectedDate() == before)
                    press(Qt::Key_Tab);
            }
            QVERIFY(calendar->selectedDate() != before);
        } else {
            QFAIL("Nobody knows how to operate this.");
        }
    }
    const bool operable =
        !NothingToOperate.contains(page->className()) && !WithoutKeyboard.contains(page->className());
    QCOMPARE(operated > 0, operable);
}

void TestKeyboard::manualListsTheRest()
{
    QFile page(QStringLiteral(MANUAL));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    const qsizetype start = text.indexOf(u"\n## What no key reaches\n"_s);
    QVERIFY(start >= 0);
    const QString section = text.mid(start, text.indexOf(u"\n## "_s, start + 5) - start);
    QStringList listed;
    static const QRegularExpression item(u"^- `(ZEF\\w+)`"_s, QRegularExpression::MultilineOption);
    for (const auto& match : item.globalMatch(section))
        listed.append(match.captured(1));
    listed.sort();
    QCOMPARE(listed, WithoutKeyboard);
}

void TestKeyboard::leftAndRightInARow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("cell");
    QTest::addColumn<int>("place");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("expected");
    const QString latin = u"abcd"_s;
    const QString hebrew = u"\u05d0\u05d1\u05d2\u05d3"_s;
    QTest::newRow("left at the start") << latin << 1 << 0 << Qt::Key_Left << u"0:4"_s;
    QTest::newRow("left inside") << latin << 1 << 2 << Qt::Key_Left << u"1:1"_s;
    QTest::newRow("left in the first cell") << latin << 0 << 0 << Qt::Key_Left << u"0:0"_s;
    QTest::newRow("right at the end") << latin << 0 << 4 << Qt::Key_Right << u"1:0"_s;
    QTest::newRow("right inside") << latin << 0 << 2 << Qt::Key_Right << u"0:3"_s;
    QTest::newRow("right in a cell that is not full") << u"ab"_s << 0 << 2 << Qt::Key_Right << u"0:2"_s;
    // The start is at the right, where Left would go on to the left; it leaves all the same.
    QTest::newRow("left at the start of Hebrew") << hebrew << 1 << 0 << Qt::Key_Left << u"0:4"_s;
    QTest::newRow("left inside Hebrew") << hebrew << 1 << 2 << Qt::Key_Left << u"1:3"_s;
    QTest::newRow("right at the end of Hebrew") << hebrew << 0 << 4 << Qt::Key_Right << u"1:0"_s;
    QTest::newRow("right inside Hebrew") << hebrew << 0 << 2 << Qt::Key_Right << u"0:1"_s;
}

void TestKeyboard::leftAndRightInARow()
{
    QFETCH(const QString, text);
    QFETCH(const int, cell);
    QFETCH(const int, place);
    QFETCH(const Qt::Key, key);
    showRow(text, text);
    setCaret(cell, place);
    press(key);
    QTEST(caret(), "expected");
}

void TestKeyboard::otherKeysInARow()
{
    showRow(u"abcd"_s, u"efgh"_s);
    setCaret(1, 0);
    press(Qt::Key_Backspace);
    QCOMPARE(m_row->text(), u"abc-efgh"_s);
    QCOMPARE(caret(), u"0:3"_s);
    type(u"x"_s);
    QCOMPARE(m_row->text(), u"abcx-efgh"_s);
    QCOMPARE(caret(), u"1:0"_s);
    // full
    type(u"y"_s);
    QCOMPARE(m_row->text(), u"abcx-efgh"_s);
    press(Qt::Key_End);
    QCOMPARE(caret(), u"1:4"_s);
    press(Qt::Key_Home);
    QCOMPARE(caret(), u"1:0"_s);
    press(Qt::Key_Delete);
    QCOMPARE(m_row->text(), u"abcx-fgh"_s);
    press(Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(m_row->editor(0)->hasFocus());
    press(Qt::Key_Tab);
    QVERIFY(m_row->editor(1)->hasFocus());
}

void TestKeyboard::clipboardInARow()
{
    showRow(u"ab"_s, u"efgh"_s);
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setText(u"1234-5678"_s);
    setCaret(0, 2);
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_row->text(), u"ab12-efgh"_s);
    m_row->editor(0)->setSelection(1, 2);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard->text(), u"b1"_s);
    press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(m_row->text(), u"a2-efgh"_s);
}

void TestKeyboard::menuOfACell()
{
    showRow(u"ab"_s, u"efgh"_s);
    const auto choose = [this](const QString& name) {
        const std::unique_ptr<QMenu> menu(m_row->editor(0)->createStandardContextMenu());
        for (QAction* action : menu->actions()) {
            if (action->text().startsWith(name))
                action->trigger();
        }
    };
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear(QClipboard::Selection);
    clipboard->setText(u"1234-5678"_s);
    setCaret(0, 2);
    choose(u"&Paste"_s);
    if (m_row->text() == u"ab12-efgh"_s)
        QSKIP("This version of Qt works past the cell, as the Ctrl keys do.");
    QCOMPARE(m_row->text(), u"1234-5678"_s);
    m_row->editor(0)->setSelection(1, 2);
    choose(u"Cu&t"_s);
    QCOMPARE(clipboard->text(), u"1234-5678"_s);
    // The first cell keeps its text.
    QCOMPARE(m_row->text(), u"1234"_s);
}

void TestKeyboard::linksThatTakeTheFocus()
{
    m_window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_window.get());
    auto* label = new ZEFHyperlinkLabel;
    label->setText(u"<a href='nowhere:1'>one</a> or <a href='nowhere:2'>two</a>"_s);
    label->setFocusPolicy(Qt::StrongFocus);
    layout->addWidget(label);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QSignalSpy refused(label, &ZEFHyperlinkLabel::internetNotConnected);
    QVERIFY(tabTo(label));
    for (const QString& link : {u"nowhere:1"_s, u"nowhere:2"_s}) {
        press(Qt::Key_Tab);
        press(Qt::Key_Return);
        QCOMPARE(refused.size(), 1);
        QCOMPARE(refused.takeFirst().at(0).toString(), link);
    }
}

ZEF_TEST_MAIN(TestKeyboard)
#include "test_keyboard.moc"
