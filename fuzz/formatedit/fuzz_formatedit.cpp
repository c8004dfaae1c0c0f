// A whole format edit: formats, texts, keys, mouse, clipboard and focus in any order, also from its own
// slots.
//
// Each line of an input is one step; Scenario::run() lists the letters.

#include <support/FuzzApplication.h>
#include <support/FuzzTarget.h>
#include <support/FuzzText.h>

#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFListValidator.h>

#include <formatinput/FormatParser.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr int maxSteps = 200;
constexpr int maxCells = 1000;
constexpr int maxAlternates = 3;

struct Key {
    char letter;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char16_t* text;
};

constexpr std::array keys = {
    Key{'L', Qt::Key_Left, Qt::NoModifier, u""},
    Key{'R', Qt::Key_Right, Qt::NoModifier, u""},
    Key{'U', Qt::Key_Up, Qt::NoModifier, u""},
    Key{'D', Qt::Key_Down, Qt::NoModifier, u""},
    Key{'H', Qt::Key_Home, Qt::NoModifier, u""},
    Key{'E', Qt::Key_End, Qt::NoModifier, u""},
    Key{'B', Qt::Key_Backspace, Qt::NoModifier, u"\b"},
    Key{'X', Qt::Key_Delete, Qt::NoModifier, u"\x7f"},
    Key{'T', Qt::Key_Tab, Qt::NoModifier, u"\t"},
    Key{'K', Qt::Key_Backtab, Qt::ShiftModifier, u""},
    Key{'N', Qt::Key_Return, Qt::NoModifier, u"\r"},
    Key{'S', Qt::Key_Escape, Qt::NoModifier, u"\x1b"},
    Key{'I', Qt::Key_Insert, Qt::NoModifier, u""},
    Key{'l', Qt::Key_Left, Qt::ShiftModifier, u""},
    Key{'r', Qt::Key_Right, Qt::ShiftModifier, u""},
    Key{'h', Qt::Key_Home, Qt::ShiftModifier, u""},
    Key{'e', Qt::Key_End, Qt::ShiftModifier, u""},
    Key{'a', Qt::Key_A, Qt::ControlModifier, u"\x01"},
    Key{'c', Qt::Key_C, Qt::ControlModifier, u"\x03"},
    Key{'v', Qt::Key_V, Qt::ControlModifier, u"\x16"},
    Key{'x', Qt::Key_X, Qt::ControlModifier, u"\x18"},
    Key{'z', Qt::Key_Z, Qt::ControlModifier, u"\x1a"},
    Key{'y', Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, u"\x1a"},
    Key{'b', Qt::Key_Backspace, Qt::ControlModifier, u""},
    Key{'d', Qt::Key_Delete, Qt::ControlModifier, u""},
};

//! What the parser makes of a format, to compare the edit with.
class Plan : public FormatBuilder {
public:
    explicit Plan(const QString& format)
        : m_master(FormatParser(format, *this).run())
    {
    }

    void addCell(const FormatCell& cell) override { cells.append(cell); }
    void setFinalPattern(const QString& pattern) override { finals[cells.size() - 1] = pattern; }
    void setSuffix(const QString& text) override { suffix = text; }
    void reportUnexpected(const QString&) override { ++mistakes; }
    void reportUnexpectedAfterMinimum(const QString&) override { ++mistakes; }

    QString master() const { return m_master; }

    QList<FormatCell> cells;
    QMap<qsizetype, QString> finals;
    QString suffix;
    qsizetype mistakes = 0;

private:
    QString m_master;
};

class Scenario {
public:
    explicit Scenario(QWidget* window);
    ~Scenario();

    void run(const FuzzStep& step);
    void check() const;
    //! All cells that the scenario has seen.
    const QList<QPointer<ZEFFormatCell>>& seenCells() const { return m_seenCells; }

private:
    Q_DISABLE_COPY_MOVE(Scenario)

    bool runOnEdit(const FuzzStep& step);
    bool runOnCell(const FuzzStep& step);
    bool runByUser(const FuzzStep& step);

