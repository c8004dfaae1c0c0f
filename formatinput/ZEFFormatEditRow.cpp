// The row of cells: building it, and taking it down.

#include "FormatEditBuilder.h"
#include "ZEFFormatCellPrivate.h"
#include "ZEFFormatEditPrivate.h"

#include <QtWidgets/QLabel>

#include <utility>

bool ZEFFormatEdit::parseFormat(const QString& format, int id)
{
    // The format may be a reference to what a receiver replaces.
    const QString source = format;
    const QPointer<ZEFFormatEdit> self(this);
    QPointer<QWidget> before = d->neighbourInTabOrder();
    if (!d->dropRow())
        return false;
    FormatEditBuilder builder(this, id == 0);
    const QString master = FormatParser(source, builder).run();
    if (id == 0)
        d->master = BoundedPattern(u'^' + master + u'$');
    else
        d->alternates.insert(id, BoundedPattern(master));
    builder.finish(before ? before : this);
    if (self)
        update();
    // Callers do not look at the result, which has always been false.
    return false;
}

QWidget* ZEFFormatEditPrivate::neighbourInTabOrder() const
{
    QWidget* before = cells.isEmpty() ? q : cells.constFirst()->previousInFocusChain();
    while (before != q && (q->isAncestorOf(before) || !(before->focusPolicy() & Qt::TabFocus)))
        before = before->previousInFocusChain();
    return before;
}

bool ZEFFormatEditPrivate::dropRow()
{
    const QPointer<ZEFFormatEdit> self(q);
    const unsigned int own = ++generation;
    savedFocus = nullptr;
    nextReceiver = nullptr;
    globallySelected = false;
    q->setFocusProxy(nullptr);
    const auto* focused = qobject_cast<ZEFFormatCell*>(q->window()->focusWidget());
    focusDropped = focusDropped || (focused && cells.contains(focused));
    const QList<ZEFFormatCell*> dropped = std::exchange(cells, {});
    // All labels, nested ones too; one may go together with another. Before the cells, as Qt walks over the
    // whole tab order for each of those.
    const QList<QLabel*> found = q->findChildren<QLabel*>();
    const QList<QPointer<QLabel>> labels(found.cbegin(), found.cend());
    for (const QPointer<QLabel>& label : labels)
        delete label;
    if (self)
        dropAll(dropped);
    return self && generation == own;
}

void ZEFFormatEditPrivate::dropAll(const QList<ZEFFormatCell*>& found)
{
    const QList<QPointer<ZEFFormatCell>> guarded(found.cbegin(), found.cend());
    for (const QPointer<ZEFFormatCell>& cell : guarded) {
        if (cell)
            ZEFFormatCellPrivate::get(cell)->drop();
    }
}

void ZEFFormatEditPrivate::dropForeign(const QObject* cell)
{
    if (cells.removeIf([cell](const QObject* other) { return other == cell; }) == 0)
        return;
    // Its number is that of another cell from now on.
    QObject::disconnect(cell, nullptr, q, nullptr);
    ++generation;
    for (qsizetype i = 0; i < cells.size(); ++i)
        cells.at(i)->setId(static_cast<int>(i));
    q->setFocusProxy(cells.value(0));
}
