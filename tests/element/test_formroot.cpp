#include <ElementTest.h>
#include <TestResources.h>

#include <ZEFCommandLinkButton.h>

#include <QtTest/QSignalSpy>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWizard>

namespace {

QByteArray widget(const QByteArray& className, const QByteArray& name, const QByteArray& content = {})
{
    return "<widget class=\"" + className + "\" name=\"" + name + "\">" + content + "</widget>";
}

QByteArray column(const QByteArrayList& widgets)
{
    QByteArray items;
    for (const QByteArray& item : widgets)
        items += "<item>" + item + "</item>";
    return "<layout class=\"QVBoxLayout\" name=\"column\">" + items + "</layout>";
}

QByteArray text(const QByteArray& name, const QByteArray& value)
{
    return "<property name=\"" + name + "\"><string>" + value + "</string></property>";
}

const QByteArray isDefault = "<property name=\"default\"><bool>true</bool></property>";
const QByteArray buttonBox = widget(
    "QDialogButtonBox", "box",
    "<property name=\"standardButtons\"><set>QDialogButtonBox::Cancel|QDialogButtonBox::Ok</set></property>");

QByteArray connection(const QByteArray& sender, const QByteArray& signal, const QByteArray& receiver,
                      const QByteArray& slot)
{
    return "<connections><connection><sender>" + sender + "</sender><signal>" + signal + "</signal><receiver>"
        + receiver + "</receiver><slot>" + slot + "</slot></connection></connections>";
}

QByteArray formOf(const QByteArray& root, const QByteArray& rest = {})
{
    return "<ui version=\"4.0\"><class>Form</class>" + root + rest + "</ui>";
}

//! A form with a line edit and a button, in the way in which each class holds them.
QByteArray formOf(const QByteArray& className, const QByteArray& more, const QByteArray& rest)
{
    const QByteArray contents = column({widget("QLineEdit", "edit"), widget("QPushButton", "end"), more});
    if (className == "QMainWindow")
        return formOf(widget(className, "root", widget("QWidget", "central", contents)), rest);
    if (className == "QWizard")
        return formOf(widget(className, "root", widget("QWizardPage", "page", contents)), rest);
    if (className == "QDockWidget")
        return formOf(widget(className, "root", widget("QWidget", "inner", contents)), rest);
    if (className != "Promoted")
        return formOf(widget(className, "root", contents), rest);
    return formOf(widget(className, "root", contents),
                  "<customwidgets><customwidget><class>Promoted</class><extends>QDialog</extends>"
                  "</customwidget></customwidgets>"
                      + rest);
}

//! A host around the form of the resources, and what it answered.
template <class Host> class OpenForm {
public:
    explicit OpenForm(const QByteArray& form)
        : name(nextName())
        , m_resources({{u"forms/"_s + name + u".ui"_s, form}})
        , host(new Host(name, u"en"_s, nullptr, Qt::WindowFlags(), new CountingContext(&deletions)))
    {
        host->element()->setCloseSelection(7);
        host->resize(300, 200); // some forms here ask for nothing
        QObject::connect(host, &Host::respondClosed, host,
                         [this](ZEFPipeFacilityInvocationContext* context, int selection) {
                             answers.append(selection);
                             hadContext = context && context == host->element()->context();
                         });
    }
    ~OpenForm() { delete host; }

    QWidget* root() const { return host->template findChild<QWidget*>(u"root"_s); }
    QWidget* child(const QString& objectName) const { return host->template findChild<QWidget*>(objectName); }
    QPushButton* button(const QString& objectName) const
    {
        return host->template findChild<QPushButton*>(objectName);
    }
    [[nodiscard]] bool show() const
    {
        host->element()->show();
        host->activateWindow();
        return QTest::qWaitForWindowActive(host.data());
    }
    [[nodiscard]] bool isOpen() const
    {
        return answers.isEmpty() && host && !host->element()->isClosing() && host->isVisible();
    }

private:
    Q_DISABLE_COPY_MOVE(OpenForm)
    static QString nextName()
    {
        static int number = 0;
        return u"made"_s + QString::number(++number);
    }

public:
    const QString name;

private:
    const TestResources m_resources;

public:
    int deletions = 0;
    QPointer<Host> host;
    QList<int> answers;
    bool hadContext = false;
};

enum class HostKind { Dialog, Widget };

} // namespace

Q_DECLARE_METATYPE(HostKind)

