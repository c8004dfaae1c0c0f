// Slots that connectSlotsByName() connected and that close their form in the middle of Qt's work with a
// widget.

#include <ElementTest.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QDial>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <functional>

namespace {

using Trigger = std::function<void(QWidget*)>;

//! A form with one widget, called "it".
struct Case {
    std::function<QWidget*()> make;
    Trigger trigger;
    QString signal;
};

template <class Widget> std::function<QWidget*()> make()
{
    return [] { return new Widget; };
}

template <class Widget> QWidget* withItems()
{
    auto* widget = new Widget;
    widget->addItems({u"first"_s, u"second"_s});
    return widget;
}

QWidget* checkable(QAbstractButton* button)
{
    button->setCheckable(true);
    return button;
}

Trigger key(int key)
{
    return [key](QWidget* widget) { QTest::keyClick(widget, static_cast<Qt::Key>(key)); };
}

} // namespace

Q_DECLARE_METATYPE(Case)
Q_DECLARE_METATYPE(Trigger)

//! Reacts to the first signal that the test waits for.
class Receiver : public QObject {
    Q_OBJECT

public:
    QString awaited;
    std::function<void()> reaction;
    int calls = 0;
    const QObject* lastSender = nullptr;

public Q_SLOTS:
    void on_it_toggled(bool) { react(u"toggled"_s); }
    void on_it_stateChanged(int) { react(u"stateChanged"_s); }
    void on_it_pressed() { react(u"pressed"_s); }
    void on_it_released() { react(u"released"_s); }
    void on_it_clicked(bool) { react(u"clicked"_s); }
    void on_it_textChanged(const QString&) { react(u"textChanged"_s); }
    void on_it_textChanged() { react(u"textChanged"_s); }
    void on_it_textEdited(const QString&) { react(u"textEdited"_s); }
    void on_it_editingFinished() { react(u"editingFinished"_s); }
    void on_it_returnPressed() { react(u"returnPressed"_s); }
    void on_it_cursorPositionChanged(int, int) { react(u"cursorPositionChanged"_s); }
    void on_it_valueChanged(int) { react(u"valueChanged"_s); }
    void on_it_valueChanged(double) { react(u"valueChanged"_s); }
    void on_it_currentIndexChanged(int) { react(u"currentIndexChanged"_s); }
    void on_it_currentRowChanged(int) { react(u"currentRowChanged"_s); }
    void on_it_itemSelectionChanged() { react(u"itemSelectionChanged"_s); }
    void on_it_currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*) { react(u"currentItemChanged"_s); }
    void on_it_cellChanged(int, int) { react(u"cellChanged"_s); }
    void on_it_currentChanged(int) { react(u"currentChanged"_s); }
    void on_it_dateChanged(QDate) { react(u"dateChanged"_s); }
    void on_it_destroyed(QObject*) { react(u"destroyed"_s); }

private:
    void react(const QString& signal)
    {
        if (signal != awaited)
            return;
        ++calls;
        lastSender = sender();
        if (reaction)
            std::exchange(reaction, {})();
    }
};

class TestNamedSlotWatch : public ElementTest {
    Q_OBJECT

protected:
    void prepare() override;
    void tidyUp() override;

private Q_SLOTS:
    void slotMayCloseTheForm_data();
    void slotMayCloseTheForm();
    void eventLoopInTheSlotMayCloseTheForm_data() { slotMayCloseTheForm_data(); }
    void eventLoopInTheSlotMayCloseTheForm();
    void aClickClosesAtOnce();
    void aClickAfterAnEndedSlotClosesAtOnce();
    void eventLoopInTheSlotOfAClickKeepsTheForm();
    void senderIsKnown();
    void slotMayDisconnectItsSender();
    void slotMayDeleteItsSender();
    void slotMayDeleteTheHost();
    void slotOfAnotherFormClosesAtOnce();
    void slotOfAChildsFormMayCloseTheParent();
    void slotOfAFormWithoutItsElementMayCloseTheParent_data();
    void slotOfAFormWithoutItsElementMayCloseTheParent();
    void slotOfALayoutThatDiesMayClose();
    void watchGoesWithAWidgetToAnotherHost();
    void loopsWithinLoops();
    void connectsTwiceWhenCalledTwice();

private:
    void openForm(bool dialog, QWidget* it);
    ZEFUIElement* element() const { return ZEFUIElement::elementFromQObject(m_host); }
    //! Runs \a work from an event loop, as a service does.
    static void fromTheEventLoop(const std::function<void()>& work);
    //! Runs an event loop for as long as it takes to destroy a form that is closed now.
    static void outliveAClosedForm();

