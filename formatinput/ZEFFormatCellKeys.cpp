// What keys and input methods do.

#include "ZEFFormatCellPrivate.h"

#include <ZEFFormatEdit.h>

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>

namespace {

bool isOneCharacter(const QString& text)
{
    return text.size() == 1
        || (text.size() == 2 && text.at(0).isHighSurrogate() && text.at(1).isLowSurrogate());
}

bool isPrintable(const QString& text)
{
    return !text.isEmpty() && (text.at(0).isPrint() || text.at(0).category() == QChar::Other_PrivateUse);
}

// Control and Alt together are AltGr on Windows, which types characters, as Qt's own input control has it.
bool isCommand(const QKeyEvent& e)
{
    return (e.modifiers() & Qt::ControlModifier)
        && !((e.modifiers() & Qt::AltModifier) && isPrintable(e.text()));
}

} // namespace

void ZEFFormatCell::keyPressEvent(QKeyEvent* e)
{
    if ((isCommand(*e) || !isPrintable(e->text())) && e->matches(QKeySequence::Paste)) {
        d->pasteByKey(e);
        return;
    }
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
        break;
    case Qt::Key_Backspace:
        if (!d->selectOutside && cursorPosition() == 0) {
            const QPointer<ZEFFormatCell> self(this);
            Q_EMIT moveLeft(d->id, e);
            if (!self || d->dropped)
                return;
            break;
        }
        [[fallthrough]];
    case Qt::Key_Delete:
    case Qt::Key_Home:
    case Qt::Key_End:
        if (!d->selectOutside)
            break;
        e->accept();
        Q_EMIT deleteMe();
        return;
    case Qt::Key_Left:
        if (cursorPosition() > 0)
            break;
        e->accept();
        Q_EMIT moveLeft(d->id, nullptr);
        return;
    case Qt::Key_Right:
        // The length that counts is the greatest, not the present one.
        if (cursorPosition() != maxLength())
            break;
        e->accept();
        Q_EMIT moveRight(d->id, nullptr);
        return;
    default:
        d->characterTyped(e);
        return;
    }
    QLineEdit::keyPressEvent(e);
}

void ZEFFormatCell::inputMethodEvent(QInputMethodEvent* e)
{
    const QString typed = e->commitString();
    if (typed.isEmpty()) {
        QLineEdit::inputMethodEvent(e);
    } else if (d->selectOutside) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed);
        d->characterTyped(&key);
    } else if (d->swallows(typed)) {
        // The composition ends all the same.
        QInputMethodEvent rest(e->preeditString(), e->attributes());
        QLineEdit::inputMethodEvent(&rest);
    } else {
        d->enter(typed, [this, e] { QLineEdit::inputMethodEvent(e); });
    }
}

void ZEFFormatCellPrivate::characterTyped(QKeyEvent* e)
{
    const QString typed = e->text();
    if (isCommand(*e)) {
        const bool copies = selectOutside && e->key() == Qt::Key_C;
        const bool cuts = selectOutside && e->key() == Qt::Key_X;
        if (!copies && !cuts) {
            q->QLineEdit::keyPressEvent(e);
            return;
        }
        e->accept();
        copies ? Q_EMIT q->copyMe() : Q_EMIT q->cutMe();
        return;
    }
    if (selectOutside && !typed.isEmpty()) {
        const QPointer<ZEFFormatCell> self(q);
        Q_EMIT q->deleteMe();
        if (self)
            Q_EMIT q->moveTo(id, 0, e);
        return;
    }
    if (swallows(typed)) {
        e->accept();
        return;
    }
    if (enter(typed, [this, e] { q->QLineEdit::keyPressEvent(e); }))
        e->accept();
}

bool ZEFFormatCellPrivate::swallows(const QString& typed) const
{
    if (isOneCharacter(typed) && ignore.contains(typed))
        return true;
    // There must be room for the whole character, and before the greatest length.
    const qsizetype needed = isOneCharacter(typed) ? typed.size() : 1;
    return !q->hasSelectedText()
        && (q->text().size() + needed > q->maxLength() || q->cursorPosition() >= q->maxLength());
}

bool ZEFFormatCellPrivate::enter(const QString& typed, const std::function<void()>& handle)
{
    const QPointer<ZEFFormatCell> self(q);
    const qsizetype length = q->text().size();
    const bool last =
        !q->hasSelectedText() && q->cursorPosition() + std::max<qsizetype>(typed.size(), 1) >= q->maxLength();
    handle();
    if (last && self && q->text().size() > length)
        Q_EMIT q->moveRight(id, nullptr);
    return last;
}

// The default is Qt's own paste into the cell.
void ZEFFormatCellPrivate::pasteByKey(QKeyEvent* e)
{
    const auto* edit = qobject_cast<ZEFFormatEdit*>(q->parentWidget());
    if (edit && edit->keyboardPasteSpreads()) {
        e->accept();
        pasteByUser();
    } else if (pastesTooMuch(QGuiApplication::clipboard()->text())) {
        e->accept();
    } else {
        q->QLineEdit::keyPressEvent(e);
    }
}
