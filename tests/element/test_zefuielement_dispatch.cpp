#include "ElementTest.h"

#include <QtCore/QThread>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

namespace {

QStringList calls;

QString addressOf(ZEFPipeFacilityInvocationContext* context)
{
    return QString::number(reinterpret_cast<quintptr>(context), 16);
}

} // namespace

//! Parameter names are what dispatch reads, so they stand in every declaration here.
class Delegate : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void okButton_clicked(ZEFPipeFacilityInvocationContext* context)
    {
        calls << u"ok "_s + addressOf(context);
    }
    void agree_clicked(ZEFPipeFacilityInvocationContext*, QVariant nameEdit_text, QVariant agree_checked)
    {
        calls << u"agree "_s + nameEdit_text.toString() + u' ' + agree_checked.toString();
    }
    void _clicked(ZEFPipeFacilityInvocationContext*) { calls << u"nameless"_s; }
    void askNameless_clicked(ZEFPipeFacilityInvocationContext*, QVariant _text) { calls << _text.toString(); }
    void threePieces_clicked(ZEFPipeFacilityInvocationContext*, QVariant nameEdit_text_raw)
    {
        calls << u"never "_s + nameEdit_text_raw.toString();
    }
    void missingWidget_clicked(ZEFPipeFacilityInvocationContext*, QVariant nobody_text)
    {
        calls << u"never "_s + nobody_text.toString();
    }
    void missingProperty_clicked(ZEFPipeFacilityInvocationContext*, QVariant okButton_colour)
    {
        calls << u"never "_s + okButton_colour.toString();
    }
    void one_clicked(ZEFPipeFacilityInvocationContext*, QVariant okButton_text)
    {
        calls << okButton_text.toString();
    }
    void objectName_clicked(ZEFPipeFacilityInvocationContext*, QVariant okButton_objectName)
    {
        calls << okButton_objectName.toString();
    }
    void nine_clicked(ZEFPipeFacilityInvocationContext*, QVariant okButton_text, QVariant agree_text,
                      QVariant agree_checked, QVariant count_value, QVariant count_minimum,
                      QVariant count_maximum, QVariant nameEdit_text, QVariant nameEdit_maxLength,
                      QVariant close_text)
    {
        calls << okButton_text.toString() + agree_text.toString() + agree_checked.toString()
                + count_value.toString() + count_minimum.toString() + count_maximum.toString()
                + nameEdit_text.toString() + nameEdit_maxLength.toString() + close_text.toString();
    }
    void ten_clicked(ZEFPipeFacilityInvocationContext*, QVariant okButton_text, QVariant agree_text,
                     QVariant agree_checked, QVariant count_value, QVariant count_minimum,
                     QVariant count_maximum, QVariant nameEdit_text, QVariant nameEdit_maxLength,
                     QVariant close_text, QVariant close_enabled)
    {
        Q_UNUSED(okButton_text)
        Q_UNUSED(agree_text)
        Q_UNUSED(agree_checked)
        Q_UNUSED(count_value)
        Q_UNUSED(count_minimum)
        Q_UNUSED(count_maximum)
        Q_UNUSED(nameEdit_text)
        Q_UNUSED(nameEdit_maxLength)
        Q_UNUSED(close_text)
        Q_UNUSED(close_enabled)
        calls << u"never"_s;
    }
    // The first overload lends its parameter names; Qt calls the one whose types match.
    void overloaded_clicked(ZEFPipeFacilityInvocationContext*, QVariant okButton_text)
    {
        calls << u"one "_s + okButton_text.toString();
    }
    void overloaded_clicked(ZEFPipeFacilityInvocationContext*, QVariant agree_text, QVariant agree_checked)
    {
        calls << u"two "_s + agree_text.toString() + agree_checked.toString();
    }

public:
    Q_INVOKABLE int invokable_clicked(ZEFPipeFacilityInvocationContext*)
    {
        calls << u"invokable"_s;
        return 7;
    }
};