    QPointer<QWidget> m_host;
    QPointer<QWidget> m_it;
    Receiver m_receiver;
    int m_answers = 0;
    int m_contexts = 0;
};

void TestNamedSlotWatch::prepare()
{
    ElementTest::prepare();
    TestLog::allow(
        QRegularExpression(u"debug: QMetaObject::connectSlotsByName: No matching signal for on_it_.*"_s));
    m_answers = 0;
    m_contexts = 0;
    m_receiver.awaited.clear();
    m_receiver.reaction = {};
    m_receiver.calls = 0;
}

void TestNamedSlotWatch::tidyUp()
{
    delete m_host;
}

void TestNamedSlotWatch::openForm(bool dialog, QWidget* it)
{
    auto* context = new CountingContext(&m_contexts);
    if (dialog) {
        auto* host = new ZEFUIDialog(nullptr, Qt::Dialog, context);
        connect(host, &ZEFUIDialog::respondClosed, this, [this] { ++m_answers; });
        m_host = host;
    } else {
        auto* host = new ZEFUIWidget(nullptr, Qt::Window, context);
        connect(host, &ZEFUIWidget::respondClosed, this, [this] { ++m_answers; });
        m_host = host;
    }
    it->setParent(m_host);
    it->setObjectName(u"it"_s);
    m_it = it;
    element()->connectSlotsByName(&m_receiver);
    m_host->show();
}

void TestNamedSlotWatch::fromTheEventLoop(const std::function<void()>& work)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        work();
        loop.quit();
    });
    loop.exec();
}

void TestNamedSlotWatch::outliveAClosedForm()
{
    auto* other = new ZEFUIWidget(nullptr, Qt::Window);
    QEventLoop loop;
    connect(other, &QObject::destroyed, &loop, &QEventLoop::quit);
    other->close();
    loop.exec();
}

