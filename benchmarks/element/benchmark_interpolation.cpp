// What interpolate() costs, as ratios to a bare loop that reads the same properties in the same run.

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFUIElement.h>

#include <QtCore/QMetaProperty>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>

namespace {

constexpr int rounds = 31;

//! A host with that many widgets, of which one in \a templateEvery shows a placeholder; 0 means none.
std::unique_ptr<QWidget> makeForm(int count, int templateEvery)
{
    auto host = std::make_unique<QWidget>();
    for (int i = 0; i < count; ++i) {
        const QString text = templateEvery > 0 && i % templateEvery == 0
            ? QStringLiteral("Hello %{user}, number %1").arg(i)
            : QStringLiteral("A text without a placeholder, number %1").arg(i);
        QWidget* widget = nullptr;
        if (i % 3 == 0)
            widget = new QLabel(text, host.get());
        else if (i % 3 == 1)
            widget = new QPushButton(text, host.get());
        else
            widget = new QLineEdit(text, host.get());
        widget->setObjectName(QStringLiteral("widget%1").arg(i));
    }
    return host;
}

//! Reads every string property of the host and of all widgets below it and searches it for "%{".
int bareLoop(QWidget* host)
{
    int found = 0;
    QList<QWidget*> widgets = host->findChildren<QWidget*>();
    widgets.prepend(host);
    for (const QWidget* widget : std::as_const(widgets)) {
        const QMetaObject* meta = widget->metaObject();
        for (int i = 0; i < meta->propertyCount(); ++i) {
            const QMetaProperty property = meta->property(i);
            if (qstrcmp(property.typeName(), "QString") == 0)
                found += property.read(widget).toString().contains(QLatin1String("%{")) ? 1 : 0;
        }
    }
    return found;
}

//! The processor time of \a work: other programs do not count.
double nanoseconds(const std::function<void()>& work)
{
    const std::clock_t start = std::clock();
    work();
    return 1e9 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Costs {
    double first = 0; // the first run over a form, as a ratio to the bare loop
    double second = 0; // the second run, as a ratio to the first
    double perWidget = 0; // nanoseconds of a repeated run for each widget, the best of all rounds
    double barePerWidget = 0; // the same for the bare loop
};

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

Costs measure(int count, int templateEvery)
{
    ZEFDictionary dictionary{{QStringLiteral("user"), QStringLiteral("Ann")}};
    ZEFDictionaryList dictionaries;
    dictionaries.append(&dictionary);
    QList<double> first;
    QList<double> second;
    QList<double> perWidget;
    QList<double> barePerWidget;
    for (int round = 0; round < rounds; ++round) {
        const auto host = makeForm(count, templateEvery);
        ZEFUIElement element(host.get(), nullptr, nullptr, 0);
        const auto run = [&] { element.interpolate(dictionaries); };
        int found = 0;
        nanoseconds([&] { found += bareLoop(host.get()); }); // both start with the form in the caches
        const auto bare = nanoseconds([&] { found += bareLoop(host.get()); });
        const auto firstRun = nanoseconds(run);
        const auto secondRun = nanoseconds(run);
        first.append(firstRun / bare);
        second.append(secondRun / firstRun);
        perWidget.append(secondRun / count);
        barePerWidget.append(bare / count);
        if (found < 0)
            return {};
    }
    return {median(first), median(second), *std::min_element(perWidget.cbegin(), perWidget.cend()),
            *std::min_element(barePerWidget.cbegin(), barePerWidget.cend())};
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});

    const Costs plain = measure(2000, 0);
    const Costs filled = measure(2000, 10);
    const Costs all = measure(2000, 1);
    std::printf("interpolate_to_bare_loop_no_placeholder %.2f\n", plain.first);
    std::printf("interpolate_to_bare_loop_tenth_placeholders %.2f\n", filled.first);
    std::printf("interpolate_to_bare_loop_all_placeholders %.2f\n", all.first);
    std::printf("second_run_to_first_no_placeholder %.2f\n", plain.second);
    std::printf("second_run_to_first_tenth_placeholders %.2f\n", filled.second);
    std::printf("second_run_to_first_all_placeholders %.2f\n", all.second);
    for (const int templateEvery : {0, 10}) {
        const Costs small = measure(200, templateEvery);
        const Costs large = measure(2000, templateEvery);
        std::printf("per_widget_2000_to_200_placeholder_in_%d %.2f\n", templateEvery,
                    large.perWidget / small.perWidget);
        std::printf("bare_loop_per_widget_2000_to_200_placeholder_in_%d %.2f\n", templateEvery,
                    large.barePerWidget / small.barePerWidget);
    }
    return 0;
}
