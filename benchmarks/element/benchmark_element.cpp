// What a form costs in a host, against the same work with plain Qt. All times are processor times; both sides
// take turns in one run, and a figure is the median of the rounds.
//
// load_<n>, delete_<n>
//     a form of n widgets in a ZEFUIWidget : QUiLoader::load() into a widget with a layout; one form after
//     the other, as a service shows them
// first_load_<n>
//     the same for forms that the process has not loaded before
// memory_200
//     what an open form of 200 widgets holds : the same with plain Qt
// click_<n>, click_<n>_silent
//     a click whose delegate method asks for two values : two findChildren() by name, two reads and one
//     invokeMethod(); both sides write the two debug lines, or only the library does
// update_properties_<n>_ms, update_properties_<n>
//     a key for each of n line edits, in milliseconds, and as a ratio to a hash of the widgets by name,
//     setProperty() and the same debug lines
// update_properties_growth
//     8,000 keys : 2,000 keys; 4 is linear
// idle_200_percent, idle_200_plain_percent
//     the share of a core that 200 idle forms take on this platform, and 200 windows of plain Qt
//
// Debug output goes to a handler that drops it. Run it with QT_QPA_PLATFORM=offscreen, and on X11 with
// tests/support/with-display. Names of figures as arguments ("load", "idle") leave out the others.

#include <ZEFDictionary.h>
#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <tools/preview/ResourceFile.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QResource>
#include <QtCore/QTimer>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <functional>
#include <malloc.h>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array formSizes = {20, 200, 1000};
constexpr std::array clickedSizes = {200, 2000};
constexpr std::array editCounts = {2000, 8000};
constexpr int hostCount = 200;

QString formName(int size)
{
    return u"form"_s + QString::number(size);
}

QByteArray property(const QByteArray& name, const QByteArray& value)
{
    return "<property name=\"" + name + "\">\n      " + value + "\n     </property>\n     ";
}

//! A widget of a form as Designer writes it; the kinds take turns.
QByteArray widgetOf(int number)
{
    const QByteArray suffix = QByteArray::number(number);
    switch (number % 5) {
    case 0:
        return "<widget class=\"QPushButton\" name=\"button" + suffix + "\">\n     "
            + property("text", "<string>Press " + suffix + "</string>") + "</widget>";
    case 1:
        return "<widget class=\"QLabel\" name=\"label" + suffix + "\">\n     "
            + property("text", "<string>The value of " + suffix + "</string>")
            + property("alignment", "<set>Qt::AlignRight|Qt::AlignVCenter</set>") + "</widget>";
    case 2:
        return "<widget class=\"QLineEdit\" name=\"edit" + suffix + "\">\n     "
            + property("maxLength", "<number>80</number>")
            + property("toolTip", "<string>As it stands in the letter</string>") + "</widget>";
    case 3:
        return "<widget class=\"QCheckBox\" name=\"check" + suffix + "\">\n     "
            + property("text", "<string>Agree " + suffix + "</string>") + "</widget>";
    default:
        return "<widget class=\"QComboBox\" name=\"combo" + suffix
            + "\">\n     <item>\n      <property name=\"text\">\n       <string>First</string>\n"
              "      </property>\n     </item>\n    </widget>";
    }
}

//! A form of \a size widgets in a grid, the form itself included.
QByteArray formOf(int size)
{
    QByteArray form =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n <class>Form</class>\n"
        " <widget class=\"QWidget\" name=\"form\">\n  <layout class=\"QGridLayout\" name=\"grid\">\n";
    for (int number = 1; number < size; ++number) {
        form += "   <item row=\"" + QByteArray::number(number / 5) + "\" column=\""
            + QByteArray::number(number % 5) + "\">\n    " + widgetOf(number) + "\n   </item>\n";
    }
    return form + "  </layout>\n </widget>\n <resources/>\n <connections/>\n</ui>\n";
}

QString lineEditsName(int count)
{
    return u"edits"_s + QString::number(count);
}

