#include <ZEFFormatEdit.h>

#include "SignatureConnection.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

#include <algorithm>
#include <utility>

namespace {

// A key that travels through empty cells stops here; each step is a nested event.
constexpr int maxForwardedKeys = 200;

// A validator that changes the row each time it is asked ends up here.
constexpr int maxRevalidations = 16;

// The whole of text, or an empty match of an empty text.
bool matchesWhole(const QRegularExpression& pattern, const QString& text)
{
    if (!pattern.isValid())
        return false;
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() && match.capturedLength() == text.size();
}

} // namespace

ZEFFormatEdit::ZEFFormatEdit(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : QWidget(parent, flags)
{
    auto* row = new QHBoxLayout;
    setLayout(row);
    setObjectName(QString::fromUtf8(name));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    row->setContentsMargins(2, 2, 2, 2);
    row->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    static const SignatureConnection<QClipboard, ZEFFormatEdit> deselection("2selectionChanged()",
                                                                            "1deselect()");
    deselection.make(QGuiApplication::clipboard(), this);
}

ZEFFormatEdit::~ZEFFormatEdit()
{
    QObject::disconnect(QGuiApplication::clipboard(), "2selectionChanged()", this, "1deselect()");
    clearCells();
    // A cell that is about to part while the focus leaves it: Qt still works with it.
    const QList<ZEFFormatCell*> cells = findChildren<ZEFFormatCell*>(Qt::FindDirectChildrenOnly);
    for (ZEFFormatCell* cell : cells) {
        if (cell->m_retired)
            cell->setParent(nullptr);
    }
}

QString ZEFFormatEdit::text() const
{
    QString joined;
    for (const ZEFFormatCell* cell : m_cells) {
        const QString part = cell->text();
        if (!part.isEmpty())
            joined.append(cell->prefix()).append(part).append(cell->suffix());
    }
    return joined.isEmpty() ? m_fallbackText : joined;
}

QString ZEFFormatEdit::format() const
{
    return m_format;
}

QString ZEFFormatEdit::masterRegexp() const
{
    return m_masterRegexp;
}

QString ZEFFormatEdit::ignore() const
{
    return m_ignore;
}

int ZEFFormatEdit::enforceCase() const
{
    return m_enforceCase;
}

QValidator::State ZEFFormatEdit::state() const
{
    return m_state;
}

QValidator::State ZEFFormatEdit::validate()
{
    const QPointer<ZEFFormatEdit> self(this);
    const unsigned int generation = m_generation;
    QValidator::State state = QValidator::Acceptable;
    for (qsizetype i = 0; i < m_cells.size() && state == QValidator::Acceptable; ++i) {
        ZEFFormatCell* cell = m_cells.at(i);
        const ZEFFormatCell::Use use(cell);
        QString text = cell->text();
        int position = cell->cursorPosition();
        // A failing cell is deliberately never Intermediate, even when it is merely incomplete.
        if ((text.isEmpty() && cell->minLength() > 0)
            || (cell->validator() && cell->validator()->validate(text, position) != QValidator::Acceptable)
            || (self && generation == m_generation && !cell->validate()))
            state = QValidator::Invalid;
        if (!self)
            return QValidator::Invalid;
        if (generation == m_generation)
            continue;
        if (m_revalidations >= maxRevalidations)
            return QValidator::Invalid;
        ++m_revalidations;
        state = validate();
        if (self)
            --m_revalidations;
        return state;
    }
    if (!m_validator)
        return state;
    QString whole = text();
    int position = 0;
    return m_validator->validate(whole, position);
}

const QValidator* ZEFFormatEdit::validator() const
{
    return m_validator;
}

void ZEFFormatEdit::setValidator(const QValidator* validator)
{
    m_validator = validator;
}

int ZEFFormatEdit::lineEditCount() const
{
    return static_cast<int>(m_cells.size());
}

ZEFFormatCell* ZEFFormatEdit::editor(int index) const
{
    return m_cells.value(index);
}

int ZEFFormatEdit::alternateCount() const
{
    return static_cast<int>(m_alternates.size());
}

int ZEFFormatEdit::alternateId() const
{
    return m_alternateId;
}

QString ZEFFormatEdit::alternatePattern(int id) const
{
    return m_alternates.value(id).pattern();
}

int ZEFFormatEdit::checkAlternates(const QString& text) const
{
    for (auto alternate = m_alternates.cbegin(); alternate != m_alternates.cend(); ++alternate) {
        if (matchesWhole(*alternate, text))
            return alternate.key();
    }
    return 0;
}

void ZEFFormatEdit::setFocus()
{
    restoreFocus();
}

void ZEFFormatEdit::setCellBottomHighlight(int height, const QColor& colour)
{
    for (ZEFFormatCell* cell : std::as_const(m_cells))
        cell->setBottomHighlight(height, colour);
}

int ZEFFormatEdit::spacing() const
{
    return layout() ? layout()->spacing() : 0;
}

void ZEFFormatEdit::setSpacing(int spacing)
{
    if (layout())
        layout()->setSpacing(std::clamp(spacing, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    update();
}

int ZEFFormatEdit::leftMargin() const
{
    return layout() ? layout()->contentsMargins().left() : 0;
}

void ZEFFormatEdit::setLeftMargin(int margin)
{
    setMargin(&QMargins::setLeft, margin);
}

int ZEFFormatEdit::rightMargin() const
{
    return layout() ? layout()->contentsMargins().right() : 0;
}

void ZEFFormatEdit::setRightMargin(int margin)
{
    setMargin(&QMargins::setRight, margin);
}

int ZEFFormatEdit::topMargin() const
{
    return layout() ? layout()->contentsMargins().top() : 0;
}

void ZEFFormatEdit::setTopMargin(int margin)
{
    setMargin(&QMargins::setTop, margin);
}

int ZEFFormatEdit::bottomMargin() const
{
    return layout() ? layout()->contentsMargins().bottom() : 0;
}

void ZEFFormatEdit::setBottomMargin(int margin)
{
    setMargin(&QMargins::setBottom, margin);
}

bool ZEFFormatEdit::setText(const QString& text)
{
    const QRegularExpression master(m_masterRegexp);
    if (!master.isValid())
        return false;
    const QRegularExpressionMatch match = master.match(text.trimmed());
    if (!match.hasMatch())
        return false;
    const QPointer<ZEFFormatEdit> self(this);
    const unsigned int generation = m_generation;
    for (qsizetype i = 0; i < m_cells.size(); ++i) {
        const ZEFFormatCell::Use use(m_cells.at(i));
        m_cells.at(i)->setText(match.captured(static_cast<int>(i) + 1));
        if (!self)
            return true;
        if (generation != m_generation)
            break;
    }
    m_fallbackText.clear();
    return true;
}

void ZEFFormatEdit::setFormat(const QString& format)
{
    m_format = format;
    parseFormat(format, 0);
}

void ZEFFormatEdit::setIgnore(const QString& characters)
{
    m_ignore = characters;
    for (ZEFFormatCell* cell : std::as_const(m_cells))
        cell->setIgnore(characters);
}

void ZEFFormatEdit::moveLeft(int id, QKeyEvent* e)
{
    if (id > 0 && id <= m_cells.size())
        focusCell(id - 1, static_cast<int>(m_cells.at(id - 1)->text().size()), e);
}

void ZEFFormatEdit::moveRight(int id, QKeyEvent* e)
{
    if (id >= -1 && id < m_cells.size() - 1)
        focusCell(id + 1, 0, e);
}

void ZEFFormatEdit::moveTo(int nIdFrom, int nIdTo, QKeyEvent* e)
{
    if (nIdTo >= 0 && nIdTo < m_cells.size())
        focusCell(nIdTo, -1, nIdFrom != nIdTo ? e : nullptr);
}

void ZEFFormatEdit::childFocusedOut(int, QFocusEvent*) { }

void ZEFFormatEdit::editorTextChanged(int id)
{
    const QPointer<ZEFFormatEdit> self(this);
    if (m_globallySelected)
        globalSelect(false);
    if (!self)
        return;
    m_pendingText.clear();
    const unsigned int change = ++m_changes;
    const ZEFFormatCell* changed = m_cells.value(id);
    const bool missing = changed && changed->text().isEmpty() && changed->minLength() > 0;
    const QValidator::State state = missing ? QValidator::Invalid : validate();
    if (!self)
        return;
    // A change that came meanwhile has brought the state up to date already.
    if (change == m_changes && state != m_state) {
        m_state = state;
        Q_EMIT validityChanged(state);
        if (!self)
            return;
    }
    Q_EMIT textChanged(m_state);
}

void ZEFFormatEdit::copy()
{
    const QString whole = text();
    if (whole.isEmpty())
        return;
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QPointer<ZEFFormatEdit> self(this);
    // Its own selection must not end the edit's global selection.
    const bool listening = QObject::disconnect(clipboard, "2selectionChanged()", this, "1deselect()");
    if (clipboard->supportsSelection())
        clipboard->setText(whole, QClipboard::Selection);
    clipboard->setText(whole);
    if (self && listening)
        QObject::connect(clipboard, "2selectionChanged()", this, "1deselect()");
}

void ZEFFormatEdit::paste()
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    const QPointer<ZEFFormatEdit> self(this);
    QString pasted;
    if (clipboard->supportsSelection())
        pasted = clipboard->text(QClipboard::Selection);
    if (pasted.isEmpty())
        pasted = clipboard->text();
    if (self && !pasted.isEmpty())
        setText(pasted);
}

void ZEFFormatEdit::cut()
{
    if (text().isEmpty())
        return;
    const QPointer<ZEFFormatEdit> self(this);
    copy();
    if (self)
        clear();
}

void ZEFFormatEdit::clear()
{
    const QPointer<ZEFFormatEdit> self(this);
    const unsigned int generation = m_generation;
    if (!m_cells.isEmpty()) {
        const ZEFFormatCell::Use use(m_cells.constFirst());
        m_cells.constFirst()->setFocus();
        if (!self)
            return;
    }
    // The first cell deliberately keeps its text.
    for (qsizetype i = 1; i < m_cells.size() && generation == m_generation; ++i) {
        const QPointer<ZEFFormatCell> cell(m_cells.at(i));
        const ZEFFormatCell::Use use(cell);
        const bool connected =
            QObject::disconnect(cell, "2textChanged(int, QString&)", this, "1editorTextChanged(int)");
        cell->setText(QString());
        if (!self)
            return;
        if (!cell || generation != m_generation)
            continue;
        if (connected)
            QObject::connect(cell, "2textChanged(int, QString&)", this, "1editorTextChanged(int)");
        cell->setSelectOutside(false);
        if (!self)
            return;
    }
    m_globallySelected = false;
}

void ZEFFormatEdit::globalSelect(bool bGlobal)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QSignalBlocker quietClipboard(clipboard);
    for (ZEFFormatCell* cell : std::as_const(m_cells)) {
        const ZEFFormatCell::SignalsBlocked quietCell(cell);
        cell->setSelectOutside(bGlobal);
    }
    if (bGlobal && clipboard->supportsSelection())
        clipboard->setText(text(), QClipboard::Selection);
    m_globallySelected = bGlobal;
}

void ZEFFormatEdit::deselect()
{
    globalSelect(false);
}

void ZEFFormatEdit::setEnforceCase(int nEnforce)
{
    if (nEnforce != m_enforceCase) {
        for (ZEFFormatCell* cell : std::as_const(m_cells))
            cell->setEnforceCase(nEnforce);
    }
    m_enforceCase = nEnforce;
}

void ZEFFormatEdit::addAlternateCheck(const QString& pattern, int id)
{
    parseFormat(pattern, id);
}

void ZEFFormatEdit::clearAlternate()
{
    m_fallbackText.clear();
    const QPointer<ZEFFormatEdit> self(this);
    const QValidator::State state = validate();
    if (self)
        m_state = state;
}

void ZEFFormatEdit::saveFocus()
{
    auto* focused = qobject_cast<ZEFFormatCell*>(QApplication::focusWidget());
    m_savedFocus = focused && focused->parentWidget() == this ? focused : m_cells.value(0);
}

void ZEFFormatEdit::restoreFocus()
{
    const QPointer<ZEFFormatCell> cell(m_savedFocus ? m_savedFocus.data() : m_cells.value(0));
    const ZEFFormatCell::Use use(cell);
    if (cell)
        cell->setFocus();
}

void ZEFFormatEdit::childEvent(QChildEvent* e)
{
    if (e->removed())
        forgetCell(e->child());
    QWidget::childEvent(e);
}

void ZEFFormatEdit::forgetCell(const QObject* cell)
{
    if (m_cells.removeIf([cell](const QObject* other) { return other == cell; }) == 0)
        return;
    // Its number is that of another cell from now on.
    QObject::disconnect(cell, nullptr, this, nullptr);
    ++m_generation;
    for (qsizetype i = 0; i < m_cells.size(); ++i)
        m_cells.at(i)->setId(static_cast<int>(i));
    setFocusProxy(m_cells.value(0));
}

void ZEFFormatEdit::clearCells()
{
    const QPointer<ZEFFormatEdit> self(this);
    ++m_generation;
    m_savedFocus = nullptr;
    m_globallySelected = false;
    setFocusProxy(nullptr);
    const QList<ZEFFormatCell*> dropped = std::exchange(m_cells, {});
    const QList<QPointer<ZEFFormatCell>> cells(dropped.cbegin(), dropped.cend());
    for (const QPointer<ZEFFormatCell>& cell : cells) {
        if (cell)
            cell->retire();
    }
    if (!self)
        return;
    // All labels, nested ones too; one may go together with another.
    const QList<QLabel*> found = findChildren<QLabel*>();
    const QList<QPointer<QLabel>> labels(found.cbegin(), found.cend());
    for (const QPointer<QLabel>& label : labels)
        delete label;
}

void ZEFFormatEdit::focusCell(int index, int cursor, QKeyEvent* e)
{
    const QPointer<ZEFFormatEdit> self(this);
    const QPointer<ZEFFormatCell> cell(m_cells.at(index));
    const ZEFFormatCell::Use use(cell);
    const unsigned int generation = m_generation;
    cell->setFocus();
    if (!self || !cell || generation != m_generation)
        return;
    if (cursor >= 0)
        cell->setCursorPosition(cursor);
    if (!self || !cell || generation != m_generation || !e || m_forwardedKeys >= maxForwardedKeys)
        return;
    ++m_forwardedKeys;
    QCoreApplication::sendEvent(cell, e);
    if (self)
        --m_forwardedKeys;
}

void ZEFFormatEdit::setMargin(void (QMargins::*set)(int), int margin)
{
    if (!layout())
        return;
    QMargins margins = layout()->contentsMargins();
    (margins.*set)(std::clamp(margin, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    layout()->setContentsMargins(margins);
}
