#include "ElementTest.h"

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>

#include <platform/ForegroundWindow.h>

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

//! A request that says when it goes.
class SpeakingContext : public ZEFPipeFacilityInvocationContext {
public:
    explicit SpeakingContext(const QString& name)
        : m_name(name)
    {
    }
    ~SpeakingContext() override { qDebug().noquote() << m_name; }

private:
    QString m_name;
};

class OkDelegate : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void okButton() { }
};

//! Closes the form when its button is clicked.
class ClosingDelegate : public QObject {
    Q_OBJECT

public:
    explicit ClosingDelegate(ZEFUIElement* element)
        : m_element(element)
    {
    }

public Q_SLOTS:
    void okButton_clicked(ZEFPipeFacilityInvocationContext*) { m_element->close(); }

private:
    QPointer<ZEFUIElement> m_element;
};

//! A host that runs something when the tick resizes or moves it.
class GeometryHost : public QWidget {
    Q_OBJECT

public:
    std::function<void()> onResize;
    std::function<void()> onMove;

protected:
    void resizeEvent(QResizeEvent*) override
    {
        if (onResize)
            onResize();
    }
    void moveEvent(QMoveEvent*) override
    {
        if (onMove)
            onMove();
    }
};

//! Closes a form in a slot that connectSlotsByName() connects to the form "names".
class FormCloser : public QObject {
    Q_OBJECT

public:
    FormCloser(ZEFUIElement* element, const QString& signal)
        : m_element(element)
        , m_signal(signal)
    {
    }

    int closed = 0;

public Q_SLOTS:
    void on_okButton_pressed() { close(u"pressed"_s); }
    void on_okButton_released() { close(u"released"_s); }
    void on_nameEdit_returnPressed() { close(u"returnPressed"_s); }
    void on_nameEdit_editingFinished() { close(u"editingFinished"_s); }

private:
    void close(const QString& signal)
    {
        if (signal != m_signal)
            return;
        ++closed;
        if (m_element)
            m_element->close();
    }

    const QPointer<ZEFUIElement> m_element;
    const QString m_signal;
};

class TestZEFUIElementLifetime : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void childrenInOrderWithoutDuplicates();
    void childAtAnInvalidIndex_data();
    void childAtAnInvalidIndex();
    void nullAndSelfAreNoChildren();
    void deletingAParentDeletesItsChildren();
    void deletingAChildLeavesTheParentsList();
    void destructorOrder();
    void foreignChildMayDieFirst();
    void removedChildOutlivesItsFormerParent();
    void childOfTwoParents();
    void ringOfElements();
    void ringOfElementsIsClosed();
    void parentHostDeletedWhileChildHostIsOpen();
    void elementMayDieBeforeItsHost();
    void setClosingWithTheHost();
    void setClosingForgetsTheHost();
    void setClosingAfterTheHostIsGone();
    void closingIsOneWay();
    void closeSelection();
    void closeAnswersAndDeletesAtOnce();
    void closeOfAFormlessHost();
    void closeOfAPlainWidget();
    void closeFromTheClosingSignal();
    void closeDeletesAtOnceAfterAClick_data();
    void closeDeletesAtOnceAfterAClick();
    void delegateOfAClickMayCloseAtOnce();
    void closeWaitsWhileQtWorksWithAButton_data();
    void closeWaitsWhileQtWorksWithAButton();
    void closeWaitsForAChildThatIsBeingShown();
    void closeWaitsForASignalOfAChildsForm();
    void closeWaitsForAChildThatDies_data();
    void closeWaitsForAChildThatDies();
    void slotOfAFormWidgetMayClose_data();
    void slotOfAFormWidgetMayClose();
    void slotOfDestroyedMayUseTheForm_data();
    void slotOfDestroyedMayUseTheForm();
    void whatDeletesItsChildrenCountsAsGone();
    void destroyTwice();
    void showShowsAHiddenHost();
    void tickShowsAHiddenHost();
    void tickDestroysAClosedHost();
    void tickAfterForgettingStops();
    void tickRestoresTheGeometry();
    void geometryStepMayEndTheElement_data();
    void geometryStepMayEndTheElement();
    void tickThatMayNotRaise();
    void activateAndRaiseWritesItsLine();
    void activateAndRaiseActivates();
    void deletedInsideTheTick();
    void lookups();
    void lookupsWithNull();
    void derivedHostIsNotRecognised();
};

