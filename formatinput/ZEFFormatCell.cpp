#include <ZEFFormatCell.h>

#include <ZEFFormatEdit.h>

#include "CoercionPool.h"
#include "CoercionSearch.h"
#include "RetiredCells.h"
#include "SignatureConnection.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QRegularExpressionValidator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <limits>
#include <optional>

namespace {

// Qt keeps contents margins in 16 bits.
constexpr int thickestHighlight = std::numeric_limits<qint16>::max();

// Qt takes one pixel more for no width at all.
constexpr qint64 widestCell = QWIDGETSIZE_MAX - 1;

// A rewritten text that validates to yet another text, and so on for ever, ends here.
constexpr int maxNestedRewrites = 16;

// Qt's validator with one difference: an invalid pattern refuses everything in silence, where Qt would
// print a warning at every keystroke.
class PatternValidator : public QRegularExpressionValidator { // clazy:exclude=missing-qobject-macro
public:
    using QRegularExpressionValidator::QRegularExpressionValidator;

    State validate(QString& input, int& pos) const override
    {
        if (isUsable())
            return QRegularExpressionValidator::validate(input, pos);
        if (input.isEmpty())
            return Intermediate;
        pos = static_cast<int>(input.size());
        return Invalid;
    }

private:
    // Qt matches the pattern inside anchors of its own, which an unfinished "\Q" or comment swallows.
    bool isUsable() const
    {
        if (!m_usable) {
            const QRegularExpression anchored(
                QRegularExpression::anchoredPattern(regularExpression().pattern()));
            m_usable = regularExpression().isValid() && anchored.isValid();
        }
        return *m_usable;
    }

    mutable std::optional<bool> m_usable;
};

bool isOneCharacter(const QString& text)
{
    return text.size() == 1
        || (text.size() == 2 && text.at(0).isHighSurrogate() && text.at(1).isLowSurrogate());
}

struct Measured {
    QFont font;
    int dpi = 0;
    int width = 0;
};
std::optional<Measured> lastMeasured; // clazy:exclude=non-pod-global-static
bool forgetsMeasured = false;

void forgetMeasured()
{
    lastMeasured.reset();
}

// A font must not outlive the application, and may look different when fonts come or go.
void forgetMeasuredInTime()
{
    if (forgetsMeasured)
        return;
    forgetsMeasured = true;
    QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, qGuiApp, forgetMeasured);
    qAddPostRoutine([] {
        forgetMeasured();
        forgetsMeasured = false;
    });
}

// Shaping the text costs as much as the rest of a cell, and cells of a form share their font.
qint64 tenCharactersWidth(const QWidget& widget)
{
    if (!lastMeasured || lastMeasured->dpi != widget.logicalDpiX() || lastMeasured->font != widget.font()) {
        forgetMeasuredInTime();
        const QRect rectangle = widget.fontMetrics().boundingRect(QStringLiteral("XXXWWWWWWW"));
        lastMeasured = {widget.font(), widget.logicalDpiX(), rectangle.width()};
    }
    return lastMeasured->width;
}

QColor optionalBase()
{
    const QColor toolTip = QToolTip::palette().color(QPalette::Base);
    if (toolTip.rgba() != QApplication::palette().color(QPalette::Active, QPalette::Base).rgba())
        return toolTip;
    return QColor(std::max(toolTip.red() - 10, 0), std::max(toolTip.green() - 10, 0),
                  std::max(toolTip.blue() - 30, 0));
}

} // namespace

ZEFFormatCell::Use::Use(ZEFFormatCell* cell)
    : m_cell(cell)
{
    if (!cell)
        return;
    ++cell->m_uses;
    cell->m_loopLevel = std::min(cell->m_loopLevel, RetiredCells::loopLevel());
}

ZEFFormatCell::Use::~Use()
{
    if (m_cell && --m_cell->m_uses == 0 && m_cell->m_retired)
        m_cell->deleteLater();
}

ZEFFormatCell::SignalsBlocked::SignalsBlocked(ZEFFormatCell* cell)
    : m_cell(cell)
    , m_before(cell->blockSignals(true))
{
}

