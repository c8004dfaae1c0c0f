#include "ElementTest.h"

#include <QtGui/QWindow>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>

class TestZEFUIDialog : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void metaMembersStandInOrder();
    void formConstructor();
    void formlessConstructor();
    void formConstructorWritesTheFormName();
    void modality();
    void createReturnsAFixedDialog();
    void createWritesTheFormName();
    void createKeepsTheDialogOfAMissingForm();
    void fixedSize();
    void freedSizeMayChange();
    void fixedSizeWithoutAForm();
    void closeAnswersOnce();
    void closeIsFollowedByDestruction();
    void closeRejects();
    void escapeAnswersAndClosesLater();
    void escapeSwitchedOff();
    void escapeAfterCloseAnswersOnce();
    void escapeTwiceAnswersOnce();
    void escapeAnswersForAnElementMarkedClosing();
    void escapeAfterForgettingTheDialog();
    void keysAreAnnounced();
    void keyReceiverMayDeleteTheDialog();
    void mouseReleasesAreAnnounced_data();
    void mouseReleasesAreAnnounced();
    void showAndHideAreAnnouncedFirst();
    void escapeIsAnnouncedBeforeItsEffect();
    void closingComesBeforeTheAnswer_data();
    void closingComesBeforeTheAnswer();
    void showOrHideReceiverMayClose_data();
    void showOrHideReceiverMayClose();
    void receiverMayCloseWhileQtCloses_data();
    void receiverMayCloseWhileQtCloses();
    void receiverMayCloseTheParentOfADialogWithoutElement_data();
    void receiverMayCloseTheParentOfADialogWithoutElement();
    void receiverMayCloseTheParentWhileQtCloses_data();
    void receiverMayCloseTheParentWhileQtCloses();
    void closeAfterAcceptAnswers();
    void executedDialogAnswers();
    void receiverMayDeleteTheHost_data();
    void receiverMayDeleteTheHost();
    void rejectedAndAcceptedReappear();
    void closeWidgetClosesTheDialog();
};

namespace {

std::unique_ptr<ZEFUIDialog> makeDialog(ZEFPipeFacilityInvocationContext* context = nullptr)
{
    return std::make_unique<ZEFUIDialog>(u"names"_s, u"en"_s, nullptr, Qt::Dialog, context);
}

//! A press of that key sent to the dialog itself.
void press(QWidget* widget, Qt::Key key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

void TestZEFUIDialog::metaMembersStandInOrder()
{
    const QMetaObject& meta = ZEFUIDialog::staticMetaObject;
    QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const bool signal = meta.method(i).methodType() == QMetaMethod::Signal;
        methods.append((signal ? u"signal "_s : u"slot "_s)
                       + QString::fromLatin1(meta.method(i).methodSignature() + ' '
                                             + meta.method(i).parameterNames().join(',')));
    }
    QCOMPARE(methods,
             QStringList({u"signal respondClosed(ZEFPipeFacilityInvocationContext*,int) context,selection"_s,
                          u"signal dialog_clicked() "_s, u"signal dialog_key_pressed(int) key"_s,
                          u"signal dialog_show() "_s, u"signal dialog_hide() "_s,
                          u"slot clicked(bool) checked"_s, u"slot clicked() "_s, u"slot rootClosed() "_s}));
}

void TestZEFUIDialog::formConstructor()
{
    int deletions = 0;
    auto* context = new CountingContext(&deletions);
    const auto dialog = makeDialog(context);
    QCOMPARE(dialog->element()->widget(), dialog.get());
    QCOMPARE(dialog->element()->context(), context);
    QCOMPARE(dialog->element()->clientPID(), 0L);
    QVERIFY(dialog->element()->loaded());
}

void TestZEFUIDialog::formlessConstructor()
{
    // Unlike the widget host: a dialog as parent, and on top of the others.
    ZEFUIDialog dialog;
    QVERIFY(dialog.windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(!dialog.element()->loaded());
    QCOMPARE(TestLog::take(u"debug: "_s), QStringList());
    QCOMPARE(dialog.windowModality(), Qt::NonModal);
    const auto* child = new ZEFUIDialog(&dialog);
    QCOMPARE(dialog.element()->childElement(0), child->element());
    QCOMPARE(child->windowModality(), Qt::NonModal);
}

void TestZEFUIDialog::formConstructorWritesTheFormName()
{
    const ZEFUIDialog dialog(u"%s%n%1"_s, u"en"_s, nullptr, Qt::Dialog, nullptr);
    const QStringList lines = withoutRefusedConnections(TestLog::takeAll());
    QCOMPARE(lines.at(0), u"debug: formpath in ZEFUIDialog is %s%n%1"_s);
    QVERIFY(lines.at(1).startsWith(u"log: ZEFUIElement with parent: 0"));
}

void TestZEFUIDialog::modality()
{
    QWidget parent;
    const ZEFUIDialog child(u"labels"_s, u"en"_s, &parent, Qt::Dialog, nullptr);
    QCOMPARE(child.windowModality(), Qt::WindowModal);
    const ZEFUIDialog orphan(u"labels"_s, u"en"_s, nullptr, Qt::Dialog, nullptr);
    QCOMPARE(orphan.windowModality(), Qt::NonModal);
}

void TestZEFUIDialog::createReturnsAFixedDialog()
{
    const std::unique_ptr<ZEFUIDialog> dialog(ZEFUIDialog::create(u"labels"_s, u"de"_s, nullptr, Qt::Dialog));
    QVERIFY(dialog);
    QVERIFY(dialog->element()->loaded());
    QCOMPARE(dialog->layout()->sizeConstraint(), QLayout::SetFixedSize);
    QVERIFY(!dialog->element()->context());
}

void TestZEFUIDialog::createWritesTheFormName()
{
    const std::unique_ptr<ZEFUIDialog> dialog(ZEFUIDialog::create(u"labels"_s, u"de"_s, nullptr, Qt::Dialog));
    QCOMPARE(TestLog::take(u"debug: "_s),
             QStringList({u"debug: ZEFUIDialog::create form: labels"_s,
                          u"debug: formpath in ZEFUIDialog is labels"_s}));
}

void TestZEFUIDialog::createKeepsTheDialogOfAMissingForm()
{
    const QWidgetList before = QApplication::topLevelWidgets();
    QVERIFY(!ZEFUIDialog::create(u"missing"_s, u"en"_s, nullptr, Qt::Dialog));
    TestLog::take(u"debug: "_s);
    QPointer<ZEFUIDialog> kept;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!before.contains(widget))
            kept = qobject_cast<ZEFUIDialog*>(widget);
    }
    QVERIFY(kept);
    QTRY_VERIFY(kept->isVisible());
    kept->close();
    QTRY_VERIFY(!kept);
}