    void setFormat(const QString& format);
    void addAlternate(const QString& pattern);
    void setText(const QString& text);
    void copy();
    void clear();
    void restoreFocus();
    void setValidator(const FuzzStep& step);
    void type(const QString& text);
    void pressKeys(QByteArrayView letters);
    void moveMouse(QByteArrayView gestures);
    void compose(const QString& text);
    void paint();
    void runArmed(std::optional<QByteArray>* armed);

    ZEFFormatCell* cell() const;
    QStringList cellTexts() const;
    void seeCells();

    QPointer<ZEFFormatEdit> m_edit;
    QList<QPointer<ZEFFormatCell>> m_seenCells;
    std::unique_ptr<QValidator> m_validator;
    QValidator::State m_announced = QValidator::Invalid;
    int m_slotsRunning = 0;
    //! QLineEdit itself passes its greatest length when what was done again is undone again.
    bool m_redone = false;
    // Steps that the next signal of its kind runs.
    std::optional<QByteArray> m_onText;
    std::optional<QByteArray> m_onValidity;
    std::optional<QByteArray> m_onCell;
};

Scenario::Scenario(QWidget* window)
    : m_edit(new ZEFFormatEdit(window))
{
    QObject::connect(m_edit, &ZEFFormatEdit::textChanged, m_edit, [this](QValidator::State state) {
        FUZZ_REQUIRE(state == m_edit->state());
        runArmed(&m_onText);
    });
    QObject::connect(m_edit, &ZEFFormatEdit::validityChanged, m_edit, [this](QValidator::State state) {
        FUZZ_REQUIRE(state == m_edit->state());
        FUZZ_REQUIRE(state != m_announced);
        m_announced = state;
        runArmed(&m_onValidity);
    });
    m_edit->setGeometry(0, 0, 400, 40);
    m_edit->show();
}

Scenario::~Scenario()
{
    delete m_edit;
}

void Scenario::run(const FuzzStep& step)
{
    if (!m_edit)
        return;
    switch (step.what) {
    case '@':
        m_onText = step.argument.toByteArray();
        return;
    case '!':
        m_onValidity = step.argument.toByteArray();
        return;
    case '&':
        m_onCell = step.argument.toByteArray();
        return;
    case '~':
        delete m_edit;
        return;
    case '.':
        QCoreApplication::processEvents();
        return;
    default:
        if (!runOnEdit(step) && !runOnCell(step))
            runByUser(step);
    }
}

bool Scenario::runOnEdit(const FuzzStep& step)
{
    switch (step.what) {
    case 'f':
        setFormat(step.text());
        return true;
    case 'a':
        addAlternate(step.text());
        return true;
    case 'A':
        FUZZ_REQUIRE(m_edit->checkAlternates(step.text()) <= maxAlternates);
        return true;
    case 'Z':
        m_edit->clearAlternate();
        if (m_edit)
            m_announced = m_edit->state();
        return true;
    case 's':
        setText(step.text());
        return true;
    case 'c':
        copy();
        return true;
    case 'x':
        m_edit->cut();
        return true;
    case 'C':
        clear();
        return true;
    case 'p':
        QGuiApplication::clipboard()->setText(step.text());
        if (m_edit)
            m_edit->paste();
        return true;
    case 'g':
        m_edit->globalSelect(step.number(0, 1) == 0);
        return true;
    case 'F':
        m_edit->saveFocus();
        return true;
    case 'R':
        restoreFocus();
        return true;
    case 'i':
        m_edit->setIgnore(step.text());
        return true;
    case 'e':
        m_edit->setEnforceCase(step.number(-1, 3));
        return true;
    case 'o':
        setValidator(step);
        return true;
    case 'V':
        FUZZ_REQUIRE(m_edit->validate() != QValidator::Intermediate || m_validator);
        return true;
    case 'b':
        m_edit->setCellBottomHighlight(step.number(-2, 100000), Qt::red);
        return true;
    case 'w':
        m_edit->setSpacing(step.number(-20, 1 << 30));
        m_edit->setLeftMargin(step.number(-20, 1 << 30));
        return true;
    case 'h':
        m_edit->setVisible(!m_edit->isVisible());
        return true;
    case 'P':
        paint();
        return true;
    default:
        return false;
    }
}

