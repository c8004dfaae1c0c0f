// The mouse, and the selection that it leaves.

#include "ZEFFormatCellPrivate.h"

#include <QtGui/QMouseEvent>

void ZEFFormatCell::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::MiddleButton) {
        d->pasteByUser();
        return;
    }
    d->mousePressed = true;
    QLineEdit::mousePressEvent(e);
}

void ZEFFormatCell::mouseReleaseEvent(QMouseEvent* e)
{
    if (d->mousePressed) {
        d->saveSelection();
        d->mousePressed = false;
    }
    // The press has pasted already; on X11 the line edit would paste again at the release.
    if (e->button() == Qt::MiddleButton)
        return;
    const ZEFFormatCellPrivate::SignalsBlocked blocked(this);
    QLineEdit::mouseReleaseEvent(e);
}

void ZEFFormatCell::mouseMoveEvent(QMouseEvent* e)
{
    const QPointer<ZEFFormatCell> self(this);
    const QPointF position = e->position();
    const bool outside =
        position.x() < 0 || position.y() < 0 || position.x() > width() || position.y() > height();
    if (d->mousePressed && outside) {
        d->saveSelection();
        if (!d->selectOutside) {
            Q_EMIT selectOutside(true);
            if (self && !d->selectOutside)
                setSelectOutside(true);
        }
    } else if (d->mousePressed && d->selectOutside) {
        Q_EMIT selectOutside(false);
        if (self)
            reselect();
    }
    if (self)
        QLineEdit::mouseMoveEvent(e);
}

void ZEFFormatCell::reselect()
{
    const auto length = static_cast<int>(text().size());
    const bool valid = d->savedSelectionStart >= 0 && d->savedSelectionStart < length
        && d->savedSelectionEnd > d->savedSelectionStart && d->savedSelectionEnd <= length;
    if (!valid)
        d->savedSelectionStart = d->savedSelectionEnd = -1;
    const int start = d->savedSelectionStart;
    const int end = d->savedSelectionEnd;
    // The caret stands at one end of a selection; placing it afterwards would end the selection.
    if (valid && d->savedCursor == start)
        setSelection(end, start - end);
    else if (valid)
        setSelection(start, end - start);
    else if (length > d->savedCursor)
        setCursorPosition(d->savedCursor);
}

void ZEFFormatCellPrivate::saveSelection()
{
    savedSelectionStart = q->selectionStart();
    savedSelectionEnd = savedSelectionStart + static_cast<int>(q->selectedText().size());
    savedCursor = q->cursorPosition();
}
