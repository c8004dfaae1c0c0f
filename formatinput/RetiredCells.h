#pragma once

#include <QtCore/QMetaObject>
#include <QtCore/QSet>

class ZEFFormatCell;

/*!
 * The owner of cells that their edit has dropped. Functions of QLineEdit emit signals in their middle,
 * and nothing tells whether one of them is running; so a retired cell is deleted only when control is
 * back in an event loop that none of its functions can have started, and otherwise when the application
 * ends.
 */
class RetiredCells {
public:
    static RetiredCells& instance();

    void add(ZEFFormatCell* cell);
    void remove(ZEFFormatCell* cell);
    //! Looks for cells to delete whenever an event loop is about to wait.
    void watchEventLoops();

    static int loopLevel();

private:
    RetiredCells() = default;
    Q_DISABLE_COPY_MOVE(RetiredCells)

    static void applicationEnds();
    void deleteIdle();

    QSet<ZEFFormatCell*> m_cells;
    QMetaObject::Connection m_watch;
    bool m_deletedWithApplication = false;
};
