#include "ElementTest.h"

#include <ZEFFormatEdit.h>

#include <QtGui/QWindow>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

class TestZEFUIWidget : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void metaMembersStandInOrder();
    void formConstructor();
    void formlessConstructor();
    void parentHostGivesTheParentElement();
    void createReturnsALoadedHost();
    void createKeepsTheHostOfAMissingForm();
    void closeAnswersOnce();
    void closeIsFollowedByDestruction();
    void closeAnswersWithoutACloseEvent_data();
    void closeAnswersWithoutACloseEvent();
    void answerCarriesContextAndSelection();
    void escapeAnswersAndDeletesAtOnce();
    void escapeInAFormatEditGoesNoFurther();
    void escapeIsIgnored();
    void escapeAfterCloseAnswersOnce();
    void escapeTwiceAnswersOnce();
    void escapeOfAPopupAnswersOnce();
    void escapeAnswersForAnElementMarkedClosing();
    void otherKeysDoNotClose();
    void otherKeysGoOnToTheParent();
    void rootClosedCloses();
    void receiverMayDeleteTheHost_data();
    void receiverMayDeleteTheHost();
    void closingComesBeforeTheAnswer_data();
    void closingComesBeforeTheAnswer();
    void closingReceiverMayClose_data();
    void closingReceiverMayClose();
    void closingReceiverMayDeleteTheHost();
};

namespace {

std::unique_ptr<ZEFUIWidget> makeHost(ZEFPipeFacilityInvocationContext* context = nullptr)
{
    return std::make_unique<ZEFUIWidget>(u"names"_s, u"en"_s, nullptr, Qt::Window, context);
}

} // namespace

void TestZEFUIWidget::metaMembersStandInOrder()
{
    const QMetaObject& meta = ZEFUIWidget::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const bool signal = meta.method(i).methodType() == QMetaMethod::Signal;
        methods.append((signal ? u"signal "_s : u"slot "_s)
                       + QString::fromLatin1(meta.method(i).methodSignature() + ' '
                                             + meta.method(i).parameterNames().join(',')));
    }
    QCOMPARE(methods,
             QStringList({u"signal respondClosed(ZEFPipeFacilityInvocationContext*,int) context,selection"_s,
                          u"slot clicked(bool) checked"_s, u"slot clicked() "_s, u"slot rootClosed() "_s}));
}

void TestZEFUIWidget::formConstructor()
{
    int deletions = 0;
    auto* context = new CountingContext(&deletions);
    const auto host = makeHost(context);
    QCOMPARE(host->element()->widget(), host.get());
    QCOMPARE(host->element()->context(), context);
    QCOMPARE(host->element()->clientPID(), 0L);
    QCOMPARE(host->element()->locale(), u"en"_s);
    QVERIFY(host->element()->loaded());
    QVERIFY(host->windowFlags() & Qt::Window);
    QVERIFY(!host->element()->parent());
}

void TestZEFUIWidget::formlessConstructor()
{
    const ZEFUIWidget host;
    QVERIFY(host.element());
    QVERIFY(!host.element()->loaded());
    QVERIFY(!host.layout());
    QVERIFY(!host.element()->context());
    QCOMPARE(host.windowFlags(), QWidget().windowFlags());
}

void TestZEFUIWidget::parentHostGivesTheParentElement()
{
    ZEFUIWidget parent;
    QWidget plain;
    auto* child = new ZEFUIWidget(u"labels"_s, u"en"_s, &parent, Qt::Window, nullptr);
    const ZEFUIWidget orphan(&plain);
    QCOMPARE(parent.element()->childElementCount(), 1);
    QCOMPARE(parent.element()->childElement(0), child->element());
    // a widget inside a host is no host
    auto* inside = new QWidget(&parent);
    new ZEFUIWidget(inside);
    QCOMPARE(parent.element()->childElementCount(), 1);
}

void TestZEFUIWidget::createReturnsALoadedHost()
{
    const std::unique_ptr<ZEFUIWidget> host(ZEFUIWidget::create(u"labels"_s, u"de"_s, nullptr, Qt::Window));
    QVERIFY(host);
    QVERIFY(host->element()->loaded());
    QCOMPARE(host->element()->locale(), u"de"_s);
    QVERIFY(!host->element()->context());
}

