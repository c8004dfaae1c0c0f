#include "ZEFStdButton.h"

#include <QtCore/QDebug>
#include <QtGui/QImage>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace {

constexpr QSize MinimumSize(78, 28);
constexpr double CornerRadius = 4.0;
// A larger button has no image of its own, which would cost more memory than any screen shows.
constexpr double MostImagePixels = 1 << 24;
// A larger body is drawn anew each time.
constexpr double MostBodyPixels = 1 << 17;

//! A text of a form is data and never a format.
void writeDebug(const QString& text)
{
    qDebug().nospace().noquote() << text;
}

QPainterPath roundedRectangle(const QRectF& rect, double radius)
{
    const double diameter = 2 * radius;
    QPainterPath path;
    path.moveTo(rect.left() + radius, rect.top());
    path.lineTo(rect.right() - radius, rect.top());
    path.arcTo(rect.right() - diameter, rect.top(), diameter, diameter, 90, -90);
    path.lineTo(rect.right(), rect.bottom() - radius);
    path.arcTo(rect.right() - diameter, rect.bottom() - diameter, diameter, diameter, 0, -90);
    path.lineTo(rect.left() + radius, rect.bottom());
    path.arcTo(rect.left(), rect.bottom() - diameter, diameter, diameter, 270, -90);
    path.lineTo(rect.left(), rect.top() + radius);
    path.arcTo(rect.left(), rect.top(), diameter, diameter, 180, -90);
    return path;
}

QRectF shrunk(const QRectF& rect, double by)
{
    return rect.adjusted(by, by, -by, -by);
}

double pixels(const QSize& size, double ratio)
{
    return ratio * ratio * size.width() * size.height();
}

