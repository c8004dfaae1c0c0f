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

// Measuring a text costs a twelfth of a whole row of four cells, and the cells of all forms share few fonts.
// It goes with the application, as fonts have to, and when fonts come or go.
class Measurement : public QObject { // clazy:exclude=missing-qobject-macro
public:
    explicit Measurement(const QWidget& widget)
        : QObject(qApp)
        , font(widget.font())
        , dpi(widget.logicalDpiX())
        , width(widget.fontMetrics().boundingRect(QStringLiteral("XXXWWWWWWW")).width())
    {
        connect(qApp, &QGuiApplication::fontDatabaseChanged, this, [this] { delete this; });
    }

    const QFont font;
    const int dpi;
    const int width;
};

int tenCharactersWidth(const QWidget& widget)
{
    static QPointer<Measurement> last;
    if (!last || last->dpi != widget.logicalDpiX() || last->font != widget.font()) {
        delete last;
        last = new Measurement(widget);
    }
    return last->width;
}

QColor optionalBase()
{
    const QColor toolTip = QToolTip::palette().color(QPalette::Base);
    if (toolTip.rgba() != QApplication::palette().color(QPalette::Active, QPalette::Base).rgba())
        return toolTip;
    return QColor(std::max(toolTip.red() - 10, 0), std::max(toolTip.green() - 10, 0),
                  std::max(toolTip.blue() - 30, 0));
}

} // namespace

void ZEFFormatCell::setMaxLength(int length)
{
    const ZEFFormatCellPrivate::Use use(this);
    const QPointer<ZEFFormatCell> self(this);
    const int atLeastNone = std::max(length, 0);
    QLineEdit::setMaxLength(atLeastNone);
    if (!self)
        return;
    const qint64 width = qint64(tenCharactersWidth(*this)) * (qint64(atLeastNone) + 1) / 10 + 10;
    setFixedWidth(static_cast<int>(std::min(width, maxCellWidth)));
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