void TestZEFUIWidget::createKeepsTheHostOfAMissingForm()
{
    const QWidgetList before = QApplication::topLevelWidgets();
    QVERIFY(!ZEFUIWidget::create(u"missing"_s, u"en"_s, nullptr, Qt::Window));
    TestLog::take(u"debug: Could not open file"_s);
    QPointer<ZEFUIWidget> kept;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!before.contains(widget))
            kept = qobject_cast<ZEFUIWidget*>(widget);
    }
    QVERIFY(kept);
    QVERIFY(!kept->isVisible());
    // an empty window appears at the first tick and lives until the user closes it
    QTRY_VERIFY(kept->isVisible());
    QSignalSpy answers(kept, &ZEFUIWidget::respondClosed);
    kept->close();
    QCOMPARE(answers.count(), 1);
    QTRY_VERIFY(!kept);
}

void TestZEFUIWidget::closeAnswersOnce()
{
    auto host = makeHost();
    QSignalSpy answers(host.get(), &ZEFUIWidget::respondClosed);
    host->show();
    QVERIFY(host->close());
    QVERIFY(host->element()->isClosing());
    QVERIFY(!host->isVisible());
    host->close();
    host->show();
    host->close();
    host->rootClosed();
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIWidget::closeIsFollowedByDestruction()
{
    int deletions = 0;
    const QPointer<ZEFUIWidget> host(makeHost(new CountingContext(&deletions)).release());
    host->show();
    host->close();
    QVERIFY(host);
    QCOMPARE(deletions, 0);
    QTRY_VERIFY(!host);
    QCOMPARE(deletions, 1);
}

void TestZEFUIWidget::closeAnswersWithoutACloseEvent_data()
{
    QTest::addColumn<bool>("formless");
    QTest::newRow("with a form") << false;
    QTest::newRow("without a form") << true;
}

void TestZEFUIWidget::closeAnswersWithoutACloseEvent()
{
    QFETCH(const bool, formless);
    class Silent : public ZEFUIWidget {
    public:
        using ZEFUIWidget::ZEFUIWidget;

    protected:
        void closeEvent(QCloseEvent*) override { }
    };
    const QPointer<ZEFUIWidget> host =
        formless ? new Silent : new Silent(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr);
    int answers = 0;
    connect(host, &ZEFUIWidget::respondClosed, this, [&] { ++answers; });
    host->element()->close();
    QCOMPARE(answers, 1);
    QTRY_VERIFY(!host);
    QCOMPARE(answers, 1);
}

void TestZEFUIWidget::answerCarriesContextAndSelection()
{
    int deletions = 0;
    auto* context = new CountingContext(&deletions);
    auto host = makeHost(context);
    QSignalSpy answers(host.get(), &ZEFUIWidget::respondClosed);
    host->element()->setCloseSelection(42);
    host->close();
    QCOMPARE(answers.first().at(0).value<ZEFPipeFacilityInvocationContext*>(), context);
    QCOMPARE(answers.first().at(1).toInt(), 42);
}

void TestZEFUIWidget::escapeAnswersAndDeletesAtOnce()
{
    int deletions = 0;
    int answered = 0;
    const QPointer<ZEFUIWidget> host(makeHost(new CountingContext(&deletions)).release());
    connect(host, &ZEFUIWidget::respondClosed, this, [&] {
        QCOMPARE(deletions, 0);
        QVERIFY(host->element()->isClosing());
        ++answered;
    });
    host->show();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(host, &escape);
    QVERIFY(!host); // before the event returned
    QCOMPARE(answered, 1);
    QCOMPARE(deletions, 1);
}

void TestZEFUIWidget::escapeInAFormatEditGoesNoFurther()
{
    QWidget parent;
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"labels"_s, u"en"_s, &parent, Qt::Widget, nullptr));
    auto* edit = new ZEFFormatEdit(host);
    edit->setFormat(u"{3}(\\d*)"_s);
    parent.show();
    const QPointer<ZEFFormatCell> cell(edit->editor(0));
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(cell, &escape);
    QVERIFY(!host);
    // The cell is still alive, so that Qt would go on to the parent of the host that is gone.
    QVERIFY(cell);
    QVERIFY(escape.isAccepted());
}

