// How long checking a form of 2,000 widgets takes, against reading its XML and doing nothing with it.
//
// Both start from the bytes in memory. Checking means all rules and the text report, once for the form
// alone and once with a style sheet, dictionaries, a translation and a delegate. Each time is the best
// of many runs, since nothing makes a run faster than it is. The program fails when a ratio is above 3.

#include "tools/lint/Report.h"
#include "tools/lint/Rules.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int widgetCount = 2000;
constexpr int runCount = 30;
constexpr double largestRatio = 3.0;

QByteArray textProperty(const QByteArray& name, const QByteArray& text)
{
    return "      <property name=\"" + name + "\">\n       <string>" + text
        + "</string>\n      </property>\n";
}

//! A form as Designer writes it: grids of labels, edits and buttons with the usual properties, the
//! formats of twenty kinds.
QByteArray largeForm()
{
    QByteArray form =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n <class>Large</class>\n"
        " <widget class=\"QWidget\" name=\"Large\">\n  <layout class=\"QGridLayout\" name=\"grid\">\n";
    for (int i = 1; i < widgetCount; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray row = QByteArray::number(i / 4);
        form += "   <item row=\"" + row + "\" column=\"" + QByteArray::number(i % 4) + "\">\n";
        switch (i % 4) {
        case 0:
            form += "    <widget class=\"QLabel\" name=\"label" + number + "\">\n"
                + textProperty("text", "Name of %{user} no. " + number)
                + "      <property name=\"textFormat\">\n       <enum>Qt::PlainText</enum>\n      "
                  "</property>\n";
            break;
        case 1:
            form += "    <widget class=\"QLineEdit\" name=\"edit" + number + "\">\n"
                + textProperty("toolTip", "The name as it stands in the letter")
                + textProperty("accessibleName", "Name")
                + "      <property name=\"maxLength\">\n       <number>80</number>\n      </property>\n";
            break;
        case 2:
            form += "    <widget class=\"ZEFFormatEdit\" name=\"format" + number + "\">\n"
                + textProperty("format",
                               "{2,4}([A-Z0-9]*)([A-Z]{2}[0-9]{0," + QByteArray::number(i % 40 / 2)
                                   + "})-{4}(\\d*)")
                + textProperty("accessibleName", "Number")
                + "      <property name=\"layoutDirection\">\n       <enum>Qt::LeftToRight</enum>\n      "
                  "</property>\n";
            break;
        default:
            form += "    <widget class=\"ZEFLightStdSSButton\" name=\"button" + number + "\">\n"
                + textProperty("text", "Change…")
                + "      <property name=\"enabled\">\n       <bool>false</bool>\n      </property>\n";
            break;
        }
        form += "    </widget>\n   </item>\n";
    }
    return form + "  </layout>\n </widget>\n</ui>\n";
}

//! Everything that a run can be given beside the form.
Project companions()
{
    Project project;
    StyleSheet sheet;
    sheet.path = u"Large.css"_s;
    sheet.objectNames.append(u"Large"_s);
    sheet.selectors =
        selectorsOf(u"QLabel { color: red; } #button1003:hover { color: blue; } QGridLayout { }"_s, 1);
    project.styleSheets.append(sheet);
    Values values;
    values.dictionaries.append({{u"user"_s, u"Ada"_s}});
    values.properties.append({u"edit1001_text"_s, u"Ada"_s});
    project.values.append(values);
    Translation translation;
    translation.locale = u"de"_s;
    for (const char* text : {"Change…", "Name", "Number", "The name as it stands in the letter"})
        translation.translated.insert(u"Large\x04"_s + QString::fromUtf8(text) + u'\x04');
    project.translations.append(translation);
    Delegate delegate;
    delegate.methods.append(
        {u"button1003_clicked"_s,
         {{u"ZEFPipeFacilityInvocationContext*"_s, u"context"_s}, {u"QVariant"_s, u"edit1001_text"_s}},
         1});
    project.delegates.append(delegate);
    return project;
}

template <typename Run> double bestMilliseconds(Run run)
{
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < runCount; ++i) {
        QElapsedTimer timer;
        timer.start();
        run();
        best = std::min(best, timer.nsecsElapsed());
    }
    return double(best) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray form = largeForm();
    qsizetype tokenCount = 0;
    const double parsing = bestMilliseconds([&] {
        QXmlStreamReader xml(form);
        while (!xml.atEnd()) {
            xml.readNext();
            ++tokenCount;
        }
    });

    qsizetype findingCount = 0;
    qsizetype reportSize = 0;
    const auto check = [&](Project project) {
        QString error;
        auto read = parseForm(u"large.ui"_s, form, &error);
        if (!read)
            qFatal("The form of the benchmark is broken");
        project.forms.append(std::move(*read));
        const Findings findings = checkProject(project, {});
        reportSize += textReport(findings).size();
        findingCount = findings.size();
    };
    const double alone = bestMilliseconds([&] { check(Project()); });
    const qsizetype findingsAlone = findingCount;
    const double withAll = bestMilliseconds([&] { check(companions()); });

    std::printf("lint.form.bytes %lld\n", static_cast<long long>(form.size()));
    std::printf("lint.form.tokens %lld\n", static_cast<long long>(tokenCount / runCount));
    std::printf("lint.read_xml.ms %.2f\n", parsing);
    std::printf("lint.reports.bytes %lld\n", static_cast<long long>(reportSize));
    std::printf("lint.form.findings %lld\n", static_cast<long long>(findingsAlone));
    std::printf("lint.form.ms %.2f\n", alone);
    std::printf("lint.form.ratio %.2f\n", alone / parsing);
    std::printf("lint.project.findings %lld\n", static_cast<long long>(findingCount));
    std::printf("lint.project.ms %.2f\n", withAll);
    std::printf("lint.project.ratio %.2f\n", withAll / parsing);
    return alone <= largestRatio * parsing && withAll <= largestRatio * parsing ? 0 : 1;
}