class DirectDelegate : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void firstGroup() { calls << u"never"_s; }

public Q_SLOTS:
    void okButton(bool checked) { calls << (checked ? u"okButton true"_s : u"okButton false"_s); }
    void nameEdit(bool) { calls << u"never"_s; }
    void nobody() { calls << u"never"_s; }

Q_SIGNALS:
    void agree(bool checked);
};

class NamedSlots : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void on_okButton_clicked() { calls << u"on ok"_s; }
    void on_nameEdit_textChanged(const QString& text) { calls << u"text "_s + text; }
    void on_agree_toggled(bool checked = true) { calls << (checked ? u"on"_s : u"off"_s); }
    void on_agree_setIconSize(const QSize&) { calls << u"never"_s; }
    void on_nobody_clicked() { calls << u"never"_s; }
    void on_okButton_noSuchSignal(int) { calls << u"never"_s; }
    void on_count_valueChanged(int value) { calls << QString::number(value); }
    void On_okButton_clicked() { calls << u"never"_s; }
};

class LastSlotHasADefault : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void on_okButton_clicked(bool checked = false) { calls << (checked ? u"on"_s : u"off"_s); }
};

class UnderscoreSlots : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void on_under_score_clicked() { calls << u"under_score"_s; }
};

class DerivedSlots : public NamedSlots {
    Q_OBJECT

public Q_SLOTS:
    void on_okButton_pressed() { calls << u"pressed"_s; }
};

class TestZEFUIElementDispatch : public ElementTest {
    Q_OBJECT

private:
    void prepare() override
    {
        ElementTest::prepare();
        calls.clear();
        // The form "names" holds a button named as a slot of every object; delegates are refused or
        // disconnected in Qt's own words, which the tests of those lines take.
        TestLog::allow(
            QRegularExpression(u"warning: QObject::disconnect: Use the SIGNAL macro to unbind .*"_s));
        m_host = std::make_unique<ZEFUIWidget>(u"names"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
        TestLog::takeAll();
    }
    void tidyUp() override { m_host.reset(); }

    ZEFUIElement* element() const { return m_host->element(); }
    //! A sender of that name, for dispatch() called by hand.
    static std::unique_ptr<QObject> sender(const QString& name)
    {
        auto object = std::make_unique<QObject>();
        object->setObjectName(name);
        return object;
    }
    template <class Widget = QPushButton> Widget* child(const QString& name) const
    {
        return m_host->findChild<Widget*>(name);
    }

    std::unique_ptr<ZEFUIWidget> m_host;

private Q_SLOTS:
    void clickCallsTheDelegateWithTheContext();
    void valuesComeInParameterOrder();
    void valueLinesAreWritten();
    void valuesAreDataInLines();
    void namelessWidget();
    void missingMethodIsReported();
    void threePiecesAreSkipped();
    void missingWidgetOrPropertyAbandons_data();
    void missingWidgetOrPropertyAbandons();
    void upToNineValues();
    void theFirstPropertyIsOneToo();
    void tenValuesDoNothing();
    void overloads();
    void invokableMethods();
    void nullSenderAndNoDelegate();
    void directCallOfTheSlotDoesNothing();
    void delegateMayDieFirst();
    void afterForgettingTheWidgetNothingIsWired();
    void afterForgettingTheWidgetClicksGoOn();
    void hiddenTextsAreNotShown_data();
    void hiddenTextsAreNotShown();
    void delegateInAnotherThread();
    void emptyWidgetNameMeansNamelessWidgets();
    void findMethod();
    void closeWidgetClosesTheHost();
    void connectWidgetTreeConnectsAllClicks();
    void disconnectedWidgetsDoNotDispatch();
    void formDestroyedConnectionIsRefused();
    void directConnections();
    void breakingLeavesDirectConnections();
    void formLoadedLaterHasNoDirectConnections();
    void aWidgetNamedDeleteLaterDeletesTheDelegate();
    void connectSlotsByName();
    void connectSlotsByNameIgnoresInheritedSlots();
    void connectSlotsByNameTriesTheNextCandidate();
    void connectSlotsByNamePassesOverTheLastDefault();
    void connectSlotsByNameWithNulls();
    void reloadWiresChildHostsToo();
    void delegateMayReloadTheFormFromAClick();
};

void TestZEFUIElementDispatch::clickCallsTheDelegateWithTheContext()
{
    Delegate delegate;
    int deletions = 0;
    auto* context = new CountingContext(&deletions);
    element()->setContext(context);
    element()->setDelegate(&delegate);
    QTest::mouseClick(child(u"okButton"_s), Qt::LeftButton);
    QCOMPARE(calls, QStringList(u"ok "_s + addressOf(context)));
    element()->setContext(nullptr);
    delete context;
    child(u"okButton"_s)->click();
    QCOMPARE(calls.last(), u"ok 0"_s);
}

void TestZEFUIElementDispatch::valuesComeInParameterOrder()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    child<QCheckBox>(u"agree"_s)->click();
    // of two widgets of that name the last one found wins
    QCOMPARE(calls, QStringList(u"agree second true"_s));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::valueLinesAreWritten()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    child<QCheckBox>(u"agree"_s)->click();
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: got property from nameEdit.text=first"_s,
                          u"debug: got property from nameEdit.text=second"_s,
                          u"debug: got property from agree.checked=true"_s}));
}