bool Scenario::runOnCell(const FuzzStep& step)
{
    ZEFFormatCell* target = cell();
    if (!target)
        return false;
    switch (step.what) {
    case 'l':
        target->setMaxLength(step.number(-2, 1 << 30));
        return true;
    case 'n':
        target->setMinLength(step.number(-2, 100));
        return true;
    case 'r':
        target->setRegexp(step.text());
        return true;
    case 'q':
        target->setFinalRegExp(step.text());
        return true;
    case 'E':
        target->setEquivs(step.text());
        return true;
    case 'T':
        target->setText(step.text());
        return true;
    case 'I':
        target->insert(step.text());
        return true;
    case 'v':
        target->paste();
        return true;
    case 'y':
        target->copy();
        return true;
    case 'X':
        target->cut();
        return true;
    case 'z':
        target->clear();
        return true;
    case 'Y':
        target->reselect();
        return true;
    case 'D':
        // A slot may be running in the middle of a function of the cell.
        if (m_slotsRunning > 0)
            target->deleteLater();
        else
            delete target;
        return true;
    default:
        return false;
    }
}

bool Scenario::runByUser(const FuzzStep& step)
{
    switch (step.what) {
    case 't':
        type(step.text());
        return true;
    case 'k':
        pressKeys(step.argument);
        return true;
    case 'm':
        moveMouse(step.argument);
        return true;
    case 'u':
        compose(step.text());
        return true;
    default:
        return false;
    }
}

void Scenario::check() const
{
    if (!m_edit)
        return;
    FUZZ_REQUIRE(m_edit->lineEditCount() <= maxCells);
    QString joined;
    for (int i = 0; i < m_edit->lineEditCount(); ++i) {
        const ZEFFormatCell* editor = m_edit->editor(i);
        FUZZ_REQUIRE(editor && editor->parentWidget() == m_edit);
        FUZZ_REQUIRE(editor->id() == i);
        FUZZ_REQUIRE(m_redone || editor->text().size() <= editor->maxLength());
        FUZZ_REQUIRE(!editor->selectOutside());
        if (!editor->text().isEmpty())
            joined += editor->prefix() + editor->text() + editor->suffix();
    }
    FUZZ_REQUIRE(m_edit->text() == joined);
    FUZZ_REQUIRE(m_edit->state() == m_announced);
}

void Scenario::setFormat(const QString& format)
{
    FuzzApplication::takeDebugLines();
    m_edit->setFormat(format);
    if (!m_edit)
        return;
    const Plan plan(format);
    FUZZ_REQUIRE(m_edit->format() == format);
    FUZZ_REQUIRE(m_edit->masterRegexp() == u'^' + plan.master() + u'$');
    FUZZ_REQUIRE(m_edit->lineEditCount() == std::min<qsizetype>(plan.cells.size(), maxCells));
    FUZZ_REQUIRE(FuzzApplication::takeDebugLines().size()
                 == std::min(plan.mistakes, FuzzApplication::MaximumLines));
    for (int i = 0; i < m_edit->lineEditCount(); ++i) {
        const ZEFFormatCell* editor = m_edit->editor(i);
        const FormatCell& planned = plan.cells.at(i);
        FUZZ_REQUIRE(editor->text().isEmpty());
        FUZZ_REQUIRE(editor->regexp() == planned.pattern);
        FUZZ_REQUIRE(editor->finalRegExp() == plan.finals.value(i));
        FUZZ_REQUIRE(editor->maxLength() == planned.maxLength);
        FUZZ_REQUIRE(editor->minLength() == planned.minLength);
        FUZZ_REQUIRE(editor->prefix() == planned.prefix);
        FUZZ_REQUIRE(editor->ignore() == m_edit->ignore());
        FUZZ_REQUIRE(editor->enforceCase() == m_edit->enforceCase());
        if (i + 1 == plan.cells.size())
            FUZZ_REQUIRE(editor->suffix() == plan.suffix);
    }
    seeCells();
}