void TestZEFUIWidget::escapeIsIgnored()
{
    // as QWidget leaves it: whoever sent the key may offer it to somebody else
    const QPointer<ZEFUIWidget> host(makeHost().release());
    host->show();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(host, &escape);
    QVERIFY(!host);
    QVERIFY(!escape.isAccepted());
}

void TestZEFUIWidget::escapeAfterCloseAnswersOnce()
{
    int answered = 0;
    const QPointer<ZEFUIWidget> host(makeHost().release());
    connect(host, &ZEFUIWidget::respondClosed, this, [&] { ++answered; });
    host->show();
    host->close();
    QTest::keyClick(host.data(), Qt::Key_Escape);
    QVERIFY(!host);
    QCOMPARE(answered, 1);
}

void TestZEFUIWidget::escapeTwiceAnswersOnce()
{
    // The receiver sends a second Escape while the first is being answered.
    int answered = 0;
    const QPointer<ZEFUIWidget> host(makeHost().release());
    connect(host, &ZEFUIWidget::respondClosed, this, [&] {
        ++answered;
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(host, &again);
    });
    host->show();
    QTest::keyClick(host.data(), Qt::Key_Escape);
    QVERIFY(!host);
    QCOMPARE(answered, 1);
}

void TestZEFUIWidget::escapeOfAPopupAnswersOnce()
{
    int answered = 0;
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"labels"_s, u"en"_s, nullptr, Qt::Popup, nullptr));
    connect(host, &ZEFUIWidget::respondClosed, this, [&] { ++answered; });
    host->show();
    // Qt's own handling closes a popup on Escape before the host's does
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(host, &escape);
    QVERIFY(!host);
    QCOMPARE(answered, 1);
}

void TestZEFUIWidget::escapeAnswersForAnElementMarkedClosing()
{
    // The Escape path does not ask the closing flag.
    int answered = 0;
    auto host = makeHost();
    connect(host.get(), &ZEFUIWidget::respondClosed, this, [&] { ++answered; });
    host->show();
    host->element()->setClosing(false);
    host->close();
    QCOMPARE(answered, 0);
    host->show();
    QTest::keyClick(host.get(), Qt::Key_Escape);
    QCOMPARE(answered, 1);
    // the element has forgotten the host and does not delete it
    QVERIFY(!host->element()->widget());
}

void TestZEFUIWidget::otherKeysDoNotClose()
{
    auto host = makeHost();
    QSignalSpy answers(host.get(), &ZEFUIWidget::respondClosed);
    host->show();
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_A, Qt::Key_F4, Qt::Key_Backspace})
        QTest::keyClick(host.get(), key);
    QVERIFY(host->isVisible());
    QCOMPARE(answers.count(), 0);
}

void TestZEFUIWidget::otherKeysGoOnToTheParent()
{
    const auto host = makeHost();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    event.accept();
    QApplication::sendEvent(host.get(), &event);
    QVERIFY(!event.isAccepted());
}

void TestZEFUIWidget::rootClosedCloses()
{
    auto host = makeHost();
    QSignalSpy answers(host.get(), &ZEFUIWidget::respondClosed);
    host->show();
    QMetaObject::invokeMethod(host.get(), "rootClosed");
    QVERIFY(!host->isVisible());
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIWidget::receiverMayDeleteTheHost_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("deed");
    for (const QString& way : {u"close"_s, u"window system"_s, u"escape"_s, u"element"_s, u"click"_s}) {
        for (const QString& deed : {u"delete host"_s, u"delete element"_s, u"close element"_s})
            QTest::addRow("%s, %s", qPrintable(way), qPrintable(deed)) << way << deed;
    }
}