void TestZEFUIElementLifetime::childrenInOrderWithoutDuplicates()
{
    ZEFUIElement parent(nullptr, nullptr, nullptr, 0);
    auto* first = new ZEFUIElement(nullptr, &parent, nullptr, 0);
    auto* second = new ZEFUIElement(nullptr, &parent, nullptr, 0);
    QCOMPARE(parent.childElementCount(), 2);
    QCOMPARE(parent.childElement(0), first);
    QCOMPARE(parent.childElement(1), second);
    parent.addChildElement(first);
    QCOMPARE(parent.childElementCount(), 2);
    parent.removeChildElement(first);
    QCOMPARE(parent.childElementCount(), 1);
    QCOMPARE(parent.childElement(0), second);
    parent.removeChildElement(first);
    parent.removeChildElement(nullptr);
    parent.addChildElement(first);
    QCOMPARE(parent.childElement(1), first);
}

void TestZEFUIElementLifetime::childAtAnInvalidIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("before the first") << -1;
    QTest::newRow("after the last") << 1;
    QTest::newRow("far away") << 1000000000;
}

void TestZEFUIElementLifetime::childAtAnInvalidIndex()
{
    QFETCH(int, index);
    ZEFUIElement parent(nullptr, nullptr, nullptr, 0);
    new ZEFUIElement(nullptr, &parent, nullptr, 0);
    QVERIFY(!parent.childElement(index));
}

void TestZEFUIElementLifetime::nullAndSelfAreNoChildren()
{
    ZEFUIElement parent(nullptr, nullptr, nullptr, 0);
    parent.addChildElement(nullptr);
    parent.addChildElement(&parent);
    QCOMPARE(parent.childElementCount(), 0);
}

void TestZEFUIElementLifetime::deletingAParentDeletesItsChildren()
{
    auto parent = std::make_unique<ZEFUIElement>(nullptr, nullptr, nullptr, 0);
    int contexts = 0;
    QWidget host;
    const QPointer<ZEFUIElement> child(
        new ZEFUIElement(&host, parent.get(), new CountingContext(&contexts), 0));
    const QPointer<ZEFUIElement> grandChild(
        new ZEFUIElement(nullptr, child, new CountingContext(&contexts), 0));
    parent.reset();
    QVERIFY(!child);
    QVERIFY(!grandChild);
    QCOMPARE(contexts, 2);
    QVERIFY(host.isHidden()); // the host is not touched
}

void TestZEFUIElementLifetime::deletingAChildLeavesTheParentsList()
{
    ZEFUIElement parent(nullptr, nullptr, nullptr, 0);
    auto child = std::make_unique<ZEFUIElement>(nullptr, &parent, nullptr, 0);
    child.reset();
    QCOMPARE(parent.childElementCount(), 0);
}

void TestZEFUIElementLifetime::destructorOrder()
{
    QWidget host;
    OkDelegate delegate;
    auto parent = std::make_unique<ZEFUIElement>(&host, nullptr, u"names"_s, u"en"_s,
                                                 new SpeakingContext(u"parent"_s), 0);
    auto* child = new ZEFUIElement(nullptr, parent.get(), new SpeakingContext(u"child"_s), 0);
    new ZEFUIElement(nullptr, child, new SpeakingContext(u"grandchild"_s), 0);
    parent->setDelegate(&delegate);
    TestLog::takeAll();
    parent.reset();
    QStringList lines = TestLog::takeAll();
    // the delegate's connections first, one line for each widget named like one of its members
    const QString unbind = u"warning: QObject::disconnect: Use the SIGNAL macro to unbind "_s;
    QVERIFY(lines.size() > 3);
    while (lines.size() > 3)
        QVERIFY2(lines.takeFirst().startsWith(unbind), "before the contexts");
    QCOMPARE(lines, QStringList({u"debug: grandchild"_s, u"debug: child"_s, u"debug: parent"_s}));
}

void TestZEFUIElementLifetime::foreignChildMayDieFirst()
{
    auto parent = std::make_unique<ZEFUIElement>(nullptr, nullptr, nullptr, 0);
    auto foreign = std::make_unique<ZEFUIElement>(nullptr, nullptr, nullptr, 0);
    parent->addChildElement(foreign.get());
    foreign.reset();
    QCOMPARE(parent->childElementCount(), 0);
    parent.reset();
}

