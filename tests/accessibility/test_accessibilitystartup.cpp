// Programs need no call to have the interfaces.

#include <ZEFToggleButton.h>

#include <QtGui/QAccessible>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

namespace {

bool seenAsCheckBox()
{
    ZEFToggleButton button;
    return QAccessible::queryAccessibleInterface(&button)->role() == QAccessible::CheckBox;
}

} // namespace

class TestAccessibilityStartup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    //! Qt forgets its factories together with the application.
    void everyApplicationHasThem()
    {
        int argc = 1;
        char program[] = "program";
        char* argv[] = {program, nullptr};
        for (int i = 0; i < 2; ++i) {
            const QApplication application(argc, argv);
            QVERIFY(seenAsCheckBox());
        }
    }
};

QTEST_APPLESS_MAIN(TestAccessibilityStartup)
#include "test_accessibilitystartup.moc"
