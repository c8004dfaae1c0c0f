#include "ZEFStdSSControlStyle.h"

#include <QtCore/QPointer>
#include <QtGui/QPainter>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QWidget>

// The hint was chosen by its number.
static_assert(QStyle::SH_UnderlineShortcut == 41);

ZEFStdSSControlStyle::ZEFStdSSControlStyle(bool drawFocusRect, int flagsToAdd, int flagsToRemove)
    : m_drawFocusRect(drawFocusRect)
    , m_flagsToAdd(flagsToAdd)
    , m_flagsToRemove(flagsToRemove)
{
}

ZEFStdSSControlStyle::~ZEFStdSSControlStyle() = default;

void ZEFStdSSControlStyle::leave(QWidget* control)
{
    const QList<QWidget*> found = control->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    const QList<QPointer<QWidget>> inside(found.cbegin(), found.cend());
    for (const QPointer<QWidget>& widget : inside)
        delete widget;
    control->setStyle(nullptr);
}

QRect ZEFStdSSControlStyle::itemTextRect(const QFontMetrics& metrics, const QRect& rect, int flags,
                                         bool enabled, const QString& text) const
{
    return QProxyStyle::itemTextRect(metrics, rect, controlFlags(flags), enabled, text);
}

void ZEFStdSSControlStyle::drawItemText(QPainter* painter, const QRect& rect, int flags,
                                        const QPalette& palette, bool enabled, const QString& text,
                                        QPalette::ColorRole textRole) const
{
    if (painter) {
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->setRenderHint(QPainter::TextAntialiasing, true);
    }
    QProxyStyle::drawItemText(painter, rect, controlFlags(flags), palette, enabled, text, textRole);
}

void ZEFStdSSControlStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                         QPainter* painter, const QWidget* widget) const
{
    if (!m_drawFocusRect && element == PE_FrameFocusRect)
        return;
    if (painter)
        painter->setRenderHint(QPainter::Antialiasing, true);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

int ZEFStdSSControlStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                    QStyleHintReturn* returnData) const
{
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_UnderlineShortcut:
        if (qstyleoption_cast<const QStyleOptionFocusRect*>(option))
            return 1;
        break;
    default:
        break;
    }
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

int ZEFStdSSControlStyle::controlFlags(int flags) const
{
    if (m_flagsToRemove > 0)
        flags &= ~m_flagsToRemove;
    if (m_flagsToAdd > 0)
        flags |= m_flagsToAdd;
    return flags;
}

#include "moc_ZEFStdSSControlStyle.cpp"