ZEFFormatCell::SignalsBlocked::~SignalsBlocked()
{
    if (m_cell)
        m_cell->blockSignals(m_before || m_cell->m_retired);
}

ZEFFormatCell::ZEFFormatCell(QWidget* parent, const char* name)
    : QLineEdit(parent)
    , m_loopLevel(RetiredCells::loopLevel())
{
    setObjectName(QString::fromUtf8(name));
    setDragEnabled(false);
    static const SignatureConnection<ZEFFormatCell, ZEFFormatCell> announcement(
        "2textChanged(const QString&)", "1textChanged(const QString&)");
    announcement.make(this, this);
}

ZEFFormatCell::~ZEFFormatCell()
{
    if (m_retired)
        RetiredCells::instance().remove(this);
    // Slots of destroyed() may use the edit while it still has this child.
    else if (auto* edit = qobject_cast<ZEFFormatEdit*>(parentWidget()))
        edit->forgetCell(this);
}

int ZEFFormatCell::id() const
{
    return m_id;
}

int ZEFFormatCell::minLength() const
{
    return m_minLength;
}

int ZEFFormatCell::enforceCase() const
{
    return m_enforceCase;
}

bool ZEFFormatCell::selectOutside() const
{
    return m_selectOutside;
}

QString ZEFFormatCell::regexp() const
{
    const auto* installed = qobject_cast<const QRegularExpressionValidator*>(validator());
    return installed ? installed->regularExpression().pattern() : QString();
}

QString ZEFFormatCell::finalRegExp() const
{
    return m_finalRegExp.pattern();
}

QString ZEFFormatCell::ignore() const
{
    return m_ignore;
}

QString ZEFFormatCell::prefix() const
{
    return m_prefix;
}

QString ZEFFormatCell::suffix() const
{
    return m_suffix;
}

QString ZEFFormatCell::equivs() const
{
    return m_equivs;
}

void ZEFFormatCell::setBottomHighlight(int height, const QColor& colour)
{
    m_bottomHighlightHeight = std::clamp(height, 0, thickestHighlight);
    if (m_bottomHighlightHeight > 0) {
        m_bottomHighlightColour = colour;
        QMargins margins = contentsMargins();
        if (margins.bottom() < m_bottomHighlightHeight) {
            margins.setBottom(m_bottomHighlightHeight);
            setContentsMargins(margins);
        }
    }
    update();
}

QPalette ZEFFormatCell::optionalPalette()
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, optionalBase());
    return palette;
}

QPalette ZEFFormatCell::selectedPalette()
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Highlight));
    palette.setColor(QPalette::Text, palette.color(QPalette::HighlightedText));
    return palette;
}

bool ZEFFormatCell::event(QEvent* e)
{
    if (e->type() == QEvent::DeferredDelete && m_retired && mayBeRunning()) {
        RetiredCells::instance().watchEventLoops();
        return true;
    }
    const Use use(this);
    return QLineEdit::event(e);
}

bool ZEFFormatCell::validate()
{
    const QString shown = text();
    QString accepted = shown;
    if (!matchesFinalRegexp(accepted) && !validateEquivalents(accepted)) {
        accepted = shown.toUpper();
        if (!matchesFinalRegexp(accepted)) {
            accepted = shown.toLower();
            if (!matchesFinalRegexp(accepted))
                return false;
        }
    }
    if (accepted == shown || m_rewrites >= maxNestedRewrites)
        return true;
    const Use use(this);
    const QPointer<ZEFFormatCell> self(this);
    ++m_rewrites;
    setText(accepted);
    if (self)
        --m_rewrites;
    return true;
}

void ZEFFormatCell::addCoercionSpec(ZEFCoercionSpec* spec)
{
    if (spec)
        m_coercionSpecs.append(spec);
}

void ZEFFormatCell::setRegexp(const QString& pattern)
{
    const QPointer<const QValidator> installed = validator();
    setValidator(new PatternValidator(QRegularExpression(pattern), this));
    delete installed;
}

void ZEFFormatCell::setFinalRegExp(const QString& pattern)
{
    m_finalRegExp = QRegularExpression(pattern);
}

