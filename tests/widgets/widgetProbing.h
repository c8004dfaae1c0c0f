#pragma once

#include <TestLog.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtGui/QImage>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

//! What \a widget and its children paint on their own, on a transparent ground.
inline QImage painted(QWidget& widget, int ratio)
{
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

//! Whether every device pixel of the logical \a rect has exactly \a color.
inline bool isFilled(const QImage& image, const QRect& rect, const QColor& color)
{
    const int ratio = qRound(image.devicePixelRatio());
    for (int y = rect.top() * ratio; y < (rect.bottom() + 1) * ratio; ++y) {
        for (int x = rect.left() * ratio; x < (rect.right() + 1) * ratio; ++x) {
            if (image.pixel(x, y) != color.rgba())
                return false;
        }
    }
    return true;
}

//! How many device pixels of the logical \a rect have \a color, of those that have any.
struct Share {
    int colored = 0;
    int other = 0;
    int empty = 0;
};

inline Share shareOf(const QImage& image, const QRect& rect, const QColor& color)
{
    const int ratio = qRound(image.devicePixelRatio());
    Share share;
    for (int y = rect.top() * ratio; y < (rect.bottom() + 1) * ratio; ++y) {
        for (int x = rect.left() * ratio; x < (rect.right() + 1) * ratio; ++x) {
            const QRgb pixel = image.pixel(x, y);
            ++(pixel == color.rgba() ? share.colored : qAlpha(pixel) == 0 ? share.empty : share.other);
        }
    }
    return share;
}

inline bool isEmpty(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                return false;
        }
    }
    return true;
}

//! The properties that a class declares itself, in order, as "type name".
inline QStringList ownProperties(const QMetaObject& metaObject)
{
    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        properties.append(QLatin1String(property.typeName()) + u' ' + QLatin1String(property.name()));
    }
    return properties;
}

//! The methods that a class declares itself, in order, as "kind signature".
inline QStringList ownMethods(const QMetaObject& metaObject)
{
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        const QLatin1String kind(method.methodType() == QMetaMethod::Signal ? "signal"
                                     : method.methodType() == QMetaMethod::Slot
                                     ? (method.access() == QMetaMethod::Private ? "private slot" : "slot")
                                     : "method");
        methods.append(kind + u' ' + QLatin1String(method.methodSignature()));
    }
    return methods;
}

//! Counts the events of one type that a widget and its children get.
class EventCounter : public QObject {
    Q_OBJECT

public:
    EventCounter(const QWidget* widget, QEvent::Type type)
        : m_widget(widget)
        , m_type(type)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    int count = 0;

    bool eventFilter(QObject* object, QEvent* e) override
    {
        if (e->type() == m_type && object->isWidgetType()
            && (object == m_widget || m_widget->isAncestorOf(static_cast<QWidget*>(object))))
            ++count;
        return false;
    }

private:
    const QWidget* m_widget;
    QEvent::Type m_type;
};

//! Announces what the offscreen platform writes about every window with a smallest or largest size.
inline void allowPlatformLines()
{
    TestLog::allow(QStringLiteral("warning: This plugin does not support propagateSizeHints()"));
}

//! Shows the window of \a widget and waits until it is active, so that widgets in it can have the focus.
inline bool showActive(QWidget& widget)
{
    QWidget* window = widget.window();
    window->show();
    window->activateWindow();
    return QTest::qWaitForWindowActive(window);
}

//! Puts the rows "ratio 1" and "ratio 2" into a column "ratio".
inline void addRatioRows()
{
    QTest::addColumn<int>("ratio");
    QTest::newRow("ratio 1") << 1;
    QTest::newRow("ratio 2") << 2;
}

//! Texts that a form or a client may bring.
inline void addTextRows()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("blank") << QStringLiteral(" ");
    QTest::newRow("percent signs") << QStringLiteral("%s %n %1 %%");
    QTest::newRow("line feeds") << QStringLiteral("one\ntwo\n");
    QTest::newRow("rich") << QStringLiteral("<b>bold</b> <a href='x'>link</a>");
    QTest::newRow("broken markup") << QStringLiteral("<b>bold <i>&nope; <");
    QTest::newRow("one long word") << QString(20000, u'm');
    QTest::newRow("many words") << QStringLiteral("word ").repeated(4000);
    QTest::newRow("right to left") << QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d");
    QTest::newRow("lone surrogate") << QString(QChar(0xd800));
}

//! Sizes that a layout or a form may bring.
inline void addSizeRows()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("zero") << QSize(0, 0);
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("narrow") << QSize(3, 40);
    QTest::newRow("flat") << QSize(40, 3);
    QTest::newRow("wide") << QSize(QWIDGETSIZE_MAX, 20);
    QTest::newRow("high") << QSize(20, QWIDGETSIZE_MAX);
    QTest::newRow("huge") << QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

//! Shows \a widget at \a size in a small window that clips it, and waits until it has been painted.
inline bool paintsInSmallWindow(QWidget& widget, const QSize& size)
{
    QWidget window;
    window.resize(200, 100);
    QWidget* const formerParent = widget.parentWidget();
    widget.setParent(&window);
    widget.setGeometry(QRect(QPoint(0, 0), size));
    EventCounter paints(&widget, QEvent::Paint);
    window.show();
    const bool exposed = QTest::qWaitForWindowExposed(&window);
    const bool painted = size.isEmpty() || QTest::qWaitFor([&] { return paints.count > 0; });
    widget.setParent(formerParent);
    return exposed && painted;
}