class TestFormRoot : public ElementTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        ElementTest::prepare();
        TestLog::allow(u"debug: Could not find a method end_clicked on delegate"_s);
    }

private Q_SLOTS:
    void standsInItsHost_data();
    void standsInItsHost();
    void aCreatedDialogHasItsSize();
    void theHostKeepsItsTitle();
    void takesPartInTheHost();
    void aShownHostShowsIt();
    void endsItsHost_data();
    void endsItsHost();
    void theButtonsOfABoxEndTheHost_data();
    void theButtonsOfABoxEndTheHost();
    void escapeIsTheHosts();
    void endsAHiddenHost();
    void hidingIsNotTheEnd_data();
    void hidingIsNotTheEnd();
    void anOldRootEndsNothing_data();
    void anOldRootEndsNothing();
    void anOldRootMayHaveBecomeAWindow();
    void aHostMayStay_data();
    void aHostMayStay();
    void aHostMayStayWithAnotherForm();
    void aStrayRootEndsNothing();
    void aReceiverMayDeleteTheHost();
    void keysReachTheDialogHost();
    void returnPressesTheDefaultButton_data();
    void returnPressesTheDefaultButton();
    void theLastPageOfAWizardFinishes();
    void aPlainWidgetIsAHostToo();
    void aLaterFormIsNotFixed_data();
    void aLaterFormIsNotFixed();

private:
    template <class Host> static void endsHost();
    template <class Host> static void hides();
    template <class Host> static void replaces();
};

void TestFormRoot::standsInItsHost_data()
{
    QTest::addColumn<QByteArray>("className");
    for (const char* name :
         {"QWidget", "QDialog", "QMainWindow", "QWizard", "QDockWidget", "QFrame", "Promoted"})
        QTest::addRow("%s", name) << QByteArray(name);
}

void TestFormRoot::standsInItsHost()
{
    QFETCH(QByteArray, className);
    if (className == "Promoted")
        TestLog::allow(QRegularExpression(u"warning: .*unable to create a custom widget.*"_s));
    const OpenForm<ZEFUIDialog> form(
        formOf(className, widget("QLabel", "label", text("text", "A text")), {}));
    QVERIFY(form.host->element()->loaded());
    QVERIFY(form.show());
    QVERIFY(!form.root()->isWindow());
    QCOMPARE(form.root()->parentWidget(), form.host);
    QCOMPARE(form.root()->window(), form.host);
    QVERIFY(form.root()->isVisible());
    QVERIFY(form.child(u"label"_s)->isVisible());
    QCOMPARE(form.root()->geometry(), form.host->rect());
    QVERIFY(form.host->width() >= form.root()->minimumSizeHint().width());
    QVERIFY(form.isOpen());

    form.host->hide();
    QVERIFY(form.show());
    QCOMPARE(form.root()->geometry(), form.host->rect());
}

void TestFormRoot::aCreatedDialogHasItsSize()
{
    const TestResources resources({{u"forms/made.ui"_s, formOf("QDialog", {}, {})}});
    const std::unique_ptr<ZEFUIDialog> dialog(
        ZEFUIDialog::create(u"made"_s, u"en"_s, nullptr, Qt::WindowFlags()));
    QVERIFY(dialog);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    QCOMPARE(dialog->size(), dialog->findChild<QWidget*>(u"root"_s)->sizeHint());
    QVERIFY(dialog->width() > 50);
}

void TestFormRoot::theHostKeepsItsTitle()
{
    const OpenForm<ZEFUIWidget> form(formOf(widget(
        "QDialog", "root",
        text("windowTitle", "Title of the form") + "<property name=\"modal\"><bool>true</bool></property>")));
    QCOMPARE(form.root()->windowTitle(), u"Title of the form"_s);
    QCOMPARE(form.host->windowTitle(), QString());
    QCOMPARE(form.host->windowModality(), Qt::NonModal);
    QVERIFY(form.show());
    QVERIFY(!QApplication::activeModalWidget());
}

void TestFormRoot::takesPartInTheHost()
{
    OpenForm<ZEFUIDialog> form(
        formOf("QDialog", widget("QLineEdit", "last"),
               "<tabstops><tabstop>last</tabstop><tabstop>edit</tabstop><tabstop>end</tabstop></tabstops>"));
    QFont font = form.host->font();
    font.setPointSize(31);
    form.host->setFont(font);
    QCOMPARE(form.child(u"edit"_s)->font().pointSize(), 31);
    QVERIFY(form.show());
    form.child(u"last"_s)->setFocus();
    for (const QString& next : {u"edit"_s, u"end"_s, u"last"_s}) {
        QTest::keyClick(form.host->focusWidget(), Qt::Key_Tab);
        QCOMPARE(form.host->focusWidget(), form.child(next));
    }
}