void ZEFFormatCell::setEquivs(const QString& pairs)
{
    addOwnCoercion(pairs, 0);
    if (pairs.size() % 2 == 0)
        m_equivs = pairs;
}

void ZEFFormatCell::setId(int id)
{
    m_id = id;
}

void ZEFFormatCell::setMaxLength(int length)
{
    const Use use(this);
    const QPointer<ZEFFormatCell> self(this);
    const int atLeastNone = std::max(length, 0);
    QLineEdit::setMaxLength(atLeastNone);
    if (!self)
        return;
    const qint64 width = tenCharactersWidth(*this) * (qint64(atLeastNone) + 1) / 10 + 10;
    setFixedWidth(static_cast<int>(std::min(width, widestCell)));
}

void ZEFFormatCell::setIgnore(const QString& characters)
{
    m_ignore = characters;
}

void ZEFFormatCell::setPrefix(const QString& text)
{
    m_prefix = text;
}

void ZEFFormatCell::setSuffix(const QString& text)
{
    m_suffix = text;
}

void ZEFFormatCell::copy()
{
    // The edit ends its global selection at any new clipboard selection but its own.
    const Use use(this);
    const QPointer<QWidget> edit(parentWidget());
    QClipboard* clipboard = QGuiApplication::clipboard();
    const bool listening = edit && edit->metaObject()->indexOfSlot("deselect()") >= 0
        && QObject::disconnect(clipboard, "2selectionChanged()", edit, "1deselect()");
    if (hasSelectedText())
        QLineEdit::copy();
    else
        Q_EMIT copyMe();
    if (listening && edit)
        QObject::connect(clipboard, "2selectionChanged()", edit, "1deselect()");
}

void ZEFFormatCell::paste()
{
    const Use use(this);
    const QPointer<ZEFFormatCell> self(this);
    // The text of the selection clipboard plays no part here, so its owner is not asked for it.
    const QString pasted = QGuiApplication::clipboard()->text();
    if (!self)
        return;
    if (!hasSelectedText() && text().size() + pasted.size() > maxLength()) {
        Q_EMIT pasteMe();
        return;
    }
    const QString before = text();
    {
        const SignalsBlocked blocked(this);
        QLineEdit::paste();
    }
    if (!self)
        return;
    QString after = text();
    if (after != before)
        Q_EMIT textChanged(m_id, after);
}

void ZEFFormatCell::cut()
{
    Q_EMIT cutMe();
}

void ZEFFormatCell::clear()
{
    Q_EMIT deleteMe();
}

void ZEFFormatCell::setMinLength(int length)
{
    m_minLength = length;
    if (length != 0) {
        setPalette(QApplication::palette());
        return;
    }
    QPalette optional = palette();
    optional.setColor(QPalette::Base, optionalBase());
    setPalette(optional);
}

void ZEFFormatCell::setSelectOutside(bool)
{
    // Deliberately without effect: cells do not take part in a selection of the whole edit.
}

void ZEFFormatCell::setEnforceCase(int mode)
{
    m_enforceCase = mode;
}

void ZEFFormatCell::setText(const QString& text)
{
    const Use use(this);
    QLineEdit::setText(checkInput(text));
}

void ZEFFormatCell::insert(const QString& text)
{
    const Use use(this);
    QLineEdit::insert(checkInput(text));
}

void ZEFFormatCell::reselect()
{
    const auto length = static_cast<int>(text().size());
    const bool valid = m_savedSelectionStart >= 0 && m_savedSelectionStart < length
        && m_savedSelectionEnd > m_savedSelectionStart && m_savedSelectionEnd <= length;
    if (!valid)
        m_savedSelectionStart = m_savedSelectionEnd = -1;
    const int start = m_savedSelectionStart;
    const int end = m_savedSelectionEnd;
    const int cursor = m_savedCursor;
    // The caret stands at one end of a selection; placing it afterwards would end the selection.
    if (valid && cursor == start)
        setSelection(end, start - end);
    else if (valid)
        setSelection(start, end - start);
    else if (length > cursor)
        setCursorPosition(cursor);
}

