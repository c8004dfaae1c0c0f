// Widgets and their pictures on scaled screens: drawn in the pixels that are there, not scaled up to them.

#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatCell.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFToggleButton.h>

#include <QtWidgets/QApplication>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Maker = std::unique_ptr<QWidget> (*)();

template <class Button> std::unique_ptr<QWidget> button()
{
    auto made = std::make_unique<Button>();
    made->setText(u"Sharp text"_s);
    return made;
}

std::unique_ptr<QWidget> commandLink()
{
    auto made = std::make_unique<ZEFCommandLinkButton>();
    made->setTitle(u"Sharp title"_s);
    made->setDescription(u"and description"_s);
    made->setDefault(true);
    return made;
}

std::unique_ptr<QWidget> toggleButton()
{
    auto made = std::make_unique<ZEFToggleButton>();
    made->setOffText(u"Sharp text"_s);
    return made;
}

std::unique_ptr<QWidget> cell()
{
    auto made = std::make_unique<ZEFFormatCell>(nullptr);
    made->setText(u"ABC"_s);
    made->setBottomHighlight(2, Qt::red);
    return made;
}

std::unique_ptr<QWidget> calendar()
{
    auto made = std::make_unique<ZEFCalendarWidget>();
    made->setDateRange(QDate(2024, 5, 8), QDate(2024, 5, 24));
    return made;
}

QImage paintedAt(QWidget& widget, double ratio)
{
    QImage image((QSizeF(widget.size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    widget.render(&image);
    return image;
}

//! The number of pixels that differ clearly.
int differences(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 32 ? 1 : 0;
    }
    return count;
}

//! Black and white device pixels in turn, at \a ratio.
QPixmap checkered(double ratio)
{
    QImage image(QSize(30, 24), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, (x + y) % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    }
    image.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(image);
}

//! Whether all of \a pattern stands in \a image, pixel for pixel.
bool contains(const QImage& image, const QImage& pattern)
{
    const auto isAt = [&](int left, int top) {
        for (int y = 0; y < pattern.height(); ++y) {
            for (int x = 0; x < pattern.width(); ++x) {
                if (image.pixel(left + x, top + y) != pattern.pixel(x, y))
                    return false;
            }
        }
        return true;
    };
    for (int top = 0; top + pattern.height() <= image.height(); ++top) {
        for (int left = 0; left + pattern.width() <= image.width(); ++left) {
            if (isAt(left, top))
                return true;
        }
    }
    return false;
}

} // namespace

class TestSharpness : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        allowPlatformLines();
        TestLog::allow(QRegularExpression(u"debug: (Font|Idle): .*"_s));
    }

private Q_SLOTS:
    void widgets_data();
    void widgets();
    void pictures_data();
    void pictures();

private:
    const double m_ratio = qApp->devicePixelRatio();
};

void TestSharpness::widgets_data()
{
    QTest::addColumn<Maker>("make");
    QTest::newRow("calendar") << Maker(calendar);
    QTest::newRow("check box") << Maker(button<ZEFLightStdSSCheckbox>);
    QTest::newRow("command link") << Maker(commandLink);
    QTest::newRow("format cell") << Maker(cell);
    QTest::newRow("painted button") << Maker(button<ZEFLightStdButton>);
    QTest::newRow("style-sheet button") << Maker(button<ZEFLightStdSSButton>);
    QTest::newRow("toggle button") << Maker(toggleButton);
}

void TestSharpness::widgets()
{
    QFETCH(const Maker, make);
    const std::unique_ptr<QWidget> widget = make();
    widget->resize(120, 80);
    const QImage image = paintedAt(*widget, m_ratio);
    const QImage coarse = paintedAt(*widget, 1);
    // What is drawn at ratio 1 and scaled up, in both ways of scaling
    for (const auto mode : {Qt::FastTransformation, Qt::SmoothTransformation}) {
        const int count = differences(image, coarse.scaled(image.size(), Qt::IgnoreAspectRatio, mode));
        QVERIFY2(count > 50, qPrintable(u"%1 pixels differ"_s.arg(count)));
    }
}

void TestSharpness::pictures_data()
{
    QTest::addColumn<QString>("widget");
    for (const auto* name : {"command link", "toggle button", "flat button"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestSharpness::pictures()
{
    QFETCH(const QString, widget);
    const QPixmap picture = checkered(m_ratio);
    ZEFCommandLinkButton link;
    ZEFToggleButton toggle;
    ZEFFlatButton flat;
    link.setIcon(picture);
    toggle.setOffImage(picture);
    flat.setPixmap(picture);
    QWidget* shown = widget == u"flat button" ? static_cast<QWidget*>(&flat)
        : widget == u"toggle button"          ? static_cast<QWidget*>(&toggle)
                                              : &link;
    shown->resize(91, 61);
    QVERIFY(contains(paintedAt(*shown, m_ratio), picture.toImage()));
}

// Once for each scale; an application has one.
int main(int argc, char** argv)
{
    int failures = 0;
    for (const double scale : {1.25, 1.5, 2.0, 3.0}) {
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
        const QApplication application(argc, argv);
        QApplication::setStyle(u"Fusion"_s);
        if (application.devicePixelRatio() != scale)
            qFatal("There is no scale %g", scale);
        TestSharpness test;
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "test_sharpness.moc"
