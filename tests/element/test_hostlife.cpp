// When a host is deleted: at once, or when the work that holds it has returned to the event loop. Slots that
// connectSlotsByName() connected have a test of their own.

#include <ElementTest.h>

#include <ZEFCommandLinkButton.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <functional>

//! Runs what the test wants in the click of "it".
class Delegate : public QObject {
    Q_OBJECT

public:
    std::function<void(ZEFPipeFacilityInvocationContext*)> reaction;
    int editingsFinished = 0;

public Q_SLOTS:
    void it_clicked(ZEFPipeFacilityInvocationContext* context) { reaction(context); }
    void on_edit_editingFinished() { ++editingsFinished; }
};

class TestHostLife : public ElementTest {
    Q_OBJECT

protected:
    void prepare() override;
    void tidyUp() override;

private Q_SLOTS:
    void closeDeletesAtOnceInAClick_data();
    void closeDeletesAtOnceInAClick();
    void closeDeletesAtOnceInTheClickOfADefaultButton_data();
    void closeDeletesAtOnceInTheClickOfADefaultButton();
    void closeDeletesAtOnceWhateverClosedBefore_data();
    void closeDeletesAtOnceWhateverClosedBefore();
    void delegateMayRunAnEventLoop_data();
    void delegateMayRunAnEventLoop();
    void closeInTheEventLoopOfADelegateWaits();
    void receiverOfTheAnswerMayRunAnEventLoop_data();
    void receiverOfTheAnswerMayRunAnEventLoop();
    void receiverOfTheAnswerMayAskForTheEnd_data();
    void receiverOfTheAnswerMayAskForTheEnd();
    void receiverOfClosingMayAskForTheEnd_data();
    void receiverOfClosingMayAskForTheEnd();
    void hostEventsHoldTheHost_data();
    void hostEventsHoldTheHost();
    void childKeepsTheParentThatWouldDeleteIt_data();
    void childKeepsTheParentThatWouldDeleteIt();
    void endThatCameTooEarlyWaitsAgain();
    void destroyWhileACellHasTheFocus_data();
    void destroyWhileACellHasTheFocus();

private:
    template <class Host> Host* open(Host* host);
    QWidget* openForm(bool dialog);
    ZEFUIElement* element() const { return ZEFUIElement::elementFromQObject(m_host); }
    template <class Widget> Widget* addToForm(const QString& name);
    //! Runs an event loop for as long as it takes to destroy a form that is closed now.
    static void outliveAClosedForm();
    void closeBy(const QString& way);

    QPointer<QWidget> m_host;
    Delegate m_delegate;
    int m_answers = 0;
    int m_contexts = 0;
};

void TestHostLife::prepare()
{
    ElementTest::prepare();
    m_delegate.reaction = {};
    m_delegate.editingsFinished = 0;
    m_answers = 0;
    m_contexts = 0;
    TestLog::allow(QRegularExpression(u"warning: QObject::disconnect: Use the SIGNAL macro .*"_s));
    TestLog::allow(QRegularExpression(u"debug: Could not find a method .*"_s));
    TestLog::allow(QRegularExpression(u"debug: QMetaObject::connectSlotsByName: No matching signal .*"_s));
}

void TestHostLife::tidyUp()
{
    delete m_host;
}

template <class Host> Host* TestHostLife::open(Host* host)
{
    connect(host, &Host::respondClosed, this, [this] { ++m_answers; });
    m_host = host;
    new QVBoxLayout(host);
    return host;
}

QWidget* TestHostLife::openForm(bool dialog)
{
    auto* context = new CountingContext(&m_contexts);
    if (dialog)
        return open(new ZEFUIDialog(nullptr, Qt::Dialog, context));
    return open(new ZEFUIWidget(nullptr, Qt::Window, context));
}

template <class Widget> Widget* TestHostLife::addToForm(const QString& name)
{
    auto* widget = new Widget(m_host);
    widget->setObjectName(name);
    widget->setMinimumSize(60, 30);
    m_host->layout()->addWidget(widget);
    return widget;
}

void TestHostLife::outliveAClosedForm()
{
    auto* other = new ZEFUIWidget(nullptr, Qt::Window);
    QEventLoop loop;
    connect(other, &QObject::destroyed, &loop, &QEventLoop::quit);
    other->close();
    loop.exec();
}

