#include <ZEFTest.h>

#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>

#include <element/SignalWatch.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

using namespace Qt::StringLiterals;

class TestSignalWatch : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void hearsSignalsOfQtsWidgets();
    void passesOverClicks();
    void passesOverAClickThatUnchecksAnother_data();
    void passesOverAClickThatUnchecksAnother();
    void goesOnWhenASlotClicks();
    void goesOnWhenTheButtonItselfStartedIt();
    void hearsWhatAButtonAnnouncesBeforeItsClick_data();
    void hearsWhatAButtonAnnouncesBeforeItsClick();
    void passesOverTheLibrarysOwnSignals();
    void hearsCells();
    void endsWithTheTurnOfTheEventLoop();
    void endsWithoutAnEventLoop();
    void outlivesALoopInsideTheSlot();
    void forgets();
    void watchesOnce();
};

void TestSignalWatch::hearsSignalsOfQtsWidgets()
{
    QLineEdit edit;
    SignalWatch watch;
    watch.watch(&edit);
    QVERIFY(!watch.isSignalling());
    bool during = false;
    connect(&edit, &QLineEdit::textChanged, this, [&] { during = watch.isSignalling(); });
    edit.setText(u"a"_s);
    QVERIFY(during);
}

void TestSignalWatch::passesOverClicks()
{
    QPushButton button;
    QCheckBox box;
    SignalWatch watch;
    watch.watch(&button);
    watch.watch(&box);
    bool during = true;
    connect(&button, &QPushButton::clicked, this, [&] { during = watch.isSignalling(); });
    button.click();
    QVERIFY(!during);

    // toggled() comes before clicked() and has ended by then
    bool duringToggle = false;
    during = true;
    connect(&box, &QCheckBox::toggled, this, [&] { duringToggle = watch.isSignalling(); });
    connect(&box, &QCheckBox::clicked, this, [&] { during = watch.isSignalling(); });
    box.click();
    QVERIFY(duringToggle);
    QVERIFY(!during);
}

void TestSignalWatch::passesOverAClickThatUnchecksAnother_data()
{
    QTest::addColumn<bool>("grouped");
    QTest::newRow("by the parent") << false;
    QTest::newRow("by a group") << true;
}

void TestSignalWatch::passesOverAClickThatUnchecksAnother()
{
    QFETCH(const bool, grouped);
    QWidget form;
    QWidget box(&form);
    QRadioButton checked(grouped ? &box : &form);
    QRadioButton clicked(&form);
    QButtonGroup group;
    if (grouped) {
        group.addButton(&checked);
        group.addButton(&clicked);
    }
    checked.setChecked(true);
    SignalWatch watch;
    watch.watch(&checked);
    watch.watch(&clicked);
    bool duringToggle = false;
    bool during = true;
    connect(&checked, &QRadioButton::toggled, this, [&] { duringToggle = watch.isSignalling(); });
    connect(&clicked, &QRadioButton::clicked, this, [&] { during = watch.isSignalling(); });
    QTest::keyPress(&clicked, Qt::Key_Space);
    watch.forget();
    QTest::keyRelease(&clicked, Qt::Key_Space);
    QVERIFY(duringToggle);
    QVERIFY(!during);
}

void TestSignalWatch::goesOnWhenASlotClicks()
{
    QLineEdit edit;
    QCheckBox box;
    SignalWatch watch;
    watch.watch(&edit);
    watch.watch(&box);
    bool during = false;
    connect(&edit, &QLineEdit::textChanged, &box, &QCheckBox::click);
    connect(&box, &QCheckBox::clicked, this, [&] { during = watch.isSignalling(); });
    edit.setText(u"a"_s);
    QVERIFY(during);
}

// The click inside toggled() must not end what is heard of toggled(), although it all began with its button.
void TestSignalWatch::goesOnWhenTheButtonItselfStartedIt()
{
    QPushButton button;
    QCheckBox box;
    SignalWatch watch;
    watch.watch(&button);
    watch.watch(&box);
    QList<bool> during;
    connect(&button, &QPushButton::pressed, this, [&] { box.setChecked(true); });
    connect(&box, &QCheckBox::toggled, this, [&] { button.click(); });
    connect(&button, &QPushButton::clicked, this, [&] { during.append(watch.isSignalling()); });
    button.click();
    QCOMPARE(during.first(), true);
}

