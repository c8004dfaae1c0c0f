// The dialog host sends Enter and Return to its command link.

#include "commandLinkProbing.h"
#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFCommandLinkButton.h>
#include <ZEFUIDialog.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>

namespace {

constexpr QSize ButtonSize(60, 40);

} // namespace

class TestCommandLinksInDialogs : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        allowPlatformLines();
        // a connection of the element that is known to do nothing
        TestLog::allow(QStringLiteral("warning: QObject::connect: No such signal ZEFUIDialog::destoyed()"));
    }

private Q_SLOTS:
    void receiverDeletesTheDialog_data();
    void receiverDeletesTheDialog();
    void dialogSendsReturn_data();
    void dialogSendsReturn();
    void dialogTakesTheFirstDefault();
    void dialogSkipsHiddenDefaults();
    void dialogWithDisabledDefaultDoesNothing_data();
    void dialogWithDisabledDefaultDoesNothing();
    void dialogWithoutDefaultGoesOn();
    void dialogAsksLinksOfAllDescendants_data();
    void dialogAsksLinksOfAllDescendants();
    void dialogSendsNoOtherKey();
};

void TestCommandLinksInDialogs::receiverDeletesTheDialog_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("return that went to the dialog") << false;
}

void TestCommandLinksInDialogs::receiverDeletesTheDialog()
{
    QFETCH(const bool, byMouse);
    QPointer<ZEFUIDialog> dialog(new ZEFUIDialog);
    auto* button = new ZEFCommandLinkButton(dialog);
    button->setDefault(true);
    button->setGeometry(QRect(QPoint(0, 0), ButtonSize));
    dialog->resize(200, 100);
    QVERIFY(showActive(*dialog));
    int keys = 0;
    connect(dialog, &ZEFUIDialog::dialog_key_pressed, this, [&] { ++keys; });
    connect(button, &ZEFCommandLinkButton::clicked, this, [&] { delete dialog.data(); });
    if (byMouse) {
        QTest::mouseClick(dialog->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    } else {
        QKeyEvent event = keyPress(Qt::Key_Return);
        QCoreApplication::sendEvent(dialog, &event);
    }
    QTRY_VERIFY(!dialog);
    QCOMPARE(keys, 0);
}

void TestCommandLinksInDialogs::dialogSendsReturn_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void TestCommandLinksInDialogs::dialogSendsReturn()
{
    QFETCH(const int, key);
    ZEFUIDialog dialog;
    QWidget group(&dialog);
    ZEFCommandLinkButton other(&group);
    ZEFCommandLinkButton button(&group);
    QLineEdit edit(&dialog);
    button.setDefault(true);
    QVERIFY(showActive(dialog));
    edit.setFocus();
    QTRY_VERIFY(edit.hasFocus());
    int keys = 0;
    connect(&dialog, &ZEFUIDialog::dialog_key_pressed, this, [&] { ++keys; });
    const Clicks clicks(&button);
    const Clicks otherClicks(&other);
    QTest::keyPress(&edit, Qt::Key(key));
    QCOMPARE(clicks.values, QList<bool>({false}));
    QVERIFY(otherClicks.values.isEmpty());
    QCOMPARE(keys, 0);
    QVERIFY(dialog.isVisible());
}

void TestCommandLinksInDialogs::dialogTakesTheFirstDefault()
{
    // one dialog has one default button at most, but an embedded dialog has one of its own
    ZEFUIDialog dialog;
    QLineEdit edit(&dialog);
    QDialog firstPage(&dialog, Qt::Widget);
    firstPage.setWindowFlags(Qt::Widget);
    QDialog secondPage(&dialog, Qt::Widget);
    secondPage.setWindowFlags(Qt::Widget);
    ZEFCommandLinkButton first(&firstPage);
    ZEFCommandLinkButton second(&secondPage);
    firstPage.show();
    secondPage.show();
    QVERIFY(showActive(dialog));
    second.setDefault(true);
    first.setDefault(true);
    QVERIFY(first.isDefault());
    QVERIFY(second.isDefault());
    const Clicks firstClicks(&first);
    const Clicks secondClicks(&second);
    QTest::keyPress(&dialog, Qt::Key_Return);
    QCOMPARE(firstClicks.values.size(), 1);
    QCOMPARE(secondClicks.values.size(), 0);
}

void TestCommandLinksInDialogs::dialogSkipsHiddenDefaults()
{
    ZEFUIDialog dialog;
    ZEFCommandLinkButton button(&dialog);
    button.setDefault(true);
    QVERIFY(showActive(dialog));
    button.hide();
    const Clicks clicks(&button);
    QList<int> keys;
    connect(&dialog, &ZEFUIDialog::dialog_key_pressed, this, [&](int key) { keys.append(key); });
    QTest::keyPress(&dialog, Qt::Key_Return);
    QVERIFY(clicks.values.isEmpty());
    QCOMPARE(keys, QList<int>({Qt::Key_Return}));
}

void TestCommandLinksInDialogs::dialogWithDisabledDefaultDoesNothing_data()
{
    dialogSendsReturn_data();
}

void TestCommandLinksInDialogs::dialogWithDisabledDefaultDoesNothing()
{
    QFETCH(const int, key);
    ZEFUIDialog dialog;
    ZEFCommandLinkButton button(&dialog);
    QPushButton plain(&dialog);
    plain.setAutoDefault(false);
    button.setDefault(true);
    button.setEnabled(false);
    QVERIFY(showActive(dialog));
    int clicks = 0;
    const Clicks own(&button);
    connect(&plain, &QPushButton::clicked, this, [&] { ++clicks; });
    connect(&button, &QAbstractButton::clicked, this, [&] { ++clicks; });
    connect(&dialog, &ZEFUIDialog::dialog_key_pressed, this, [&] { ++clicks; });
    QKeyEvent event = keyPress(key);
    QCoreApplication::sendEvent(&dialog, &event);
    QVERIFY(own.values.isEmpty());
    QCOMPARE(clicks, 0);
    QVERIFY(dialog.isVisible());
}

void TestCommandLinksInDialogs::dialogWithoutDefaultGoesOn()
{
    ZEFUIDialog dialog;
    ZEFCommandLinkButton button(&dialog);
    button.setAutoDefault(false);
    QPushButton plain(&dialog);
    plain.setDefault(true);
    QVERIFY(showActive(dialog));
    QStringList order;
    connect(&dialog, &ZEFUIDialog::dialog_key_pressed, this, [&](int key) {
        QCOMPARE(key, int(Qt::Key_Return));
        order.append(QStringLiteral("key"));
    });
    connect(&plain, &QPushButton::clicked, this, [&] { order.append(QStringLiteral("default button")); });
    QTest::keyPress(&dialog, Qt::Key_Return);
    QCOMPARE(order, QStringList({QStringLiteral("key"), QStringLiteral("default button")}));
}

void TestCommandLinksInDialogs::dialogAsksLinksOfAllDescendants_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::addColumn<bool>("isDefault");
    QTest::newRow("the first is no default") << false << false;
    QTest::newRow("the first is hidden") << true << true;
}