QImage transparentImage(const QSize& size, double ratio)
{
    QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

QPen outlinePen(const QColor& color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

} // namespace

//! Ring, border and fill, and all that they depend on.
struct ZEFStdButton::Body {
    QImage image;
    QSize size;
    double ratio = 1;
    bool focused = false;
    double focusRingWidth = 0;
    double borderWidth = 0;
    QColor accentColor;
    QColor borderColor;
    QLinearGradient gradient;

    bool isLike(const Body& other) const
    {
        return size == other.size && ratio == other.ratio && focused == other.focused
            && focusRingWidth == other.focusRingWidth && borderWidth == other.borderWidth
            && accentColor == other.accentColor && borderColor == other.borderColor
            && gradient == other.gradient;
    }
};

ZEFStdButton::ZEFStdButton(QWidget* parent)
    : QPushButton(parent)
{
    setObjectName(QStringLiteral("ZEFStdButton"));
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

ZEFStdButton::~ZEFStdButton() = default;

QSize ZEFStdButton::sizeHint() const
{
    const QSize minimum = minimumSizeHint();
    if (text().isEmpty())
        return {qMax(QPushButton::sizeHint().width(), minimum.width()), minimum.height()};
    const double margins = 2 * (m_textMargin + m_borderWidth + m_padding + m_sideMargin);
    return {fontMetrics().boundingRect(text()).width() + qRound(margins), minimum.height()};
}

QSize ZEFStdButton::minimumSizeHint() const
{
    return MinimumSize;
}

void ZEFStdButton::initialise()
{
    setProperties();
    m_initialised = true;
    QFont antialiased = font();
    antialiased.setStyleStrategy(QFont::PreferAntialias);
    setFont(antialiased);
    writeDebug(u"Font: " + antialiased.family() + u", " + QString::number(antialiased.pointSize()));
}

void ZEFStdButton::paintEvent(QPaintEvent*)
{
    if (!m_initialised)
        initialise();

    QPainter widgetPainter(this);
    // Outside of painting, as when somebody sends the event, there is nothing to paint on.
    if (!widgetPainter.isActive())
        return;
    // as sharp as the device that is painted on, which need not be the screen
    const double ratio = widgetPainter.paintEngine()->paintDevice()->devicePixelRatio();
    QImage image;
    if (pixels(size(), ratio) <= MostImagePixels)
        image = transparentImage(size(), ratio);
    if (image.isNull()) {
        widgetPainter.setRenderHint(QPainter::Antialiasing);
        drawButton(&widgetPainter, QRectF(rect()));
        return;
    }
    QPainter painter(&image);
    initPainter(&painter);
    painter.setRenderHint(QPainter::Antialiasing);
    drawButton(&painter, QRectF(rect()));
    painter.end();
    widgetPainter.drawImage(0, 0, image);
}

void ZEFStdButton::chooseColors()
{
    if (!isEnabled()) {
        writeDebug(u"Disabled: " + text());
        m_workingTextColor = m_disabledTextColor;
        m_workingBorderColor = m_disabledBorderColor;
        m_workingSecondColor = m_disabledSecondColor;
        m_workingThirdColor = m_disabledThirdColor;
        m_workingFourthColor = m_disabledFourthColor;
        m_workingGradient = m_disabledGradient;
        return;
    }
    m_workingTextColor = m_textColor;
    m_workingBorderColor = m_borderColor;
    m_workingSecondColor = m_secondColor;
    m_workingThirdColor = m_thirdColor;
    m_workingFourthColor = m_fourthColor;
    if (m_pressed) {
        writeDebug(u"Pressed: " + text());
        m_workingGradient = m_pressedGradient;
    } else if (m_hovered) {
        writeDebug(u"Hover: " + text());
        m_workingGradient = m_hoverGradient;
    } else {
        writeDebug(u"Idle: " + text());
        m_workingGradient = m_normalGradient;
    }
}

bool ZEFStdButton::showsFocus() const
{
    return m_focused && isEnabled();
}

void ZEFStdButton::drawBody(QPainter* painter, QRectF rect) const
{
    double radius = CornerRadius;
    painter->setBrush(Qt::NoBrush);
    if (showsFocus()) {
        painter->setPen(outlinePen(m_accentColor, m_focusRingWidth));
        painter->drawPath(roundedRectangle(rect, radius));
        radius -= 1;
        rect = shrunk(rect, m_focusRingWidth + 0.5);
    }
    painter->setPen(outlinePen(m_workingBorderColor, m_borderWidth));
    painter->drawPath(roundedRectangle(rect, radius));
    rect = shrunk(rect, m_borderWidth);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_workingGradient);
    painter->drawPath(roundedRectangle(rect, radius));
}

const QImage& ZEFStdButton::bodyImage(double ratio)
{
    const Body wanted = {{},
                         size(),
                         ratio,
                         showsFocus(),
                         m_focusRingWidth,
                         m_borderWidth,
                         m_accentColor,
                         m_workingBorderColor,
                         m_workingGradient};
    if (!m_body || !m_body->isLike(wanted)) {
        m_body = std::make_unique<Body>(wanted);
        m_body->image = transparentImage(size(), ratio);
        QPainter painter(&m_body->image);
        painter.setRenderHint(QPainter::Antialiasing);
        drawBody(&painter, QRectF(rect()));
    }
    return m_body->image;
}

void ZEFStdButton::drawButton(QPainter* painter, QRectF rect)
{
    chooseColors();
    m_workingGradient.setStart(rect.topLeft());
    m_workingGradient.setFinalStop(rect.bottomLeft());

    const double ratio = painter->device()->devicePixelRatio();
    const bool drawsThisWidget =
        !size().isEmpty() && rect == QRectF(this->rect()) && painter->transform().isIdentity();
    if (drawsThisWidget && pixels(size(), ratio) <= MostBodyPixels)
        painter->drawImage(0, 0, bodyImage(ratio));
    else
        drawBody(painter, rect);

    rect = shrunk(rect, m_borderWidth + (showsFocus() ? m_focusRingWidth + 0.5 : 0));
    if (m_pressed && isEnabled())
        rect.translate(1, 1);
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setRenderHint(QPainter::TextAntialiasing, true);
    painter->setPen(m_workingTextColor);
    constexpr int flags = Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine
        | Qt::TextIncludeTrailingSpaces | Qt::TextShowMnemonic;
    painter->drawText(rect, flags, text());
}

void ZEFStdButton::noteState(const QString& event, bool& flag, bool value)
{
    // A flag that was set stays while the button is disabled; the drawing ignores it then.
    if (!isEnabled())
        return;
    writeDebug(event);
    flag = value;
    update();
}

void ZEFStdButton::enterEvent(QEnterEvent* e)
{
    noteState(QStringLiteral("enterEvent()"), m_hovered, true);
    QWidget::enterEvent(e);
}

void ZEFStdButton::leaveEvent(QEvent* e)
{
    noteState(QStringLiteral("leaveEvent()"), m_hovered, false);
    QWidget::leaveEvent(e);
}

void ZEFStdButton::focusInEvent(QFocusEvent* e)
{
    noteState(QStringLiteral("focusInEvent()"), m_focused, true);
    QPushButton::focusInEvent(e);
}

void ZEFStdButton::focusOutEvent(QFocusEvent* e)
{
    // The key that was pressed here may be released elsewhere.
    m_pressed = false;
    noteState(QStringLiteral("focusOutEvent()"), m_focused, false);
    QPushButton::focusOutEvent(e);
}

void ZEFStdButton::keyPressEvent(QKeyEvent* e)
{
    noteState(QStringLiteral("keyPressEvent()"), m_pressed, true);
    QPushButton::keyPressEvent(e);
}

void ZEFStdButton::keyReleaseEvent(QKeyEvent* e)
{
    noteState(QStringLiteral("keyReleaseEvent()"), m_pressed, false);
    QAbstractButton::keyReleaseEvent(e);
}

void ZEFStdButton::mousePressEvent(QMouseEvent* e)
{
    // The line of the release, on purpose.
    noteState(QStringLiteral("mouseReleaseEvent()"), m_pressed, true);
    QAbstractButton::mousePressEvent(e);
}

void ZEFStdButton::mouseReleaseEvent(QMouseEvent* e)
{
    noteState(QStringLiteral("mouseReleaseEvent()"), m_pressed, false);
    QAbstractButton::mouseReleaseEvent(e);
}