void TestZEFUIElementDispatch::valuesAreDataInLines()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    const QString text = u"100%s%n%1%3 %{x} <b>"_s;
    for (QLineEdit* edit : m_host->findChildren<QLineEdit*>(u"nameEdit"_s))
        edit->setText(text);
    TestLog::takeAll();
    child<QCheckBox>(u"agree"_s)->click();
    QCOMPARE(TestLog::takeAll().at(1), u"debug: got property from nameEdit.text="_s + text);
    QCOMPARE(calls, QStringList(u"agree "_s + text + u" true"_s));

    const auto stranger = sender(u"%s%n"_s);
    element()->dispatch(stranger.get(), "%d");
    QCOMPARE(TestLog::takeAll(), QStringList(u"debug: Could not find a method %s%n_%d on delegate"_s));
}

void TestZEFUIElementDispatch::namelessWidget()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    QPushButton* nameless = nullptr;
    for (QPushButton* button : m_host->findChildren<QPushButton*>()) {
        if (button->objectName().isEmpty())
            nameless = button;
    }
    QVERIFY(nameless);
    nameless->click();
    QCOMPARE(calls, QStringList(u"nameless"_s));
}

void TestZEFUIElementDispatch::missingMethodIsReported()
{
    QObject delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    child(u"okButton"_s)->click();
    QCOMPARE(TestLog::takeAll(),
             QStringList(u"debug: Could not find a method okButton_clicked on delegate"_s));
}

void TestZEFUIElementDispatch::threePiecesAreSkipped()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    element()->dispatch(sender(u"threePieces"_s).get(), "clicked");
    QCOMPARE(calls, QStringList());
    const QStringList lines = TestLog::takeAll();
    // Only Qt speaks: the library looked up nothing and reports nothing.
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.first().startsWith(
        u"warning: QMetaObject::invokeMethod: No such method Delegate::threePieces_clicked"));
}

void TestZEFUIElementDispatch::missingWidgetOrPropertyAbandons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("line");
    QTest::newRow("no widget") << u"missingWidget"_s
                               << u"debug: Could not find a widget nobody with property text"_s;
    QTest::newRow("no property") << u"missingProperty"_s
                                 << u"debug: Could not find a widget okButton with property colour"_s;
}

void TestZEFUIElementDispatch::missingWidgetOrPropertyAbandons()
{
    QFETCH(QString, name);
    QFETCH(QString, line);
    Delegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    element()->dispatch(sender(name).get(), "clicked");
    QCOMPARE(calls, QStringList());
    QCOMPARE(TestLog::takeAll(), QStringList(line));
}

