#include <ZEFCalendarWidget.h>

#include <QtGui/QPainter>

ZEFCalendarWidget::ZEFCalendarWidget(QWidget* parent)
    : QCalendarWidget(parent)
{
}

ZEFCalendarWidget::~ZEFCalendarWidget() = default;

void ZEFCalendarWidget::paintCell(QPainter* painter, const QRect& rect, QDate date) const
{
    QCalendarWidget::paintCell(painter, rect, date);
    if (date >= minimumDate() && date <= maximumDate())
        return;
    painter->save();
    painter->setBrush(QBrush(QColor(128, 128, 128, 40), Qt::SolidPattern));
    painter->setPen(Qt::NoPen);
    painter->drawRect(rect);
    painter->restore();
}
