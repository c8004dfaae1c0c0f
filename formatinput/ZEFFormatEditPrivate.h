#pragma once

#include "BoundedPattern.h"

#include <ZEFFormatEdit.h>

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPointer>

//! The state of a ZEFFormatEdit.
class ZEFFormatEditPrivate {
public:
    explicit ZEFFormatEditPrivate(ZEFFormatEdit* edit);

    static ZEFFormatEditPrivate* get(const ZEFFormatEdit* edit) { return edit->d.get(); }

    //! The widget behind which the cells stand in the tab order.
    QWidget* neighbourInTabOrder() const;
    //! Drops all cells and deletes all labels. False when the edit is gone or was built anew meanwhile.
    bool dropRow();
    static void dropAll(const QList<ZEFFormatCell*>& found);
    //! Drops a cell that somebody else deletes or takes away.
    void dropForeign(const QObject* cell);
    //! Focuses a cell, puts the caret there unless \a cursor is negative, and sends it \a e unless that is
    //! null.
    void focusCell(qsizetype index, int cursor, QKeyEvent* e);
    //! Acceptable or Invalid; of no meaning when the row changes meanwhile.
    QValidator::State judgeCells();
    void setMargin(void (QMargins::*set)(int), int margin);

    ZEFFormatEdit* const q;
    QString format;
    QString ignore;
    BoundedPattern master;
    QString pendingText;
    QString fallbackText;
    QList<ZEFFormatCell*> cells;
    QPointer<ZEFFormatCell> savedFocus;
    QValidator::State state = QValidator::Invalid;
    bool globallySelected = false;
    int enforceCase = 0;
    QMap<int, BoundedPattern> alternates;
    int alternateId = 0;
    QPointer<const QValidator> validator;

    //! A dropped cell had the focus, which the first cell of the next row gets unless it is elsewhere by
    //! then.
    bool focusDropped = false;
    //! Counts what changes the list of cells, so that a loop over them notices what happened under it.
    unsigned int generation = 0;
    //! The next setText() is the user's, who writes into no cell that is read-only or disabled.
    bool sparesProtectedCells = false;
    //! The key that is sent on at present, and the cell that asks for it meanwhile.
    const QKeyEvent* sentKey = nullptr;
    QPointer<ZEFFormatCell> nextReceiver;
};