void TestZEFUIElementLifetime::removedChildOutlivesItsFormerParent()
{
    auto parent = std::make_unique<ZEFUIElement>(nullptr, nullptr, nullptr, 0);
    auto child = std::make_unique<ZEFUIElement>(nullptr, parent.get(), nullptr, 0);
    parent->removeChildElement(child.get());
    parent.reset();
    child->setLocale(u"en"_s);
    child.reset();
}

void TestZEFUIElementLifetime::childOfTwoParents()
{
    auto first = std::make_unique<ZEFUIElement>(nullptr, nullptr, nullptr, 0);
    auto second = std::make_unique<ZEFUIElement>(nullptr, nullptr, nullptr, 0);
    const QPointer<ZEFUIElement> child(new ZEFUIElement(nullptr, first.get(), nullptr, 0));
    second->addChildElement(child);
    first.reset();
    QVERIFY(!child);
    QCOMPARE(second->childElementCount(), 0);
}

void TestZEFUIElementLifetime::ringOfElements()
{
    auto* first = new ZEFUIElement(nullptr, nullptr, nullptr, 0);
    const QPointer<ZEFUIElement> second(new ZEFUIElement(nullptr, first, nullptr, 0));
    second->addChildElement(first);
    delete first;
    QVERIFY(!second);
}

void TestZEFUIElementLifetime::ringOfElementsIsClosed()
{
    const QPointer<QWidget> host(new QWidget);
    ZEFUIElement first(host, nullptr, nullptr, 0);
    ZEFUIElement second(nullptr, &first, nullptr, 0);
    second.addChildElement(&first);
    first.close();
    QVERIFY(!host);
    second.removeChildElement(&first);
    first.removeChildElement(&second);
}

void TestZEFUIElementLifetime::parentHostDeletedWhileChildHostIsOpen()
{
    int contexts = 0;
    auto parent = std::make_unique<ZEFUIWidget>(u"labels"_s, u"en"_s, nullptr, Qt::Window,
                                                new CountingContext(&contexts));
    const QPointer<ZEFUIDialog> child(
        new ZEFUIDialog(u"names"_s, u"en"_s, parent.get(), Qt::Dialog, new CountingContext(&contexts)));
    const QPointer<ZEFUIElement> childElement(child->element());
    QCOMPARE(parent->element()->childElement(0), childElement);
    parent->show();
    child->show();
    parent.reset();
    QVERIFY(!child);
    QVERIFY(!childElement);
    QCOMPARE(contexts, 2);
}

void TestZEFUIElementLifetime::elementMayDieBeforeItsHost()
{
    ZEFUIDialog dialog(u"names"_s, u"en"_s, nullptr, Qt::Dialog, nullptr);
    QSignalSpy closed(&dialog, &ZEFUIDialog::respondClosed);
    dialog.show();
    delete dialog.element();
    QVERIFY(!dialog.element());
    dialog.findChild<QPushButton*>(u"okButton"_s)->click();
    QTest::keyClick(&dialog, Qt::Key_A);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    dialog.show();
    dialog.close();
    dialog.setFixedSize(true);
    QVERIFY(!ZEFUIElement::elementFromQObject(&dialog));
    QCOMPARE(closed.count(), 0);

    ZEFUIWidget widget(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr);
    widget.show();
    delete widget.element();
    widget.findChild<QPushButton*>(u"close"_s)->click();
    QTest::keyClick(&widget, Qt::Key_Escape);
    QVERIFY(!widget.isVisible());
}

void TestZEFUIElementLifetime::setClosingWithTheHost()
{
    QWidget host;
    host.show();
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    QSignalSpy closing(&element, &ZEFUIElement::closing);
    bool closingAlready = false;
    connect(&element, &ZEFUIElement::closing, this,
            [&] { closingAlready = element.isClosing() && !host.isVisible(); });
    element.setClosing(true);
    QVERIFY(element.isClosing());
    QVERIFY(closingAlready);
    QVERIFY(!ZEFUIElementPrivate::get(&element)->mayRaise);
    QCOMPARE(element.widget(), &host);
    element.setClosing(true);
    QCOMPARE(closing.count(), 2); // every call
}

void TestZEFUIElementLifetime::setClosingForgetsTheHost()
{
    QWidget host;
    host.show();
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    QSignalSpy closing(&element, &ZEFUIElement::closing);
    element.setClosing(false);
    QVERIFY(element.isClosing());
    QVERIFY(!element.widget());
    QVERIFY(host.isVisible());
    QCOMPARE(closing.count(), 1);
    element.close();
    element.destroy();
    element.show();
    element.activateAndRaise();
    QVERIFY(!element.bringToFront(true));
    QVERIFY(host.isVisible());
    QCOMPARE(closing.count(), 1);
    TestLog::takeAll();
}