void TestNamedSlotWatch::slotMayCloseTheForm_data()
{
    const auto items = [](QWidget* (*make)()) { return std::function<QWidget*()>(make); };
    const auto tabs = [] {
        auto* widget = new QTabWidget;
        widget->addTab(new QWidget, u"first"_s);
        widget->addTab(new QWidget, u"second"_s);
        return widget;
    };
    const auto tree = [] {
        auto* widget = new QTreeWidget;
        new QTreeWidgetItem(widget, {u"first"_s});
        new QTreeWidgetItem(widget, {u"second"_s});
        return widget;
    };
    const auto group = [] {
        auto* widget = new QGroupBox(u"group"_s);
        widget->setCheckable(true);
        return widget;
    };
    const auto animate = [](QWidget* widget) { static_cast<QAbstractButton*>(widget)->animateClick(); };
    const auto select = [](QWidget* widget) { static_cast<QListWidget*>(widget)->setCurrentRow(1); };
    const QList<std::pair<const char*, Case>> cases = {
        {"QCheckBox, toggled", {make<QCheckBox>(), key(Qt::Key_Space), u"toggled"_s}},
        {"QCheckBox, stateChanged", {make<QCheckBox>(), key(Qt::Key_Space), u"stateChanged"_s}},
        {"QRadioButton", {make<QRadioButton>(), key(Qt::Key_Space), u"toggled"_s}},
        {"QPushButton, toggled",
         {[] { return checkable(new QPushButton); }, key(Qt::Key_Space), u"toggled"_s}},
        {"QPushButton, pressed", {make<QPushButton>(), animate, u"pressed"_s}},
        {"QPushButton, released", {make<QPushButton>(), key(Qt::Key_Space), u"released"_s}},
        {"QToolButton", {[] { return checkable(new QToolButton); }, key(Qt::Key_Space), u"toggled"_s}},
        {"QGroupBox", {group, key(Qt::Key_Space), u"toggled"_s}},
        {"QLineEdit, textChanged", {make<QLineEdit>(), key(Qt::Key_A), u"textChanged"_s}},
        {"QLineEdit, textEdited", {make<QLineEdit>(), key(Qt::Key_A), u"textEdited"_s}},
        {"QLineEdit, editingFinished", {make<QLineEdit>(), key(Qt::Key_Return), u"editingFinished"_s}},
        {"QLineEdit, returnPressed", {make<QLineEdit>(), key(Qt::Key_Return), u"returnPressed"_s}},
        {"QLineEdit, cursorPositionChanged", {make<QLineEdit>(), key(Qt::Key_A), u"cursorPositionChanged"_s}},
        {"QSpinBox", {make<QSpinBox>(), key(Qt::Key_Up), u"valueChanged"_s}},
        {"QDoubleSpinBox", {make<QDoubleSpinBox>(), key(Qt::Key_Up), u"valueChanged"_s}},
        {"QDateEdit", {make<QDateEdit>(), key(Qt::Key_Up), u"dateChanged"_s}},
        {"QComboBox", {items(withItems<QComboBox>), key(Qt::Key_Down), u"currentIndexChanged"_s}},
        {"QSlider", {make<QSlider>(), key(Qt::Key_Up), u"valueChanged"_s}},
        {"QDial", {make<QDial>(), key(Qt::Key_Up), u"valueChanged"_s}},
        {"QScrollBar", {make<QScrollBar>(), key(Qt::Key_Down), u"valueChanged"_s}},
        {"QTextEdit", {make<QTextEdit>(), key(Qt::Key_A), u"textChanged"_s}},
        {"QPlainTextEdit", {make<QPlainTextEdit>(), key(Qt::Key_A), u"textChanged"_s}},
        {"QListWidget, currentRowChanged",
         {items(withItems<QListWidget>), key(Qt::Key_Down), u"currentRowChanged"_s}},
        {"QListWidget, itemSelectionChanged",
         {items(withItems<QListWidget>), select, u"itemSelectionChanged"_s}},
        {"QTreeWidget", {tree, key(Qt::Key_Down), u"currentItemChanged"_s}},
        {"QTableWidget",
         {[] { return new QTableWidget(2, 2); },
          [](QWidget* widget) {
              static_cast<QTableWidget*>(widget)->setItem(0, 0, new QTableWidgetItem(u"text"_s));
          },
          u"cellChanged"_s}},
        {"QTabWidget",
         {tabs, [](QWidget* widget) { static_cast<QTabWidget*>(widget)->setCurrentIndex(1); },
          u"currentChanged"_s}},
    };
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<Case>("form");
    for (const auto& [name, form] : cases) {
        QTest::addRow("%s in a widget host", name) << false << form;
        QTest::addRow("%s in a dialog", name) << true << form;
    }
}