//! Closes the form in the way that a user or a service does.
void TestHostLife::closeBy(const QString& way)
{
    if (way == u"close")
        m_host->close();
    else if (way == u"window system")
        m_host->windowHandle()->close();
    else if (way == u"escape")
        QTest::keyClick(m_host.data(), Qt::Key_Escape);
    else if (way == u"element")
        element()->close();
    else if (way == u"widget named close")
        m_host->findChild<QPushButton*>(u"close"_s)->click();
}

void TestHostLife::closeDeletesAtOnceInAClick_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("dialog");
    for (const bool dialog : {false, true}) {
        const char* host = dialog ? "dialog" : "widget";
        for (const QString& kind : {u"push button"_s, u"check box"_s, u"command link"_s}) {
            for (const QString& way : {u"mouse"_s, u"mouse from an event loop"_s, u"Space"_s,
                                       u"animateClick"_s, u"mouse that moves the focus"_s})
                QTest::addRow("%s, %s, %s", host, qPrintable(kind), qPrintable(way)) << kind << way << dialog;
        }
    }
}

void TestHostLife::closeDeletesAtOnceInAClick()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, way);
    QFETCH(const bool, dialog);
    if (kind == u"command link" && way == u"animateClick")
        return; // emits the base class's clicked() alone
    openForm(dialog);
    auto* edit = addToForm<QLineEdit>(u"edit"_s);
    QAbstractButton* it = nullptr;
    if (kind == u"push button")
        it = addToForm<QPushButton>(u"it"_s);
    else if (kind == u"check box")
        it = addToForm<QCheckBox>(u"it"_s);
    else
        it = addToForm<ZEFCommandLinkButton>(u"it"_s);
    it->setText(u"text"_s);
    const QPoint onIt(10, it->sizeHint().height() / 2);
    element()->connectWidgetTree(true, it);
    element()->setDelegate(&m_delegate);
    element()->connectSlotsByName(&m_delegate);
    bool goneAtOnce = false;
    m_delegate.reaction = [&](ZEFPipeFacilityInvocationContext*) {
        element()->close();
        goneAtOnce = !m_host;
    };
    m_host->show();
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host));
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    QTest::keyClick(edit, Qt::Key_A);
    if (way == u"mouse") {
        QTest::mouseClick(it, Qt::LeftButton, Qt::NoModifier, onIt);
    } else if (way == u"mouse from an event loop") {
        QEventLoop loop;
        QTimer::singleShot(0, it, [&] {
            QTest::mouseClick(it, Qt::LeftButton, Qt::NoModifier, onIt);
            loop.quit();
        });
        loop.exec();
    } else if (way == u"Space") {
        QTest::keyClick(it, Qt::Key_Space);
    } else if (way == u"animateClick") {
        it->animateClick();
    } else {
        it->setFocusPolicy(Qt::StrongFocus);
        // press and release in one turn of the event loop
        QWindow* window = m_host->windowHandle();
        const QPoint position = it->mapTo(m_host.data(), onIt);
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, position);
        QCOMPARE(m_delegate.editingsFinished, 1);
    }
    QTRY_VERIFY(!m_host);
    QVERIFY(goneAtOnce);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::closeDeletesAtOnceInTheClickOfADefaultButton_data()
{
    QTest::addColumn<bool>("link");
    QTest::addColumn<int>("key");
    QTest::newRow("push button, Return") << false << int(Qt::Key_Return);
    QTest::newRow("push button, Enter") << false << int(Qt::Key_Enter);
    QTest::newRow("command link, Return") << true << int(Qt::Key_Return);
    QTest::newRow("command link, Enter") << true << int(Qt::Key_Enter);
}

void TestHostLife::closeDeletesAtOnceInTheClickOfADefaultButton()
{
    QFETCH(const bool, link);
    QFETCH(const int, key);
    openForm(true);
    QPushButton* it = link ? addToForm<ZEFCommandLinkButton>(u"it"_s) : addToForm<QPushButton>(u"it"_s);
    it->setDefault(true);
    element()->connectWidgetTree(true, it);
    element()->setDelegate(&m_delegate);
    bool goneAtOnce = false;
    m_delegate.reaction = [&](ZEFPipeFacilityInvocationContext*) {
        element()->close();
        goneAtOnce = !m_host;
    };
    m_host->show();
    QTest::keyPress(m_host.data(), static_cast<Qt::Key>(key));
    QVERIFY(goneAtOnce);
    QCOMPARE(m_answers, 1);
}

