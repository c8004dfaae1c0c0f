#include "ZEFStdSSCheckbox.h"

#include "ZEFStdSSControlStyle.h"

#include <QtWidgets/QStyleOption>

namespace {

constexpr int WrappedText = Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic | Qt::TextWordWrap;

} // namespace

ZEFStdSSCheckbox::ZEFStdSSCheckbox(QWidget* parent)
    : QCheckBox(parent)
    , m_style(std::make_unique<ZEFStdSSControlStyle>(true, WrappedText, Qt::AlignVCenter))
{
    setObjectName(QStringLiteral("ZEFStdSSCheckbox"));
    setStyle(m_style.get());
}

ZEFStdSSCheckbox::~ZEFStdSSCheckbox()
{
    ZEFStdSSControlStyle::leave(this);
}

QSize ZEFStdSSCheckbox::sizeHint() const
{
    // Not minimumSizeHint(): the base class takes that from this very function.
    const QSize fallback = QCheckBox::sizeHint();
    if (text().isEmpty() || !style() || !style()->proxy())
        return fallback;

    const QStyle* proxy = style()->proxy();
    QStyleOptionButton option;
    initStyleOption(&option);
    const int spacing = proxy->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, &option, this);
    const int indicator = proxy->pixelMetric(QStyle::PM_IndicatorWidth, &option, this);
    const QRect labelRect = option.rect.adjusted(0, 0, -(indicator + spacing), 0);
    QRect textRect = labelRect;
    if (const QWidget* parent = parentWidget())
        textRect.setHeight(qMax(parent->height(), textRect.height()));
    const QRect bounding = fontMetrics().boundingRect(textRect, WrappedText, text());
    // The current height is kept as the least one on purpose, although a layout may feed it back.
    const QSize contents(bounding.width(), qMax(bounding.height(), labelRect.height()));
    return proxy->sizeFromContents(QStyle::CT_CheckBox, &option, contents, this);
}