void Scenario::addAlternate(const QString& pattern)
{
    const QString master = m_edit->masterRegexp();
    const int id = static_cast<int>(pattern.size()) % maxAlternates + 1;
    m_edit->addAlternateCheck(pattern, id);
    if (!m_edit)
        return;
    FUZZ_REQUIRE(m_edit->lineEditCount() == 0);
    FUZZ_REQUIRE(m_edit->masterRegexp() == master);
    FUZZ_REQUIRE(m_edit->alternatePattern(id) == Plan(pattern).master());
}

void Scenario::setText(const QString& text)
{
    const QStringList before = cellTexts();
    const bool accepted = m_edit->setText(text);
    if (m_edit && !accepted)
        FUZZ_REQUIRE(cellTexts() == before);
}

void Scenario::copy()
{
    const QString whole = m_edit->text();
    m_edit->copy();
    if (!whole.isEmpty())
        FUZZ_REQUIRE(QGuiApplication::clipboard()->text() == whole);
}

void Scenario::clear()
{
    const bool reentered = m_onText || m_onValidity || m_onCell;
    const QStringList before = cellTexts();
    m_edit->clear();
    if (!m_edit || reentered)
        return;
    for (int i = 0; i < m_edit->lineEditCount(); ++i)
        FUZZ_REQUIRE(m_edit->editor(i)->text() == (i == 0 ? before.at(0) : QString()));
}

void Scenario::restoreFocus()
{
    const bool reentered = m_onText || m_onValidity || m_onCell;
    m_edit->setFocus();
    if (!m_edit || reentered || !m_edit->isVisible() || m_edit->lineEditCount() == 0)
        return;
    const QWidget* focused = QApplication::focusWidget();
    FUZZ_REQUIRE(focused && focused->parentWidget() == m_edit);
}

void Scenario::setValidator(const FuzzStep& step)
{
    std::unique_ptr<QValidator> next;
    if (!step.argument.isEmpty())
        next = std::make_unique<ZEFListValidator>(nullptr, step.text().split(u','));
    // The old one dies while the edit still knows it.
    m_validator = std::move(next);
    m_edit->setValidator(m_validator.get());
}

void Scenario::type(const QString& text)
{
    for (qsizetype i = 0; i < text.size() && m_edit; ++i) {
        QWidget* focused = QApplication::focusWidget();
        if (!focused)
            return;
        const bool pair =
            i + 1 < text.size() && text.at(i).isHighSurrogate() && text.at(i + 1).isLowSurrogate();
        const QString typed = text.sliced(i, pair ? 2 : 1);
        const auto code = static_cast<Qt::Key>(typed.at(0).toUpper().unicode());
        QTest::sendKeyEvent(QTest::Click, focused, code, typed, Qt::NoModifier, 0);
        i += typed.size() - 1;
    }
}

void Scenario::pressKeys(QByteArrayView letters)
{
    for (const char letter : letters) {
        const auto* key =
            std::find_if(keys.begin(), keys.end(), [letter](const Key& k) { return k.letter == letter; });
        QWidget* focused = QApplication::focusWidget();
        if (!m_edit || !focused)
            return;
        m_redone = m_redone || letter == 'y';
        if (key != keys.end())
            QTest::sendKeyEvent(QTest::Click, focused, key->key, QString::fromUtf16(key->text),
                                key->modifiers, 0);
    }
}