void ZEFFormatCell::textChanged(const QString& text)
{
    const Use use(this);
    QString copy = text;
    Q_EMIT textChanged(m_id, copy);
}

QString ZEFFormatCell::checkInput(const QString& text)
{
    switch (m_enforceCase) {
    case 1:
        return text.toLower();
    case 2:
        return text.toUpper();
    default:
        return text;
    }
}

void ZEFFormatCell::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::MiddleButton) {
        paste();
        return;
    }
    m_mousePressed = true;
    QLineEdit::mousePressEvent(e);
}

void ZEFFormatCell::mouseReleaseEvent(QMouseEvent* e)
{
    if (m_mousePressed) {
        saveSelection();
        m_mousePressed = false;
    }
    // The press has pasted already; on X11 the line edit would paste again at the release.
    if (e->button() == Qt::MiddleButton)
        return;
    const SignalsBlocked blocked(this);
    QLineEdit::mouseReleaseEvent(e);
}

void ZEFFormatCell::mouseMoveEvent(QMouseEvent* e)
{
    if (m_mousePressed) {
        const QPointer<ZEFFormatCell> self(this);
        const QPointF position = e->position();
        const bool outside =
            position.x() < 0 || position.y() < 0 || position.x() > width() || position.y() > height();
        if (outside) {
            saveSelection();
            if (!m_selectOutside) {
                Q_EMIT selectOutside(true);
                if (!self)
                    return;
                if (!m_selectOutside)
                    setSelectOutside(true);
            }
        } else if (m_selectOutside) {
            Q_EMIT selectOutside(false);
            if (!self)
                return;
            reselect();
        }
        if (!self)
            return;
    }
    QLineEdit::mouseMoveEvent(e);
}

void ZEFFormatCell::keyPressEvent(QKeyEvent* e)
{
    switch (e->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Insert:
    case Qt::Key_Shift:
    case Qt::Key_F14:
    case Qt::Key_F16:
    case Qt::Key_F18:
    case Qt::Key_F20:
        QLineEdit::keyPressEvent(e);
        return;
    case Qt::Key_Backspace:
        backspaceTyped(e);
        return;
    case Qt::Key_Delete:
    case Qt::Key_Home:
    case Qt::Key_End:
        if (m_selectOutside) {
            e->accept();
            Q_EMIT deleteMe();
            return;
        }
        QLineEdit::keyPressEvent(e);
        return;
    case Qt::Key_Left:
        if (cursorPosition() == 0) {
            e->accept();
            Q_EMIT moveLeft(m_id, nullptr);
            return;
        }
        QLineEdit::keyPressEvent(e);
        return;
    case Qt::Key_Right:
        // The length that counts is the greatest, not the present one.
        if (cursorPosition() == maxLength()) {
            e->accept();
            Q_EMIT moveRight(m_id, nullptr);
            return;
        }
        QLineEdit::keyPressEvent(e);
        return;
    default:
        characterTyped(e);
    }
}

void ZEFFormatCell::focusOutEvent(QFocusEvent* e)
{
    const QPointer<ZEFFormatCell> self(this);
    Q_EMIT focusOut(m_id, e);
    if (self)
        QLineEdit::focusOutEvent(e);
}

void ZEFFormatCell::paintEvent(QPaintEvent* e)
{
    QLineEdit::paintEvent(e);
    if (contentsMargins().bottom() < m_bottomHighlightHeight)
        return;
    // A height of 0 deliberately draws too: its cosmetic pen leaves a line of one pixel.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_bottomHighlightColour, m_bottomHighlightHeight));
    const QRectF cell(rect());
    painter.drawLine(QLineF(cell.left(), cell.bottom() - 1, cell.right() - 1, cell.bottom() - 1));
}

void ZEFFormatCell::retire()
{
    m_retired = true;
    blockSignals(true);
    if (m_uses == 0 && (!QCoreApplication::instance() || QCoreApplication::closingDown())) {
        delete this;
        return;
    }
    RetiredCells::instance().add(this);
    const QPointer<ZEFFormatCell> self(this);
    // Before the parting, or Qt would move the focus on to a neighbour.
    clearFocus();
    if (!self)
        return;
    // Before the parting, too: the layout may have asked Qt to show the cell later, and without a parent that
    // would be a window of its own.
    hide();
    if (!self)
        return;
    setParent(nullptr);
    if (self && m_uses == 0)
        deleteLater();
}