void TestZEFUIElementDispatch::upToNineValues()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    child<QSpinBox>(u"count"_s)->setValue(7);
    TestLog::takeAll();
    element()->dispatch(sender(u"one"_s).get(), "clicked");
    element()->dispatch(sender(u"nine"_s).get(), "clicked");
    QCOMPARE(calls, QStringList({u"OK"_s, u"OKAgreefalse7099second32767Close"_s}));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::theFirstPropertyIsOneToo()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->dispatch(sender(u"objectName"_s).get(), "clicked");
    QCOMPARE(calls, QStringList(u"okButton"_s));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::tenValuesDoNothing()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    element()->dispatch(sender(u"ten"_s).get(), "clicked");
    QCOMPARE(calls, QStringList());
    for (const QString& line : TestLog::takeAll())
        QVERIFY2(line.startsWith(u"debug: got property from "), qPrintable(line));
}

void TestZEFUIElementDispatch::overloads()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->dispatch(sender(u"overloaded"_s).get(), "clicked");
    QCOMPARE(calls, QStringList(u"one OK"_s));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::invokableMethods()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->dispatch(sender(u"invokable"_s).get(), "clicked");
    QCOMPARE(calls, QStringList(u"invokable"_s));
}

void TestZEFUIElementDispatch::nullSenderAndNoDelegate()
{
    TestLog::takeAll();
    element()->dispatch(child(u"okButton"_s), "clicked");
    Delegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    element()->dispatch(nullptr, "clicked");
    QCOMPARE(TestLog::takeAll(), QStringList());
    QCOMPARE(calls, QStringList());
}

void TestZEFUIElementDispatch::directCallOfTheSlotDoesNothing()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    m_host->clicked(true);
    QCOMPARE(TestLog::takeAll(), QStringList());
    QCOMPARE(calls, QStringList());
}

void TestZEFUIElementDispatch::delegateMayDieFirst()
{
    auto delegate = std::make_unique<Delegate>();
    element()->setDelegate(delegate.get());
    delegate.reset();
    TestLog::takeAll();
    child(u"okButton"_s)->click();
    QCOMPARE(element()->findMethod(u"okButton_clicked"_s), -1);
    Delegate next;
    element()->setDelegate(&next);
    child(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList(u"ok 0"_s));
}

void TestZEFUIElementDispatch::afterForgettingTheWidgetNothingIsWired()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->setClosing(false);
    TestLog::takeAll();
    element()->makeOrBreakConnections(true);
    element()->connectWidgetTree(true, m_host.get());
    element()->connectSlotsByName(&delegate);
    element()->setFormPath(u"labels"_s);
    QCOMPARE(TestLog::takeAll(), QStringList());
    QCOMPARE(calls, QStringList());
}

void TestZEFUIElementDispatch::afterForgettingTheWidgetClicksGoOn()
{
    // The form is still on the screen; its clicks are dispatched, but no widget is found any more.
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->setClosing(false);
    TestLog::takeAll();
    m_host->findChild<QAbstractButton*>(u"okButton"_s)->click();
    QCOMPARE(std::exchange(calls, {}), QStringList(u"ok 0"_s));
    m_host->findChild<QAbstractButton*>(u"agree"_s)->click();
    m_host->findChild<QAbstractButton*>(u"under_score"_s)->click();
    QCOMPARE(TestLog::takeAll(),
             QStringList({u"debug: Could not find a widget nameEdit with property text"_s,
                          u"debug: Could not find a method under_score_clicked on delegate"_s}));
    QCOMPARE(calls, QStringList());
}

void TestZEFUIElementDispatch::hiddenTextsAreNotShown_data()
{
    QTest::addColumn<QLineEdit::EchoMode>("mode");
    QTest::addColumn<bool>("shown");
    QTest::newRow("normal") << QLineEdit::Normal << true;
    QTest::newRow("password") << QLineEdit::Password << false;
    QTest::newRow("no echo") << QLineEdit::NoEcho << false;
    QTest::newRow("password, echoed while it is typed") << QLineEdit::PasswordEchoOnEdit << false;
}