void TestZEFUIElementLifetime::setClosingAfterTheHostIsGone()
{
    auto host = std::make_unique<QWidget>();
    ZEFUIElement element(host.get(), nullptr, nullptr, 0);
    QSignalSpy closing(&element, &ZEFUIElement::closing);
    host.reset();
    element.setClosing(true);
    QCOMPARE(closing.count(), 1);
    QVERIFY(!element.widget());
}

void TestZEFUIElementLifetime::closingIsOneWay()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    element.setClosing(true);
    element.show();
    element.setFormPath(u"labels"_s);
    element.bringToFront(true);
    QVERIFY(element.isClosing());
}

void TestZEFUIElementLifetime::closeSelection()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    QCOMPARE(element.closeSelection(), 0);
    element.setCloseSelection(-3);
    QCOMPARE(element.closeSelection(), -3);
}

void TestZEFUIElementLifetime::closeAnswersAndDeletesAtOnce()
{
    int contexts = 0;
    const QPointer<ZEFUIWidget> host(
        new ZEFUIWidget(u"labels"_s, u"en"_s, nullptr, Qt::Window, new CountingContext(&contexts)));
    const QPointer<ZEFUIElement> element(host->element());
    QSignalSpy closing(element, &ZEFUIElement::closing);
    QList<int> answers;
    connect(host, &ZEFUIWidget::respondClosed, this,
            [&](ZEFPipeFacilityInvocationContext* context, int selection) {
                QVERIFY(context);
                QCOMPARE(contexts, 0);
                answers.append(selection);
            });
    host->show();
    element->setCloseSelection(4);
    element->close();
    QVERIFY(!host);
    QVERIFY(!element);
    QCOMPARE(answers, QList<int>{4});
    QCOMPARE(contexts, 1);
    QCOMPARE(closing.count(), 2); // in the host's close event, and by close() itself
}

void TestZEFUIElementLifetime::closeOfAFormlessHost()
{
    const QPointer<ZEFUIDialog> host(new ZEFUIDialog);
    QSignalSpy answers(host, &ZEFUIDialog::respondClosed);
    host->element()->close();
    QVERIFY(!host);
    QCOMPARE(answers.count(), 1);
}

void TestZEFUIElementLifetime::closeOfAPlainWidget()
{
    const QPointer<QWidget> host(new QWidget);
    ZEFUIElement element(host, nullptr, nullptr, 0);
    host->show();
    element.close();
    QVERIFY(!host);
    QVERIFY(element.isClosing());
    // the tick finds no widget, stops and touches nothing
    QTRY_VERIFY(!ZEFUIElementPrivate::get(&element)->housekeepingTimer.isActive());
    element.destroy();
}

void TestZEFUIElementLifetime::closeFromTheClosingSignal()
{
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"labels"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    host->show();
    connect(host->element(), &ZEFUIElement::closing, this, [&] {
        if (host)
            delete host;
    });
    host->element()->setClosing(true);
    QVERIFY(!host);
}

void TestZEFUIElementLifetime::closeDeletesAtOnceAfterAClick_data()
{
    QTest::addColumn<QString>("widget");
    QTest::newRow("push button") << u"okButton"_s;
    QTest::newRow("check box, which is toggled as well") << u"agree"_s;
}

void TestZEFUIElementLifetime::closeDeletesAtOnceAfterAClick()
{
    QFETCH(const QString, widget);
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    auto* button = host->findChild<QAbstractButton*>(widget);
    connect(button, &QAbstractButton::clicked, this, [&] { host->element()->close(); });
    button->click();
    QVERIFY(!host);
}

void TestZEFUIElementLifetime::delegateOfAClickMayCloseAtOnce()
{
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    ClosingDelegate delegate(host->element());
    host->element()->setDelegate(&delegate);
    auto* button = host->findChild<QPushButton*>(u"okButton"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!host);
    TestLog::take(
        u"warning: QObject::disconnect: Use the SIGNAL macro to unbind QPushButton::clicked(bool)"_s);
}

void TestZEFUIElementLifetime::closeWaitsWhileQtWorksWithAButton_data()
{
    QTest::addColumn<bool>("animated");
    QTest::newRow("pressed, as a shortcut does it") << true;
    QTest::newRow("released, as it loses the focus") << false;
}

