#include <ZEFFormatCell.h>

#include "SignatureConnection.h"
#include "ZEFFormatCellPrivate.h"
#include "ZEFFormatEditPrivate.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>

ZEFFormatCellPrivate::ZEFFormatCellPrivate(ZEFFormatCell* cell)
    : q(cell)
{
}

ZEFFormatCell::ZEFFormatCell(QWidget* parent, const char* name)
    : QLineEdit(parent)
{
    setObjectName(QString::fromUtf8(name));
    setDragEnabled(false);
    // The connections of the cell itself are those that connectNotify() has no d for.
    auto own = std::make_unique<ZEFFormatCellPrivate>(this);
    own->watchSignals();
    static const SignatureConnection<ZEFFormatCell, ZEFFormatCell> announcement(
        "2textChanged(const QString&)", "1textChanged(const QString&)");
    announcement.make(this, this);
    d = std::move(own);
}

ZEFFormatCell::~ZEFFormatCell()
{
    // Slots of destroyed() may use the edit while it still has this child.
    if (auto* edit = qobject_cast<ZEFFormatEdit*>(parentWidget()))
        ZEFFormatEditPrivate::get(edit)->dropForeign(this);
}

int ZEFFormatCell::id() const
{
    return d->id;
}

void ZEFFormatCell::setId(int id)
{
    d->id = id;
}

int ZEFFormatCell::minLength() const
{
    return d->minLength;
}

int ZEFFormatCell::enforceCase() const
{
    return d->enforceCase;
}

void ZEFFormatCell::setEnforceCase(int mode)
{
    d->enforceCase = mode;
}

QString ZEFFormatCell::ignore() const
{
    return d->ignore;
}

void ZEFFormatCell::setIgnore(const QString& characters)
{
    d->ignore = characters;
}

QString ZEFFormatCell::prefix() const
{
    return d->prefix;
}

void ZEFFormatCell::setPrefix(const QString& text)
{
    d->prefix = text;
}

QString ZEFFormatCell::suffix() const
{
    return d->suffix;
}

void ZEFFormatCell::setSuffix(const QString& text)
{
    d->suffix = text;
}

QString ZEFFormatCell::equivs() const
{
    return d->equivs;
}

bool ZEFFormatCell::selectOutside() const
{
    return d->selectOutside;
}

void ZEFFormatCell::setSelectOutside(bool)
{
    // Deliberately without effect: cells do not take part in a selection of the whole edit.
}

void ZEFFormatCell::storeSelectOutside(bool on)
{
    d->selectOutside = on;
}

bool ZEFFormatCell::event(QEvent* e)
{
    const ZEFFormatCellPrivate::Use use(this);
    d->followChange(e->type());
    return QLineEdit::event(e);
}

void ZEFFormatCell::focusOutEvent(QFocusEvent* e)
{
    const QPointer<ZEFFormatCell> self(this);
    Q_EMIT focusOut(d->id, e);
    if (self)
        QLineEdit::focusOutEvent(e);
}

void ZEFFormatCell::setText(const QString& text)
{
    const ZEFFormatCellPrivate::Use use(this);
    QLineEdit::setText(checkInput(text));
}

void ZEFFormatCell::insert(const QString& text)
{
    const ZEFFormatCellPrivate::Use use(this);
    QLineEdit::insert(checkInput(text));
}

QString ZEFFormatCell::checkInput(const QString& text)
{
    switch (d->enforceCase) {
    case 1:
        return text.toLower();
    case 2:
        return text.toUpper();
    default:
        return text;
    }
}

void ZEFFormatCell::textChanged(const QString& text)
{
    const ZEFFormatCellPrivate::Use use(this);
    QString copy = d->mended(text);
    Q_EMIT textChanged(d->id, copy);
}

// Every change of the text comes by here. The greatest length may have cut a surrogate pair in half.
QString ZEFFormatCellPrivate::mended(const QString& text)
{
    if (text.isValidUtf16())
        return text;
    QString whole;
    int cursor = q->cursorPosition();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (pair)
            whole += text.at(i++);
        if (pair || !c.isSurrogate())
            whole += text.at(i);
        else if (i < q->cursorPosition())
            --cursor;
    }
    const SignalsBlocked blocked(q);
    q->QLineEdit::setText(whole);
    q->setCursorPosition(cursor);
    return whole;
}

void ZEFFormatCell::copy()
{
    // The edit ends its global selection at any new clipboard selection but its own.
    const ZEFFormatCellPrivate::Use use(this);
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
    const ZEFFormatCellPrivate::Use use(this);
    const QPointer<ZEFFormatCell> self(this);
    // The text of the selection clipboard plays no part here, so its owner is not asked for it.
    const QString pasted = QGuiApplication::clipboard()->text();
    if (!self)
        return;
    if (!hasSelectedText() && text().size() + pasted.size() > maxLength()) {
        Q_EMIT pasteMe();
        return;
    }
    if (d->pastesTooMuch(pasted))
        return;
    const QString before = text();
    {
        const ZEFFormatCellPrivate::SignalsBlocked blocked(this);
        QLineEdit::paste();
    }
    if (!self)
        return;
    QString after = d->mended(text());
    if (after != before)
        Q_EMIT textChanged(d->id, after);
}

bool ZEFFormatCellPrivate::pastesTooMuch(const QString& pasted) const
{
    return std::min<qsizetype>(pasted.size(), q->maxLength()) > maxWholeLength;
}

void ZEFFormatCellPrivate::pasteByUser()
{
    if (q->isReadOnly() || !q->isEnabled())
        return;
    const QPointer<ZEFFormatEdit> edit(qobject_cast<ZEFFormatEdit*>(q->parentWidget()));
    if (edit)
        ZEFFormatEditPrivate::get(edit)->sparesProtectedCells = true;
    q->paste();
    if (edit)
        ZEFFormatEditPrivate::get(edit)->sparesProtectedCells = false;
}

void ZEFFormatCell::cut()
{
    Q_EMIT cutMe();
}

void ZEFFormatCell::clear()
{
    Q_EMIT deleteMe();
}