void TestZEFUIElementDispatch::hiddenTextsAreNotShown()
{
    QFETCH(const QLineEdit::EchoMode, mode);
    QFETCH(const bool, shown);
    Delegate delegate;
    element()->setDelegate(&delegate);
    for (auto* edit : m_host->findChildren<QLineEdit*>(u"nameEdit"_s)) {
        edit->setText(u"secret"_s);
        edit->setEchoMode(mode);
    }
    TestLog::takeAll();
    child<QCheckBox>(u"agree"_s)->click();
    const QString line = u"debug: got property from nameEdit.text="_s + (shown ? u"secret"_s : u"********"_s);
    QCOMPARE(TestLog::takeAll(), QStringList({line, line, u"debug: got property from agree.checked=true"_s}));
    QCOMPARE(calls, QStringList(u"agree secret true"_s)); // the delegate gets it all the same
}

void TestZEFUIElementDispatch::delegateInAnotherThread()
{
    QThread thread;
    auto* delegate = new Delegate;
    delegate->moveToThread(&thread);
    thread.start();
    element()->setDelegate(delegate);
    child(u"okButton"_s)->click();
    // a queued call; the thread runs it before it ends
    QMetaObject::invokeMethod(
        delegate, [] {}, Qt::BlockingQueuedConnection);
    QCOMPARE(calls, QStringList(u"ok 0"_s));
    element()->setDelegate(nullptr);
    delegate->deleteLater();
    thread.quit();
    QVERIFY(thread.wait());
}

