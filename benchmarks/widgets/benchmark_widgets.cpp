// What one painting costs, and its ratio to Qt's own widget in the same run: at most 1.5 for the painted
// button against a push button, at most 1.2 for the ellipsis label against a label. Ends with 1 above that.

#include <ZEFEllipsisLabel.h>
#include <ZEFLightStdButton.h>

#include <QtCore/QTextStream>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <algorithm>
#include <ctime>

namespace {

constexpr int Rounds = 41;
constexpr int PaintingsPerRound = 200;

//! The processor time of one painting, in microseconds: other programs do not count.
double paint(QWidget& widget, QImage& image)
{
    const std::clock_t start = std::clock();
    for (int i = 0; i < PaintingsPerRound; ++i)
        widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return 1e6 * double(std::clock() - start) / CLOCKS_PER_SEC / PaintingsPerRound;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

//! Prints what \a widget costs and whether that is at most \a limit times what \a reference costs.
bool compare(const QString& name, QWidget& widget, QWidget& reference, double limit)
{
    reference.resize(widget.size());
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    paint(widget, image);
    paint(reference, image);
    QList<double> own;
    QList<double> others;
    QList<double> ratios;
    // in turns, so that a busy machine slows both
    for (int round = 0; round < Rounds; ++round) {
        own.append(paint(widget, image));
        others.append(paint(reference, image));
        ratios.append(own.last() / others.last());
    }
    const double ratio = median(ratios);
    QTextStream(stdout) << name << ".microseconds " << QString::number(median(own), 'f', 2) << '\n'
                        << name << ".reference.microseconds " << QString::number(median(others), 'f', 2)
                        << '\n'
                        << name << ".ratio " << QString::number(ratio, 'f', 2) << '\n';
    return ratio <= limit;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication application(argc, argv);
    // the traces are made, but a terminal is not what is measured here
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});

    const QString text = QStringLiteral("Continue");
    ZEFLightStdButton paintedButton;
    paintedButton.setText(text);
    paintedButton.resize(paintedButton.minimumSizeHint());
    QPushButton pushButton(text);
    bool good = compare(QStringLiteral("paint.lightstdbutton"), paintedButton, pushButton, 1.5);

    const QString longText = QStringLiteral("Quarterly report of the northern branch office.pdf");
    ZEFEllipsisLabel fitting;
    fitting.setText(longText);
    fitting.resize(600, 20);
    QLabel label(longText);
    good &= compare(QStringLiteral("paint.ellipsislabel.fitting"), fitting, label, 1.2);

    ZEFEllipsisLabel elided;
    elided.setText(longText);
    elided.resize(150, 20);
    elided.grab();
    QLabel labelOfTheSameText(elided.text());
    good &= compare(QStringLiteral("paint.ellipsislabel.elided"), elided, labelOfTheSameText, 1.2);
    return good ? 0 : 1;
}