void TestFormRoot::aShownHostShowsIt()
{
    const OpenForm<ZEFUIWidget> form(formOf("QDialog", {}, {}));
    const TestResources next({{u"forms/next.ui"_s, formOf("QMainWindow", {}, {})}});
    QVERIFY(form.show());
    form.host->resize(400, 300);
    form.host->element()->setFormPath(u"next"_s);
    QVERIFY(qobject_cast<QMainWindow*>(form.root()));
    QTRY_VERIFY(form.root()->isVisible());
    QTRY_COMPARE(form.root()->geometry(), form.host->rect());
    form.host->element()->setFormPath(form.name);
    QTRY_VERIFY(form.root()->isVisible());
    QTRY_COMPARE(form.root()->geometry(), form.host->rect());
    QVERIFY(form.isOpen());
}

void TestFormRoot::endsItsHost_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QByteArray>("slot"); // none: Escape
    QTest::addColumn<HostKind>("kind");
    for (const HostKind kind : {HostKind::Dialog, HostKind::Widget}) {
        const char* host = kind == HostKind::Dialog ? "dialog" : "widget";
        const auto row = [&](const char* className, const char* slot) {
            QTest::addRow("%s %s in a %s", className, slot, host)
                << QByteArray(className) << QByteArray(slot) << kind;
        };
        for (const char* className :
             {"QWidget", "QDialog", "QMainWindow", "QWizard", "QDockWidget", "Promoted"}) {
            row(className, "close()");
            row(className, "");
        }
        for (const char* className : {"QDialog", "QWizard", "Promoted"}) {
            row(className, "accept()");
            row(className, "reject()");
        }
    }
}

template <class Host> void TestFormRoot::endsHost()
{
    QFETCH(QByteArray, className);
    QFETCH(QByteArray, slot);
    if (className == "Promoted")
        TestLog::allow(QRegularExpression(u"warning: .*unable to create a custom widget.*"_s));
    OpenForm<Host> form(
        formOf(className, {}, slot.isEmpty() ? QByteArray() : connection("end", "clicked()", "root", slot)));
    QVERIFY(form.show());
    form.child(u"edit"_s)->setFocus();
    if (slot.isEmpty())
        QTest::keyClick(form.child(u"edit"_s), Qt::Key_Escape);
    else
        QTest::mouseClick(form.button(u"end"_s), Qt::LeftButton);
    QCOMPARE(form.answers, QList<int>{7});
    QVERIFY(form.hadContext);
    // Escape in a widget host deletes it at once.
    if (slot.isEmpty() && std::is_same_v<Host, ZEFUIWidget>)
        QVERIFY(!form.host);
    QVERIFY(!form.host || !form.host->isVisible());
    QTRY_VERIFY(!form.host);
    QCOMPARE(form.deletions, 1);
    QCOMPARE(form.answers.size(), 1);
}

void TestFormRoot::endsItsHost()
{
    QFETCH(HostKind, kind);
    if (kind == HostKind::Dialog)
        endsHost<ZEFUIDialog>();
    else
        endsHost<ZEFUIWidget>();
}

void TestFormRoot::theButtonsOfABoxEndTheHost_data()
{
    QTest::addColumn<QDialogButtonBox::StandardButton>("button");
    QTest::newRow("OK") << QDialogButtonBox::Ok;
    QTest::newRow("Cancel") << QDialogButtonBox::Cancel;
}

