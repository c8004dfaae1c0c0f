#include "AccessibleFormatEdit.h"

AccessibleFormatEdit::AccessibleFormatEdit(ZEFFormatEdit* edit)
    : QAccessibleWidget(edit, QAccessible::Grouping)
{
}

ZEFFormatEdit* AccessibleFormatEdit::edit() const
{
    return static_cast<ZEFFormatEdit*>(widget());
}

int AccessibleFormatEdit::childCount() const
{
    return edit()->lineEditCount();
}

int AccessibleFormatEdit::indexOfChild(const QAccessibleInterface* child) const
{
    for (int i = 0; child && i < edit()->lineEditCount(); ++i) {
        if (child->object() == edit()->editor(i))
            return i;
    }
    return -1;
}

QAccessibleInterface* AccessibleFormatEdit::child(int index) const
{
    return index >= 0 && index < edit()->lineEditCount()
        ? QAccessible::queryAccessibleInterface(edit()->editor(index))
        : nullptr;
}

QAccessibleInterface* AccessibleFormatEdit::childAt(int x, int y) const
{
    for (int i = 0; i < edit()->lineEditCount(); ++i) {
        const ZEFFormatCell* cell = edit()->editor(i);
        if (cell->isVisible() && cell->rect().contains(cell->mapFromGlobal(QPoint(x, y))))
            return child(i);
    }
    return nullptr;
}

QString AccessibleFormatEdit::text(QAccessible::Text t) const
{
    return t == QAccessible::Value ? edit()->text() : QAccessibleWidget::text(t);
}

void AccessibleFormatEdit::setText(QAccessible::Text t, const QString& text)
{
    if (t == QAccessible::Value && edit()->isEnabled())
        edit()->setText(text);
}

void* AccessibleFormatEdit::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

void AccessibleFormatEdit::selection(int, int* startOffset, int* endOffset) const
{
    *startOffset = *endOffset = 0;
}

int AccessibleFormatEdit::selectionCount() const
{
    return 0;
}

void AccessibleFormatEdit::addSelection(int, int) { }

void AccessibleFormatEdit::removeSelection(int) { }

void AccessibleFormatEdit::setSelection(int, int, int) { }

int AccessibleFormatEdit::cursorPosition() const
{
    return -1;
}

void AccessibleFormatEdit::setCursorPosition(int) { }

QString AccessibleFormatEdit::text(int startOffset, int endOffset) const
{
    return startOffset <= endOffset ? edit()->text().mid(startOffset, endOffset - startOffset) : QString();
}

int AccessibleFormatEdit::characterCount() const
{
    return static_cast<int>(edit()->text().size());
}

QRect AccessibleFormatEdit::characterRect(int) const
{
    return rect();
}

int AccessibleFormatEdit::offsetAtPoint(const QPoint&) const
{
    return -1;
}

void AccessibleFormatEdit::scrollToSubstring(int, int) { }

QString AccessibleFormatEdit::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

void AccessibleFormatEdit::deleteText(int startOffset, int endOffset)
{
    replaceText(startOffset, endOffset, QString());
}

void AccessibleFormatEdit::insertText(int offset, const QString& text)
{
    replaceText(offset, offset, text);
}

void AccessibleFormatEdit::replaceText(int startOffset, int endOffset, const QString& text)
{
    QString whole = edit()->text();
    if (startOffset >= 0 && startOffset <= endOffset && endOffset <= whole.size())
        setText(QAccessible::Value, whole.replace(startOffset, endOffset - startOffset, text));
}