QByteArray lineEdits(int count)
{
    QByteArray form =
        "<ui version=\"4.0\">\n <class>Form</class>\n <widget class=\"QWidget\" name=\"form\">\n"
        "  <layout class=\"QVBoxLayout\" name=\"column\">\n";
    for (int number = 0; number < count; ++number) {
        form += "   <item>\n    <widget class=\"QLineEdit\" name=\"edit" + QByteArray::number(number)
            + "\"/>\n   </item>\n";
    }
    return form + "  </layout>\n </widget>\n</ui>\n";
}

//! The processor time of \a work in milliseconds: other programs do not count.
double milliseconds(const std::function<void()>& work)
{
    const auto now = [] {
        timespec time = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return 1e3 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void report(const QByteArray& name, double value)
{
    std::printf("%s %.2f\n", name.constData(), value);
    std::fflush(stdout);
}

//! The ratio of two works that take turns, each first in every other round.
double ratio(int rounds, const std::function<double()>& measured, const std::function<double()>& reference)
{
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const bool measuredFirst = round % 2 == 0;
        const double first = measuredFirst ? measured() : reference();
        const double second = measuredFirst ? reference() : measured();
        ratios.push_back(measuredFirst ? first / second : second / first);
    }
    return median(ratios);
}

std::unique_ptr<QWidget> loadInHost(const QString& name)
{
    auto host = std::make_unique<ZEFUIWidget>(name, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
    if (!host->element()->loaded())
        qFatal("A form of the benchmark is broken");
    return host;
}

std::unique_ptr<QWidget> loadByQt(const QString& name)
{
    auto host = std::make_unique<QWidget>();
    QUiLoader loader;
    QFile file(u":/forms/"_s + name + u".ui"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("A form of the benchmark is missing");
    QWidget* form = loader.load(&file, host.get());
    auto* layout = new QVBoxLayout(host.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(form);
    return host;
}

using Load = std::function<std::unique_ptr<QWidget>(const QString&)>;

struct Times {
    double load = 0;
    double deletion = 0;
};

Times timesOf(const Load& load, const QString& name, int count)
{
    Times times;
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<QWidget> form;
        times.load += milliseconds([&] { form = load(name); });
        QCoreApplication::sendPostedEvents();
        times.deletion += milliseconds([&] { form.reset(); });
    }
    return times;
}

void benchLoad()
{
    for (const int size : formSizes) {
        const QString name = formName(size);
        const int count = std::max(1, 400 / size);
        std::vector<double> deletions;
        timesOf(loadInHost, name, count);
        timesOf(loadByQt, name, count);
        Times inHost;
        Times byQt;
        const double load = ratio(
            101,
            [&] {
                inHost = timesOf(loadInHost, name, count);
                if (byQt.deletion > 0)
                    deletions.push_back(inHost.deletion / byQt.deletion);
                return inHost.load;
            },
            [&] {
                byQt = timesOf(loadByQt, name, count);
                return byQt.load;
            });
        report("load_" + QByteArray::number(size), load);
        report("delete_" + QByteArray::number(size), median(deletions));
        report("load_" + QByteArray::number(size) + "_plain_ms", byQt.load / count);
    }
}

//! Forms that no round has loaded before: each has a comment of its own.
class FreshForms {
public:
    FreshForms(int size, int count)
    {
        static int number = 0;
        ResourceContents contents;
        for (int i = 0; i < count; ++i) {
            contents.insert(u"forms/"_s + nameOf(i) + u".ui"_s,
                            formOf(size) + "<!-- " + QByteArray::number(++number) + " -->");
        }
        m_resource = resourceFile(contents);
        QResource::registerResource(reinterpret_cast<const uchar*>(m_resource.constData()));
    }
    ~FreshForms() { QResource::unregisterResource(reinterpret_cast<const uchar*>(m_resource.constData())); }

    static QString nameOf(int index) { return u"fresh"_s + QString::number(index); }

private:
    Q_DISABLE_COPY_MOVE(FreshForms)
    QByteArray m_resource;
};

void benchFirstLoad()
{
    for (const int size : formSizes) {
        const int count = std::max(1, 400 / size);
        const auto timeOf = [&](const Load& load) {
            const FreshForms fresh(size, count);
            std::vector<std::unique_ptr<QWidget>> forms;
            const double time = milliseconds([&] {
                for (int i = 0; i < count; ++i)
                    forms.push_back(load(FreshForms::nameOf(i)));
            });
            QCoreApplication::sendPostedEvents();
            return time;
        };
        const auto inHost = [&] { return timeOf(loadInHost); };
        const auto byQt = [&] { return timeOf(loadByQt); };
        report("first_load_" + QByteArray::number(size), ratio(31, inHost, byQt));
    }
}

double bytesOf(const Load& load)
{
    constexpr int count = 20;
    std::vector<std::unique_ptr<QWidget>> forms;
    forms.reserve(count);
    const auto bytes = [] {
        const struct mallinfo2 info = mallinfo2();
        return double(info.uordblks) + double(info.hblkhd);
    };
    const double before = bytes();
    for (int i = 0; i < count; ++i)
        forms.push_back(load(formName(200)));
    QCoreApplication::sendPostedEvents();
    return (bytes() - before) / count;
}

void benchMemory()
{
    bytesOf(loadInHost);
    bytesOf(loadByQt);
    const double byQt = bytesOf(loadByQt);
    report("memory_200", bytesOf(loadInHost) / byQt);
    report("memory_200_plain_kilobytes", byQt / 1024);
}

class Delegate : public QObject {
    Q_OBJECT

public:
    int calls = 0;

public Q_SLOTS:
    void button5_clicked(ZEFPipeFacilityInvocationContext*, QVariant edit7_text, QVariant check8_checked)
    {
        if (edit7_text.isValid() && check8_checked.isValid())
            ++calls;
    }
};

//! What a service without the library would write into its slot.
class ByHand : public QObject {
    Q_OBJECT

public:
    ByHand(QWidget* form, Delegate* delegate, bool silent)
        : m_form(form)
        , m_delegate(delegate)
        , m_silent(silent)
    {
    }

public Q_SLOTS:
    void clicked()
    {
        const QVariant text = valueOf(u"edit7"_s, "text");
        const QVariant checked = valueOf(u"check8"_s, "checked");
        ZEFPipeFacilityInvocationContext* context = nullptr;
        QMetaObject::invokeMethod(m_delegate, "button5_clicked",
                                  Q_ARG(ZEFPipeFacilityInvocationContext*, context), Q_ARG(QVariant, text),
                                  Q_ARG(QVariant, checked));
    }

private:
    QVariant valueOf(const QString& name, const char* propertyName) const
    {
        QVariant value;
        for (const QWidget* widget : m_form->findChildren<QWidget*>(name))
            value = widget->property(propertyName);
        if (!m_silent) {
            qDebug().nospace().noquote()
                << u"got property from %1.%2=%3"_s.arg(name, QLatin1String(propertyName), value.toString());
        }
        return value;
    }

    QWidget* m_form;
    Delegate* m_delegate;
    bool m_silent;
};

void benchClick()
{
    for (const int size : clickedSizes) {
        const int count = 200'000 / size;
        const auto host = loadInHost(formName(size));
        const auto plain = loadByQt(formName(size));
        const auto quiet = loadByQt(formName(size));
        Delegate delegate;
        ZEFUIElement::elementFromQObject(host.get())->setDelegate(&delegate);
        ByHand byHand(plain.get(), &delegate, false);
        ByHand silent(quiet.get(), &delegate, true);
        const auto button = [](const std::unique_ptr<QWidget>& form) {
            return form->findChild<QPushButton*>(u"button5"_s);
        };
        QObject::connect(button(plain), &QPushButton::clicked, &byHand, &ByHand::clicked);
        QObject::connect(button(quiet), &QPushButton::clicked, &silent, &ByHand::clicked);
        const auto clicksOn = [&](const std::unique_ptr<QWidget>& form) {
            return [&, clicked = button(form)] {
                return milliseconds([&] {
                    for (int i = 0; i < count; ++i)
                        Q_EMIT clicked->clicked();
                });
            };
        };
        const QByteArray name = "click_" + QByteArray::number(size);
        constexpr int rounds = 31;
        report(name, ratio(rounds, clicksOn(host), clicksOn(plain)));
        report(name + "_silent", ratio(rounds, clicksOn(host), clicksOn(quiet)));
        report(name + "_plain_us", 1e3 * clicksOn(plain)() / count);
        if (delegate.calls != (4 * rounds + 1) * count)
            qFatal("A click of the benchmark did not arrive");
    }
}

void updateByHand(QWidget* form, const ZEFDictionary& values)
{
    QMultiHash<QString, QWidget*> widgets;
    for (QWidget* widget : form->findChildren<QWidget*>())
        widgets.insert(widget->objectName(), widget);
    for (const QString& key : values.keys()) {
        const QString name = key.section(u'_', 0, 0);
        const QString propertyName = key.section(u'_', 1, 1);
        const QString value = values.getString(key);
        for (QWidget* widget : widgets.values(name)) {
            widget->setProperty(propertyName.toLatin1().constData(), value);
            qDebug().nospace().noquote() << u"set property on %1.%2=%3"_s.arg(name, propertyName, value);
        }
    }
}

void benchUpdateProperties()
{
    std::vector<double> perCount;
    for (const int count : editCounts) {
        const auto host = loadInHost(lineEditsName(count));
        ZEFUIElement* element = ZEFUIElement::elementFromQObject(host.get());
        const auto plain = loadByQt(lineEditsName(count));
        ZEFDictionary values;
        int round = 0;
        const auto fill = [&] { // a value that the edits do not hold yet
            for (int i = 0; i < count; ++i)
                values.setString(u"edit%1_text"_s.arg(i), u"value %1"_s.arg(round));
            ++round;
        };
        std::vector<double> times;
        const double toByHand = ratio(
            11,
            [&] {
                fill();
                times.push_back(milliseconds([&] { element->updateProperties(values); }));
                return times.back();
            },
            [&] {
                fill();
                return milliseconds([&] { updateByHand(plain.get(), values); });
            });
        perCount.push_back(median(times));
        const QByteArray name = "update_properties_" + QByteArray::number(count);
        report(name + "_ms", perCount.back());
        report(name, toByHand);
    }
    report("update_properties_growth", perCount.at(1) / perCount.at(0));
}

//! The share of a core that the windows take while nothing happens.
double idlePercent(const Load& load)
{
    std::vector<std::unique_ptr<QWidget>> windows;
    for (int i = 0; i < hostCount; ++i) {
        windows.push_back(load(formName(20)));
        windows.back()->show();
    }
    const auto runFor = [](int duration) {
        QEventLoop loop;
        QTimer::singleShot(duration, &loop, &QEventLoop::quit);
        loop.exec();
    };
    runFor(3000); // until all windows are there and painted
    QElapsedTimer wall;
    wall.start();
    const double spent = milliseconds([&] { runFor(5000); });
    return 100 * spent / double(wall.elapsed());
}

void benchIdle()
{
    report("idle_200_percent", idlePercent(loadInHost));
    report("idle_200_plain_percent", idlePercent(loadByQt));
}

struct Bench {
    const char* name;
    void (*run)();
};

constexpr std::array benches = {
    Bench{"load", benchLoad},
    Bench{"first_load", benchFirstLoad},
    Bench{"memory", benchMemory},
    Bench{"click", benchClick},
    Bench{"update_properties", benchUpdateProperties},
    Bench{"idle", benchIdle},
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });

    ResourceContents contents;
    for (const int size : {20, 200, 1000, 2000})
        contents.insert(u"forms/"_s + formName(size) + u".ui"_s, formOf(size));
    for (const int count : editCounts)
        contents.insert(u"forms/"_s + lineEditsName(count) + u".ui"_s, lineEdits(count));
    contents.insert(u"css/elsewhere.css"_s, "QLabel { color: red; }"); // none for the widgets here
    const QByteArray resource = resourceFile(contents);
    QResource::registerResource(reinterpret_cast<const uchar*>(resource.constData()));

    std::printf("platform %s\n", qPrintable(QGuiApplication::platformName()));
    const QStringList wanted = QCoreApplication::arguments().mid(1);
    for (const Bench& bench : benches) {
        if (wanted.isEmpty() || wanted.contains(QLatin1String(bench.name)))
            bench.run();
    }
    return 0;
}

#include "benchmark_element.moc"
