#pragma once

#include <ZEFUIExport.h>

#include <QtWidgets/QCalendarWidget>

/*!
 * A calendar that veils the days before minimumDate() and after maximumDate() in translucent grey.
 *
 * Forms cannot create it by name; a service puts it into a form itself.
 *
 * \image html zefcalendarwidget.png
 */
class ZEFUI_EXPORT ZEFCalendarWidget : public QCalendarWidget {
    Q_OBJECT

public:
    explicit ZEFCalendarWidget(QWidget* parent = nullptr);
    ~ZEFCalendarWidget() override;

protected:
    void paintCell(QPainter* painter, const QRect& rect, QDate date) const override;

private:
    Q_DISABLE_COPY_MOVE(ZEFCalendarWidget)
};