void TestZEFUIElementLifetime::closeWaitsWhileQtWorksWithAButton()
{
    QFETCH(const bool, animated);
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    host->show();
    host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(host));
    const QPointer<QPushButton> button(host->findChild<QPushButton*>(u"okButton"_s));
    button->setFocus();
    QTRY_VERIFY(button->hasFocus());
    FormCloser closer(host->element(), animated ? u"pressed"_s : u"released"_s);
    host->element()->connectSlotsByName(&closer);
    if (animated) {
        button->animateClick();
    } else {
        button->setDown(true);
        host->findChild<QWidget*>(u"agree"_s)->setFocus();
    }
    QCOMPARE(closer.closed, 1);
    QVERIFY(button);
    QTRY_VERIFY(!host);
}

void TestZEFUIElementLifetime::closeWaitsForAChildThatIsBeingShown()
{
    const QPointer<ZEFUIDialog> host(new ZEFUIDialog(u"labels"_s, u"en"_s, nullptr, Qt::Dialog, nullptr));
    const QPointer<ZEFUIDialog> child(new ZEFUIDialog(u"labels"_s, u"en"_s, host, Qt::Dialog, nullptr));
    connect(child, &ZEFUIDialog::dialog_show, this, [&] {
        host->element()->close();
        QVERIFY(child);
    });
    child->show();
    QTRY_VERIFY(!host);
    QVERIFY(!child);
}

void TestZEFUIElementLifetime::closeWaitsForASignalOfAChildsForm()
{
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"labels"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    auto* child = new ZEFUIWidget(u"names"_s, u"en"_s, host, Qt::Window, nullptr);
    const QPointer<QLineEdit> edit(child->findChild<QLineEdit*>(u"nameEdit"_s));
    FormCloser closer(host->element(), u"returnPressed"_s);
    host->element()->connectSlotsByName(&closer); // the child's widgets belong to the host too
    QTest::keyClick(edit.data(), Qt::Key_Return);
    QCOMPARE(closer.closed, 1);
    QVERIFY(edit);
    QTRY_VERIFY(!host);
    QVERIFY(!edit);
}

void TestZEFUIElementLifetime::closeWaitsForAChildThatDies_data()
{
    QTest::addColumn<bool>("dialog");
    QTest::newRow("dialog") << true;
    QTest::newRow("widget") << false;
}

void TestZEFUIElementLifetime::closeWaitsForAChildThatDies()
{
    QFETCH(const bool, dialog);
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"labels"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    QWidget* child = nullptr;
    if (dialog)
        child = new ZEFUIDialog(u"names"_s, u"en"_s, host, Qt::Dialog, nullptr);
    else
        child = new ZEFUIWidget(u"names"_s, u"en"_s, host, Qt::Window, nullptr);
    child->show();
    child->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(child));
    auto* edit = child->findChild<QLineEdit*>(u"nameEdit"_s);
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    FormCloser closer(host->element(), u"editingFinished"_s);
    host->element()->connectSlotsByName(&closer);
    // Qt moves the focus when the child's window goes.
    delete child;
    QCOMPARE(closer.closed, 1);
    QVERIFY(host);
    QTRY_VERIFY(!host);
}

void TestZEFUIElementLifetime::slotOfAFormWidgetMayClose_data()
{
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<QString>("deed");
    for (const bool dialog : {false, true}) {
        for (const QString& deed : {u"hideChild"_s, u"enableChild"_s, u"showChild"_s, u"updateProperties"_s,
                                    u"setChildProperty"_s, u"setChildFocus"_s, u"close"_s})
            QTest::addRow("%s, %s", dialog ? "dialog" : "widget", qPrintable(deed)) << dialog << deed;
    }
}

