#include "Page.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QEnterEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>

Page::Page(const QString& className, int columns)
    : QGroupBox(className)
    , m_className(className)
    , m_columns(columns)
    , m_grid(new QGridLayout(this))
{
    m_grid->setHorizontalSpacing(24);
    m_grid->setVerticalSpacing(4);
    m_grid->setContentsMargins(16, 12, 16, 16);
}

QString Page::className() const
{
    return m_className;
}

void Page::add(const QString& caption, QWidget* specimen, std::function<void()> bring)
{
    auto* label = new QLabel(caption);
    QFont font = label->font();
    font.setItalic(true);
    label->setFont(font);
    const int row = 3 * (m_count / m_columns);
    const int column = m_count % m_columns;
    if (row > 0)
        m_grid->setRowMinimumHeight(row - 1, 10);
    m_grid->addWidget(label, row, column);
    m_grid->addWidget(specimen, row + 1, column, Qt::AlignLeft | Qt::AlignTop);
    ++m_count;
    if (bring)
        m_states.append(std::move(bring));
}

void Page::bringStates()
{
    for (const auto& bring : std::as_const(m_states))
        bring();
}

void hover(QWidget* widget)
{
    const QPointF center = QRectF(widget->rect()).center();
    QEnterEvent enter(center, center, widget->mapToGlobal(center));
    QMouseEvent move(QEvent::MouseMove, center, center, widget->mapToGlobal(center), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    // what the styles look at, which only a mouse sets otherwise
    widget->setAttribute(Qt::WA_UnderMouse);
    QCoreApplication::sendEvent(widget, &enter);
    QCoreApplication::sendEvent(widget, &move);
    widget->update();
}

void pressMouse(QWidget* widget)
{
    const QPointF center = QRectF(widget->rect()).center();
    QMouseEvent event(QEvent::MouseButtonPress, center, center, widget->mapToGlobal(center), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void focus(QWidget* widget)
{
    // styles show the focus of a check box only to those who use the keyboard
    widget->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    widget->setFocus(Qt::TabFocusReason);
}
