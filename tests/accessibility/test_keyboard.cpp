// Every form of the demo and every page of the gallery, used without a mouse.

#include <examples/gallery/Page.h>
#include <examples/gallery/pages.h>
#include <service/FormSession.h>
#include <service/RequestContext.h>

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatEdit.h>
#include <ZEFTest.h>
#include <ZEFUIDialog.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
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

private:
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

ZEF_TEST_MAIN(TestKeyboard)
#include "test_keyboard.moc"
