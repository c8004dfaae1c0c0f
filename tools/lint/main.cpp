// zefui-lint: reports what would fail silently when a service shows a form.

#include "Report.h"
#include "Rules.h"
#include "tools/common/CommandLine.h"
#include "tools/common/OutputFile.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int hasFindingsStatus = 1;

using ReportWriter = QByteArray (*)(const Findings&);

struct Options {
    Project project;
    QStringList disabled;
    ReportWriter report = textReport;
};

QByteArray ruleList()
{
    QByteArray list;
    for (const Rule& rule : rules())
        list += rule.name.latin1() + QByteArray("  ") + rule.summary.latin1() + '\n';
    return list;
}

//! The files of a folder that have the suffix; a file stands for itself.
bool filesIn(const QString& path, const QString& pattern, QStringList* files, QString* error)
{
    const QFileInfo info(path);
    if (!info.isDir()) {
        files->append(path);
        return true;
    }
    const QDir folder(path);
    if (!folder.isReadable()) {
        *error = path + u": the folder cannot be read";
        return false;
    }
    for (const QString& name : folder.entryList({pattern}, QDir::Files, QDir::Name))
        files->append(folder.filePath(name));
    return true;
}

//! Reads each of \a paths into \a inputs, up to the first that cannot be read.
template <typename Input, typename Read>
bool readAll(QStringList paths, Read read, QList<Input>* inputs, QString* error)
{
    // A file that is given twice has its findings once.
    paths.removeDuplicates();
    for (const QString& path : std::as_const(paths)) {
        auto input = read(path, error);
        if (!input)
            return false;
        inputs->append(std::move(*input));
    }
    return true;
}

bool readProject(const QCommandLineParser& parser, Project* project, QString* error)
{
    QStringList styleSheets;
    for (const QString& path : parser.values(u"css"_s)) {
        if (!filesIn(path, u"*.css"_s, &styleSheets, error))
            return false;
    }
    QStringList translations;
    for (const QString& path : parser.values(u"translations"_s)) {
        if (!filesIn(path, u"zefmain_*.ts"_s, &translations, error))
            return false;
    }
    return readAll(parser.positionalArguments(), readForm, &project->forms, error)
        && readAll(styleSheets, readStyleSheet, &project->styleSheets, error)
        && readAll(translations, readTranslation, &project->translations, error)
        && readAll(parser.values(u"values"_s), readValues, &project->values, error)
        && readAll(parser.values(u"delegate"_s), readDelegate, &project->delegates, error);
}

bool readOptions(const QCommandLineParser& parser, Options* options, QString* error)
{
    if (parser.positionalArguments().isEmpty()) {
        *error = u"no form given; zefui-lint --help says more"_s;
        return false;
    }
    const QString format = parser.value(u"format"_s);
    if (format == u"json") {
        options->report = jsonReport;
    } else if (format == u"sarif") {
        options->report = sarifReport;
    } else if (format != u"text") {
        *error = u"the format must be text, json or sarif, not " + format;
        return false;
    }
    options->disabled = parser.values(u"disable"_s);
    for (const QString& name : std::as_const(options->disabled)) {
        const bool known = std::any_of(rules().cbegin(), rules().cend(),
                                       [&](const Rule& rule) { return rule.name == name; });
        if (!known) {
            *error = u"there is no rule " + name + u"; zefui-lint --list-rules names them";
            return false;
        }
    }
    return readProject(parser, &options->project, error);
}

void addOptions(QCommandLineParser* parser)
{
    parser->setApplicationDescription(
        u"Reports what would fail silently when a service shows the forms.\n\n"
        "Exit status: 0 without findings, 1 with findings, 2 when the arguments are wrong or a file cannot be read."_s);
    parser->addPositionalArgument(u"form"_s, u"Forms of Qt Designer."_s, u"form.ui..."_s);
    parser->addOptions({
        {u"css"_s, u"Style sheets of the forms: a folder or a file. May be repeated."_s, u"path"_s},
        {u"translations"_s, u"Translations zefmain_<locale>.ts: a folder or a file. May be repeated."_s,
         u"path"_s},
        {u"values"_s, u"Dictionaries and property values as JSON. May be repeated."_s, u"file"_s},
        {u"delegate"_s, u"A header with a delegate class, or a JSON array of signatures. May be repeated."_s,
         u"file"_s},
        {u"disable"_s, u"A rule to leave out. May be repeated."_s, u"rule"_s},
        {u"format"_s, u"text, json or sarif; text is the default."_s, u"format"_s, u"text"_s},
        {u"output"_s, u"Write the report to a file instead of standard output."_s, u"file"_s},
        {u"list-rules"_s, u"List the rules and exit."_s},
        {u"help"_s, u"Show this help and exit."_s},
        {u"version"_s, u"Show the version and exit."_s},
    });
}

} // namespace

int main(int argc, char** argv)
{
    const ToolDescription tool{u"zefui-lint"_s, addOptions};
    QCommandLineParser parser;
    if (const auto status = readCommandLine(tool, argc, argv, &parser))
        return *status;
    if (parser.isSet(u"list-rules"_s))
        return writeOutput(tool.name, ruleList()) ? 0 : cannotRunStatus;
    Options options;
    QString error;
    if (!readOptions(parser, &options, &error)) {
        writeError(tool.name, error);
        return cannotRunStatus;
    }
    const Findings findings = checkProject(options.project, options.disabled);
    const QByteArray report = options.report(findings);
    if (!parser.isSet(u"output"_s)) {
        if (!writeOutput(tool.name, report))
            return cannotRunStatus;
    } else if (!writeOutputFile(parser.value(u"output"_s), report, &error)) {
        writeError(tool.name, error);
        return cannotRunStatus;
    }
    return findings.isEmpty() ? 0 : hasFindingsStatus;
}