// The connections of Designer's own template.
void TestFormRoot::theButtonsOfABoxEndTheHost()
{
    QFETCH(QDialogButtonBox::StandardButton, button);
    OpenForm<ZEFUIDialog> form(
        formOf("QDialog", buttonBox,
               "<connections><connection><sender>box</sender><signal>accepted()</signal>"
               "<receiver>root</receiver><slot>accept()</slot></connection>"
               "<connection><sender>box</sender><signal>rejected()</signal>"
               "<receiver>root</receiver><slot>reject()</slot></connection></connections>"));
    QVERIFY(form.show());
    QTest::mouseClick(form.host->template findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    QCOMPARE(form.answers, QList<int>{7});
    QTRY_VERIFY(!form.host);
}

void TestFormRoot::escapeIsTheHosts()
{
    OpenForm<ZEFUIDialog> form(formOf("QDialog", {}, {}));
    form.host->enableCloseOnEscape(false);
    QVERIFY(form.show());
    form.child(u"edit"_s)->setFocus();
    QTest::keyClick(form.child(u"edit"_s), Qt::Key_Escape);
    QCOMPARE(form.answers, QList<int>());
    QTRY_VERIFY(form.host->isVisible());
    QVERIFY(form.root()->isVisible());
    QVERIFY(form.isOpen());
}

// As a widget named "close" ends it.
void TestFormRoot::endsAHiddenHost()
{
    OpenForm<ZEFUIWidget> plain(formOf("QWidget", {}, connection("end", "clicked()", "root", "close()")));
    plain.button(u"end"_s)->click();
    QCOMPARE(plain.answers, QList<int>{7});
    OpenForm<ZEFUIDialog> dialog(formOf("QDialog", {}, connection("end", "clicked()", "root", "accept()")));
    dialog.button(u"end"_s)->click();
    QCOMPARE(dialog.answers, QList<int>{7});
    OpenForm<ZEFUIDialog> closed(formOf("QDialog", {}, connection("end", "clicked()", "root", "close()")));
    closed.button(u"end"_s)->click();
    QCOMPARE(closed.answers, QList<int>{7});
    QTRY_VERIFY(!plain.host && !dialog.host && !closed.host);
}

void TestFormRoot::hidingIsNotTheEnd_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<HostKind>("kind");
    for (const char* name : {"QWidget", "QDialog", "QMainWindow"}) {
        QTest::addRow("%s in a dialog", name) << QByteArray(name) << HostKind::Dialog;
        QTest::addRow("%s in a widget", name) << QByteArray(name) << HostKind::Widget;
    }
}

template <class Host> void TestFormRoot::hides()
{
    QFETCH(QByteArray, className);
    OpenForm<Host> form(formOf(className, {}, {}));
    form.root()->setVisible(false);
    QVERIFY(form.show());
    QVERIFY(!form.root()->isVisible());
    form.host->element()->showChild(u"root"_s);
    QVERIFY(form.root()->isVisible());
    form.host->element()->hideChild(u"root"_s);
    form.host->element()->showChild(u"root"_s);
    form.host->element()->hideChild(u"edit"_s);
    QVERIFY(form.root()->isVisible());
    form.host->hide();
    QVERIFY(!form.root()->isHidden());
    QTRY_VERIFY(form.host->isVisible()); // by the tick
    QVERIFY(form.root()->isVisible());
    QVERIFY(form.isOpen());
}

void TestFormRoot::hidingIsNotTheEnd()
{
    QFETCH(HostKind, kind);
    if (kind == HostKind::Dialog)
        hides<ZEFUIDialog>();
    else
        hides<ZEFUIWidget>();
}

void TestFormRoot::anOldRootEndsNothing_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<HostKind>("kind");
    for (const char* name : {"QWidget", "QDialog", "QMainWindow"}) {
        QTest::addRow("%s in a dialog", name) << QByteArray(name) << HostKind::Dialog;
        QTest::addRow("%s in a widget", name) << QByteArray(name) << HostKind::Widget;
    }
}

template <class Host> void TestFormRoot::replaces()
{
    //! Ends the form when its style changes, which is the last thing that happens to it.
    class LastWord : public QObject {
    public:
        QWidget* root = nullptr;
        bool hasSpoken = false;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() != QEvent::StyleChange)
                return false;
            hasSpoken = true;
            root->close();
            if (auto* dialog = qobject_cast<QDialog*>(root))
                dialog->accept();
            return false;
        }
    } lastWord;
    QFETCH(QByteArray, className);
    OpenForm<Host> form(formOf(className, {}, {}));
    QVERIFY(form.show());
    const TestResources next(
        {{u"forms/next.ui"_s, formOf("QWidget", {}, {})}, {u"css/edit.css"_s, "QLineEdit { color: red }"}});
    lastWord.root = form.root();
    form.child(u"edit"_s)->installEventFilter(&lastWord);
    form.host->element()->setFormPath(u"next"_s);
    QVERIFY(lastWord.hasSpoken);
    QVERIFY(form.isOpen());
    QVERIFY(form.host->element()->loaded());
    QTRY_VERIFY(form.root()->isVisible());
}

