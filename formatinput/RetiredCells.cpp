#include "RetiredCells.h"

#include <ZEFFormatCell.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

RetiredCells& RetiredCells::instance()
{
    static RetiredCells cells;
    return cells;
}

void RetiredCells::add(ZEFFormatCell* cell)
{
    m_cells.insert(cell);
    if (m_deletedWithApplication)
        return;
    m_deletedWithApplication = true;
    qAddPostRoutine(&RetiredCells::applicationEnds);
}

void RetiredCells::remove(ZEFFormatCell* cell)
{
    m_cells.remove(cell);
}

void RetiredCells::watchEventLoops()
{
    if (m_watch)
        return;
    if (const QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance())
        m_watch = QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, dispatcher,
                                   [this] { deleteIdle(); });
}

int RetiredCells::loopLevel()
{
    return QThread::currentThread()->loopLevel();
}

void RetiredCells::applicationEnds()
{
    RetiredCells& self = instance();
    QObject::disconnect(self.m_watch);
    self.m_watch = {};
    self.m_deletedWithApplication = false;
    const QSet<ZEFFormatCell*> cells = self.m_cells;
    qDeleteAll(cells);
}

void RetiredCells::deleteIdle()
{
    const QSet<ZEFFormatCell*> cells = m_cells;
    for (ZEFFormatCell* cell : cells) {
        if (!cell->mayBeRunning())
            delete cell;
    }
    if (!m_cells.isEmpty())
        return;
    QObject::disconnect(m_watch);
    m_watch = {};
}
