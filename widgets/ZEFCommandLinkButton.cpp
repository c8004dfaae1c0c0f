#include <ZEFCommandLinkButton.h>

#include "accessibleChanges.h"
#include "pressSpace.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStylePainter>

namespace {

constexpr int DefaultFrameMargin = 2;
constexpr int FocusFrameMargin = 4;

QLabel* createTextLabel(const QString& name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignLeft);
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    // a rich text would keep the clicks to itself
    label->setTextInteractionFlags(Qt::NoTextInteraction);
    return label;
}

QColor inverse(const QColor& color)
{
    return QColor(255 - color.red(), 255 - color.green(), 255 - color.blue());
}

void drawFrame(QPainter& painter, const QSize& size, int margin, const QColor& color)
{
    painter.setPen(QPen(color));
    painter.drawRect(margin, margin, size.width() - 2 * margin - 1, size.height() - 2 * margin - 1);
}

void drawDottedFrame(QPainter& painter, const QSize& size, int margin, const QColor& color)
{
    const int width = size.width();
    const int height = size.height();
    painter.save();
    painter.setBrush(QBrush(color, Qt::Dense4Pattern));
    painter.setPen(Qt::NoPen);
    painter.drawRect(margin, margin, width - 2 * margin, 1);
    painter.drawRect(margin, height - margin - 1, width - 2 * margin, 1);
    painter.drawRect(margin, margin, 1, height - 2 * margin - 1);
    painter.drawRect(width - margin - 1, margin, 1, height - 2 * margin - 1);
    painter.restore();
}

} // namespace

ZEFCommandLinkButton::ZEFCommandLinkButton(QWidget* parent)
    : QPushButton(parent)
{
    setAttribute(Qt::WA_Hover, true);
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);

    m_title = createTextLabel(QStringLiteral("title"), this);
    m_description = createTextLabel(QStringLiteral("description"), this);
    m_icon = new QLabel(this);
    m_icon->setObjectName(QStringLiteral("icon"));
    m_icon->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);

    auto* mainLayout = new QHBoxLayout;
    auto* textLayout = new QVBoxLayout;
    textLayout->setSpacing(2);
    auto* iconLayout = new QVBoxLayout;
    textLayout->addWidget(m_title);
    textLayout->addWidget(m_description);
    iconLayout->addWidget(m_icon);
    iconLayout->addItem(new QSpacerItem(0, 0, QSizePolicy::Fixed, QSizePolicy::Expanding));
    mainLayout->addLayout(iconLayout);
    mainLayout->addLayout(textLayout);
    setLayout(mainLayout);
}

ZEFCommandLinkButton::~ZEFCommandLinkButton() = default;

QString ZEFCommandLinkButton::title() const
{
    return m_title ? m_title->text() : QString();
}

void ZEFCommandLinkButton::setTitle(const QString& title)
{
    if (m_title) {
        const WithoutAccessibleChanges quiet;
        m_title->setText(title);
    }
    update();
    announceChange(this, QAccessible::NameChanged);
}

QString ZEFCommandLinkButton::description() const
{
    return m_description ? m_description->text() : QString();
}

void ZEFCommandLinkButton::setDescription(const QString& description)
{
    if (m_description) {
        const WithoutAccessibleChanges quiet;
        m_description->setText(description);
    }
    update();
    announceChange(this, QAccessible::DescriptionChanged);
}

QPixmap ZEFCommandLinkButton::icon() const
{
    return m_icon ? m_icon->pixmap() : QPixmap();
}

void ZEFCommandLinkButton::setIcon(const QPixmap& icon)
{
    if (m_icon)
        m_icon->setPixmap(icon);
    update();
}

QColor ZEFCommandLinkButton::frameColor() const
{
    return m_frameColor;
}

void ZEFCommandLinkButton::setFrameColor(const QColor& color)
{
    m_frameColor = color;
    update();
}

QColor ZEFCommandLinkButton::defaultFrameColor() const
{
    return m_defaultFrameColor;
}

void ZEFCommandLinkButton::setDefaultFrameColor(const QColor& color)
{
    m_defaultFrameColor = color;
    update();
}

QColor ZEFCommandLinkButton::kbdFocusFrameColor() const
{
    return m_kbdFocusFrameColor;
}

void ZEFCommandLinkButton::setKbdFocusFrameColor(const QColor& color)
{
    m_kbdFocusFrameColor = color;
    update();
}

void ZEFCommandLinkButton::keyPressByDefault(QKeyEvent* e)
{
    if (e)
        keyPressEvent(e);
}

bool ZEFCommandLinkButton::event(QEvent* e)
{
    // The base class would click itself, which its own signal tells and clicked() of this class does not.
    if (e->type() == QEvent::Shortcut) {
        const auto* pressed = static_cast<const QShortcutEvent*>(e);
        if (!pressed->isAmbiguous() && pressed->key() == shortcut()) {
            pressByShortcut();
            return true;
        }
    }
    return QPushButton::event(e);
}

void ZEFCommandLinkButton::pressByShortcut()
{
    const QPointer<ZEFCommandLinkButton> self(this);
    if (focusPolicy() & Qt::ClickFocus)
        setFocus(Qt::ShortcutFocusReason);
    if (self)
        pressSpace(this);
}

void ZEFCommandLinkButton::mouseReleaseEvent(QMouseEvent* e)
{
    // Deliberately unconditional: any button, wherever the pointer is.
    const QPointer<ZEFCommandLinkButton> self(this);
    Q_EMIT clicked(false);
    if (self)
        QAbstractButton::mouseReleaseEvent(e);
}

void ZEFCommandLinkButton::keyPressEvent(QKeyEvent* e)
{
    const QPointer<ZEFCommandLinkButton> self(this);
    // A held key repeats its press; the delegate is called for the first one.
    switch (e->isAutoRepeat() ? 0 : e->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
        Q_EMIT clicked(false);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (autoDefault() || isDefault())
            Q_EMIT clicked(false);
        break;
    default:
        break;
    }
    if (self)
        QPushButton::keyPressEvent(e);
}

void ZEFCommandLinkButton::enterEvent(QEnterEvent* e)
{
    setHovered(true);
    QWidget::enterEvent(e);
}

void ZEFCommandLinkButton::leaveEvent(QEvent* e)
{
    setHovered(false);
    QWidget::leaveEvent(e);
}

void ZEFCommandLinkButton::setHovered(bool hovered)
{
    if (!isEnabled() && !isVisible())
        return;
    m_hovered = hovered;
    update();
}

void ZEFCommandLinkButton::paintEvent(QPaintEvent*)
{
    // The base class does not paint: there is no bevel and no text but the labels'.
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!isEnabled())
        return;
    if (m_hovered)
        drawFrame(painter, size(), 0, m_frameColor);
    if (isDefault())
        drawFrame(painter, size(), DefaultFrameMargin, m_defaultFrameColor);
    if (hasFocus())
        drawDottedFrame(painter, size(), FocusFrameMargin, inverse(m_kbdFocusFrameColor));
}
