// Width, colours and the line along the bottom edge.

#include "ZEFFormatCellPrivate.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <limits>

namespace {

// Qt keeps contents margins in 16 bits.
constexpr int maxHighlightHeight = std::numeric_limits<qint16>::max();

// Qt takes one pixel more for no width at all.
constexpr qint64 maxCellWidth = QWIDGETSIZE_MAX - 1;

QColor optionalBase()
{
    const QColor toolTip = QToolTip::palette().color(QPalette::Base);
    if (toolTip.rgba() != QApplication::palette().color(QPalette::Active, QPalette::Base).rgba())
        return toolTip;
    return QColor(std::max(toolTip.red() - 10, 0), std::max(toolTip.green() - 10, 0),
                  std::max(toolTip.blue() - 30, 0));
}

} // namespace

int ZEFFormatCellPrivate::tenCharacters(const QWidget& widget)
{
    return widget.fontMetrics().boundingRect(QStringLiteral("XXXWWWWWWW")).width();
}

void ZEFFormatCellPrivate::setMaxLength(int length, int tenCharacters)
{
    const Use use(q);
    const QPointer<ZEFFormatCell> self(q);
    const int atLeastNone = std::max(length, 0);
    q->QLineEdit::setMaxLength(atLeastNone);
    if (!self)
        return;
    const qint64 width = qint64(tenCharacters) * (qint64(atLeastNone) + 1) / 10 + 10;
    q->setFixedWidth(static_cast<int>(std::min(width, maxCellWidth)));
}

void ZEFFormatCell::setMaxLength(int length)
{
    d->setMaxLength(length, d->tenCharacters(*this));
}

void ZEFFormatCell::setMinLength(int length)
{
    d->minLength = length;
    if (length != 0) {
        setPalette(QApplication::palette());
        return;
    }
    QPalette optional = palette();
    optional.setColor(QPalette::Base, optionalBase());
    setPalette(optional);
}

QPalette ZEFFormatCell::optionalPalette()
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, optionalBase());
    return palette;
}

QPalette ZEFFormatCell::selectedPalette()
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Highlight));
    palette.setColor(QPalette::Text, palette.color(QPalette::HighlightedText));
    return palette;
}

void ZEFFormatCell::setBottomHighlight(int height, const QColor& colour)
{
    d->highlightHeight = std::clamp(height, 0, maxHighlightHeight);
    if (d->highlightHeight > 0) {
        d->highlightColour = colour;
        QMargins margins = contentsMargins();
        margins.setBottom(std::max(margins.bottom(), d->highlightHeight));
        setContentsMargins(margins);
    }
    update();
}

void ZEFFormatCell::paintEvent(QPaintEvent* e)
{
    QLineEdit::paintEvent(e);
    if (contentsMargins().bottom() < d->highlightHeight)
        return;
    // A height of 0 deliberately draws too: its cosmetic pen leaves a line of one pixel.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(d->highlightColour, d->highlightHeight));
    const QRectF cell(rect());
    painter.drawLine(QLineF(cell.left(), cell.bottom() - 1, cell.right() - 1, cell.bottom() - 1));
}