void TestZEFUIElementLifetime::slotOfAFormWidgetMayClose()
{
    QFETCH(bool, dialog);
    QFETCH(QString, deed);
    int contexts = 0;
    int answers = 0;
    QPointer<QWidget> host;
    if (dialog) {
        auto* made =
            new ZEFUIDialog(u"names"_s, u"en"_s, nullptr, Qt::Dialog, new CountingContext(&contexts));
        connect(made, &ZEFUIDialog::respondClosed, this, [&] { ++answers; });
        host = made;
    } else {
        auto* made =
            new ZEFUIWidget(u"names"_s, u"en"_s, nullptr, Qt::Window, new CountingContext(&contexts));
        connect(made, &ZEFUIWidget::respondClosed, this, [&] { ++answers; });
        host = made;
    }
    const QPointer<ZEFUIElement> element(ZEFUIElement::elementFromQObject(host));
    host->show();
    host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(host));
    auto* edit = host->findChild<QLineEdit*>(u"nameEdit"_s);
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    QTest::keyClick(edit, Qt::Key_A);
    FormCloser closer(element, u"editingFinished"_s);
    element->connectSlotsByName(&closer);
    ZEFDictionary dictionary{{u"key"_s, u"2"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    if (deed == u"hideChild")
        element->hideChild(u"nameEdit"_s);
    else if (deed == u"enableChild")
        element->enableChild(u"nameEdit"_s, false);
    else if (deed == u"showChild")
        element->showChild(u"nameEdit"_s, u"key"_s, &list);
    else if (deed == u"updateProperties")
        element->updateProperties({{u"nameEdit_visible"_s, u"false"_s}});
    else if (deed == u"setChildProperty")
        element->setChildProperty(u"nameEdit"_s, u"enabled"_s, false);
    else if (deed == u"setChildFocus")
        element->setChildFocus(u"count"_s);
    else
        host->close();
    QTRY_VERIFY(!host);
    QCOMPARE(closer.closed, 1);
    QCOMPARE(answers, 1);
    QCOMPARE(contexts, 1);
    TestLog::take(u"debug: set property on "_s);
}

void TestZEFUIElementLifetime::slotOfDestroyedMayUseTheForm_data()
{
    QTest::addColumn<QString>("deed");
    for (const QString& deed : {u"interpolate"_s, u"updateProperties"_s, u"setChildProperties"_s,
                                u"setChildProperty"_s, u"childProperty"_s, u"connectSlotsByName"_s})
        QTest::addRow("%s", qPrintable(deed)) << deed;
}

void TestZEFUIElementLifetime::slotOfDestroyedMayUseTheForm()
{
    QFETCH(const QString, deed);
    const auto host = std::make_unique<ZEFUIWidget>(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr);
    ZEFUIElement* element = host->element();
    QWidget* form = host->layout()->itemAt(0)->widget();
    ZEFDictionary dictionary{{u"key"_s, u"2"_s}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    int destroyed = 0;
    const auto use = [&] {
        ++destroyed;
        if (deed == u"interpolate")
            element->interpolate(list);
        else if (deed == u"updateProperties")
            element->updateProperties({{u"nameEdit_visible"_s, u"false"_s}});
        else if (deed == u"setChildProperties")
            element->setChildProperties(u"icon"_s, QPixmap(1, 1), QString());
        else if (deed == u"setChildProperty")
            element->setChildProperty(u"nameEdit"_s, u"enabled"_s, false);
        else if (deed == u"childProperty")
            element->childProperty(u"nameEdit"_s, u"enabled"_s);
        else
            element->connectSlotsByName(this);
    };
    connect(form, &QObject::destroyed, this, use);
    connect(host->findChild<QCheckBox*>(u"agree"_s), &QObject::destroyed, this, use);
    delete form;
    QCOMPARE(destroyed, 2);
    TestLog::take(u"debug: set property on "_s);
}

void TestZEFUIElementLifetime::whatDeletesItsChildrenCountsAsGone()
{
    const auto host = std::make_unique<ZEFUIWidget>(u"names"_s, u"en"_s, nullptr, Qt::Window, nullptr);
    QWidget* form = host->layout()->itemAt(0)->widget();
    const QString name = form->objectName();
    ZEFUIElement* element = host->element();
    QCOMPARE(element->childProperty(name, u"enabled"_s), QVariant(true));
    QVariant meanwhile(true);
    connect(host->findChild<QCheckBox*>(u"agree"_s), &QObject::destroyed, this,
            [&] { meanwhile = element->childProperty(name, u"enabled"_s); });
    delete form;
    QVERIFY(!meanwhile.isValid());
}

void TestZEFUIElementLifetime::destroyTwice()
{
    const QPointer<QWidget> host(new QWidget);
    ZEFUIElement element(host, nullptr, nullptr, 0);
    element.destroy();
    QVERIFY(!host);
    element.destroy();
    element.widgetDestroyed();
    QVERIFY(!element.widget());
}

void TestZEFUIElementLifetime::showShowsAHiddenHost()
{
    ZEFUIWidget host(u"labels"_s, u"en"_s, nullptr, Qt::Window, nullptr);
    QVERIFY(!host.isVisible());
    host.element()->show();
    QVERIFY(host.isVisible());
}

void TestZEFUIElementLifetime::tickShowsAHiddenHost()
{
    ZEFUIWidget host(u"labels"_s, u"en"_s, nullptr, Qt::Window, nullptr);
    QTRY_VERIFY(host.isVisible());
    host.hide();
    QTRY_VERIFY(host.isVisible());
}

void TestZEFUIElementLifetime::tickDestroysAClosedHost()
{
    const QPointer<ZEFUIWidget> host(new ZEFUIWidget(u"labels"_s, u"en"_s, nullptr, Qt::Window, nullptr));
    QTimer& timer = ZEFUIElementPrivate::get(host->element())->housekeepingTimer;
    host->element()->setClosing(true);
    QVERIFY(timer.isActive());
    host->element()->housekeeping();
    QVERIFY(!timer.isActive());
    QVERIFY(host); // a millisecond later
    QTRY_VERIFY(!host);
}

void TestZEFUIElementLifetime::tickAfterForgettingStops()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    QSignalSpy closing(&element, &ZEFUIElement::closing);
    element.setClosing(false);
    QCOMPARE(closing.count(), 1);
    element.housekeeping();
    QVERIFY(!ZEFUIElementPrivate::get(&element)->housekeepingTimer.isActive());
    QCOMPARE(closing.count(), 1);

    ZEFUIElement forgotten(&host, nullptr, nullptr, 0);
    QSignalSpy forgottenClosing(&forgotten, &ZEFUIElement::closing);
    forgotten.widgetDestroyed();
    forgotten.housekeeping();
    QCOMPARE(forgottenClosing.count(), 1);
    QVERIFY(forgotten.isClosing());
}

void TestZEFUIElementLifetime::tickRestoresTheGeometry()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    ZEFUIElementPrivate* d = ZEFUIElementPrivate::get(&element);
    d->savedPosition = QPoint(120, 130);
    d->savedSize = QSize(310, 220);
    d->geometryPending = true;
    d->mayRaise = false;
    element.housekeeping();
    QVERIFY(d->geometryPending);
    d->mayRaise = true;
    TestLog::takeAll();
    element.housekeeping();
    QVERIFY(!d->geometryPending);
    QCOMPARE(host.size(), QSize(310, 220));
    QCOMPARE(host.pos(), QPoint(120, 130));
    QCOMPARE(TestLog::takeAll(),
             QStringList(u"log: ZEFUIDialog Activate and raise window "_s
                         + QString::number(reinterpret_cast<quintptr>(&element), 16)));
    QVERIFY(!host.isVisible()); // that tick does nothing else
}

