#include <ZEFFormatEdit.h>

#include "SignatureConnection.h"
#include "ZEFFormatCellPrivate.h"
#include "ZEFFormatEditPrivate.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>

#include <algorithm>
#include <utility>

using CellPrivate = ZEFFormatCellPrivate;

ZEFFormatEditPrivate::ZEFFormatEditPrivate(ZEFFormatEdit* edit)
    : q(edit)
{
}

ZEFFormatEdit::ZEFFormatEdit(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : QWidget(parent, flags)
    , d(std::make_unique<ZEFFormatEditPrivate>(this))
{
    auto* row = new QHBoxLayout;
    setLayout(row);
    setObjectName(QString::fromUtf8(name));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    // Without a policy Qt would pass over the edit where a form gives its tab order.
    setFocusPolicy(Qt::TabFocus);
    row->setContentsMargins(2, 2, 2, 2);
    row->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    static const SignatureConnection<QClipboard, ZEFFormatEdit> deselection("2selectionChanged()",
                                                                            "1deselect()");
    deselection.make(QGuiApplication::clipboard(), this);
}

ZEFFormatEdit::~ZEFFormatEdit()
{
    QObject::disconnect(QGuiApplication::clipboard(), "2selectionChanged()", this, "1deselect()");
    setFocusProxy(nullptr);
    // Not only those of the row: a slot may delete the edit while it drops its cells.
    d->cells.clear();
    d->dropAll(findChildren<ZEFFormatCell*>(Qt::FindDirectChildrenOnly));
}

QString ZEFFormatEdit::text() const
{
    QString joined;
    for (const ZEFFormatCell* cell : d->cells) {
        const QString part = cell->text();
        if (!part.isEmpty())
            joined.append(cell->prefix()).append(part).append(cell->suffix());
    }
    return joined.isEmpty() ? d->fallbackText : joined;
}

QString ZEFFormatEdit::format() const
{
    return d->format;
}

QString ZEFFormatEdit::masterRegexp() const
{
    return d->master.pattern();
}

QString ZEFFormatEdit::ignore() const
{
    return d->ignore;
}

int ZEFFormatEdit::enforceCase() const
{
    return d->enforceCase;
}

QValidator::State ZEFFormatEdit::state() const
{
    return d->state;
}

QValidator::State ZEFFormatEdit::validate()
{
    const MatchingTime action;
    const QPointer<ZEFFormatEdit> self(this);
    // A validator, or a receiver of a rewritten text, may change the row, which is then judged anew, once.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const unsigned int generation = d->generation;
        const QValidator::State state = d->judgeCells();
        if (!self)
            break;
        if (generation != d->generation)
            continue;
        if (!d->validator)
            return state;
        QString whole = text();
        int position = 0;
        return d->validator->validate(whole, position);
    }
    return QValidator::Invalid;
}

QValidator::State ZEFFormatEditPrivate::judgeCells()
{
    const QPointer<ZEFFormatEdit> self(q);
    const unsigned int before = generation;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        ZEFFormatCell* cell = cells.at(i);
        const CellPrivate::Use use(cell);
        QString text = cell->text();
        int position = cell->cursorPosition();
        // A failing cell is deliberately never Intermediate, even when it is merely incomplete.
        if (text.isEmpty() && cell->minLength() > 0)
            return QValidator::Invalid;
        if (cell->validator() && cell->validator()->validate(text, position) != QValidator::Acceptable)
            return QValidator::Invalid;
        if (!self || generation != before || !cell->validate() || !self || generation != before)
            return QValidator::Invalid;
    }
    return QValidator::Acceptable;
}

const QValidator* ZEFFormatEdit::validator() const
{
    return d->validator;
}

void ZEFFormatEdit::setValidator(const QValidator* validator)
{
    d->validator = validator;
}

int ZEFFormatEdit::lineEditCount() const
{
    return static_cast<int>(d->cells.size());
}

ZEFFormatCell* ZEFFormatEdit::editor(int index) const
{
    return d->cells.value(index);
}

QString ZEFFormatEdit::pendingText() const
{
    return d->pendingText;
}

void ZEFFormatEdit::setPendingText(const QString& text)
{
    d->pendingText = text;
}

QString ZEFFormatEdit::fallbackText() const
{
    return d->fallbackText;
}

void ZEFFormatEdit::setFallbackText(const QString& text)
{
    d->fallbackText = text;
}

void ZEFFormatEdit::setAlternateId(int id)
{
    d->alternateId = id;
}