void TestZEFUIWidget::receiverMayDeleteTheHost()
{
    QFETCH(QString, way);
    QFETCH(QString, deed);
    int answered = 0;
    int contexts = 0;
    const QPointer<ZEFUIWidget> host(makeHost(new CountingContext(&contexts)).release());
    connect(host, &ZEFUIWidget::respondClosed, this, [&] {
        ++answered;
        if (deed == u"delete host")
            delete host;
        else if (deed == u"delete element")
            delete host->element();
        else
            host->element()->close();
    });
    host->show();
    if (way == u"close")
        host->close();
    else if (way == u"window system")
        host->windowHandle()->close();
    else if (way == u"escape")
        QTest::keyClick(host.data(), Qt::Key_Escape);
    else if (way == u"element")
        host->element()->close();
    else
        host->findChild<QPushButton*>(u"close"_s)->click();
    QCOMPARE(answered, 1);
    // Qt is still closing the host when the receiver closes the element: the host goes a little later then
    const bool later =
        deed == u"close element" && (way == u"close" || way == u"window system" || way == u"click");
    QCOMPARE(contexts, later ? 0 : 1);
    if (deed == u"delete element")
        delete host; // nobody else will
    QTRY_VERIFY(!host);
    QCOMPARE(answered, 1);
    QCOMPARE(contexts, 1);
}

void TestZEFUIWidget::closingComesBeforeTheAnswer_data()
{
    QTest::addColumn<QString>("way");
    for (const QString& way : {u"close"_s, u"window system"_s, u"escape"_s, u"element"_s, u"click"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

void TestZEFUIWidget::closingComesBeforeTheAnswer()
{
    QFETCH(QString, way);
    const QPointer<ZEFUIWidget> host(makeHost().release());
    QStringList order;
    connect(host, &ZEFUIWidget::respondClosed, this, [&] { order << u"answer"_s; });
    connect(host->element(), &ZEFUIElement::closing, this, [&] { order << u"closing"_s; });
    host->show();
    if (way == u"close")
        host->close();
    else if (way == u"window system")
        host->windowHandle()->close();
    else if (way == u"escape")
        QTest::keyClick(host.data(), Qt::Key_Escape);
    else if (way == u"element")
        host->element()->close();
    else
        host->findChild<QPushButton*>(u"close"_s)->click();
    QTRY_VERIFY(!host);
    QCOMPARE(order.mid(0, 2), QStringList({u"closing"_s, u"answer"_s}));
    QCOMPARE(order.count(u"answer"_s), 1);
}

void TestZEFUIWidget::closingReceiverMayClose_data()
{
    QTest::addColumn<QString>("way");
    for (const QString& way : {u"close"_s, u"escape"_s, u"element"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

void TestZEFUIWidget::closingReceiverMayClose()
{
    QFETCH(QString, way);
    int answered = 0;
    int contexts = 0;
    const QPointer<ZEFUIWidget> host(makeHost(new CountingContext(&contexts)).release());
    connect(host, &ZEFUIWidget::respondClosed, this, [&] { ++answered; });
    connect(host->element(), &ZEFUIElement::closing, this, [&] {
        host->element()->close();
        // past the tick; a second emission finds the host on its way out
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 150)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    });
    host->show();
    if (way == u"close")
        host->close();
    else if (way == u"escape")
        QTest::keyClick(host.data(), Qt::Key_Escape);
    else
        host->element()->close();
    QTRY_VERIFY(!host);
    QCOMPARE(answered, 1);
    QCOMPARE(contexts, 1);
}

void TestZEFUIWidget::closingReceiverMayDeleteTheHost()
{
    for (const bool escape : {true, false}) {
        int contexts = 0;
        const QPointer<ZEFUIWidget> host(makeHost(new CountingContext(&contexts)).release());
        connect(host->element(), &ZEFUIElement::closing, this, [&] { delete host; });
        host->show();
        if (escape)
            QTest::keyClick(host.data(), Qt::Key_Escape);
        else
            host->close();
        QVERIFY(!host);
        QCOMPARE(contexts, 1);
    }
}

ZEF_TEST_MAIN(TestZEFUIWidget)
#include "test_zefuiwidget.moc"