void TestZEFUIElementLifetime::geometryStepMayEndTheElement_data()
{
    QTest::addColumn<bool>("resize");
    QTest::addColumn<bool>("host");
    QTest::newRow("resize, element deleted") << true << false;
    QTest::newRow("move, element deleted") << false << false;
    QTest::newRow("resize, host forgotten") << true << true;
    QTest::newRow("move, host forgotten") << false << true;
}

void TestZEFUIElementLifetime::geometryStepMayEndTheElement()
{
    QFETCH(bool, resize);
    QFETCH(bool, host);
    GeometryHost widget;
    const QPointer<ZEFUIElement> element(new ZEFUIElement(&widget, nullptr, nullptr, 0));
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    ZEFUIElementPrivate* d = ZEFUIElementPrivate::get(element);
    d->savedPosition = widget.pos() + QPoint(30, 40);
    d->savedSize = widget.size() + QSize(50, 60);
    d->geometryPending = true;
    const auto act = [&] {
        if (host)
            element->widgetDestroyed();
        else
            delete element;
    };
    (resize ? widget.onResize : widget.onMove) = act;
    TestLog::takeAll();
    element->housekeeping();
    QCOMPARE(element.isNull(), !host);
    QCOMPARE(TestLog::take(u"log: ZEFUIDialog Activate"_s), QStringList());
    widget.onResize = nullptr;
    widget.onMove = nullptr;
    delete element;
}

void TestZEFUIElementLifetime::tickThatMayNotRaise()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    ZEFUIElementPrivate::get(&element)->mayRaise = false;
    TestLog::takeAll();
    element.housekeeping();
    QCOMPARE(TestLog::takeAll(), QStringList(u"log: Not Bringing to front!"_s));
    QVERIFY(!host.isVisible());
}

