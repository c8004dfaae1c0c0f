// parse_ratio             building a row of four cells from a format : the same widgets by hand; at most 1.3
// keystroke_ratio         a key in a cell, validity announced : a key in a plain line edit; at most 2.5
// search_ms               a coercion search over 100,000 distinct texts, in milliseconds; well under 500
// megabyte_ratio          reading a format of 1 MiB : eight times one of 128 KiB; about 1
//
// Run it with QT_QPA_PLATFORM=offscreen.

#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>

#include <QtCore/QElapsedTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QRegularExpressionValidator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const QString pattern = u"[A-Z0-9]*"_s;
const QString format = u"{5}([A-Z0-9]*)-{5}([A-Z0-9]*)-{5}([A-Z0-9]*)-{5}([A-Z0-9]*)"_s;

double nanoseconds(const std::function<void()>& run)
{
    QElapsedTimer timer;
    timer.start();
    run();
    return double(timer.nsecsElapsed());
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The median of the ratios of neighbouring runs: what disturbs the machine disturbs both. The time of
// tidyUp is not counted.
double ratio(const std::function<void()>& measured, const std::function<void()>& reference,
             const std::function<void()>& tidyUp)
{
    std::vector<double> ratios;
    for (int round = 0; round < 101; ++round) {
        const double time = nanoseconds(measured);
        tidyUp();
        ratios.push_back(time / nanoseconds(reference));
        tidyUp();
    }
    return median(ratios);
}

void report(const char* name, double value)
{
    std::printf("%s %.2f\n", name, value);
    std::fflush(stdout);
}

void benchParse()
{
    constexpr int times = 20;
    std::vector<std::unique_ptr<QWidget>> made;
    const auto fromFormat = [&] {
        for (int i = 0; i < times; ++i) {
            auto edit = std::make_unique<ZEFFormatEdit>(nullptr);
            edit->setFormat(format);
            made.push_back(std::move(edit));
        }
    };
    const auto byHand = [&] {
        for (int i = 0; i < times; ++i) {
            auto row = std::make_unique<QWidget>();
            auto* layout = new QHBoxLayout(row.get());
            for (int cell = 0; cell < 4; ++cell) {
                if (cell > 0)
                    layout->addWidget(new QLabel(u" - "_s, row.get()));
                auto* edit = new QLineEdit(row.get());
                edit->setMaxLength(5);
                edit->setFixedWidth(80);
                edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), edit));
                layout->addWidget(edit);
            }
            made.push_back(std::move(row));
        }
    };
    report("parse_ratio", ratio(fromFormat, byHand, [&] { made.clear(); }));
}

void press(QWidget* widget, Qt::Key key, const QString& text)
{
    QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(widget, &e);
}

// Types and deletes a character, over and over.
void type(QLineEdit* edit)
{
    for (int i = 0; i < 200; ++i) {
        press(edit, Qt::Key_A, u"A"_s);
        press(edit, Qt::Key_Backspace, QString());
    }
}

void benchKeystroke()
{
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(format);
    edit.setText(u"ABC-12345-67890-XYZ"_s);
    int changes = 0;
    QObject::connect(&edit, &ZEFFormatEdit::textChanged, &edit, [&] { ++changes; });
    QLineEdit plain;
    plain.setMaxLength(5);
    plain.setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), &plain));
    plain.setText(u"ABC"_s);
    edit.show();
    plain.show();
    edit.editor(0)->setCursorPosition(3);
    report("keystroke_ratio", ratio([&] { type(edit.editor(0)); }, [&] { type(&plain); }, [] {}));
    if (changes == 0 || edit.editor(0)->text() != u"ABC")
        std::printf("keystroke_ratio is void\n");
}

void benchSearch()
{
    // Of 2^17 reachable texts more than 100,000 are tried before this one.
    ZEFFormatCell cell(nullptr, nullptr);
    for (int i = 0; i < 17; ++i)
        cell.setEquivs(u"01"_s);
    cell.setFinalRegExp(u"1{16}0|2"_s);
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        cell.setText(QString(17, u'0'));
        times.push_back(nanoseconds([&] { cell.validate(); }));
    }
    report("search_ms", median(times) / 1e6);
}

void benchLongFormats()
{
    ZEFFormatEdit edit(nullptr);
    const QString piece = u"a1\\.(b"_s;
    const QString small = piece.repeated(128 * 1024 / piece.size());
    const QString large = small.repeated(8);
    report("megabyte_ratio",
           ratio([&] { edit.parseFormat(large, 1); },
                 [&] {
                     for (int i = 0; i < 8; ++i)
                         edit.parseFormat(small, 1);
                 },
                 [] {}));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    benchParse();
    benchKeystroke();
    benchSearch();
    benchLongFormats();
    return 0;
}
