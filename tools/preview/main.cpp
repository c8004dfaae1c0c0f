// zefui-preview: shows a form file as a service would.

#include "FormPreview.h"
#include "PictureSheet.h"
#include "tools/common/CommandLine.h"
#include "tools/common/Looks.h"
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
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int largestLength = 16384;
constexpr double smallestScale = 0.5;
constexpr double largestScale = 8;
constexpr double smallestFont = 4;
constexpr double largestFont = 96;

const QString toolName = u"zefui-preview"_s;

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
        writeError(toolName, message);
    // Qt gives up where there is no display; the line above says so, and nothing needs a memory dump.
    if (type == QtFatalMsg)
        std::_Exit(cannotRunStatus);
}

void writeComplaint(const QString& text)
{
    writeError(toolName, text);
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

//! A number within \a smallest and \a largest.
bool readNumber(const QCommandLineParser& parser, const QString& option, double smallest, double largest,
                double* number, QString* error)
{
    if (!parser.isSet(option))
        return true;
    bool isNumber = false;
    *number = parser.value(option).toDouble(&isNumber);
    // Written this way round, it also refuses what is no number to compare.
    if (isNumber && *number >= smallest && *number <= largest)
        return true;
    *error = u"--"_s + option + u" must be a number from "_s + QString::number(smallest) + u" to "_s
        + QString::number(largest) + u", not " + parser.value(option);
    return false;
}

//! What the command line asks for, beside what the form is shown with.
struct Options {
    PreviewOptions form;
    QStringList locales;
    //! Without one the form is shown on the screen.
    std::optional<QString> screenshot;
    //! 0 for the font of the desktop.
    double fontSize = 0;
    std::optional<QPalette> palette;
};

bool readOptions(const QCommandLineParser& parser, Options* options, QString* error)
{
    const QStringList forms = parser.positionalArguments();
    if (forms.size() != 1) {
        *error = u"one form must be given; zefui-preview --help says more"_s;
        return false;
    }
    options->locales = parser.values(u"locale"_s);
    if (parser.isSet(u"screenshot"_s))
        options->screenshot = parser.value(u"screenshot"_s);
    if (options->locales.size() > 1 && !options->screenshot) {
        *error = u"several locales are shown in one picture: add --screenshot"_s;
        return false;
    }
    if (parser.isSet(u"dark"_s) && parser.isSet(u"high-contrast"_s)) {
        *error = u"--dark and --high-contrast exclude each other"_s;
        return false;
    }
    PreviewOptions& form = options->form;
    form.form = forms.constFirst();
    form.styleSheets = parser.value(u"css"_s);
    form.translations = parser.value(u"translations"_s);
    form.values = parser.value(u"values"_s);
    form.isReversed = parser.isSet(u"reverse"_s);
    form.isPseudoTranslated = parser.isSet(u"pseudo"_s);
    if (parser.isSet(u"dark"_s))
        options->palette = Looks::darkPalette();
    if (parser.isSet(u"high-contrast"_s))
        options->palette = Looks::highContrastPalette();
    return readNumber(parser, u"font-size"_s, smallestFont, largestFont, &options->fontSize, error)
        && (!parser.isSet(u"size"_s) || readSize(parser.value(u"size"_s), &form.size, error));
}

bool writePicture(const QPixmap& pixmap, const QString& path, QString* error)
{
    QByteArray picture;
    QBuffer buffer(&picture);
    if (!pixmap.save(&buffer, "PNG")) {
        *error = u"no picture can be made of "_s + QString::number(pixmap.width()) + u'x'
            + QString::number(pixmap.height()) + u" pixels";
        return false;
    }
    return writeOutputFile(path, picture, error);
}

//! A picture of the form as it is shown; null when it has no size for one.
QPixmap pictureOf(QWidget* form, QString* error)
{
    // Some widgets decide at their first painting what they show.
    QCoreApplication::processEvents();
    const QSize size = form->size() * form->devicePixelRatio();
    QPixmap picture;
    if (size.width() <= largestLength && size.height() <= largestLength)
        picture = form->grab();
    if (picture.isNull()) {
        *error = u"no picture can be made of a form of "_s + QString::number(size.width()) + u'x'
            + QString::number(size.height()) + u" pixels; choose another size by --size";
    }
    return picture;
}

//! Qt's own options are only recognised here; the application takes them.
void addQtOptions(QCommandLineParser* parser)
{
    parser->setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    QList<QCommandLineOption> options{QCommandLineOption(u"widgetcount"_s)};
    for (const QString& name : {u"display"_s, u"geometry"_s, u"platform"_s, u"platformpluginpath"_s,
                                u"platformtheme"_s, u"plugin"_s, u"qmljsdebugger"_s, u"qwindowgeometry"_s,
                                u"qwindowicon"_s, u"qwindowtitle"_s, u"session"_s, u"stylesheet"_s})
        options.append(QCommandLineOption(name, QString(), u"value"_s));
    for (QCommandLineOption& option : options) {
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser->addOption(option);
    }
}

void addOptions(QCommandLineParser* parser)
{
    addQtOptions(parser);
    parser->setApplicationDescription(
        u"Shows a form as a service would, and again whenever one of its files changes.\n\n"
        "Exit status: 0, or 2 when the arguments are wrong or a file cannot be read.\n\n"
        "Qt's own options, such as -platform, are taken too."_s);
    parser->addPositionalArgument(u"form"_s, u"A form of Qt Designer."_s, u"form.ui"_s);
    parser->addOptions({
        {u"locale"_s,
         u"The locale of the request; en is the default. May be repeated, for several in one picture."_s,
         u"locale"_s, u"en"_s},
        {u"css"_s, u"The folder of the style sheets <objectName>.css."_s, u"folder"_s},
        {u"translations"_s, u"The folder of the translations zefmain_<locale>.qm or .ts."_s, u"folder"_s},
        {u"values"_s, u"Dictionaries and property values as JSON."_s, u"file"_s},
        {u"size"_s, u"The size of the form; what it asks for is the default."_s, u"WxH"_s},
        {u"style"_s, u"The style of the widgets, for instance Fusion."_s, u"style"_s},
        {u"reverse"_s, u"The other direction than that of the locale: for most, from right to left."_s},
        {u"dark"_s, u"White on nearly black, instead of the colours of the desktop."_s},
        {u"high-contrast"_s, u"White and yellow on black."_s},
        {u"font-size"_s, u"The size of the application's font."_s, u"points"_s},
        {u"scale"_s, u"How many pixels of the screen a pixel of the form has, for instance 1.5."_s,
         u"factor"_s},
        {u"pseudo"_s, u"Longer texts with accents, as translations may be."_s},
        {u"screenshot"_s, u"Write a picture of the form and exit; needs no display."_s, u"file.png"_s},
        {u"verbose"_s, u"Also show what the library and Qt write to their debug output."_s},
        {u"help"_s, u"Show this help and exit."_s},
        {u"version"_s, u"Show the version and exit."_s},
    });
}

/*!
 * What an application asks for while it is constructed. Pictures need no display; a platform that the user
 * chose stays.
 */
bool prepareApplication(const QCommandLineParser& parser, QString* error)
{
    double scale = 0;
    if (!readNumber(parser, u"scale"_s, smallestScale, largestScale, &scale, error))
        return false;
    if (scale > 0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    if (parser.isSet(u"screenshot"_s) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return true;
}

bool changeLooks(const QCommandLineParser& parser, const Options& options, QString* error)
{
    if (parser.isSet(u"style"_s) && !QApplication::setStyle(parser.value(u"style"_s))) {
        *error = u"there is no style "_s + parser.value(u"style"_s) + u"; there are "
            + QStyleFactory::keys().join(u", "_s);
        return false;
    }
    if (options.palette)
        Looks::apply(*options.palette);
    if (options.fontSize > 0)
        Looks::setFontSize(options.fontSize);
    return true;
}

//! One picture of the form in all locales.
bool writeScreenshot(const Options& options, QString* error)
{
    QList<std::pair<QString, QPixmap>> pictures;
    for (const QString& locale : options.locales) {
        PreviewOptions form = options.form;
        form.locale = locale;
        FormPreview preview(form);
        // It is the same form in each locale.
        if (pictures.isEmpty())
            QObject::connect(&preview, &FormPreview::complaint, writeComplaint);
        if (!preview.load(error))
            return false;
        const QPixmap picture = pictureOf(preview.dialog(), error);
        if (picture.isNull())
            return false;
        pictures.append({locale, picture});
    }
    return writePicture(pictures.size() == 1 ? pictures.constFirst().second : pictureSheet(pictures),
                        *options.screenshot, error);
}

bool show(const Options& options, QString* error)
{
    PreviewOptions form = options.form;
    form.locale = options.locales.constFirst();
    FormPreview preview(form);
    QObject::connect(&preview, &FormPreview::closed, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QObject::connect(&preview, &FormPreview::complaint, writeComplaint);
    if (!preview.load(error))
        return false;
    preview.watch();
    QApplication::exec();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QCommandLineParser parser;
    if (const auto status = readCommandLine({toolName, addOptions}, argc, argv, &parser))
        return *status;
    Options options;
    QString error;
    if (!readOptions(parser, &options, &error) || !prepareApplication(parser, &error)) {
        writeError(toolName, error);
        return cannotRunStatus;
    }

    isVerbose = parser.isSet(u"verbose"_s);
    qInstallMessageHandler(writeMessage);
    const QApplication application(argc, argv);
    // Between two versions of a form there is none.
    QApplication::setQuitOnLastWindowClosed(false);
    if (!changeLooks(parser, options, &error)
        || !(options.screenshot ? writeScreenshot(options, &error) : show(options, &error))) {
        writeError(toolName, error);
        return cannotRunStatus;
    }
    return 0;
}
