#include "AccessibleFormatCell.h"

#include <ZEFFormatEdit.h>
#include <ZEFTranslatorCache.h>

#include <algorithm>

using namespace Qt::StringLiterals;

AccessibleFormatCell::AccessibleFormatCell(ZEFFormatCell* cell)
    : QAccessibleWidget(cell, QAccessible::EditableText)
{
}

ZEFFormatCell* AccessibleFormatCell::cell() const
{
    return static_cast<ZEFFormatCell*>(widget());
}

//! Null for a cell that stands alone.
ZEFFormatEdit* AccessibleFormatCell::edit() const
{
    return qobject_cast<ZEFFormatEdit*>(cell()->parentWidget());
}

//! In the language of the form, whose translator is in force only while the form is built.
QString AccessibleFormatCell::partName() const
{
    QTranslator* translator =
        ZEFTranslatorCache::translatorForLocale(u"zefmain.qm"_s, cell()->locale().name());
    return ZEFTranslatorCache::localizeString(u"part %1 of %2"_s, translator, nullptr)
        .arg(cell()->id() + 1)
        .arg(edit()->lineEditCount());
}

QString AccessibleFormatCell::text(QAccessible::Text t) const
{
    if (t == QAccessible::Value)
        return cell()->displayText();
    QString given = QAccessibleWidget::text(t);
    if (!given.isEmpty() || !edit())
        return given;
    if (t == QAccessible::Name && edit()->lineEditCount() > 1)
        return partName();
    if (t == QAccessible::Name || t == QAccessible::Description)
        return QAccessible::queryAccessibleInterface(edit())->text(t);
    return {};
}

void AccessibleFormatCell::setText(QAccessible::Text t, const QString& text)
{
    if (t == QAccessible::Value)
        replaceText(0, characterCount(), text);
}

QAccessible::State AccessibleFormatCell::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.readOnly = cell()->isReadOnly();
    state.passwordEdit = cell()->echoMode() != QLineEdit::Normal;
    state.selectableText = true;
    return state;
}

void* AccessibleFormatCell::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface && !cell()->isReadOnly())
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

void AccessibleFormatCell::selection(int selectionIndex, int* startOffset, int* endOffset) const
{
    *startOffset = *endOffset = 0;
    if (selectionIndex != 0 || !cell()->hasSelectedText())
        return;
    *startOffset = cell()->selectionStart();
    *endOffset = cell()->selectionEnd();
}

int AccessibleFormatCell::selectionCount() const
{
    return cell()->hasSelectedText() ? 1 : 0;
}

void AccessibleFormatCell::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void AccessibleFormatCell::removeSelection(int selectionIndex)
{
    if (selectionIndex == 0)
        cell()->deselect();
}

void AccessibleFormatCell::setSelection(int selectionIndex, int startOffset, int endOffset)
{
    if (selectionIndex == 0)
        cell()->setSelection(startOffset, endOffset - startOffset);
}

int AccessibleFormatCell::cursorPosition() const
{
    return cell()->cursorPosition();
}

void AccessibleFormatCell::setCursorPosition(int position)
{
    cell()->setCursorPosition(position);
}

QString AccessibleFormatCell::text(int startOffset, int endOffset) const
{
    return startOffset <= endOffset ? cell()->displayText().mid(startOffset, endOffset - startOffset)
                                    : QString();
}

int AccessibleFormatCell::characterCount() const
{
    return static_cast<int>(cell()->displayText().size());
}

QRect AccessibleFormatCell::characterRect(int offset) const
{
    const QString shown = cell()->displayText();
    if (offset < 0 || offset > shown.size())
        return {};
    // The caret tells where the text begins, however it is aligned or scrolled.
    const QRect caret = cell()->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const QFontMetrics metrics = cell()->fontMetrics();
    const auto advance = [&](int length) { return metrics.horizontalAdvance(shown, length); };
    const int caretX = caret.left() + (caret.width() + 1) / 2;
    const int left = caretX - advance(cell()->cursorPosition()) + advance(offset);
    const int width = offset < shown.size() ? advance(offset + 1) - advance(offset) : 1;
    const QRect character(left, caret.top(), width, caret.height());
    return QRect(cell()->mapToGlobal(character.topLeft()), character.size());
}

int AccessibleFormatCell::offsetAtPoint(const QPoint& point) const
{
    const QPoint position = cell()->mapFromGlobal(point);
    return cell()->rect().contains(position) ? cell()->cursorPositionAt(position) : -1;
}

void AccessibleFormatCell::scrollToSubstring(int startIndex, int endIndex)
{
    // Moving the caret there is the only way to scroll a line edit.
    cell()->setCursorPosition(endIndex);
    cell()->setCursorPosition(startIndex);
}

QString AccessibleFormatCell::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

void AccessibleFormatCell::deleteText(int startOffset, int endOffset)
{
    replaceText(startOffset, endOffset, QString());
}

void AccessibleFormatCell::insertText(int offset, const QString& text)
{
    replaceText(offset, offset, text);
}

void AccessibleFormatCell::replaceText(int startOffset, int endOffset, const QString& text)
{
    const auto length = static_cast<int>(cell()->text().size());
    if (!cell()->isEnabled() || cell()->isReadOnly() || startOffset < 0 || startOffset > endOffset
        || endOffset > length)
        return;
    QString typed = text;
    const QString ignored = cell()->ignore();
    typed.removeIf([&ignored](QChar c) { return ignored.contains(c); });
    if (startOffset == endOffset)
        cell()->setCursorPosition(startOffset); // ends a selection
    else
        cell()->setSelection(startOffset, endOffset - startOffset);
    cell()->insert(typed);
}