void TestFormRoot::anOldRootEndsNothing()
{
    QFETCH(HostKind, kind);
    if (kind == HostKind::Dialog)
        replaces<ZEFUIDialog>();
    else
        replaces<ZEFUIWidget>();
}

// Qt closes a window when it is deleted.
void TestFormRoot::anOldRootMayHaveBecomeAWindow()
{
    const OpenForm<ZEFUIWidget> form(formOf("QDockWidget", {}, {}));
    const TestResources next({{u"forms/next.ui"_s, formOf("QWidget", {}, {})}});
    QVERIFY(form.show());
    form.root()->setWindowFlags(Qt::Tool);
    form.root()->show();
    QVERIFY(QTest::qWaitForWindowExposed(form.root()));
    form.host->element()->setFormPath(u"next"_s);
    QVERIFY(form.isOpen());
}

void TestFormRoot::aHostMayStay_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("QWidget") << QByteArray("QWidget") << QByteArray("close()");
    QTest::newRow("QMainWindow") << QByteArray("QMainWindow") << QByteArray("close()");
    QTest::newRow("QDialog closed") << QByteArray("QDialog") << QByteArray("close()");
    QTest::newRow("QDialog accepted") << QByteArray("QDialog") << QByteArray("accept()");
}

void TestFormRoot::aHostMayStay()
{
    //! A service that asks before it lets go of a window.
    class Objection : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() != QEvent::Close)
                return false;
            event->ignore();
            return true;
        }
    } objection;
    QFETCH(QByteArray, className);
    QFETCH(QByteArray, slot);
    OpenForm<ZEFUIWidget> form(formOf(className, {}, connection("end", "clicked()", "root", slot)));
    QVERIFY(form.show());
    form.host->installEventFilter(&objection);
    QTest::mouseClick(form.button(u"end"_s), Qt::LeftButton);
    QVERIFY(form.isOpen());
    QVERIFY(form.root()->isVisible());
    form.host->removeEventFilter(&objection);
    QTest::mouseClick(form.button(u"end"_s), Qt::LeftButton);
    QCOMPARE(form.answers, QList<int>{7});
}

void TestFormRoot::aHostMayStayWithAnotherForm()
{
    //! A service that shows another form instead of closing.
    class Objection : public QObject {
    public:
        bool eventFilter(QObject* host, QEvent* event) override
        {
            if (event->type() != QEvent::Close)
                return false;
            event->ignore();
            static_cast<ZEFUIWidget*>(host)->element()->setFormPath(u"next"_s);
            return true;
        }
    } objection;
    for (const char* slot : {"close()", "accept()"}) {
        const OpenForm<ZEFUIWidget> form(formOf("QDialog", {}, connection("end", "clicked()", "root", slot)));
        const TestResources next({{u"forms/next.ui"_s, formOf("QMainWindow", {}, {})}});
        QVERIFY(form.show());
        form.host->installEventFilter(&objection);
        QTest::mouseClick(form.button(u"end"_s), Qt::LeftButton);
        QVERIFY(form.isOpen());
        QTRY_VERIFY(qobject_cast<QMainWindow*>(form.root()) && form.root()->isVisible());
    }
}

void TestFormRoot::aStrayRootEndsNothing()
{
    OpenForm<ZEFUIDialog> form(formOf("QDialog", {}, {}));
    const std::unique_ptr<QWidget> root(form.root());
    root->setParent(nullptr);
    QTest::keyClick(root.get(), Qt::Key_Escape);
    root->close();
    qobject_cast<QDialog*>(root.get())->accept();
    QCOMPARE(form.answers, QList<int>());
}

void TestFormRoot::aReceiverMayDeleteTheHost()
{
    for (const char* slot : {"close()", "accept()", "reject()"}) {
        OpenForm<ZEFUIDialog> form(formOf("QDialog", {}, connection("end", "clicked()", "root", slot)));
        QObject::connect(form.host, &ZEFUIDialog::respondClosed, this, [&] { delete form.host; });
        QVERIFY(form.show());
        QTest::mouseClick(form.button(u"end"_s), Qt::LeftButton);
        QVERIFY(!form.host);
        QCOMPARE(form.deletions, 1);
    }
    OpenForm<ZEFUIWidget> plain(formOf("QWidget", {}, connection("end", "clicked()", "root", "close()")));
    QObject::connect(plain.host, &ZEFUIWidget::respondClosed, this, [&] { plain.host->element()->close(); });
    QVERIFY(plain.show());
    QTest::mouseClick(plain.button(u"end"_s), Qt::LeftButton);
    QTRY_VERIFY(!plain.host);
    QCOMPARE(plain.answers.size(), 1);
}