void TestZEFUIElementLifetime::activateAndRaiseWritesItsLine()
{
    QWidget host;
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    TestLog::takeAll();
    element.activateAndRaise();
    QCOMPARE(TestLog::takeAll(),
             QStringList(u"log: ZEFUIDialog Activate and raise window "_s
                         + QString::number(reinterpret_cast<quintptr>(&element), 16)));
}

void TestZEFUIElementLifetime::activateAndRaiseActivates()
{
    QWidget host;
    host.setGeometry(100, 100, 200, 100);
    QWidget other;
    other.setGeometry(400, 100, 200, 100);
    ZEFUIElement element(&host, nullptr, nullptr, 0);
    ZEFUIElementPrivate::get(&element)->housekeepingTimer.stop();
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!host.isActiveWindow());
    element.activateAndRaise();
    QTRY_VERIFY(host.isActiveWindow());
}

void TestZEFUIElementLifetime::deletedInsideTheTick()
{
    auto* host = new QWidget;
    const QPointer<ZEFUIElement> element(new ZEFUIElement(host, nullptr, nullptr, 0));
    connect(element, &ZEFUIElement::closing, this, [&] { delete element; });
    delete host;
    QTRY_VERIFY(!element);
}

void TestZEFUIElementLifetime::lookups()
{
    ZEFUIDialog dialog(u"names"_s, u"en"_s, nullptr, Qt::Dialog, nullptr);
    auto* button = dialog.findChild<QPushButton*>(u"okButton"_s);
    QCOMPARE(ZEFUIElement::elementFromQObject(&dialog), dialog.element());
    QVERIFY(!ZEFUIElement::elementFromQObject(button));
    QCOMPARE(ZEFUIElement::elementFromChild(button), dialog.element());
    QCOMPARE(ZEFUIElement::elementFromChild(&dialog), dialog.element());
    QCOMPARE(ZEFUIElement::dialogFromChild(button), &dialog);
    QCOMPARE(ZEFUIElement::dialogFromChild(&dialog), &dialog);
    QVERIFY(!ZEFUIElement::widgetFromChild(button));

    auto* inner = new ZEFUIWidget(u"labels"_s, u"en"_s, &dialog, Qt::WindowFlags(), nullptr);
    auto* label = inner->findChild<QWidget*>(u"one"_s);
    QCOMPARE(ZEFUIElement::elementFromChild(label), inner->element());
    // a host that has a parent is not the top-most ancestor
    QVERIFY(!ZEFUIElement::widgetFromChild(label));
    QCOMPARE(ZEFUIElement::dialogFromChild(label), &dialog);

    const ZEFUIWidget top(u"labels"_s, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    QCOMPARE(ZEFUIElement::widgetFromChild(top.findChild<QWidget*>(u"one"_s)), &top);
    QVERIFY(!ZEFUIElement::dialogFromChild(top.findChild<QWidget*>(u"one"_s)));
}

void TestZEFUIElementLifetime::lookupsWithNull()
{
    QVERIFY(!ZEFUIElement::elementFromQObject(nullptr));
    QVERIFY(!ZEFUIElement::elementFromChild(nullptr));
    QVERIFY(!ZEFUIElement::dialogFromChild(nullptr));
    QVERIFY(!ZEFUIElement::widgetFromChild(nullptr));
    QObject stranger;
    QVERIFY(!ZEFUIElement::elementFromChild(&stranger));
}

class DerivedDialog : public ZEFUIDialog {
    Q_OBJECT
};

class DerivedWidget : public ZEFUIWidget {
    Q_OBJECT
};

void TestZEFUIElementLifetime::derivedHostIsNotRecognised()
{
    DerivedDialog derived;
    QVERIFY(!ZEFUIElement::elementFromQObject(&derived));
    QVERIFY(!ZEFUIElement::dialogFromChild(&derived));
    const ZEFUIWidget child(&derived);
    QVERIFY(child.element());
    QCOMPARE(derived.element()->childElementCount(), 0);

    DerivedWidget widget;
    QVERIFY(!ZEFUIElement::elementFromQObject(&widget));
    QVERIFY(!ZEFUIElement::elementFromChild(&widget));
    QVERIFY(!ZEFUIElement::widgetFromChild(&widget));
    const ZEFUIWidget inner(&widget);
    QCOMPARE(widget.element()->childElementCount(), 0);
}

ZEF_TEST_MAIN(TestZEFUIElementLifetime)
#include "test_zefuielement_lifetime.moc"