void TestZEFUIDialog::fixedSize()
{
    const auto dialog = makeDialog();
    dialog->setFixedSize(true);
    QCOMPARE(dialog->layout()->sizeConstraint(), QLayout::SetFixedSize);
    dialog->setFixedSize(false);
    // not SetDefaultConstraint
    QCOMPARE(dialog->layout()->sizeConstraint(), QLayout::SetNoConstraint);
    dialog->setFixedSize(QSize(300, 200)); // the widget's own is not hidden
    QCOMPARE(dialog->size(), QSize(300, 200));
}

void TestZEFUIDialog::freedSizeMayChange()
{
    const auto dialog = makeDialog();
    dialog->setFixedSize(true);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    QCOMPARE(dialog->minimumSize(), dialog->maximumSize());
    dialog->setFixedSize(false);
    QCOMPARE(dialog->minimumSize(), QSize(0, 0));
    QCOMPARE(dialog->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    dialog->resize(300, 400);
    QTRY_COMPARE(dialog->size(), QSize(300, 400));
    // a size that the caller limits is his own when the dialog was not fixed
    dialog->setMinimumSize(50, 60);
    dialog->setFixedSize(false);
    QCOMPARE(dialog->minimumSize(), QSize(50, 60));
    // a form that is loaded later is not fixed
    dialog->setFixedSize(true);
    dialog->element()->setFormPath(u"labels"_s);
    QVERIFY(dialog->layout()->sizeConstraint() != QLayout::SetFixedSize);
    dialog->setFixedSize(false);
    QCOMPARE(dialog->minimumSize(), QSize(0, 0));
}

void TestZEFUIDialog::fixedSizeWithoutAForm()
{
    ZEFUIDialog dialog;
    dialog.setFixedSize(true);
    dialog.setFixedSize(false);
    QVERIFY(!dialog.layout());
}

void TestZEFUIDialog::closeAnswersOnce()
{
    const auto dialog = makeDialog();
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    dialog->show();
    QVERIFY(dialog->close());
    QVERIFY(dialog->element()->isClosing());
    dialog->close();
    dialog->show();
    dialog->close();
    dialog->rootClosed();
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIDialog::closeIsFollowedByDestruction()
{
    int deletions = 0;
    const QPointer<ZEFUIDialog> dialog(makeDialog(new CountingContext(&deletions)).release());
    // without the tick: the dialog's own timer deletes it
    ZEFUIElementPrivate::get(dialog->element())->housekeepingTimer.stop();
    dialog->show();
    dialog->close();
    QVERIFY(dialog);
    QCOMPARE(deletions, 0);
    QTRY_VERIFY(!dialog);
    QCOMPARE(deletions, 1);
}

void TestZEFUIDialog::closeRejects()
{
    const auto dialog = makeDialog();
    dialog->show();
    QSignalSpy rejected(dialog.get(), &QDialog::rejected);
    dialog->close();
    QCOMPARE(rejected.count(), 1);
    TestLog::takeAll();
}

void TestZEFUIDialog::escapeAnswersAndClosesLater()
{
    int deletions = 0;
    auto* context = new CountingContext(&deletions);
    const QPointer<ZEFUIDialog> dialog(makeDialog(context).release());
    ZEFUIElementPrivate::get(dialog->element())->housekeepingTimer.stop();
    QSignalSpy answers(dialog, &ZEFUIDialog::respondClosed);
    dialog->element()->setCloseSelection(3);
    dialog->show();
    press(dialog, Qt::Key_Escape);
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(answers.count(), 1);
    QCOMPARE(answers.first().at(0).value<ZEFPipeFacilityInvocationContext*>(), context);
    QCOMPARE(answers.first().at(1).toInt(), 3);
    QCOMPARE(deletions, 0);
    QTRY_VERIFY(!dialog);
    QCOMPARE(deletions, 1);
}

void TestZEFUIDialog::escapeSwitchedOff()
{
    const auto dialog = makeDialog();
    dialog->enableCloseOnEscape(false);
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    QSignalSpy rejected(dialog.get(), &QDialog::rejected);
    dialog->show();
    press(dialog.get(), Qt::Key_Escape);
    // Qt's own handling still hides the dialog; the tick shows it again
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(answers.count(), 0);
    QVERIFY(!dialog->element()->isClosing());
    QTRY_VERIFY(dialog->isVisible());
    dialog->enableCloseOnEscape(true);
    press(dialog.get(), Qt::Key_Escape);
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIDialog::escapeAfterCloseAnswersOnce()
{
    const auto dialog = makeDialog();
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    dialog->show();
    dialog->close();
    press(dialog.get(), Qt::Key_Escape);
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIDialog::escapeTwiceAnswersOnce()
{
    const auto dialog = makeDialog();
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    dialog->show();
    press(dialog.get(), Qt::Key_Escape);
    press(dialog.get(), Qt::Key_Escape);
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIDialog::escapeAnswersForAnElementMarkedClosing()
{
    const auto dialog = makeDialog();
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    dialog->show();
    dialog->element()->setClosing(true); // closes the dialog; its close event sees the flag
    QCOMPARE(answers.count(), 0);
    press(dialog.get(), Qt::Key_Escape);
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIDialog::escapeAfterForgettingTheDialog()
{
    const auto dialog = makeDialog();
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    dialog->show();
    dialog->element()->setClosing(false);
    press(dialog.get(), Qt::Key_Escape);
    QCOMPARE(answers.count(), 1);
    QVERIFY(!dialog->element()->widget());
}

void TestZEFUIDialog::keysAreAnnounced()
{
    const auto dialog = makeDialog();
    QSignalSpy keys(dialog.get(), &ZEFUIDialog::dialog_key_pressed);
    QSignalSpy clicked(dialog->findChild<QPushButton*>(u"okButton"_s), &QPushButton::clicked);
    dialog->findChild<QPushButton*>(u"okButton"_s)->setDefault(true);
    dialog->show();
    press(dialog.get(), Qt::Key_A);
    press(dialog.get(), Qt::Key_Return);
    press(dialog.get(), Qt::Key_Enter);
    press(dialog.get(), Qt::Key_Escape);
    QCOMPARE(keys.count(), 4);
    QCOMPARE(keys.at(0).first().toInt(), int(Qt::Key_A));
    QCOMPARE(keys.at(1).first().toInt(), int(Qt::Key_Return));
    QCOMPARE(keys.at(2).first().toInt(), int(Qt::Key_Enter));
    QCOMPARE(keys.at(3).first().toInt(), int(Qt::Key_Escape));
    // Qt's own handling of Return follows: the default button is clicked
    QCOMPARE(clicked.count(), 2);
}

void TestZEFUIDialog::keyReceiverMayDeleteTheDialog()
{
    const QPointer<ZEFUIDialog> dialog(makeDialog().release());
    connect(dialog, &ZEFUIDialog::dialog_key_pressed, this, [&] { delete dialog; });
    dialog->show();
    press(dialog, Qt::Key_Escape);
    QVERIFY(!dialog);
}

void TestZEFUIDialog::mouseReleasesAreAnnounced_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
    QTest::newRow("back") << Qt::BackButton;
}

void TestZEFUIDialog::mouseReleasesAreAnnounced()
{
    QFETCH(Qt::MouseButton, button);
    ZEFUIDialog dialog;
    QSignalSpy clicks(&dialog, &ZEFUIDialog::dialog_clicked);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(5, 5), QPointF(5, 5), button, Qt::NoButton,
                        Qt::NoModifier);
    release.setAccepted(true);
    QCoreApplication::sendEvent(&dialog, &release);
    QCOMPARE(clicks.count(), 1);
    // the base class would ignore it
    QVERIFY(release.isAccepted());
}

void TestZEFUIDialog::showAndHideAreAnnouncedFirst()
{
    const auto dialog = makeDialog();
    QStringList order;
    connect(dialog.get(), &ZEFUIDialog::dialog_show, this, [&] { order << u"show"_s; });
    connect(dialog.get(), &ZEFUIDialog::dialog_hide, this, [&] { order << u"hide"_s; });
    dialog->show();
    dialog->hide();
    dialog->show();
    QCOMPARE(order, QStringList({u"show"_s, u"hide"_s, u"show"_s}));

    // Qt centres a dialog over its parent when it handles the show event
    QWidget parent;
    parent.setGeometry(300, 250, 400, 300);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    ZEFUIDialog child(u"labels"_s, u"en"_s, &parent, Qt::Dialog, nullptr);
    child.resize(100, 80);
    const auto distance = [&] {
        return (child.geometry().center() - parent.geometry().center()).manhattanLength();
    };
    int before = 0;
    connect(&child, &ZEFUIDialog::dialog_show, this, [&] { before = distance(); });
    child.show();
    QVERIFY2(before > 300, qPrintable(QString::number(before)));
    QVERIFY2(distance() < 80, qPrintable(QString::number(distance())));
}

void TestZEFUIDialog::escapeIsAnnouncedBeforeItsEffect()
{
    const auto dialog = makeDialog();
    bool visible = false;
    connect(dialog.get(), &ZEFUIDialog::dialog_key_pressed, this, [&] { visible = dialog->isVisible(); });
    dialog->show();
    press(dialog.get(), Qt::Key_Escape);
    QVERIFY(visible);
    QVERIFY(!dialog->isVisible());
}

void TestZEFUIDialog::closingComesBeforeTheAnswer_data()
{
    QTest::addColumn<QString>("way");
    for (const QString& way : {u"close"_s, u"window system"_s, u"escape"_s, u"element"_s, u"click"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

void TestZEFUIDialog::closingComesBeforeTheAnswer()
{
    QFETCH(QString, way);
    const QPointer<ZEFUIDialog> dialog(makeDialog().release());
    QStringList order;
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { order << u"answer"_s; });
    connect(dialog->element(), &ZEFUIElement::closing, this, [&] { order << u"closing"_s; });
    dialog->show();
    if (way == u"close")
        dialog->close();
    else if (way == u"window system")
        dialog->windowHandle()->close();
    else if (way == u"escape")
        press(dialog, Qt::Key_Escape);
    else if (way == u"element")
        dialog->element()->close();
    else
        dialog->findChild<QPushButton*>(u"close"_s)->click();
    QTRY_VERIFY(!dialog);
    QCOMPARE(order.mid(0, 2), QStringList({u"closing"_s, u"answer"_s}));
    QCOMPARE(order.count(u"answer"_s), 1);
}

void TestZEFUIDialog::showOrHideReceiverMayClose_data()
{
    QTest::addColumn<QString>("when");
    QTest::addColumn<QString>("deed");
    for (const QString& when : {u"show"_s, u"hide"_s}) {
        for (const QString& deed : {u"close"_s, u"close and wait"_s, u"delete later"_s, u"destroy"_s})
            QTest::addRow("%s, %s", qPrintable(when), qPrintable(deed)) << when << deed;
    }
}

void TestZEFUIDialog::showOrHideReceiverMayClose()
{
    QFETCH(QString, when);
    QFETCH(QString, deed);
    int contexts = 0;
    int answers = 0;
    const QPointer<ZEFUIDialog> dialog(makeDialog(new CountingContext(&contexts)).release());
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
    if (when == u"hide")
        dialog->show();
    bool done = false;
    const auto act = [&] {
        if (std::exchange(done, true))
            return;
        if (deed == u"delete later")
            dialog->deleteLater();
        else if (deed == u"destroy")
            dialog->element()->destroy();
        else
            dialog->element()->close();
        if (deed == u"close and wait") {
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 150)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
    };
    if (when == u"show") {
        connect(dialog, &ZEFUIDialog::dialog_show, this, act);
        dialog->show();
    } else {
        connect(dialog, &ZEFUIDialog::dialog_hide, this, act);
        dialog->hide();
    }
    QTRY_VERIFY(!dialog);
    QCOMPARE(contexts, 1);
    QCOMPARE(answers, deed.startsWith(u"close") ? 1 : 0);
}

void TestZEFUIDialog::receiverMayCloseWhileQtCloses_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("when");
    QTest::addColumn<bool>("wait");
    for (const QString& way : {u"close"_s, u"escape"_s, u"escape off"_s, u"window system"_s, u"reject"_s}) {
        for (const QString& when : {u"rejected"_s, u"finished"_s, u"hide"_s, u"closing"_s}) {
            if (when == u"closing" && (way == u"escape off" || way == u"reject"))
                continue; // nothing marks the element closing
            for (const bool wait : {false, true})
                QTest::addRow("%s, %s%s", qPrintable(way), qPrintable(when), wait ? ", wait" : "")
                    << way << when << wait;
        }
    }
}

void TestZEFUIDialog::receiverMayCloseWhileQtCloses()
{
    QFETCH(QString, way);
    QFETCH(QString, when);
    QFETCH(bool, wait);
    int contexts = 0;
    int answers = 0;
    const QPointer<ZEFUIDialog> dialog(makeDialog(new CountingContext(&contexts)).release());
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
    const auto act = [&] {
        dialog->element()->close();
        if (wait) {
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 150)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
    };
    if (when == u"rejected")
        connect(dialog, &QDialog::rejected, this, act);
    else if (when == u"finished")
        connect(dialog, &QDialog::finished, this, act);
    else if (when == u"hide")
        connect(dialog, &ZEFUIDialog::dialog_hide, this, act);
    else
        connect(dialog->element(), &ZEFUIElement::closing, this, act, Qt::SingleShotConnection);
    dialog->show();
    if (way == u"escape off")
        dialog->enableCloseOnEscape(false);
    if (way == u"close")
        dialog->close();
    else if (way == u"window system")
        dialog->windowHandle()->close();
    else if (way == u"reject")
        dialog->reject();
    else
        press(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!dialog);
    QCOMPARE(answers, 1);
    QCOMPARE(contexts, 1);
}

void TestZEFUIDialog::receiverMayCloseTheParentOfADialogWithoutElement_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("show") << true;
    QTest::newRow("hide") << false;
}

void TestZEFUIDialog::receiverMayCloseTheParentOfADialogWithoutElement()
{
    QFETCH(const bool, shown);
    const QPointer<ZEFUIDialog> parent(makeDialog().release());
    const QPointer<ZEFUIDialog> child(new ZEFUIDialog(u"names"_s, u"en"_s, parent, Qt::Dialog, nullptr));
    delete child->element();
    connect(child, shown ? &ZEFUIDialog::dialog_show : &ZEFUIDialog::dialog_hide, this, [&] {
        parent->element()->close();
        QVERIFY(child);
    });
    child->show();
    if (!shown)
        child->hide();
    QVERIFY(child);
    QTRY_VERIFY(!parent);
    QVERIFY(!child);
}

void TestZEFUIDialog::receiverMayCloseTheParentWhileQtCloses_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("finished");
    QTest::newRow("accepted") << int(QDialog::Accepted) << false;
    QTest::newRow("rejected") << int(QDialog::Rejected) << false;
    QTest::newRow("finished") << 7 << true;
}

void TestZEFUIDialog::receiverMayCloseTheParentWhileQtCloses()
{
    QFETCH(const int, result);
    QFETCH(const bool, finished);
    const QPointer<ZEFUIDialog> parent(makeDialog().release());
    const QPointer<ZEFUIDialog> child(new ZEFUIDialog(u"names"_s, u"en"_s, parent, Qt::Dialog, nullptr));
    int closings = 0;
    const auto closeParent = [&] {
        ++closings;
        parent->element()->close();
        QVERIFY(child);
    };
    if (finished)
        connect(child, &QDialog::finished, this, closeParent);
    else
        connect(child, result == QDialog::Accepted ? &QDialog::accepted : &QDialog::rejected, this,
                closeParent);
    child->show();
    child->done(result);
    QCOMPARE(closings, 1);
    QVERIFY(child);
    QTRY_VERIFY(!parent);
    QVERIFY(!child);
}

void TestZEFUIDialog::closeAfterAcceptAnswers()
{
    // Qt has closed the window without a close event, so close() has to answer itself.
    int contexts = 0;
    int answers = 0;
    const QPointer<ZEFUIDialog> dialog(makeDialog(new CountingContext(&contexts)).release());
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
    dialog->show();
    dialog->accept();
    dialog->element()->close();
    QCOMPARE(answers, 1);
    QTRY_VERIFY(!dialog);
    QCOMPARE(answers, 1);
    QCOMPARE(contexts, 1);

    // already closed and answered
    const QPointer<ZEFUIDialog> closed(makeDialog().release());
    QSignalSpy closedAnswers(closed, &ZEFUIDialog::respondClosed);
    closed->show();
    closed->close();
    closed->element()->close();
    QCOMPARE(closedAnswers.count(), 1);
    QTRY_VERIFY(!closed);
    QCOMPARE(closedAnswers.count(), 1);
}

void TestZEFUIDialog::executedDialogAnswers()
{
    const QPointer<ZEFUIDialog> dialog(makeDialog().release());
    int answers = 0;
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
    connect(dialog, &ZEFUIDialog::dialog_show, this,
            [&] { QMetaObject::invokeMethod(dialog, &QWidget::close, Qt::QueuedConnection); });
    QCOMPARE(dialog->exec(), int(QDialog::Rejected));
    QCOMPARE(answers, 1);
    QTRY_VERIFY(!dialog);
}

void TestZEFUIDialog::receiverMayDeleteTheHost_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("deed");
    for (const QString& way : {u"close"_s, u"window system"_s, u"escape"_s, u"element"_s, u"click"_s}) {
        for (const QString& deed : {u"delete host"_s, u"delete element"_s, u"close element"_s})
            QTest::addRow("%s, %s", qPrintable(way), qPrintable(deed)) << way << deed;
    }
}

void TestZEFUIDialog::receiverMayDeleteTheHost()
{
    QFETCH(QString, way);
    QFETCH(QString, deed);
    int answered = 0;
    int contexts = 0;
    const QPointer<ZEFUIDialog> dialog(makeDialog(new CountingContext(&contexts)).release());
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] {
        ++answered;
        if (deed == u"delete host")
            delete dialog;
        else if (deed == u"delete element")
            delete dialog->element();
        else
            dialog->element()->close();
    });
    dialog->show();
    if (way == u"close")
        dialog->close();
    else if (way == u"window system")
        dialog->windowHandle()->close();
    else if (way == u"escape")
        press(dialog, Qt::Key_Escape);
    else if (way == u"element")
        dialog->element()->close();
    else
        dialog->findChild<QPushButton*>(u"close"_s)->click();
    QCOMPARE(answered, 1);
    QCOMPARE(contexts, !dialog || !dialog->element() ? 1 : 0);
    if (deed == u"delete element")
        delete dialog; // nobody else will
    QTRY_VERIFY(!dialog);
    QCOMPARE(contexts, 1);
}

void TestZEFUIDialog::rejectedAndAcceptedReappear()
{
    // accept() hides without closing: the tick shows the dialog again
    const auto dialog = makeDialog();
    QSignalSpy answers(dialog.get(), &ZEFUIDialog::respondClosed);
    dialog->show();
    dialog->accept();
    QVERIFY(!dialog->isVisible());
    QTRY_VERIFY(dialog->isVisible());
    QCOMPARE(answers.count(), 0);
}

void TestZEFUIDialog::closeWidgetClosesTheDialog()
{
    const QPointer<ZEFUIDialog> dialog(makeDialog().release());
    int answers = 0;
    connect(dialog, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
    dialog->show();
    QTest::mouseClick(dialog->findChild<QPushButton*>(u"close"_s), Qt::LeftButton);
    QCOMPARE(answers, 1);
    QTRY_VERIFY(!dialog);
}

ZEF_TEST_MAIN(TestZEFUIDialog)
#include "test_zefuidialog.moc"