int ZEFFormatEdit::alternateCount() const
{
    return static_cast<int>(d->alternates.size());
}

int ZEFFormatEdit::alternateId() const
{
    return d->alternateId;
}

QString ZEFFormatEdit::alternatePattern(int id) const
{
    return d->alternates.value(id).pattern();
}

int ZEFFormatEdit::checkAlternates(const QString& text) const
{
    if (text.size() > maxWholeLength)
        return 0;
    for (auto alternate = d->alternates.cbegin(); alternate != d->alternates.cend(); ++alternate) {
        const QRegularExpressionMatch match = alternate->match(text);
        if (match.hasMatch() && match.capturedLength() == text.size())
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
    for (ZEFFormatCell* cell : std::as_const(d->cells))
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
    d->setMargin(&QMargins::setLeft, margin);
}

int ZEFFormatEdit::rightMargin() const
{
    return layout() ? layout()->contentsMargins().right() : 0;
}

void ZEFFormatEdit::setRightMargin(int margin)
{
    d->setMargin(&QMargins::setRight, margin);
}

int ZEFFormatEdit::topMargin() const
{
    return layout() ? layout()->contentsMargins().top() : 0;
}

void ZEFFormatEdit::setTopMargin(int margin)
{
    d->setMargin(&QMargins::setTop, margin);
}

int ZEFFormatEdit::bottomMargin() const
{
    return layout() ? layout()->contentsMargins().bottom() : 0;
}

void ZEFFormatEdit::setBottomMargin(int margin)
{
    d->setMargin(&QMargins::setBottom, margin);
}

bool ZEFFormatEdit::keyboardPasteSpreads() const
{
    return property("keyboardPasteSpreads").toBool();
}

void ZEFFormatEdit::setKeyboardPasteSpreads(bool on)
{
    setProperty("keyboardPasteSpreads", on);
}

bool ZEFFormatEdit::setText(const QString& text)
{
    const MatchingTime action;
    const bool sparesProtected = std::exchange(d->sparesProtectedCells, false);
    const QStringView trimmed = QStringView(text).trimmed();
    if (trimmed.size() > maxWholeLength)
        return false;
    const QRegularExpressionMatch match = d->master.match(trimmed.toString());
    if (!match.hasMatch())
        return false;
    const QPointer<ZEFFormatEdit> self(this);
    const unsigned int generation = d->generation;
    for (qsizetype i = 0; i < d->cells.size(); ++i) {
        ZEFFormatCell* cell = d->cells.at(i);
        if (sparesProtected && (cell->isReadOnly() || !cell->isEnabled()))
            continue;
        const CellPrivate::Use use(cell);
        cell->setText(match.captured(static_cast<int>(i) + 1));
        if (!self)
            return true;
        if (generation != d->generation)
            break;
    }
    d->fallbackText.clear();
    return true;
}

void ZEFFormatEdit::setFormat(const QString& format)
{
    d->format = format;
    parseFormat(format, 0);
}

void ZEFFormatEdit::setIgnore(const QString& characters)
{
    d->ignore = characters;
    for (ZEFFormatCell* cell : std::as_const(d->cells))
        cell->setIgnore(characters);
}

void ZEFFormatEdit::moveLeft(int id, QKeyEvent* e)
{
    if (id > 0 && id <= d->cells.size())
        d->focusCell(id - 1, static_cast<int>(d->cells.at(id - 1)->text().size()), e);
}

void ZEFFormatEdit::moveRight(int id, QKeyEvent* e)
{
    if (id >= -1 && id < d->cells.size() - 1)
        d->focusCell(id + 1, 0, e);
}

void ZEFFormatEdit::moveTo(int nIdFrom, int nIdTo, QKeyEvent* e)
{
    if (nIdTo >= 0 && nIdTo < d->cells.size())
        d->focusCell(nIdTo, -1, nIdFrom != nIdTo ? e : nullptr);
}

void ZEFFormatEdit::childFocusedOut(int, QFocusEvent*) { }

void ZEFFormatEdit::editorTextChanged(int id)
{
    const MatchingTime action;
    const QPointer<ZEFFormatEdit> self(this);
    if (d->globallySelected)
        globalSelect(false);
    if (!self)
        return;
    d->pendingText.clear();
    const ZEFFormatCell* changed = d->cells.value(id);
    const bool missing = changed && changed->text().isEmpty() && changed->minLength() > 0;
    const QValidator::State state = missing ? QValidator::Invalid : validate();
    if (!self)
        return;
    // Also after a change that came meanwhile, which has announced a verdict of its own.
    if (state != d->state) {
        d->state = state;
        Q_EMIT validityChanged(state);
        if (!self)
            return;
    }
    Q_EMIT textChanged(d->state);
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
    const unsigned int generation = d->generation;
    if (!d->cells.isEmpty()) {
        const CellPrivate::Use use(d->cells.constFirst());
        d->cells.constFirst()->setFocus();
        if (!self)
            return;
    }
    // The first cell deliberately keeps its text.
    for (qsizetype i = 1; i < d->cells.size() && generation == d->generation; ++i) {
        const QPointer<ZEFFormatCell> cell(d->cells.at(i));
        const CellPrivate::Use use(cell);
        const bool connected =
            QObject::disconnect(cell, "2textChanged(int, QString&)", this, "1editorTextChanged(int)");
        cell->setText(QString());
        if (!self)
            return;
        if (!cell || generation != d->generation)
            continue;
        if (connected)
            QObject::connect(cell, "2textChanged(int, QString&)", this, "1editorTextChanged(int)");
        cell->setSelectOutside(false);
        if (!self)
            return;
    }
    d->globallySelected = false;
}

void ZEFFormatEdit::globalSelect(bool bGlobal)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QSignalBlocker quietClipboard(clipboard);
    for (ZEFFormatCell* cell : std::as_const(d->cells)) {
        const CellPrivate::SignalsBlocked quietCell(cell);
        cell->setSelectOutside(bGlobal);
    }
    if (bGlobal && clipboard->supportsSelection())
        clipboard->setText(text(), QClipboard::Selection);
    d->globallySelected = bGlobal;
}

