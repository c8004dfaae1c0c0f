#include "Picture.h"

#include <QtCore/QHash>

#include <algorithm>
#include <cmath>

namespace {

// Letters of 9 points have strokes of one pixel.
constexpr int magnification = 4;
// Fewer pixels in a row are the softened edge of a stroke.
constexpr int smallestStroke = 3;
// Below, a row holds no text but a shade.
constexpr double leastDifference = 1.3;

double luminance(QColor color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

double contrast(QColor a, QColor b)
{
    const double x = luminance(a);
    const double y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

Picture::Picture(QWidget* window)
    : m_window(window)
    , m_image(window->size() * magnification, QImage::Format_RGB32)
{
    m_image.setDevicePixelRatio(magnification);
    m_image.fill(window->palette().color(QPalette::Window));
    window->render(&m_image);
}

QRect Picture::mapped(const QWidget* widget, const QRect& rect) const
{
    const QRect inWindow(widget->mapTo(m_window, rect.topLeft()), rect.size());
    return QRect(inWindow.topLeft() * magnification, inWindow.size() * magnification) & m_image.rect();
}

double Picture::textContrast(const QWidget* widget, const QRect& rect) const
{
    const QRect area = mapped(widget, rect);
    QList<double> rows;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        QHash<QRgb, int> counts;
        for (int x = area.left(); x <= area.right(); ++x)
            ++counts[m_image.pixel(x, y)];
        const auto background = std::max_element(counts.cbegin(), counts.cend());
        double best = 1;
        for (auto color = counts.cbegin(); color != counts.cend(); ++color) {
            if (color.value() >= smallestStroke)
                best = std::max(best, contrast(background.key(), color.key()));
        }
        if (best > leastDifference)
            rows.append(best);
    }
    if (rows.isEmpty())
        return 1;
    // Not all rows cross a stroke at its full colour.
    std::sort(rows.begin(), rows.end());
    return rows.at(rows.size() * 3 / 4);
}

QColor Picture::colorAt(const QWidget* widget, QPointF point) const
{
    const QPointF inWindow = widget->mapTo(m_window, point) * magnification;
    return m_image.pixelColor(inWindow.toPoint());
}

double Picture::changedArea(const Picture& other, const QWidget* widget) const
{
    const QRect area = mapped(widget, widget->rect());
    int changed = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (m_image.pixel(x, y) != other.m_image.pixel(x, y)
                && contrast(m_image.pixel(x, y), other.m_image.pixel(x, y)) >= 3)
                ++changed;
        }
    }
    return double(changed) / (magnification * magnification);
}
