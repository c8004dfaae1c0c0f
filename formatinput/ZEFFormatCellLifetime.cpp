// A cell at work when its edit drops it.
//
// QLineEdit emits signals in the middle of its functions, and a receiver may have the edit drop the cell, or
// delete the edit, also in an event loop of its own. deleteLater() alone would delete the cell there. So its
// uses are counted: by its own functions, and for functions of QLineEdit that nobody can override, by the
// first and the last receiver of the signals that they emit.

#include "ZEFFormatCellPrivate.h"

#include <QtCore/QMetaMethod>

namespace {

//! Calls \a visit with each signal that functions of QLineEdit emit outside of events.
template <class Visit> void forEachSignal(Visit visit)
{
    visit(&QLineEdit::textChanged);
    visit(&QLineEdit::textEdited);
    visit(&QLineEdit::selectionChanged);
    visit(&QLineEdit::cursorPositionChanged);
    visit(&QLineEdit::inputRejected);
}

} // namespace

ZEFFormatCellPrivate::Use::Use(ZEFFormatCell* cell)
    : m_cell(cell)
{
    if (cell)
        get(cell)->beginUse();
}

ZEFFormatCellPrivate::Use::~Use()
{
    if (m_cell)
        get(m_cell)->endUse();
}

ZEFFormatCellPrivate::SignalsBlocked::SignalsBlocked(ZEFFormatCell* cell)
    : m_cell(cell)
    , m_before(cell->blockSignals(true))
{
}

ZEFFormatCellPrivate::SignalsBlocked::~SignalsBlocked()
{
    if (m_cell)
        m_cell->blockSignals(m_before || get(m_cell)->dropped);
}

void ZEFFormatCellPrivate::drop()
{
    const Use use(q);
    const QPointer<ZEFFormatCell> self(q);
    dropped = true;
    q->blockSignals(true);
    // Otherwise Qt would move the focus on to a neighbour.
    q->clearFocus();
    // The layout may have asked Qt to show the cell later; without a parent that would be a window of its
    // own.
    if (self)
        q->hide();
    if (self)
        q->setParent(nullptr);
}

void ZEFFormatCellPrivate::watchSignals()
{
    forEachSignal([this](auto signal) {
        QObject::connect(q, signal, q, [this] {
            if (lastReceiver)
                beginUse();
        });
    });
}

void ZEFFormatCell::connectNotify(const QMetaMethod& signal)
{
    if (d && signal.enclosingMetaObject() == &QLineEdit::staticMetaObject)
        d->receiverAdded();
}

void ZEFFormatCellPrivate::receiverAdded()
{
    if (uses > 0)
        lastReceiverOvertaken = true;
    else
        connectLastReceiver();
}

void ZEFFormatCellPrivate::connectLastReceiver()
{
    const Use use(q); // Its own connections overtake nobody.
    lastReceiver = std::make_unique<QObject>();
    forEachSignal(
        [this](auto signal) { QObject::connect(q, signal, lastReceiver.get(), [this] { endUse(); }); });
    lastReceiverOvertaken = false;
}

void ZEFFormatCellPrivate::beginUse()
{
    ++uses;
}

void ZEFFormatCellPrivate::endUse()
{
    if (--uses > 0)
        return;
    if (dropped)
        q->deleteLater();
    else if (lastReceiverOvertaken)
        connectLastReceiver();
}