void TestSignalWatch::hearsWhatAButtonAnnouncesBeforeItsClick_data()
{
    QTest::addColumn<bool>("press");
    QTest::newRow("pressed") << true;
    QTest::newRow("released") << false;
}

void TestSignalWatch::hearsWhatAButtonAnnouncesBeforeItsClick()
{
    QFETCH(const bool, press);
    QPushButton button;
    SignalWatch watch;
    watch.watch(&button);
    bool during = false;
    connect(&button, press ? &QPushButton::pressed : &QPushButton::released, this,
            [&] { during = watch.isSignalling(); });
    if (!press) {
        button.setDown(true);
        watch.forget();
    }
    button.click();
    QVERIFY(during);
}

void TestSignalWatch::passesOverTheLibrarysOwnSignals()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(u"{2}(\\d*)"_s);
    SignalWatch watch;
    watch.watch(&edit);
    edit.setText(u"12"_s);
    QCOMPARE(edit.text(), u"12"_s);
    QVERIFY(!watch.isSignalling());
}

void TestSignalWatch::hearsCells()
{
    // Qt's line edit goes on after what a cell announces.
    ZEFFormatCell cell(nullptr, nullptr);
    SignalWatch watch;
    watch.watch(&cell);
    cell.setMaxLength(3);
    cell.setText(u"a"_s);
    QVERIFY(watch.isSignalling());
}

void TestSignalWatch::endsWithTheTurnOfTheEventLoop()
{
    QLineEdit edit;
    SignalWatch watch;
    watch.watch(&edit);
    QEventLoop loop;
    QTimer patience;
    patience.setSingleShot(true);
    connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
    QTimer look;
    connect(&look, &QTimer::timeout, &loop, [&] {
        if (!watch.isSignalling())
            loop.quit();
    });
    QTimer::singleShot(0, &loop, [&] {
        edit.setText(u"a"_s);
        look.start();
    });
    patience.start(10000);
    loop.exec();
    QVERIFY(!watch.isSignalling());
}

void TestSignalWatch::endsWithoutAnEventLoop()
{
    QLineEdit edit;
    SignalWatch watch;
    watch.watch(&edit);
    edit.setText(u"a"_s);
    QVERIFY(watch.isSignalling());
    for (int i = 0; i < 100 && watch.isSignalling(); ++i)
        QCoreApplication::processEvents();
    QVERIFY(!watch.isSignalling());
}

void TestSignalWatch::outlivesALoopInsideTheSlot()
{
    QLineEdit edit;
    SignalWatch watch;
    watch.watch(&edit);
    bool afterwards = false;
    connect(&edit, &QLineEdit::textChanged, this, [&] {
        QEventLoop inner;
        QTimer::singleShot(1, &inner, &QEventLoop::quit);
        inner.exec();
        afterwards = watch.isSignalling();
    });
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        edit.setText(u"a"_s);
        loop.quit();
    });
    loop.exec();
    QVERIFY(afterwards);
}

void TestSignalWatch::forgets()
{
    QLineEdit edit;
    SignalWatch watch;
    watch.forget();
    watch.watch(&edit);
    edit.setText(u"a"_s);
    watch.forget();
    QVERIFY(!watch.isSignalling());
    edit.setText(u"b"_s);
    QVERIFY(watch.isSignalling());
}

void TestSignalWatch::watchesOnce()
{
    class Counted : public QLineEdit {
    public:
        int heard() const { return receivers("2textChanged(QString)"); }
    };
    Counted edit;
    SignalWatch watch;
    const int before = edit.heard();
    watch.watch(&edit);
    watch.watch(&edit);
    QCOMPARE(edit.heard(), before + 1);
}

ZEF_TEST_MAIN(TestSignalWatch)
#include "test_signalwatch.moc"