void TestNamedSlotWatch::slotMayCloseTheForm()
{
    QFETCH(const bool, dialog);
    QFETCH(const Case, form);
    openForm(dialog, form.make());
    m_receiver.awaited = form.signal;
    m_receiver.reaction = [&] {
        element()->close();
        QCOMPARE(m_answers, 1); // at once
        QVERIFY(!m_host->isVisible());
    };
    fromTheEventLoop([&] {
        form.trigger(m_it);
        QVERIFY(m_it); // Qt was in the middle of the widget's own work
    });
    QVERIFY(m_receiver.calls > 0);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestNamedSlotWatch::eventLoopInTheSlotMayCloseTheForm()
{
    QFETCH(const bool, dialog);
    QFETCH(const Case, form);
    openForm(dialog, form.make());
    m_receiver.awaited = form.signal;
    m_receiver.reaction = [&] {
        QTimer::singleShot(0, element(), [&] { element()->close(); });
        outliveAClosedForm();
        QCOMPARE(m_answers, 1);
        QVERIFY(m_it);
        QCOMPARE(m_contexts, 0);
    };
    fromTheEventLoop([&] {
        form.trigger(m_it);
        QVERIFY(m_it);
    });
    QVERIFY(m_receiver.calls > 0);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestNamedSlotWatch::aClickClosesAtOnce()
{
    openForm(true, new QPushButton);
    m_receiver.awaited = u"clicked"_s;
    bool goneAtOnce = false;
    m_receiver.reaction = [&] {
        element()->close();
        goneAtOnce = !m_host;
    };
    QTest::mouseClick(m_it.data(), Qt::LeftButton);
    QVERIFY(goneAtOnce);
    QCOMPARE(m_answers, 1);
}

void TestNamedSlotWatch::aClickAfterAnEndedSlotClosesAtOnce()
{
    // toggled() belongs to the click; its slot has ended when clicked() is emitted.
    openForm(false, new QCheckBox);
    m_receiver.awaited = u"toggled"_s;
    bool goneAtOnce = false;
    connect(static_cast<QCheckBox*>(m_it.data()), &QCheckBox::clicked, this, [&] {
        element()->close();
        goneAtOnce = !m_host;
    });
    fromTheEventLoop([&] { QTest::keyClick(m_it.data(), Qt::Key_Space); });
    QCOMPARE(m_receiver.calls, 1);
    QVERIFY(goneAtOnce);
}

void TestNamedSlotWatch::eventLoopInTheSlotOfAClickKeepsTheForm()
{
    openForm(true, new QPushButton);
    m_receiver.awaited = u"clicked"_s;
    m_receiver.reaction = [&] {
        QTimer::singleShot(0, element(), [&] { element()->close(); });
        outliveAClosedForm();
        QCOMPARE(m_answers, 1);
        QVERIFY(m_it);
        QCOMPARE(m_contexts, 0);
    };
    fromTheEventLoop([&] { QTest::mouseClick(m_it.data(), Qt::LeftButton); });
    QCOMPARE(m_receiver.calls, 1);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestNamedSlotWatch::senderIsKnown()
{
    openForm(false, new QCheckBox);
    m_receiver.awaited = u"toggled"_s;
    QTest::keyClick(m_it.data(), Qt::Key_Space);
    QCOMPARE(m_receiver.lastSender, m_it.data());
}

void TestNamedSlotWatch::slotMayDisconnectItsSender()
{
    openForm(false, new QCheckBox);
    m_receiver.awaited = u"toggled"_s;
    m_receiver.reaction = [&] {
        m_it->disconnect();
        element()->close();
    };
    fromTheEventLoop([&] {
        QTest::keyClick(m_it.data(), Qt::Key_Space);
        QVERIFY(m_it);
    });
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
}

void TestNamedSlotWatch::slotMayDeleteItsSender()
{
    openForm(false, new QScrollBar);
    m_receiver.awaited = u"destroyed"_s;
    m_receiver.reaction = [&] { element()->close(); };
    fromTheEventLoop([&] {
        delete m_it;
        QVERIFY(m_host);
    });
    QCOMPARE(m_receiver.calls, 1);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
}

void TestNamedSlotWatch::slotMayDeleteTheHost()
{
    // Not from the middle of Qt's work, but from a signal after which its sender does nothing.
    openForm(false, new QWidget);
    m_receiver.awaited = u"destroyed"_s;
    m_receiver.reaction = [&] { delete m_host; };
    m_it->setParent(nullptr);
    delete m_it;
    QVERIFY(!m_host);
    QCOMPARE(m_contexts, 1);
}

void TestNamedSlotWatch::slotOfAnotherFormClosesAtOnce()
{
    openForm(false, new QCheckBox);
    const QPointer<ZEFUIDialog> other(new ZEFUIDialog);
    other->show();
    m_receiver.awaited = u"toggled"_s;
    m_receiver.reaction = [&] {
        other->element()->close();
        QVERIFY(!other);
    };
    QTest::keyClick(m_it.data(), Qt::Key_Space);
    QCOMPARE(m_receiver.calls, 1);
    QVERIFY(m_host);
}

void TestNamedSlotWatch::slotOfAChildsFormMayCloseTheParent()
{
    auto* parent = new ZEFUIWidget(nullptr, Qt::Window);
    const QPointer<ZEFUIWidget> parentGuard(parent);
    auto* child = new ZEFUIDialog(u"names"_s, u"en"_s, parent, Qt::Dialog, nullptr);
    auto* it = new QCheckBox(child);
    it->setObjectName(u"it"_s);
    m_host = child;
    m_it = it;
    child->element()->connectSlotsByName(&m_receiver);
    m_receiver.awaited = u"toggled"_s;
    m_receiver.reaction = [&] { parent->element()->close(); };
    fromTheEventLoop([&] {
        QTest::keyClick(m_it.data(), Qt::Key_Space);
        QVERIFY(m_it);
    });
    QTRY_VERIFY(!parentGuard);
    QVERIFY(!m_host);
}

void TestNamedSlotWatch::slotOfAFormWithoutItsElementMayCloseTheParent_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<Trigger>("trigger");
    QTest::newRow("toggled") << u"toggled"_s << key(Qt::Key_Space);
    QTest::newRow("destroyed with its host")
        << u"destroyed"_s << Trigger([](QWidget* widget) { delete widget->window(); });
}

void TestNamedSlotWatch::slotOfAFormWithoutItsElementMayCloseTheParent()
{
    QFETCH(const QString, signal);
    QFETCH(const Trigger, trigger);
    auto* parent = new ZEFUIWidget(nullptr, Qt::Window);
    const QPointer<ZEFUIWidget> parentGuard(parent);
    auto* child = new ZEFUIDialog(u"names"_s, u"en"_s, parent, Qt::Dialog, nullptr);
    m_host = child;
    auto* it = new QCheckBox(child);
    it->setObjectName(u"it"_s);
    child->element()->connectSlotsByName(&m_receiver);
    delete child->element();
    m_receiver.awaited = signal;
    m_receiver.reaction = [&] { parent->element()->close(); };
    fromTheEventLoop([&] {
        trigger(it);
        QVERIFY(parentGuard);
    });
    QCOMPARE(m_receiver.calls, 1);
    QTRY_VERIFY(!parentGuard);
}

void TestNamedSlotWatch::slotOfALayoutThatDiesMayClose()
{
    openForm(false, new QWidget);
    m_it->setObjectName(u"another"_s);
    auto* layout = new QVBoxLayout(m_it);
    layout->setObjectName(u"it"_s);
    element()->connectSlotsByName(&m_receiver);
    m_receiver.awaited = u"destroyed"_s;
    m_receiver.reaction = [&] { element()->close(); };
    fromTheEventLoop([&] {
        delete layout;
        QVERIFY(m_host);
    });
    QCOMPARE(m_receiver.calls, 1);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
}

void TestNamedSlotWatch::watchGoesWithAWidgetToAnotherHost()
{
    openForm(false, new QSpinBox);
    const QPointer<QWidget> former(m_host);
    const QPointer<QWidget> it(m_it);
    openForm(true, new QWidget);
    it->setParent(m_host);
    delete former;
    m_receiver.awaited = u"valueChanged"_s;
    m_receiver.reaction = [&] { element()->close(); };
    fromTheEventLoop([&] {
        QTest::keyClick(it.data(), Qt::Key_Up);
        QVERIFY(it);
    });
    QCOMPARE(m_receiver.calls, 1);
    QTRY_VERIFY(!m_host);
    QVERIFY(!it);
}

void TestNamedSlotWatch::loopsWithinLoops()
{
    // The slot's event loop runs a slot that closes, in an event loop of its own.
    openForm(true, new QCheckBox);
    m_receiver.awaited = u"toggled"_s;
    m_receiver.reaction = [&] {
        m_receiver.reaction = [&] {
            QTimer::singleShot(0, element(), [&] { element()->close(); });
            outliveAClosedForm();
            QVERIFY(m_it);
        };
        fromTheEventLoop([&] { QTest::keyClick(m_it.data(), Qt::Key_Space); });
        QCOMPARE(m_answers, 1);
        outliveAClosedForm();
        QVERIFY(m_it);
    };
    fromTheEventLoop([&] {
        QTest::keyClick(m_it.data(), Qt::Key_Space);
        QVERIFY(m_it);
    });
    QCOMPARE(m_receiver.calls, 2);
    QTRY_VERIFY(!m_host);
    QCOMPARE(m_answers, 1);
    QCOMPARE(m_contexts, 1);
}

void TestNamedSlotWatch::connectsTwiceWhenCalledTwice()
{
    openForm(false, new QCheckBox);
    element()->connectSlotsByName(&m_receiver);
    m_receiver.awaited = u"toggled"_s;
    QTest::keyClick(m_it.data(), Qt::Key_Space);
    QCOMPARE(m_receiver.calls, 2);
}

ZEF_TEST_MAIN(TestNamedSlotWatch)
#include "test_namedslotwatch.moc"