void ZEFFormatEdit::deselect()
{
    globalSelect(false);
}

void ZEFFormatEdit::setEnforceCase(int nEnforce)
{
    if (nEnforce != d->enforceCase) {
        for (ZEFFormatCell* cell : std::as_const(d->cells))
            cell->setEnforceCase(nEnforce);
    }
    d->enforceCase = nEnforce;
}

void ZEFFormatEdit::addAlternateCheck(const QString& pattern, int id)
{
    parseFormat(pattern, id);
}

void ZEFFormatEdit::clearAlternate()
{
    d->fallbackText.clear();
    const QPointer<ZEFFormatEdit> self(this);
    const QValidator::State state = validate();
    if (self)
        d->state = state;
}

void ZEFFormatEdit::saveFocus()
{
    auto* focused = qobject_cast<ZEFFormatCell*>(QApplication::focusWidget());
    d->savedFocus = focused && focused->parentWidget() == this ? focused : d->cells.value(0);
}

void ZEFFormatEdit::restoreFocus()
{
    const QPointer<ZEFFormatCell> cell(d->savedFocus ? d->savedFocus.data() : d->cells.value(0));
    const CellPrivate::Use use(cell);
    if (cell)
        cell->setFocus();
}

void ZEFFormatEdit::childEvent(QChildEvent* e)
{
    if (e->removed())
        d->dropForeign(e->child());
    QWidget::childEvent(e);
}

void ZEFFormatEditPrivate::focusCell(qsizetype index, int cursor, QKeyEvent* e)
{
    const QPointer<ZEFFormatEdit> self(q);
    const QPointer<ZEFFormatCell> cell(cells.at(index));
    const CellPrivate::Use use(cell);
    const unsigned int before = generation;
    const auto isThere = [&] { return self && cell && generation == before; };
    cell->setFocus();
    if (isThere() && cursor >= 0)
        cell->setCursorPosition(cursor);
    if (!isThere() || !e)
        return;
    // A key that travels through empty cells is sent by the call that sent it first, not by each from within
    // the one before.
    nextReceiver = cell;
    if (e == sentKey)
        return;
    const QKeyEvent* outer = std::exchange(sentKey, e);
    while (self && nextReceiver) {
        const CellPrivate::Use receiver(nextReceiver);
        QCoreApplication::sendEvent(std::exchange(nextReceiver, nullptr), e);
    }
    if (self)
        sentKey = outer;
}

void ZEFFormatEditPrivate::setMargin(void (QMargins::*set)(int), int margin)
{
    if (!q->layout())
        return;
    QMargins margins = q->layout()->contentsMargins();
    (margins.*set)(std::clamp(margin, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    q->layout()->setContentsMargins(margins);
}