void TestZEFUIElementDispatch::emptyWidgetNameMeansNamelessWidgets()
{
    // A parameter "_text" asks for the text of widgets without a name, not of all widgets.
    m_host = std::make_unique<ZEFUIWidget>(u"labels"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    auto* nameless = new QLabel(u"nameless"_s, m_host.get());
    auto* named = new QLabel(u"named"_s, m_host.get());
    named->setObjectName(u"named"_s);
    QCOMPARE(element()->childProperty(QString(), u"text"_s), QVariant(u"nameless"_s));
    QCOMPARE(element()->childProperty(u""_s, u"text"_s), QVariant(nameless->text()));
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->dispatch(sender(u"askNameless"_s).get(), "clicked");
    QCOMPARE(calls, QStringList(u"nameless"_s));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::findMethod()
{
    QCOMPARE(element()->findMethod(u"okButton_clicked"_s), -1);
    Delegate delegate;
    element()->setDelegate(&delegate);
    const QMetaObject* meta = delegate.metaObject();
    const int first = meta->indexOfMethod("overloaded_clicked(ZEFPipeFacilityInvocationContext*,QVariant)");
    QVERIFY(first > 0);
    QCOMPARE(element()->findMethod(u"overloaded_clicked"_s), first);
    QCOMPARE(element()->findMethod(u"deleteLater"_s), meta->indexOfMethod("deleteLater()"));
    QCOMPARE(element()->findMethod(u"OkButton_clicked"_s), -1);
    QCOMPARE(element()->findMethod(u"okButton_clicke"_s), -1);
    QCOMPARE(element()->findMethod(QString()), -1);
}

void TestZEFUIElementDispatch::closeWidgetClosesTheHost()
{
    QSignalSpy closed(m_host.get(), &ZEFUIWidget::respondClosed);
    m_host->show();
    child(u"close"_s)->click();
    QCOMPARE(closed.count(), 1);
    QVERIFY(element()->isClosing());
    // the click of "close" is dispatched too, to a delegate that is not there
    m_host.release()->element()->destroy();
}

void TestZEFUIElementDispatch::connectWidgetTreeConnectsAllClicks()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    QPushButton late(m_host.get());
    late.setObjectName(u"okButton"_s);
    late.click();
    QCOMPARE(calls, QStringList());
    // every widget below the host, whatever the root: the button's clicks now arrive, the others' twice
    element()->connectWidgetTree(true, nullptr);
    late.click();
    QCOMPARE(calls, QStringList(u"ok 0"_s));
    child<QWidget>(u"namesForm"_s)->findChild<QPushButton*>(u"okButton"_s)->click();
    QCOMPARE(calls.size(), 3);
}

void TestZEFUIElementDispatch::disconnectedWidgetsDoNotDispatch()
{
    Delegate delegate;
    element()->setDelegate(&delegate);
    element()->connectWidgetTree(false, nullptr);
    child(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList());
    m_host->show();
    child(u"close"_s)->click();
    QVERIFY(!element()->isClosing());
}

void TestZEFUIElementDispatch::formDestroyedConnectionIsRefused()
{
    auto* form = child<QWidget>(u"namesForm"_s);
    TestLog::takeAll();
    element()->connectWidgetTree(true, form);
    QCOMPARE(TestLog::take(u"warning: "_s).first(),
             u"warning: QObject::connect: No such slot ZEFUIWidget::rootDestroyed()"_s);
    element()->connectWidgetTree(false, form);
    QCOMPARE(TestLog::take(u"warning: "_s).first(),
             u"warning: QObject::disconnect: No such slot ZEFUIWidget::rootDestroyed()"_s);
}

void TestZEFUIElementDispatch::directConnections()
{
    DirectDelegate delegate;
    QSignalSpy agree(&delegate, &DirectDelegate::agree);
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    child(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList(u"okButton false"_s));
    child<QCheckBox>(u"agree"_s)->click();
    QCOMPARE(agree.count(), 1);
    QCOMPARE(agree.first().first().toBool(), true);
    // a group box has clicked(bool), but the delegate's firstGroup() is a plain invokable method
    Q_EMIT child<QGroupBox>(u"firstGroup"_s)->clicked(true);
    QCOMPARE(calls.size(), 1);
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::breakingLeavesDirectConnections()
{
    DirectDelegate delegate;
    element()->setDelegate(&delegate);
    TestLog::takeAll();
    element()->setDelegate(nullptr);
    const QStringList refused = TestLog::take(u"warning: "_s);
    QCOMPARE(
        refused,
        QStringList(
            {u"warning: QObject::disconnect: Use the SIGNAL macro to unbind QPushButton::clicked(bool)"_s,
             u"warning: QObject::disconnect: Use the SIGNAL macro to unbind QCheckBox::clicked(bool)"_s,
             u"warning: QObject::disconnect: Use the SIGNAL macro to unbind QPushButton::clicked(bool)"_s}));
    child(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList(u"okButton false"_s));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::formLoadedLaterHasNoDirectConnections()
{
    DirectDelegate delegate;
    ZEFUIWidget late;
    late.element()->setDelegate(&delegate);
    late.element()->setFormPath(u"names"_s);
    late.findChild<QPushButton*>(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList());
    QVERIFY(TestLog::takeAll().contains(u"debug: Could not find a method okButton_clicked on delegate"_s));
}

void TestZEFUIElementDispatch::aWidgetNamedDeleteLaterDeletesTheDelegate()
{
    const QPointer<Delegate> delegate(new Delegate);
    element()->setDelegate(delegate);
    child(u"deleteLater"_s)->click();
    TestLog::takeAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!delegate);
    child(u"okButton"_s)->click();
    element()->setDelegate(nullptr);
    QCOMPARE(calls, QStringList());
}

void TestZEFUIElementDispatch::connectSlotsByName()
{
    NamedSlots receiver;
    TestLog::takeAll();
    element()->connectSlotsByName(&receiver);
    QCOMPARE(
        TestLog::takeAll(),
        QStringList(
            {u"debug: QMetaObject::connectSlotsByName: No matching signal for on_agree_setIconSize(QSize)"_s,
             u"debug: QMetaObject::connectSlotsByName: No matching signal for on_nobody_clicked()"_s,
             u"debug: QMetaObject::connectSlotsByName: No matching signal for on_okButton_noSuchSignal(int)"_s}));
    child(u"okButton"_s)->click();
    const QList<QLineEdit*> edits = m_host->findChildren<QLineEdit*>(u"nameEdit"_s);
    edits.at(0)->setText(u"a"_s);
    edits.at(1)->setText(u"b"_s); // only the first object of that name
    child<QCheckBox>(u"agree"_s)->click();
    child<QSpinBox>(u"count"_s)->setValue(4);
    QCOMPARE(calls, QStringList({u"on ok"_s, u"text a"_s, u"on"_s, u"4"_s}));
    child<QCheckBox>(u"agree"_s)->setIconSize(QSize(3, 3));
    QCOMPARE(calls.size(), 4);
}

void TestZEFUIElementDispatch::connectSlotsByNameIgnoresInheritedSlots()
{
    DerivedSlots receiver;
    TestLog::takeAll();
    element()->connectSlotsByName(&receiver);
    QCOMPARE(TestLog::takeAll(), QStringList());
    child(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList(u"pressed"_s));
}

void TestZEFUIElementDispatch::connectSlotsByNamePassesOverTheLastDefault()
{
    LastSlotHasADefault receiver;
    element()->connectSlotsByName(&receiver);
    child(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList(u"off"_s));
    TestLog::takeAll();
}

void TestZEFUIElementDispatch::connectSlotsByNameWithNulls()
{
    TestLog::takeAll();
    element()->connectSlotsByName(nullptr);
    QCOMPARE(TestLog::takeAll(), QStringList());
    // the host itself is no candidate
    class HostSlots : public NamedSlots {
    } receiver;
    m_host->setObjectName(u"nobody"_s);
    element()->connectSlotsByName(&receiver);
    QVERIFY(TestLog::takeAll().contains(
        u"debug: QMetaObject::connectSlotsByName: No matching signal for on_nobody_clicked()"_s));
}

void TestZEFUIElementDispatch::connectSlotsByNameTriesTheNextCandidate()
{
    ZEFUIWidget host;
    auto* under = new QPushButton(&host);
    under->setObjectName(u"under"_s);
    auto* underScore = new QPushButton(&host);
    underScore->setObjectName(u"under_score"_s);
    UnderscoreSlots receiver;
    TestLog::takeAll();
    host.element()->connectSlotsByName(&receiver);
    QCOMPARE(TestLog::takeAll(), QStringList());
    // "under" fits the slot's name too, but has no signal score_clicked()
    under->click();
    QCOMPARE(calls, QStringList());
    underScore->click();
    QCOMPARE(calls, QStringList(u"under_score"_s));
}

void TestZEFUIElementDispatch::reloadWiresChildHostsToo()
{
    ZEFUIWidget parent;
    Delegate delegate;
    parent.element()->setDelegate(&delegate);
    auto* inner = new ZEFUIWidget(u"names"_s, u"en"_s, &parent, Qt::Window, nullptr);
    inner->findChild<QPushButton*>(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList());
    // every widget below the host is wired, those of a child host included
    parent.element()->setFormPath(u"labels"_s);
    inner->findChild<QPushButton*>(u"okButton"_s)->click();
    QCOMPARE(calls, QStringList(u"ok 0"_s));
}

class ReloadingDelegate : public QObject {
    Q_OBJECT

public:
    ZEFUIElement* element = nullptr;

public Q_SLOTS:
    void okButton_clicked(ZEFPipeFacilityInvocationContext*) { element->setFormPath(u"labels"_s); }
};

void TestZEFUIElementDispatch::delegateMayReloadTheFormFromAClick()
{
    ReloadingDelegate delegate;
    delegate.element = element();
    element()->setDelegate(&delegate);
    const QPointer<QPushButton> button(child(u"okButton"_s));
    m_host->show();
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!button);
    QVERIFY(element()->loaded());
    QVERIFY(child<QLabel>(u"one"_s));
}

ZEF_TEST_MAIN(TestZEFUIElementDispatch)
#include "test_zefuielement_dispatch.moc"
