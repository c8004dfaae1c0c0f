// Forms as a host gets them: a form that was changed in any way is loaded, filled, styled, clicked and
// closed.
//
// What is done with a form stands in front of it, one letter for each step; Scenario::run() lists the
// letters. A form without a plan gets the usual one.

#include "FormInput.h"
#include "MemoryForm.h"
#include "qtFaults.h"

#include <support/FuzzApplication.h>
#include <support/FuzzTarget.h>

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtTest/QtTest>
#include <QtWidgets/QLayout>

#include <algorithm>
#include <array>

namespace {

constexpr const char16_t* formName = u"fuzzed";
constexpr QByteArrayView usualPlan = "dsimpcukbgvrcenlt.x";
constexpr qsizetype longestPlan = 40;
constexpr qsizetype mostWidgetsAtWork = 60;

class Context : public ZEFPipeFacilityInvocationContext {
public:
    explicit Context(int* deletions)
        : m_deletions(deletions)
    {
    }
    ~Context() override { ++*m_deletions; }

private:
    int* m_deletions;
};

//! Does what delegates of services do, the things that end a form first of all.
class Delegate : public QObject {
    Q_OBJECT

public:
    explicit Delegate(ZEFUIElement* element)
        : m_element(element)
    {
    }

Q_SIGNALS:
    void signalButton(bool checked);

public Q_SLOTS:
    void okButton_clicked(ZEFPipeFacilityInvocationContext*, QVariant, QVariant form_windowTitle)
    {
        m_element->setChildProperty(QStringLiteral("titleLabel"), QStringLiteral("text"), form_windowTitle);
    }
    void cancelButton_clicked(ZEFPipeFacilityInvocationContext*)
    {
        m_element->setCloseSelection(2);
        m_element->close();
    }
    void reloadButton_clicked(ZEFPipeFacilityInvocationContext*)
    {
        m_element->setFormPath(QString::fromUtf16(formName));
    }
    void _clicked(ZEFPipeFacilityInvocationContext*, QVariant user_text)
    {
        m_element->setChildProperty(QStringLiteral("errorLabel"), QStringLiteral("text"), user_text);
    }
    void slotButton() { m_element->hideChild(QStringLiteral("okButton")); }
    void on_user_textChanged(const QString&) { m_element->showChild(QStringLiteral("errorLabel")); }
    void on_password_editingFinished() { m_element->close(); }
    void on_okButton_clicked(bool) { m_element->enableChild(QStringLiteral("okButton"), false); }

private:
    QPointer<ZEFUIElement> m_element;
};

//! One host and what came of it.
template <class Host> class Scenario {
public:
    Scenario();
    ~Scenario();

    void run(char step);
    void check() const;

private:
    Q_DISABLE_COPY_MOVE(Scenario)

    void click() const;
    void hover() const;
    void changeHost() const;
    void type() const;
    void press(Qt::Key key) const;
    void interpolate();
    void updateProperties() const;
    void operateOnChildren();
    void paint() const;
    void openChild();

    QList<QPointer<QWidget>> widgets() const;
    ZEFUIElement* element() const { return m_host->element(); }

    int m_deletions = 0;
    int m_answers = 0;
    QPointer<Host> m_host;
    std::unique_ptr<Delegate> m_delegate;
    ZEFDictionary m_texts;
    ZEFDictionaryList m_dictionaries;
};

template <class Host>
Scenario<Host>::Scenario()
    : m_host(new Host(QString::fromUtf16(formName), QStringLiteral("en"), nullptr, Qt::WindowFlags(),
                      new Context(&m_deletions)))
    , m_texts{{QStringLiteral("a"), QStringLiteral("<b>%{b}</b>%s%n")}, {QStringLiteral("b"), QString()}}
{
    // Sizes of a changed form may be anything; a window system would have to hold a picture of them.
    m_host->setAttribute(Qt::WA_DontShowOnScreen);
    m_delegate = std::make_unique<Delegate>(element());
    m_dictionaries.append(&m_texts);
    QObject::connect(m_host, &Host::respondClosed, m_host,
                     [this](ZEFPipeFacilityInvocationContext* context, int) {
                         FUZZ_REQUIRE(context == element()->context());
                         ++m_answers;
                     });
}

template <class Host> Scenario<Host>::~Scenario()
{
    const bool closed = m_answers > 0;
    if (m_host)
        element()->close();
    // A dialog goes a millisecond after its answer, a widget at the next tick.
    for (int round = 0; round < 3 && m_host; ++round) {
        QEventLoop loop;
        QTimer::singleShot(2, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (closed && m_host)
        element()->destroy();
    delete m_host;
    FUZZ_REQUIRE(m_deletions == 1);
    FUZZ_REQUIRE(m_answers <= 1);
}

template <class Host> void Scenario<Host>::run(char step)
{
    if (!m_host)
        return;
    switch (step) {
    case 'd':
        element()->setDelegate(m_delegate.get());
        break;
    case 'v':
        element()->connectSlotsByName(m_delegate.get());
        break;
    case 's':
        element()->show();
        break;
    case 'h':
        m_host->hide();
        break;
    case 'i':
        interpolate();
        break;
    case 'u':
        updateProperties();
        break;
    case 'b':
        operateOnChildren();
        break;
    case 'g':
        element()->setChildProperties(QStringLiteral("pixmap"), QPixmap(2, 2), QString());
        if (m_host)
            element()->setChildProperties(QStringLiteral("icon"), QPixmap(2, 2), QString());
        break;
    case 'c':
        click();
        break;
    case 'm':
        hover();
        break;
    case 'z':
        changeHost();
        break;
    case 'k':
        type();
        break;
    case 'e':
        press(Qt::Key_Escape);
        break;
    case 'n':
        press(Qt::Key_Return);
        break;
    case 'r':
        element()->setFormPath(QString::fromUtf16(formName));
        break;
    case 'f':
        element()->setFormPath(QStringLiteral("signin"));
        break;
    case 'l':
        element()->setLocale(QStringLiteral("de_AT"));
        break;
    case 'p':
        paint();
        break;
    case 'o':
        openChild();
        break;
    case 't':
        element()->housekeeping();
        break;
    case 'a':
        element()->activateAndRaise();
        break;
    case '.':
        QCoreApplication::processEvents();
        break;
    case 'q':
        m_host->close();
        break;
    case 'x':
        element()->close();
        break;
    case 'y':
        element()->destroy();
        break;
    default:
        break;
    }
}

template <class Host> void Scenario<Host>::check() const
{
    FUZZ_REQUIRE(m_answers <= 1);
    FUZZ_REQUIRE(m_deletions == (m_host ? 0 : 1));
    if (!m_host)
        return;
    FUZZ_REQUIRE(element()->widget() == m_host);
    const QLayout* layout = m_host->layout();
    FUZZ_REQUIRE(!element()->loaded() || (layout && element()->formPath().startsWith(u":/forms/")));
    for (const QPointer<QWidget>& widget : widgets()) {
        FUZZ_REQUIRE(ZEFUIElement::elementFromChild(widget));
        // Classes that forms must not create.
        const QByteArrayView className = widget->metaObject()->className();
        FUZZ_REQUIRE(className != "ZEFCalendarWidget" && className != "ZEFStdButton"
                     && className != "ZEFStdSSButton" && className != "ZEFStdSSCheckbox");
    }
}

template <class Host> void Scenario<Host>::click() const
{
    for (const QPointer<QWidget>& widget : widgets()) {
        if (m_host && widget && widget->metaObject()->indexOfSignal("clicked(bool)") >= 0)
            QTest::mouseClick(widget, Qt::LeftButton);
    }
}

template <class Host> void Scenario<Host>::hover() const
{
    for (const QPointer<QWidget>& widget : widgets()) {
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QEvent leave(QEvent::Leave);
        if (widget)
            QCoreApplication::sendEvent(widget, &enter);
        if (widget && widget->isEnabled())
            QCoreApplication::sendEvent(widget, &leave);
    }
}

//! What only one kind of host knows.
template <> void Scenario<ZEFUIWidget>::changeHost() const
{
    m_host->resize(1, 1);
}

template <> void Scenario<ZEFUIDialog>::changeHost() const
{
    m_host->setFixedSize(element()->childElementCount() == 0);
    m_host->enableCloseOnEscape(false);
}

template <class Host> void Scenario<Host>::type() const
{
    constexpr std::array keys = {Qt::Key_1,     Qt::Key_A,         Qt::Key_Space,
                                 Qt::Key_Right, Qt::Key_Backspace, Qt::Key_Tab};
    for (const QPointer<QWidget>& widget : widgets()) {
        for (const Qt::Key key : keys) {
            if (m_host && widget && widget->focusPolicy() != Qt::NoFocus)
                QTest::keyClick(widget, key);
        }
    }
}

template <class Host> void Scenario<Host>::press(Qt::Key key) const
{
    QTest::keyClick(m_host, key);
}

template <class Host> void Scenario<Host>::interpolate()
{
    element()->interpolate(m_dictionaries);
    m_texts.setString(QStringLiteral("b"), QStringLiteral("%{a}"));
}

template <class Host> void Scenario<Host>::updateProperties() const
{
    const ZEFDictionary values = {
        {QStringLiteral("user_text"), QStringLiteral("%{a}<i>1</i>")},
        {QStringLiteral("okButton_enabled"), QStringLiteral("true")},
        {QStringLiteral("okButton_checked"), QStringLiteral("true")},
        {QStringLiteral("titleLabel_text_more"), QStringLiteral("%s%n")},
        {QStringLiteral("form_styleSheet"), QStringLiteral("QLabel { color: red }")},
        {QStringLiteral("form_geometry"), QStringLiteral("nothing")},
        {QStringLiteral("errorLabel_objectName"), QStringLiteral("okButton")},
        {QStringLiteral("_visible"), QStringLiteral("false")},
    };
    element()->updateProperties(values);
}

template <class Host> void Scenario<Host>::operateOnChildren()
{
    const QString name = QStringLiteral("okButton");
    element()->setChildBackground(name, QPixmap(3, 3), false);
    element()->showChild(name, QStringLiteral("a"), &m_dictionaries);
    element()->enableChildIf(name, QStringLiteral("a"), &m_dictionaries);
    if (m_host)
        element()->setChildFocus(name);
}

template <class Host> void Scenario<Host>::paint() const
{
    QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
    m_host->render(&image, QPoint(), QRegion(0, 0, image.width(), image.height()));
}

template <class Host> void Scenario<Host>::openChild()
{
    auto* child = new ZEFUIWidget(QString::fromUtf16(formName), QString(), m_host, Qt::Window, nullptr);
    child->setAttribute(Qt::WA_DontShowOnScreen);
    FUZZ_REQUIRE(element()->childElement(element()->childElementCount() - 1) == child->element());
}

template <class Host> QList<QPointer<QWidget>> Scenario<Host>::widgets() const
{
    const QList<QWidget*> found = m_host->template findChildren<QWidget*>();
    const QList<QWidget*> some = found.first(std::min(found.size(), mostWidgetsAtWork));
    return QList<QPointer<QWidget>>(some.begin(), some.end());
}

//! Closes what would wait for a user: menus and the like.
class ImpatientUser : public QObject {
public:
    ImpatientUser() { startTimer(20); }

protected:
    void timerEvent(QTimerEvent*) override
    {
        if (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    }
};

template <class Host> void play(QByteArrayView plan)
{
    Scenario<Host> scenario;
    for (const char step : plan) {
        scenario.run(step);
        scenario.check();
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const FormInput input(QByteArrayView(data, static_cast<qsizetype>(size)));
    if (meetsQtFault(input.form))
        return 0;
    static const ImpatientUser user;
    const MemoryForm form(QString::fromUtf16(formName), input.form);
    const QByteArrayView plan = input.plan.isEmpty() ? usualPlan : input.plan;
    const QByteArrayView start = plan.first(std::min(plan.size(), longestPlan));
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        if (start.contains('W'))
            play<ZEFUIWidget>(start);
        else
            play<ZEFUIDialog>(start);
        loop.quit();
    });
    loop.exec();
    // Cells that were dropped, and whatever else waits for its end.
    QTimer::singleShot(1, &loop, &QEventLoop::quit);
    loop.exec();
    FuzzApplication::takeDebugLines();
    FuzzApplication::takeWarnings();
    return 0;
}

#include "fuzz_forms.moc"
