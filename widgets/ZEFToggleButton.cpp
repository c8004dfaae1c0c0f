#include <ZEFToggleButton.h>

#include "accessibleChanges.h"

#include <QtCore/QPointer>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>

#include <algorithm>

ZEFToggleButton::ZEFToggleButton(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_Hover, true);

    m_textLabel = new QLabel(this);
    m_textLabel->setObjectName(QStringLiteral("title"));
    m_textLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_textLabel->setWordWrap(true);
    m_textLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    // a rich text would keep the clicks to itself
    m_textLabel->setTextInteractionFlags(Qt::NoTextInteraction);

    m_imageLabel = new QLabel(this);
    m_imageLabel->setObjectName(QStringLiteral("image"));
    m_imageLabel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);

    auto* mainLayout = new QHBoxLayout;
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(m_spacing);
    mainLayout->addWidget(m_imageLabel);
    mainLayout->addWidget(m_textLabel);
    setLayout(mainLayout);
}

ZEFToggleButton::~ZEFToggleButton() = default;

QString ZEFToggleButton::offText() const
{
    return m_offText;
}

void ZEFToggleButton::setOffText(const QString& text)
{
    m_offText = text;
    if (m_on)
        return;
    showText();
    announceChange(this, QAccessible::NameChanged);
}

QString ZEFToggleButton::onText() const
{
    return m_onText;
}

void ZEFToggleButton::setOnText(const QString& text)
{
    m_onText = text;
    if (!m_on)
        return;
    showText();
    announceChange(this, QAccessible::NameChanged);
}

QPixmap ZEFToggleButton::offImage() const
{
    return m_offImage;
}

void ZEFToggleButton::setOffImage(const QPixmap& image)
{
    m_offImage = image;
    if (m_on)
        return;
    showImage();
}

QPixmap ZEFToggleButton::onImage() const
{
    return m_onImage;
}

void ZEFToggleButton::setOnImage(const QPixmap& image)
{
    m_onImage = image;
    if (!m_on)
        return;
    showImage();
}

bool ZEFToggleButton::isOn() const
{
    return m_on;
}

QSize ZEFToggleButton::imageSize() const
{
    return m_imageSize;
}

void ZEFToggleButton::setImageSize(const QSize& size)
{
    m_imageSize = size;
}

int ZEFToggleButton::spacing() const
{
    return m_spacing;
}

void ZEFToggleButton::setSpacing(int spacing)
{
    if (QLayout* mainLayout = layout())
        mainLayout->setSpacing(std::clamp(spacing, -1, QWIDGETSIZE_MAX));
    m_spacing = spacing;
}

void ZEFToggleButton::toggle()
{
    setOn(!m_on);
}

void ZEFToggleButton::setOn(bool on)
{
    if (on == m_on)
        return;
    m_on = on;
    // The signal goes out while the labels still show the old state.
    const QPointer<ZEFToggleButton> self(this);
    if (m_on)
        Q_EMIT this->on();
    else
        Q_EMIT off();
    if (!self)
        return;
    // A receiver may have switched back: the labels follow the state of now.
    showText();
    showImage();
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    announceChange(this, QAccessible::NameChanged);
}

// The labels are children that a form may delete.

void ZEFToggleButton::showText()
{
    if (m_textLabel) {
        const WithoutAccessibleChanges quiet;
        m_textLabel->setText(m_on ? m_onText : m_offText);
    }
    update();
}

void ZEFToggleButton::showImage()
{
    if (m_imageLabel)
        m_imageLabel->setPixmap(m_on ? m_onImage : m_offImage);
    update();
}

void ZEFToggleButton::mouseReleaseEvent(QMouseEvent*)
{
    // Deliberately unconditional: any button, wherever the pointer is.
    toggle();
}
