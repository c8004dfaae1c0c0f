// What the random lifetime test leaves out, with Qt alone: each case ends in a crash inside Qt, "calendar" in
// a leak.
//
//     MALLOC_PERTURB_=165 QT_QPA_PLATFORM=offscreen qt_faults <case>
//
// Without a case it lists them. A case that Qt survives says so and ends with 0: the test can do it then.

#include <QtCore/QEvent>
#include <QtCore/QEventLoop>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <functional>
#include <map>

using namespace Qt::StringLiterals;

namespace {

//! Returns when the events that are due, those of the window system included, have been handled.
void handleEvents()
{
    QEventLoop loop;
    QTimer::singleShot(50, &loop, &QEventLoop::quit);
    loop.exec();
}

void type(QWidget* widget)
{
    QKeyEvent key(QEvent::KeyPress, Qt::Key_1, Qt::NoModifier, u"1"_s);
    QCoreApplication::sendEvent(widget, &key);
}

//! A window of two line edits; the first has the focus.
struct Window {
    Window()
    {
        auto* layout = new QVBoxLayout(window);
        layout->addWidget(first);
        layout->addWidget(second);
        window->show();
        window->activateWindow();
        first->setFocus();
        handleEvents();
        if (!first->hasFocus())
            qFatal("the window does not become active");
        type(first); // or the line edit has nothing to finish
    }
    QWidget* window = new QWidget;
    QLineEdit* first = new QLineEdit;
    QLineEdit* second = new QLineEdit;
};

//! A slot of the widget that loses the focus deletes the one that gets it: QWidget::setFocus() goes on with
//! it.
void deleteWhatGetsTheFocus()
{
    const Window form;
    QObject::connect(form.first, &QLineEdit::editingFinished, form.second, [&] { delete form.second; });
    form.second->setFocus();
}

//! A slot of the window that becomes inactive deletes the one that becomes active.
void deleteWhatBecomesActive()
{
    const Window form;
    auto* other = new QWidget;
    QObject::connect(form.first, &QLineEdit::editingFinished, other, [&] { delete other; });
    other->show();
    other->activateWindow();
    handleEvents();
}

//! The same in an event loop that the slot runs, as a message box does.
void eventLoopWhileAWindowBecomesActive()
{
    const Window form;
    auto* other = new QWidget;
    QObject::connect(form.first, &QLineEdit::editingFinished, other, [&] {
        QTimer::singleShot(0, other, [&] { delete other; });
        handleEvents();
    });
    other->show();
    other->activateWindow();
    handleEvents();
}

//! A slot of the widget that loses the focus deletes its page, but not itself, while the window around both
//! is being disabled.
void deleteAChildOfWhatIsDisabled()
{
    const Window form;
    auto* page = new QWidget(form.window);
    form.first->setParent(page);
    page->show();
    form.first->show();
    form.first->setFocus();
    type(form.first);
    QObject::connect(form.first, &QLineEdit::editingFinished, form.second, [&] {
        form.first->setParent(nullptr);
        delete page;
    });
    form.window->setEnabled(false);
}

//! A dialog is to be deleted later by a slot of its hiding, and runs an event loop in a slot of rejected().
void eventLoopAfterDeleteLater()
{
    auto* dialog = new QDialog;
    auto* child = new QLineEdit(dialog);
    dialog->show();
    dialog->activateWindow();
    child->setFocus();
    handleEvents();
    type(child);
    QObject::connect(child, &QLineEdit::editingFinished, dialog, &QObject::deleteLater);
    QObject::connect(dialog, &QDialog::rejected, dialog, handleEvents);
    QTimer::singleShot(0, dialog, [&] {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(dialog, &key);
    });
    handleEvents();
}

//! A slot of destroyed() closes the dialog around what is deleting its children: QDialog looks among them for
//! a default button when it is hidden.
void closeADialogWhileItsChildrenDie()
{
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* button = new QPushButton(u"button"_s);
    layout->addWidget(new QPushButton(u"default"_s));
    layout->addWidget(button);
    auto* page = new QWidget(&dialog);
    auto* child = new QWidget(page);
    new QWidget(page);
    auto* last = new QWidget(page);
    Q_UNUSED(child)
    dialog.show();
    button->setFocus();
    handleEvents();
    QObject::connect(last, &QObject::destroyed, &dialog, [&] { dialog.close(); });
    delete page;
}

//! A calendar dies while a date is typed: what checks the date is never deleted, as the leak sanitizer tells.
void deleteACalendarWhileADateIsTyped()
{
    auto* calendar = new QCalendarWidget;
    calendar->show();
    handleEvents();
    type(calendar->findChild<QTableView*>());
    delete calendar;
}

const std::map<QString, std::function<void()>>& cases()
{
    static const std::map<QString, std::function<void()>> table = {
        {u"focus"_s, deleteWhatGetsTheFocus},
        {u"activation"_s, deleteWhatBecomesActive},
        {u"loop"_s, eventLoopWhileAWindowBecomesActive},
        {u"disabled"_s, deleteAChildOfWhatIsDisabled},
        {u"later"_s, eventLoopAfterDeleteLater},
        {u"destroyed"_s, closeADialogWhileItsChildrenDie},
        {u"calendar"_s, deleteACalendarWhileADateIsTyped},
    };
    return table;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const auto found = argc == 2 ? cases().find(QString::fromLocal8Bit(argv[1])) : cases().end();
    if (found == cases().end()) {
        for (const auto& [name, run] : cases())
            QTextStream(stdout) << name << '\n';
        return 2;
    }
    found->second();
    QTextStream(stdout) << "Qt survives it\n";
    return 0;
}