void TestFormRoot::keysReachTheDialogHost()
{
    OpenForm<ZEFUIDialog> form(formOf("QDialog", widget("QLabel", "label"), {}));
    QVERIFY(form.show());
    QList<int> keys;
    QObject::connect(form.host, &ZEFUIDialog::dialog_key_pressed, this, [&](int key) { keys.append(key); });
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_F5, Qt::Key_Return})
        QTest::keyClick(form.child(u"label"_s), key);
    QCOMPARE(keys, (QList<int>{Qt::Key_A, Qt::Key_F5, Qt::Key_Return}));

    OpenForm<ZEFUIDialog> linked(formOf(
        "QDialog",
        widget("ZEFCommandLinkButton", "link", "<property name=\"default\"><bool>true</bool></property>"),
        {}));
    QVERIFY(linked.show());
    auto* link = qobject_cast<ZEFCommandLinkButton*>(linked.child(u"link"_s));
    link->setDefault(true);
    const QSignalSpy pressed(link, SIGNAL(clicked(bool)));
    linked.child(u"edit"_s)->setFocus();
    QTest::keyClick(linked.child(u"edit"_s), Qt::Key_Return);
    QCOMPARE(pressed.size(), 1);
}

void TestFormRoot::returnPressesTheDefaultButton_data()
{
    QTest::addColumn<QByteArrayList>("buttons");
    QTest::addColumn<QByteArray>("pressed");
    QTest::addColumn<HostKind>("kind");
    for (const HostKind kind : {HostKind::Dialog, HostKind::Widget}) {
        const char* host = kind == HostKind::Dialog ? "dialog" : "widget";
        const QByteArray ok = widget("QPushButton", "ok", isDefault);
        const QByteArray cancel = widget("QPushButton", "cancel");
        QTest::addRow("drawn first, %s", host) << QByteArrayList{ok, cancel} << QByteArray("ok") << kind;
        QTest::addRow("drawn last, %s", host) << QByteArrayList{cancel, ok} << QByteArray("ok") << kind;
        QTest::addRow("none drawn, %s", host)
            << QByteArrayList{widget("QPushButton", "ok"), cancel} << QByteArray("ok") << kind;
        QTest::addRow("without focus, %s", host)
            << QByteArrayList{widget("QPushButton", "mute",
                                     "<property name=\"focusPolicy\"><enum>Qt::NoFocus</enum></property>"),
                              widget("QPushButton", "ok"), cancel}
            << QByteArray("ok") << kind;
        QTest::addRow("in a box, %s", host) << QByteArrayList{cancel, buttonBox} << QByteArray("box") << kind;
    }
}

