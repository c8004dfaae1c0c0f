#pragma once

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

//! The ratio of two colours' luminances as the accessibility guidelines define it, 1 to 21.
double contrast(QColor a, QColor b);

//! A widget drawn so large that the strokes of its letters have their full colour somewhere.
class Picture {
public:
    explicit Picture(QWidget* window);

    /*!
     * The contrast of the text within \a rect of \a widget: in each row of pixels of the commonest colour
     * with the one that stands out most. 1 when nothing stands out.
     */
    double textContrast(const QWidget* widget, const QRect& rect) const;

    //! The colour in a point of \a widget.
    QColor colorAt(const QWidget* widget, QPointF point) const;

    //! How many pixels of the window differ from \a other by 3 to 1 or more within \a widget.
    double changedArea(const Picture& other, const QWidget* widget) const;

private:
    QRect mapped(const QWidget* widget, const QRect& rect) const;

    QWidget* m_window;
    QImage m_image;
};