bool ZEFFormatCell::mayBeRunning() const
{
    return m_uses > 0 || RetiredCells::loopLevel() > m_loopLevel;
}

void ZEFFormatCell::shareCoercions(const std::shared_ptr<const CoercionPool>& pool)
{
    m_pool = pool;
    m_poolCount = pool->count();
}

void ZEFFormatCell::addOwnCoercion(const QString& pairs, int start)
{
    m_ownSpecs.push_back(std::make_unique<ZEFCoercionSpec>(pairs, start, -1));
    m_coercionSpecs.append(m_ownSpecs.back().get());
}

bool ZEFFormatCell::matchesFinalRegexp(const QString& text) const
{
    if (m_finalRegExp.pattern().isEmpty())
        return true;
    // Without a match the length is 0, so that an empty text always passes.
    return m_finalRegExp.isValid() ? m_finalRegExp.match(text).capturedLength() == text.size()
                                   : text.isEmpty();
}

bool ZEFFormatCell::validateEquivalents(QString& text) const
{
    const qsizetype specCount = m_poolCount + m_coercionSpecs.size();
    if (specCount == 0)
        return matchesFinalRegexp(text);
    // Spec j is deliberately asked about position j only, so positions without a spec never change.
    const auto positions = static_cast<int>(std::min(specCount, text.size()));
    const auto spec = [this](int j) {
        return j < m_poolCount ? m_pool->at(j) : m_coercionSpecs.at(j - m_poolCount);
    };
    CoercionSearch search(text, positions);
    return search.run([&](int j, QChar character) { return spec(j)->replacements(j, character); },
                      [this](const QString& variant) { return matchesFinalRegexp(variant); }, &text);
}

void ZEFFormatCell::backspaceTyped(QKeyEvent* e)
{
    if (m_selectOutside) {
        e->accept();
        Q_EMIT deleteMe();
        return;
    }
    if (cursorPosition() == 0) {
        const QPointer<ZEFFormatCell> self(this);
        Q_EMIT moveLeft(m_id, e);
        if (!self || m_retired)
            return;
    }
    QLineEdit::keyPressEvent(e);
}

void ZEFFormatCell::characterTyped(QKeyEvent* e)
{
    const QPointer<ZEFFormatCell> self(this);
    const QString typed = e->text();
    if (e->modifiers() & Qt::ControlModifier) {
        if (m_selectOutside && e->key() == Qt::Key_C) {
            e->accept();
            Q_EMIT copyMe();
        } else if (m_selectOutside && e->key() == Qt::Key_X) {
            e->accept();
            Q_EMIT cutMe();
        } else {
            QLineEdit::keyPressEvent(e);
        }
        return;
    }
    if (m_selectOutside && !typed.isEmpty()) {
        Q_EMIT deleteMe();
        if (self)
            Q_EMIT moveTo(m_id, 0, e);
        return;
    }
    const qsizetype length = text().size();
    const bool selecting = hasSelectedText();
    const int position = cursorPosition();
    const bool full = length == maxLength() && !selecting;
    const bool ignored = isOneCharacter(typed) && m_ignore.contains(typed);
    const bool beyond = position >= maxLength() && !selecting;
    // A character of two code units is never entered by halves.
    const bool halved = !selecting && isOneCharacter(typed) && length + typed.size() > maxLength();
    if (full || ignored || beyond || halved) {
        e->accept();
        return;
    }
    const bool last = position == maxLength() - 1 && !selecting;
    QLineEdit::keyPressEvent(e);
    if (!self || !last)
        return;
    e->accept();
    if (text().size() > length)
        Q_EMIT moveRight(m_id, nullptr);
}

void ZEFFormatCell::saveSelection()
{
    m_savedSelectionStart = selectionStart();
    m_savedSelectionEnd = selectionStart() + static_cast<int>(selectedText().size());
    m_savedCursor = cursorPosition();
}
