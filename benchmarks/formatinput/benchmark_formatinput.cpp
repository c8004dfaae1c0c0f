// parse_ratio             building a row of four cells from a format : the same widgets by hand; at most 1.3
// keystroke_ratio         a key in a cell, validity announced : a key in a plain line edit with the same
//                         validator; at most 1.3
// rebuild_ms              setFormat() on a visible row of 1,000 cells, in milliseconds; at most 100
// rebuild_ratio           that : twice a row of 500 cells; about 1
// ranges_<pattern>_ms     the slowest of 20 keys in a cell with 20 coercions, in milliseconds; at most 5
// refusal_<text>_ms       a text that does not fit, for two or five cells; at most 100
// paste_ms                a paste of 64 MiB; at most 100
// slow_text_ms            setText() over 20 cells whose final pattern is slow; at most 200
// slow_key_ms             a key in such a row; at most 200
// megabyte_ratio          reading a format of 1 MiB : eight times one of 128 KiB; about 1
//
// All in processor time of this program. Run it with QT_QPA_PLATFORM=offscreen.

#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>

#include <QtGui/QClipboard>
#include <QtGui/QKeyEvent>
#include <QtGui/QRegularExpressionValidator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const QString pattern = u"[A-Z0-9]*"_s;
const QString format = u"{5}([A-Z0-9]*)-{5}([A-Z0-9]*)-{5}([A-Z0-9]*)-{5}([A-Z0-9]*)"_s;

double nanoseconds(const std::function<void()>& run)
{
    const std::clock_t start = std::clock();
    run();
    return double(std::clock() - start) * 1e9 / CLOCKS_PER_SEC;
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

void report(const QByteArray& name, double value)
{
    std::printf("%s %.2f\n", name.constData(), value);
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
    const auto tidyUp = [&] {
        made.clear();
        // What an event loop would do
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    report("parse_ratio", ratio(fromFormat, byHand, tidyUp));
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

void benchRebuild()
{
    QWidget window;
    auto* edit = new ZEFFormatEdit(&window);
    (new QHBoxLayout(&window))->addWidget(edit);
    window.show();
    QCoreApplication::processEvents();
    const QString cell = u"{2}(\\d*)-"_s;
    const auto rebuild = [&](int cells) {
        const QString cellsFormat = cell.repeated(cells);
        const double time = nanoseconds([&] { edit->setFormat(cellsFormat); });
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        return time;
    };
    std::vector<double> ratios;
    std::vector<double> times;
    for (int round = 0; round < 11; ++round) {
        // Each replaces a row of its own length.
        rebuild(500);
        const double half = rebuild(500);
        rebuild(1000);
        times.push_back(rebuild(1000));
        ratios.push_back(times.back() / (2 * half));
    }
    report("rebuild_ms", median(times) / 1e6);
    report("rebuild_ratio", median(ratios));
}

void benchRanges()
{
    const std::pair<const char*, QString> patterns[] = {
        {"letters", u"[A-Z]*"_s},
        {"twenty_letters", u"[A-Z]{20}"_s},
        {"last_letter", u"[A-Z0-9]{19}[A-Z]"_s},
        {"too_long", u"[A-Z0-9]{21}"_s},
    };
    for (const auto& [name, finalPattern] : patterns) {
        std::vector<double> keys(20, 1e12);
        for (int round = 0; round < 9; ++round) {
            ZEFFormatEdit edit(nullptr);
            edit.setFormat(u"{"_s + u"1:0O|"_s.repeated(20) + u"}([A-Z0-9]*)("_s + finalPattern + u')');
            for (double& key : keys)
                key = std::min(key, nanoseconds([&] { press(edit.editor(0), Qt::Key_0, u"0"_s); }));
        }
        const double slowest = *std::max_element(keys.cbegin(), keys.cend());
        report(QByteArray("ranges_") + name + "_ms", slowest / 1e6);
    }
}

void benchRefusals()
{
    const QString two = u"{3}(\\d*)-{4}(\\d*)"_s;
    const QString five = u"{3}(\\d*)-{3}(\\d*)-{3}(\\d*)-{3}(\\d*)-{3}(\\d*)"_s;
    const QString letters = u"{3}(\\p{L}*)-{4}(\\p{L}*)"_s;
    const auto refuse = [](const char* name, const QString& cells, const QString& text) {
        ZEFFormatEdit edit(nullptr);
        edit.setFormat(cells);
        report(QByteArray("refusal_") + name + "_ms", nanoseconds([&] { edit.setText(text); }) / 1e6);
    };
    refuse("two_9999", two, QString(9999, u'7') + u'x');
    refuse("five_9999", five, QString(9999, u'7') + u'x');
    refuse("letters_9999", letters, QString(9999, u'a') + u'1');
    refuse("two_64MiB", two, QString(64 * 1024 * 1024, u'7') + u'x');

    ZEFFormatEdit edit(nullptr);
    edit.setFormat(two);
    QGuiApplication::clipboard()->setText(QString(64 * 1024 * 1024, u'7'));
    report("paste_ms", nanoseconds([&] { edit.editor(0)->paste(); }) / 1e6);
    QGuiApplication::clipboard()->clear();
}

void benchSlowPatterns()
{
    ZEFFormatEdit edit(nullptr);
    const QString cell = u"{30}([ab]*)(\\(\\(a|b\\)+\\)+[cd])-"_s;
    edit.setFormat(cell.repeated(20));
    for (int i = 0; i < edit.lineEditCount(); ++i) {
        for (int range = 0; range < 20; ++range)
            edit.editor(i)->setEquivs(u"ab"_s);
    }
    const QString text = QStringList(20, QString(30, u'a')).join(u'-');
    report("slow_text_ms", nanoseconds([&] { edit.setText(text); }) / 1e6);
    report("slow_key_ms", nanoseconds([&] { press(edit.editor(0), Qt::Key_Backspace, QString()); }) / 1e6);
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
    benchRebuild();
    benchRanges();
    benchRefusals();
    benchSlowPatterns();
    benchLongFormats();
    return 0;
}
