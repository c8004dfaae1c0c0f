#include <ZEFEllipsisLabel.h>

#include "accessibleChanges.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QToolTip>

ZEFEllipsisLabel::ZEFEllipsisLabel(QWidget* parent)
    : QLabel(parent)
{
}

ZEFEllipsisLabel::~ZEFEllipsisLabel() = default;

bool ZEFEllipsisLabel::event(QEvent* e)
{
    if (e->type() == QEvent::ToolTip && m_elided && Qt::mightBeRichText(toolTip())) {
        const auto* help = static_cast<QHelpEvent*>(e);
        QToolTip::showText(help->globalPos(), Qt::convertFromPlainText(toolTip()), this, QRect(),
                           toolTipDuration());
        return true;
    }
    return QLabel::event(e);
}

void ZEFEllipsisLabel::paintEvent(QPaintEvent* e)
{
    showWhatFits();
    QLabel::paintEvent(e);
}

void ZEFEllipsisLabel::showWhatFits()
{
    // Captured once on purpose: a text that is set later does not replace it.
    if (m_fullText.isEmpty())
        m_fullText = text();
    if (m_fullText.isEmpty())
        return;

    int reserved = indent();
    if (reserved < 0)
        reserved = frameWidth() > 0 ? QFontMetrics(font()).horizontalAdvance(u'x') / 2 : 0;
    const QString fitting = shortened(contentsRect().width() - reserved);
    // For assistive technology the label has its full text all the time.
    const WithoutAccessibleChanges quiet;
    if (fitting != m_fullText) {
        setText(fitting);
        if (toolTip() != m_fullText)
            setToolTip(m_fullText);
        m_elided = true;
    } else if (m_elided) {
        setText(m_fullText);
        setToolTip(QString());
        m_elided = false;
    }
}

QString ZEFEllipsisLabel::shortened(int width)
{
    // The label draws no ampersands when it has a buddy.
    const int flags = buddy() ? Qt::TextShowMnemonic : 0;
    if (width != m_shortenedWidth || font() != m_shortenedFont || flags != m_shortenedFlags
        || m_shortened.isNull()) {
        m_shortened = QFontMetrics(font()).elidedText(m_fullText, Qt::ElideRight, width, flags);
        m_shortenedWidth = width;
        m_shortenedFont = font();
        m_shortenedFlags = flags;
    }
    return m_shortened;
}