void Scenario::moveMouse(QByteArrayView gestures)
{
    for (const char gesture : gestures) {
        const QPointer<QWidget> target(cell());
        if (!m_edit || !target)
            return;
        const QPoint inside(target->width() / 2, target->height() / 2);
        switch (gesture) {
        case 'p':
            QTest::mousePress(target, Qt::LeftButton, Qt::NoModifier, inside);
            break;
        case 's':
            QTest::mousePress(target, Qt::LeftButton, Qt::ShiftModifier, QPoint(1, 1));
            break;
        case 'r':
            QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, inside);
            break;
        case 'd':
            QTest::mouseDClick(target, Qt::LeftButton, Qt::NoModifier, inside);
            break;
        case 'm':
            QTest::mouseClick(target, Qt::MiddleButton, Qt::NoModifier, inside);
            break;
        case 'o':
        case 'i': {
            const QPoint position = gesture == 'o' ? QPoint(-5, target->height() + 5) : inside;
            QMouseEvent move(QEvent::MouseMove, position, target->mapToGlobal(position), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(target, &move);
            break;
        }
        default:
            // The other cells, by their numbers.
            if (ZEFFormatCell* other = m_edit->editor(gesture - '0'))
                other->setFocus();
        }
    }
}

void Scenario::compose(const QString& text)
{
    const QPointer<QWidget> focused(QApplication::focusWidget());
    if (!focused)
        return;
    QInputMethodEvent preedit(text, {});
    QCoreApplication::sendEvent(focused, &preedit);
    if (!focused)
        return;
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(focused, &commit);
}

void Scenario::paint()
{
    QImage image(200, 40, QImage::Format_ARGB32_Premultiplied);
    m_edit->render(&image, QPoint(), QRegion(0, 0, image.width(), image.height()));
}

void Scenario::runArmed(std::optional<QByteArray>* armed)
{
    const std::optional<QByteArray> lines = std::exchange(*armed, std::nullopt);
    if (!lines)
        return;
    ++m_slotsRunning;
    for (const FuzzStep& step : stepsOf(*lines))
        run(step);
    --m_slotsRunning;
}

ZEFFormatCell* Scenario::cell() const
{
    auto* focused = qobject_cast<ZEFFormatCell*>(QApplication::focusWidget());
    return focused && focused->parentWidget() == m_edit ? focused : m_edit ? m_edit->editor(0) : nullptr;
}

QStringList Scenario::cellTexts() const
{
    QStringList texts;
    for (int i = 0; i < m_edit->lineEditCount(); ++i)
        texts.append(m_edit->editor(i)->text());
    return texts;
}

void Scenario::seeCells()
{
    for (int i = 0; i < m_edit->lineEditCount(); ++i) {
        ZEFFormatCell* editor = m_edit->editor(i);
        m_seenCells.append(editor);
        QObject::connect(editor, &QLineEdit::textEdited, m_edit, [this] { runArmed(&m_onCell); });
        QObject::connect(editor, &QLineEdit::selectionChanged, m_edit, [this] { runArmed(&m_onCell); });
        QObject::connect(editor, &QLineEdit::editingFinished, m_edit, [this] { runArmed(&m_onCell); });
    }
}

//! Runs \a work in an event loop of its own, as slots of a service run, and comes to rest afterwards.
void runInEventLoop(const std::function<void()>& work)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        work();
        loop.quit();
    });
    loop.exec();
}

//! The active window: keys go to a cell only there.
QWidget* window()
{
    static QWidget* const shown = [] {
        auto* widget = new QWidget;
        widget->resize(500, 60);
        widget->show();
        return widget;
    }();
    shown->activateWindow();
    FUZZ_REQUIRE(QTest::qWaitForWindowActive(shown));
    return shown;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QList<FuzzStep> steps = stepsOf(QByteArrayView(data, static_cast<qsizetype>(size)));
    QList<QPointer<ZEFFormatCell>> cells;
    QGuiApplication::clipboard()->clear();
    runInEventLoop([&] {
        Scenario scenario(window());
        for (const FuzzStep& step : steps.first(std::min<qsizetype>(steps.size(), maxSteps))) {
            scenario.run(step);
            scenario.check();
        }
        cells = scenario.seenCells();
    });
    // Dropped cells are given back as soon as the loop in which they were made waits again.
    QEventLoop loop;
    QTimer::singleShot(1, &loop, &QEventLoop::quit);
    loop.exec();
    for (const QPointer<ZEFFormatCell>& cell : std::as_const(cells))
        FUZZ_REQUIRE(!cell);
    FuzzApplication::requireSilence();
    return 0;
}
