// zefui-preview: shows a form file as a service would.

#include "FormPreview.h"
#include "tools/common/CommandLine.h"
#include "tools/common/OutputFile.h"

#include <ZEFUIDialog.h>

#include <QtCore/QBuffer>
#include <QtCore/QCommandLineParser>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int largestLength = 16384;

bool isVerbose = false;

//! What Qt's form loader and style sheets say about the form; classes are reported with their line.
bool isAboutForm(const QString& message)
{
    static const QStringList beginnings{u"\""_s, u"Designer: "_s, u"Could not parse"_s,
                                        u"Unknown property"_s};
    return !message.contains(u"unable to create")
        && std::any_of(beginnings.cbegin(), beginnings.cend(),
                       [&](const QString& beginning) { return message.startsWith(beginning); });
}

void writeMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (isVerbose || type == QtFatalMsg || isAboutForm(message))
        writeError(u"zefui-preview"_s, message);
    // Qt gives up where there is no display; the line above says so, and nothing needs a memory dump.
    if (type == QtFatalMsg)
        std::_Exit(cannotRunStatus);
}

//! "640x480", within what a screen can hold.
bool readSize(const QString& text, QSize* size, QString* error)
{
    static const QRegularExpression pattern(u"^(\\d{1,5})x(\\d{1,5})$"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize read(match.captured(1).toInt(), match.captured(2).toInt());
    if (read.width() < 1 || read.height() < 1 || read.width() > largestLength
        || read.height() > largestLength) {
        *error = u"the size must be <width>x<height> in pixels, for instance 640x480, not " + text;
        return false;
    }
    *size = read;
    return true;
}

bool readOptions(const QCommandLineParser& parser, PreviewOptions* options, QString* error)
{
    const QStringList forms = parser.positionalArguments();
    if (forms.size() != 1) {
        *error = u"one form must be given; zefui-preview --help says more"_s;
        return false;
    }
    options->form = forms.constFirst();
    options->locale = parser.value(u"locale"_s);
    options->styleSheets = parser.value(u"css"_s);
    options->translations = parser.value(u"translations"_s);
    options->values = parser.value(u"values"_s);
    return !parser.isSet(u"size"_s) || readSize(parser.value(u"size"_s), &options->size, error);
}

bool writeScreenshot(QWidget* widget, const QString& path, QString* error)
{
    // Some widgets decide at their first painting what they show.
    QCoreApplication::processEvents();
    QByteArray picture;
    QBuffer buffer(&picture);
    if (widget->width() > largestLength || widget->height() > largestLength
        || !widget->grab().save(&buffer, "PNG")) {
        *error = u"no picture can be made of a form of "_s + QString::number(widget->width()) + u'x'
            + QString::number(widget->height()) + u" pixels; choose another size by --size";
        return false;
    }
    return writeOutputFile(path, picture, error);
}

void addOptions(QCommandLineParser* parser)
{
    parser->setApplicationDescription(
        u"Shows a form as a service would, and again whenever one of its files changes.\n\n"
        "Exit status: 0, or 2 when the arguments are wrong or a file cannot be read."_s);
    parser->addPositionalArgument(u"form"_s, u"A form of Qt Designer."_s, u"form.ui"_s);
    parser->addOptions({
        {u"locale"_s, u"The locale of the request; en is the default."_s, u"locale"_s, u"en"_s},
        {u"css"_s, u"The folder of the style sheets <objectName>.css."_s, u"folder"_s},
        {u"translations"_s, u"The folder of the translations zefmain_<locale>.qm or .ts."_s, u"folder"_s},
        {u"values"_s, u"Dictionaries and property values as JSON."_s, u"file"_s},
        {u"size"_s, u"The size of the form; what it asks for is the default."_s, u"WxH"_s},
        {u"style"_s, u"The style of the widgets, for instance Fusion."_s, u"style"_s},
        {u"screenshot"_s, u"Write a picture of the form and exit; needs no display."_s, u"file.png"_s},
        {u"verbose"_s, u"Also show what the library and Qt write to their debug output."_s},
        {u"help"_s, u"Show this help and exit."_s},
        {u"version"_s, u"Show the version and exit."_s},
    });
}

//! Pictures need no display; a platform that the user chose stays.
void choosePlatform(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (QByteArray(argv[i]).startsWith("--screenshot") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

} // namespace

int main(int argc, char** argv)
{
    const ToolDescription tool{u"zefui-preview"_s, addOptions};
    QCommandLineParser parser;
    if (const auto status = readCommandLine(tool, argc, argv, &parser))
        return *status;
    PreviewOptions options;
    QString error;
    if (!readOptions(parser, &options, &error)) {
        writeError(tool.name, error);
        return cannotRunStatus;
    }

    choosePlatform(argc, argv);
    isVerbose = parser.isSet(u"verbose"_s);
    qInstallMessageHandler(writeMessage);
    int qtArgumentCount = 1;
    QApplication application(qtArgumentCount, argv);
    // Between two versions of a form there is none.
    QApplication::setQuitOnLastWindowClosed(false);
    if (parser.isSet(u"style"_s) && !QApplication::setStyle(parser.value(u"style"_s))) {
        writeError(tool.name,
                   u"there is no style " + parser.value(u"style"_s) + u"; there are "
                       + QStyleFactory::keys().join(u", "_s));
        return cannotRunStatus;
    }

    FormPreview preview(options);
    QObject::connect(&preview, &FormPreview::closed, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QObject::connect(&preview, &FormPreview::complaint, &application,
                     [&](const QString& text) { writeError(tool.name, text); });
    if (!preview.load(&error)) {
        writeError(tool.name, error);
        return cannotRunStatus;
    }
    if (!parser.isSet(u"screenshot"_s)) {
        preview.watch();
        return QApplication::exec();
    }
    if (!writeScreenshot(preview.dialog(), parser.value(u"screenshot"_s), &error)) {
        writeError(tool.name, error);
        return cannotRunStatus;
    }
    return 0;
}