void TestHostLife::closeDeletesAtOnceWhateverClosedBefore_data()
{
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("answers");
    for (const bool dialog : {false, true}) {
        const char* host = dialog ? "dialog" : "widget";
        for (const QString& before : {u"setClosing(true)"_s, u"close"_s, u"window system"_s, u"hide"_s,
                                      u"accept"_s, u"reject"_s, u"escape"_s}) {
            if ((before == u"accept" || before == u"reject" || before == u"escape") && !dialog)
                continue;
            // Who marks the element closing keeps the answer for himself.
            QTest::addRow("%s, %s", host, qPrintable(before))
                << dialog << before << (before == u"setClosing(true)" ? 0 : 1);
        }
    }
}

void TestHostLife::closeDeletesAtOnceWhateverClosedBefore()
{
    QFETCH(const bool, dialog);
    QFETCH(const QString, before);
    QFETCH(const int, answers);
    openForm(dialog);
    m_host->show();
    if (before == u"setClosing(true)")
        element()->setClosing(true);
    else if (before == u"accept" || before == u"reject")
        QMetaObject::invokeMethod(m_host, before.toLatin1().constData());
    else if (before == u"hide")
        m_host->hide();
    else
        closeBy(before);
    QVERIFY(m_host);
    element()->close();
    QVERIFY(!m_host);
    QCOMPARE(m_answers, answers);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::delegateMayRunAnEventLoop_data()
{
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<QString>("way");
    for (const bool dialog : {false, true}) {
        for (const QString& way :
             {u"close"_s, u"window system"_s, u"escape"_s, u"element"_s, u"widget named close"_s})
            QTest::addRow("%s, %s", dialog ? "dialog" : "widget", qPrintable(way)) << dialog << way;
    }
}

void TestHostLife::delegateMayRunAnEventLoop()
{
    QFETCH(const bool, dialog);
    QFETCH(const QString, way);
    openForm(dialog);
    auto* it = addToForm<QPushButton>(u"it"_s);
    addToForm<QPushButton>(u"close"_s);
    element()->connectWidgetTree(true, nullptr);
    element()->setDelegate(&m_delegate);
    m_delegate.reaction = [&](ZEFPipeFacilityInvocationContext* context) {
        QVERIFY(context);
        QTimer::singleShot(0, this, [&] { closeBy(way); });
        outliveAClosedForm();
        QCOMPARE(m_answers, 1);
        QVERIFY(!m_host->isVisible());
        QCOMPARE(m_contexts, 0);
        QCOMPARE(element()->context(), context);
    };
    m_host->show();
    it->click();
    QVERIFY(m_host); // the rest of the click may still belong to an outer event loop
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::closeInTheEventLoopOfADelegateWaits()
{
    // The delegate of one form opens another one and waits for it. That one goes at once.
    openForm(true);
    auto* it = addToForm<QPushButton>(u"it"_s);
    element()->connectWidgetTree(true, nullptr);
    element()->setDelegate(&m_delegate);
    m_delegate.reaction = [&](ZEFPipeFacilityInvocationContext*) {
        const QPointer<ZEFUIDialog> child(new ZEFUIDialog(u"labels"_s, u"en"_s, m_host, Qt::Dialog, nullptr));
        QTimer::singleShot(0, this, [&] {
            child->element()->close();
            QVERIFY(!child);
        });
        QCOMPARE(child->exec(), int(QDialog::Rejected));
        QVERIFY(!child);
        element()->close();
        QVERIFY(!m_host);
    };
    m_host->show();
    it->click();
    QVERIFY(!m_host);
    QCOMPARE(m_answers, 1);
}

void TestHostLife::receiverOfTheAnswerMayRunAnEventLoop_data()
{
    delegateMayRunAnEventLoop_data();
}

void TestHostLife::receiverOfTheAnswerMayRunAnEventLoop()
{
    QFETCH(const bool, dialog);
    QFETCH(const QString, way);
    QWidget* host = openForm(dialog);
    addToForm<QPushButton>(u"close"_s);
    element()->connectWidgetTree(true, nullptr);
    int outlived = 0;
    const auto receive = [&](ZEFPipeFacilityInvocationContext* context, int) {
        outliveAClosedForm();
        ++outlived;
        QVERIFY(m_host);
        QCOMPARE(m_contexts, 0);
        QCOMPARE(element()->context(), context);
    };
    if (dialog)
        connect(static_cast<ZEFUIDialog*>(host), &ZEFUIDialog::respondClosed, this, receive);
    else
        connect(static_cast<ZEFUIWidget*>(host), &ZEFUIWidget::respondClosed, this, receive);
    m_host->show();
    closeBy(way);
    QTRY_VERIFY(!m_host);
    QCOMPARE(outlived, 1);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::receiverOfTheAnswerMayAskForTheEnd_data()
{
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("destroy");
    for (const bool dialog : {false, true}) {
        for (const QString& way : {u"close"_s, u"window system"_s, u"escape"_s, u"element"_s}) {
            for (const bool destroy : {false, true})
                QTest::addRow("%s, %s, %s", dialog ? "dialog" : "widget", qPrintable(way),
                              destroy ? "destroy" : "close")
                    << dialog << way << destroy;
        }
    }
}

void TestHostLife::receiverOfTheAnswerMayAskForTheEnd()
{
    QFETCH(const bool, dialog);
    QFETCH(const QString, way);
    QFETCH(const bool, destroy);
    QWidget* host = openForm(dialog);
    const auto receive = [&] {
        destroy ? element()->destroy() : element()->close();
        QVERIFY(m_host);
        QCOMPARE(m_contexts, 0);
    };
    if (dialog)
        connect(static_cast<ZEFUIDialog*>(host), &ZEFUIDialog::respondClosed, this, receive);
    else
        connect(static_cast<ZEFUIWidget*>(host), &ZEFUIWidget::respondClosed, this, receive);
    m_host->show();
    closeBy(way);
    // Only these are sure that Qt has nothing more to do with the host.
    QCOMPARE(!m_host, way == u"element" || (way == u"escape" && !dialog));
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::receiverOfClosingMayAskForTheEnd_data()
{
    receiverOfTheAnswerMayAskForTheEnd_data();
}

void TestHostLife::receiverOfClosingMayAskForTheEnd()
{
    QFETCH(const bool, dialog);
    QFETCH(const QString, way);
    QFETCH(const bool, destroy);
    openForm(dialog);
    connect(element(), &ZEFUIElement::closing, this,
            [&] { destroy ? element()->destroy() : element()->close(); });
    m_host->show();
    closeBy(way);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1); // the end must not come before the answer
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::hostEventsHoldTheHost_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char* signal :
         {"2dialog_show()", "2dialog_hide()", "2accepted()", "2rejected()", "2finished(int)"})
        QTest::addRow("%s", signal + 1) << QByteArray(signal);
}

void TestHostLife::hostEventsHoldTheHost()
{
    QFETCH(const QByteArray, signal);
    auto* host = static_cast<ZEFUIDialog*>(openForm(true));
    bool reacted = false;
    const auto react = [&] {
        if (std::exchange(reacted, true))
            return;
        element()->close();
        QCOMPARE(m_answers, 1);
        QVERIFY(m_host);
    };
    if (signal == "2dialog_show()")
        connect(host, &ZEFUIDialog::dialog_show, this, react);
    else if (signal == "2dialog_hide()")
        connect(host, &ZEFUIDialog::dialog_hide, this, react);
    else if (signal == "2accepted()")
        connect(host, &ZEFUIDialog::accepted, this, react);
    else if (signal == "2rejected()")
        connect(host, &ZEFUIDialog::rejected, this, react);
    else
        connect(host, &ZEFUIDialog::finished, this, react);
    host->show();
    signal == "2accepted()" ? host->accept() : host->reject();
    QVERIFY(reacted);
    QVERIFY(m_host);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::childKeepsTheParentThatWouldDeleteIt_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("child of the parent host") << u"host"_s;
    QTest::newRow("only a child element, which was added by hand") << u"by hand"_s;
    QTest::newRow("child element of a child element") << u"grandchild"_s;
}

void TestHostLife::childKeepsTheParentThatWouldDeleteIt()
{
    QFETCH(const QString, kind);
    openForm(false);
    int childContexts = 0;
    auto* context = new CountingContext(&childContexts);
    std::unique_ptr<ZEFUIWidget> between;
    QPointer<ZEFUIDialog> child;
    if (kind == u"host") {
        child = new ZEFUIDialog(u"labels"_s, u"en"_s, m_host, Qt::Dialog, context);
    } else {
        child = new ZEFUIDialog(u"labels"_s, u"en"_s, nullptr, Qt::Dialog, context);
        ZEFUIElement* owner = element();
        if (kind == u"grandchild") {
            between = std::make_unique<ZEFUIWidget>();
            owner->addChildElement(between->element());
            owner = between->element();
        }
        owner->addChildElement(child->element());
        child->element()->addChildElement(element()); // a ring
    }
    bool outlived = false;
    connect(child, &ZEFUIDialog::respondClosed, this, [&](ZEFPipeFacilityInvocationContext*, int) {
        element()->close();
        outliveAClosedForm();
        outlived = true;
        QCOMPARE(m_answers, 1);
        QVERIFY(m_host);
        QCOMPARE(childContexts, 0);
    });
    child->show();
    m_host->show();
    child->close();
    QVERIFY(outlived);
    QTRY_VERIFY(!m_host);
    QCOMPARE(childContexts, 1);
    delete child; // without its element nobody else will
}

void TestHostLife::endThatCameTooEarlyWaitsAgain()
{
    // A nested loop ends before it has come to the end that was asked for in it; then another work begins,
    // with a nested loop of its own.
    openForm(true);
    auto* dialog = static_cast<ZEFUIDialog*>(m_host.data());
    connect(dialog, &ZEFUIDialog::dialog_hide, this, [&] { element()->close(); });
    bool held = false;
    connect(dialog, &ZEFUIDialog::dialog_show, this, [&] {
        outliveAClosedForm();
        held = m_host;
    });
    QEventLoop outer;
    QTimer::singleShot(0, this, [&] {
        QEventLoop inner;
        QTimer::singleShot(0, &inner, [&] {
            QHideEvent hide;
            QCoreApplication::sendEvent(m_host, &hide);
            inner.quit();
        });
        inner.exec();
        if (m_host) {
            QShowEvent show;
            QCoreApplication::sendEvent(m_host, &show);
            QVERIFY(held);
        }
        outer.quit();
    });
    outer.exec();
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestHostLife::destroyWhileACellHasTheFocus_data()
{
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<QByteArray>("signal");
    for (const bool dialog : {false, true}) {
        for (const QByteArray& signal : {QByteArray("2editingFinished()"), QByteArray("2focusOut()")})
            QTest::addRow("%s, %s", dialog ? "dialog" : "widget", signal.constData() + 1) << dialog << signal;
    }
}

void TestHostLife::destroyWhileACellHasTheFocus()
{
    QFETCH(const bool, dialog);
    QFETCH(const QByteArray, signal);
    openForm(dialog);
    const QPointer<ZEFFormatEdit> edit(addToForm<ZEFFormatEdit>(u"edit"_s));
    edit->setFormat(u"{3}(\\d*)-{3}(\\d*)"_s);
    m_host->show();
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host));
    ZEFFormatCell* cell = edit->editor(0);
    cell->setFocus();
    QTRY_VERIFY(cell->hasFocus());
    QTest::keyClick(cell, Qt::Key_1);
    int rebuilt = 0;
    const auto rebuild = [&] {
        ++rebuilt;
        if (edit)
            edit->setFormat(u"{2}(\\d*)-{2}(\\d*)-{2}(\\d*)"_s);
    };
    if (signal == "2editingFinished()")
        connect(cell, &QLineEdit::editingFinished, this, rebuild);
    else
        connect(cell, &ZEFFormatCell::focusOut, this, rebuild);
    element()->destroy();
    QVERIFY(!m_host);
    QVERIFY(rebuilt > 0);
    QCOMPARE(m_contexts, 1);
}

ZEF_TEST_MAIN(TestHostLife)
#include "test_hostlife.moc"