void TestCommandLinksInDialogs::dialogAsksLinksOfAllDescendants()
{
    QFETCH(const bool, hidden);
    QFETCH(const bool, isDefault);
    ZEFUIDialog dialog;
    ZEFCommandLinkButton first(&dialog);
    // A dialog inside the dialog counts as well, although it is a window of its own.
    ZEFUIDialog child(&dialog, Qt::Dialog);
    ZEFCommandLinkButton button(&child);
    button.setDefault(true);
    QVERIFY(showActive(dialog));
    QVERIFY(showActive(child));
    first.setVisible(!hidden);
    first.setAutoDefault(false);
    first.setDefault(isDefault);
    const Clicks firstClicks(&first);
    const Clicks clicks(&button);
    QList<int> keys;
    connect(&dialog, &ZEFUIDialog::dialog_key_pressed, this, [&](int key) { keys.append(key); });
    QTest::keyPress(&dialog, Qt::Key_Return);
    QCOMPARE(clicks.values, QList<bool>({false}));
    QVERIFY(firstClicks.values.isEmpty());
    QVERIFY(keys.isEmpty());
}

void TestCommandLinksInDialogs::dialogSendsNoOtherKey()
{
    ZEFUIDialog dialog;
    ZEFCommandLinkButton button(&dialog);
    button.setDefault(true);
    QVERIFY(showActive(dialog));
    const Clicks clicks(&button);
    QList<int> keys;
    connect(&dialog, &ZEFUIDialog::dialog_key_pressed, this, [&](int key) { keys.append(key); });
    QTest::keyPress(&dialog, Qt::Key_Space);
    QVERIFY(clicks.values.isEmpty());
    QCOMPARE(keys, QList<int>({Qt::Key_Space}));
}

ZEF_TEST_MAIN(TestCommandLinksInDialogs)

#include "test_commandlinksindialogs.moc"