// Qt would leave Cancel the default button once it had the focus.
void TestFormRoot::returnPressesTheDefaultButton()
{
    QFETCH(QByteArrayList, buttons);
    QFETCH(QByteArray, pressed);
    QFETCH(HostKind, kind);
    const auto check = [&](auto& form) {
        TestLog::allow(QRegularExpression(u"debug: Could not find a method .*_clicked on delegate"_s));
        QVERIFY(form.show());
        auto* edit = form.child(u"edit"_s);
        QPushButton* expected = form.button(QString::fromLatin1(pressed));
        if (auto* box = qobject_cast<QDialogButtonBox*>(form.child(u"box"_s)))
            expected = box->button(QDialogButtonBox::Ok);
        const QSignalSpy spy(expected, &QPushButton::clicked);
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(spy.size(), 1);
        form.button(u"cancel"_s)->setFocus();
        QVERIFY(form.button(u"cancel"_s)->hasFocus());
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(spy.size(), 2);
        QTest::keyClick(edit, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(spy.size(), 3);

        form.button(u"cancel"_s)->setFocus();
        edit->setFocus();
        form.host->hide();
        QVERIFY(form.show());
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(spy.size(), 4);

        const QSignalSpy cancelled(form.button(u"cancel"_s), &QPushButton::clicked);
        form.button(u"cancel"_s)->setFocus();
        QTest::keyClick(form.button(u"cancel"_s), Qt::Key_Return);
        QCOMPARE(cancelled.size(), 1);
        QCOMPARE(spy.size(), 4);
        QVERIFY(form.isOpen());
    };
    const QByteArray made =
        formOf(widget("QDialog", "root", column(QByteArrayList{widget("QLineEdit", "edit")} + buttons)));
    if (kind == HostKind::Dialog) {
        OpenForm<ZEFUIDialog> form(made);
        check(form);
    } else {
        OpenForm<ZEFUIWidget> form(made);
        check(form);
    }
}

void TestFormRoot::theLastPageOfAWizardFinishes()
{
    OpenForm<ZEFUIDialog> form(
        formOf(widget("QWizard", "root",
                      widget("QWizardPage", "one", column({widget("QLineEdit", "first")}))
                          + widget("QWizardPage", "two", column({widget("QLineEdit", "edit")})))));
    TestLog::allow(QRegularExpression(u"debug: Could not find a method .*_clicked on delegate"_s));
    QVERIFY(form.show());
    auto* wizard = qobject_cast<QWizard*>(form.root());
    form.child(u"first"_s)->setFocus();
    QTest::keyClick(form.child(u"first"_s), Qt::Key_Return);
    QCOMPARE(wizard->currentId(), wizard->pageIds().at(1));
    form.child(u"edit"_s)->setFocus();
    QTest::keyClick(form.child(u"edit"_s), Qt::Key_Return);
    QCOMPARE(form.answers, QList<int>{7});
    QTRY_VERIFY(!form.host);
}

void TestFormRoot::aPlainWidgetIsAHostToo()
{
    const TestResources resources(
        {{u"forms/made.ui"_s, formOf("QDialog", {}, connection("end", "clicked()", "root", "accept()"))}});
    QWidget host;
    const ZEFUIElement element(&host, nullptr, u"made"_s, u"en"_s, nullptr, 0);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QVERIFY(host.findChild<QWidget*>(u"root"_s)->isVisible());
    host.findChild<QPushButton*>(u"end"_s)->click();
    QVERIFY(!host.isVisible());
}

void TestFormRoot::aLaterFormIsNotFixed_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("larger") << u"small"_s << u"large"_s;
    QTest::newRow("smaller") << u"large"_s << u"small"_s;
}

void TestFormRoot::aLaterFormIsNotFixed()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const auto size = [](const QByteArray& name, int width, int height) -> QByteArray {
        return "<property name=\"" + name + "\"><size><width>" + QByteArray::number(width)
            + "</width><height>" + QByteArray::number(height) + "</height></size></property>";
    };
    const TestResources resources(
        {{u"forms/small.ui"_s, formOf(widget("QWidget", "small", size("minimumSize", 150, 90)))},
         // asks for more than it needs at least
         {u"forms/large.ui"_s, formOf(widget("QWidget", "large", column({widget("QTextEdit", "text")})))}});
    const std::unique_ptr<ZEFUIDialog> dialog(
        ZEFUIDialog::create(first, u"en"_s, nullptr, Qt::WindowFlags()));
    QVERIFY(dialog);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const QSize fixed = dialog->size();
    QCOMPARE(dialog->minimumSize(), fixed);
    QCOMPARE(dialog->maximumSize(), fixed);

    dialog->element()->setFormPath(second);
    QTRY_VERIFY(dialog->findChild<QWidget*>(second)->isVisible());
    const QSize wanted = dialog->layout()->sizeHint();
    QVERIFY(wanted.width() != fixed.width() && wanted.height() != fixed.height());
    QTRY_COMPARE(dialog->size(), wanted);
    QCOMPARE(dialog->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    dialog->resize(500, 400);
    QTRY_COMPARE(dialog->findChild<QWidget*>(second)->size(), QSize(500, 400));

    // One that is not fixed keeps the size that the user gave it.
    dialog->element()->setFormPath(first);
    QTRY_VERIFY(dialog->findChild<QWidget*>(first)->isVisible());
    QCOMPARE(dialog->size(), QSize(500, 400));
    dialog->setFixedSize(true);
    QTRY_COMPARE(dialog->size(), fixed);

    dialog->element()->setFormPath(u"missing"_s);
    TestLog::allow(u"debug: Could not open file :/forms/missing.ui for reading"_s);
    QCOMPARE(dialog->minimumSize(), QSize(0, 0));
    QCOMPARE(dialog->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

ZEF_TEST_MAIN(TestFormRoot)
#include "test_formroot.moc"
