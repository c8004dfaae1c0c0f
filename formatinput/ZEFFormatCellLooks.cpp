// Width, colours and the line along the bottom edge.

#include "ZEFFormatCellPrivate.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>
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

//! The ratio of luminances by which readability is measured, from 1 to 21.
double contrast(const QColor& a, const QColor& b)
{
    const auto luminance = [](const QColor& color) {
        const auto linear = [](float channel) {
            return channel <= 0.04045F ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
            + 0.0722 * linear(color.blueF());
    };
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/*!
 * \a base, or as much nearer to the application's own as its text needs to be read. A program that sets a
 * dark palette leaves the tool tips light, and its light text would stand on them.
 */
QColor readable(const QColor& base)
{
    constexpr double leastContrast = 3;
    constexpr int steps = 10;
    const QPalette palette = QApplication::palette();
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const QColor usual = palette.color(QPalette::Active, QPalette::Base);
    QColor nearer = base;
    // Colours that the application itself cannot read are its own affair.
    for (int i = 1; contrast(text, nearer) < leastContrast && contrast(text, usual) >= leastContrast; ++i) {
        const auto mixed = [i](int from, int to) { return from + (to - from) * i / steps; };
        nearer = QColor(mixed(base.red(), usual.red()), mixed(base.green(), usual.green()),
                        mixed(base.blue(), usual.blue()));
    }
    return nearer;
}

QColor optionalBase()
{
    const QColor toolTip = QToolTip::palette().color(QPalette::Base);
    if (toolTip.rgba() != QApplication::palette().color(QPalette::Active, QPalette::Base).rgba())
        return readable(toolTip);
    return readable(QColor(std::max(toolTip.red() - 10, 0), std::max(toolTip.green() - 10, 0),
                           std::max(toolTip.blue() - 30, 0)));
}

} // namespace

void ZEFFormatCellPrivate::fitWidth()
{
    const qint64 width = qint64(tenCharactersWidth(*q)) * (qint64(q->maxLength()) + 1) / 10 + 10;
    fittedWidth = static_cast<int>(std::min(width, maxCellWidth));
    q->setFixedWidth(fittedWidth);
}

QColor ZEFFormatCellPrivate::wantedBase() const
{
    return minLength == 0 ? optionalBase() : QApplication::palette().color(QPalette::Active, QPalette::Base);
}

void ZEFFormatCellPrivate::chooseColours()
{
    givenBase = wantedBase();
    if (minLength != 0) {
        q->setPalette(QApplication::palette());
        return;
    }
    QPalette optional = q->palette();
    optional.setColor(QPalette::Base, givenBase);
    q->setPalette(optional);
}

void ZEFFormatCellPrivate::followChange(QEvent::Type change)
{
    // not over colours or a width that somebody else has given it
    if (change == QEvent::PaletteChange && givenBase.isValid()) {
        if (q->palette().color(QPalette::Active, QPalette::Base) == givenBase && wantedBase() != givenBase)
            chooseColours();
    } else if (change == QEvent::FontChange && q->minimumWidth() == fittedWidth
               && q->maximumWidth() == fittedWidth) {
        fitWidth();
    }
}

void ZEFFormatCell::setMaxLength(int length)
{
    const ZEFFormatCellPrivate::Use use(this);
    const QPointer<ZEFFormatCell> self(this);
    QLineEdit::setMaxLength(std::max(length, 0));
    if (self)
        d->fitWidth();
}

void ZEFFormatCell::setMinLength(int length)
{
    d->minLength = length;
    d->chooseColours();
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
