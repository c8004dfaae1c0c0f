// What painting costs, against Qt's own widgets in the same run. Ends with 1 when a ratio is above its limit.

#include <ZEFEllipsisLabel.h>
#include <ZEFLightStdButton.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTextStream>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <algorithm>

namespace {

constexpr int Rounds = 41;
constexpr int PaintingsPerRound = 200;

//! The time of a round of paintings, in nanoseconds.
qint64 paint(QWidget& widget, QImage& image)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < PaintingsPerRound; ++i)
        widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return timer.nsecsElapsed();
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
        own.append(double(paint(widget, image)) / PaintingsPerRound);
        others.append(double(paint(reference, image)) / PaintingsPerRound);
        ratios.append(own.last() / others.last());
    }
    const double ratio = median(ratios);
    QTextStream(stdout) << qSetFieldWidth(0) << name << ": " << QString::number(median(own) / 1000, 'f', 2)
                        << " us, reference " << QString::number(median(others) / 1000, 'f', 2)
                        << " us, ratio " << QString::number(ratio, 'f', 2) << " (limit " << limit << ")\n";
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
    bool good =
        compare(QStringLiteral("ZEFLightStdButton against QPushButton"), paintedButton, pushButton, 1.5);

    const QString longText = QStringLiteral("Quarterly report of the northern branch office.pdf");
    ZEFEllipsisLabel fitting;
    fitting.setText(longText);
    fitting.resize(600, 20);
    QLabel label(longText);
    good &= compare(QStringLiteral("ZEFEllipsisLabel that fits against QLabel"), fitting, label, 1.2);

    ZEFEllipsisLabel elided;
    elided.setText(longText);
    elided.resize(150, 20);
    elided.grab();
    QLabel labelOfTheSameText(elided.text());
    good &= compare(QStringLiteral("ZEFEllipsisLabel that is elided against QLabel"), elided,
                    labelOfTheSameText, 1.2);
    return good ? 0 : 1;
}
