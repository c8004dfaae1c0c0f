// Shows every widget of the library in every state: gallery
// Writes the picture of each class without a display: gallery --render DIR

#include "Page.h"
#include "pages.h"
#include "tools/common/Looks.h"
#include "tools/preview/PseudoTranslation.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {

//! Lets the window system and the layouts come to rest.
void settle()
{
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
}

bool render(Page& page, const QDir& directory)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(&page);
    window.show();
    window.activateWindow();
    settle();
    // the style sheet of a page counts only now
    window.resize(window.sizeHint());
    page.bringStates();
    settle();
    const bool saved = window.grab().save(directory.filePath(page.className().toLower() + u".png"));
    page.setParent(nullptr);
    return saved;
}

int renderAll(const QString& path)
{
    const QDir directory(path);
    if (!directory.mkpath(QStringLiteral("."))) {
        QTextStream(stderr) << "gallery: cannot create " << path << '\n';
        return 1;
    }
    int failures = 0;
    const QList<Page*> pages = createPages();
    for (Page* page : pages) {
        if (!render(*page, directory)) {
            QTextStream(stderr) << "gallery: cannot write the picture of " << page->className() << '\n';
            ++failures;
        }
    }
    qDeleteAll(pages);
    return failures > 0 ? 1 : 0;
}

int show()
{
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    const QList<Page*> pages = createPages();
    for (Page* page : pages)
        column->addWidget(page);
    QScrollArea window;
    window.setWindowTitle(QStringLiteral("Gallery"));
    window.setWidget(content);
    window.setWidgetResizable(true);
    window.resize(content->sizeHint().width() + 40, 800);
    window.show();
    // once the window is active, so that one widget can have the focus
    QTimer::singleShot(200, &window, [&] {
        for (Page* page : pages)
            page->bringStates();
    });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const bool rendering = std::any_of(
        argv, argv + argc, [](const char* argument) { return qstrcmp(argument, "--render") == 0; });
    if (rendering && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // the painted buttons trace every paint
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false\nqt.qpa.*.warning=false"));

    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Every widget of the library in every state."));
    parser.addHelpOption();
    const QCommandLineOption renderOption(QStringLiteral("render"),
                                          QStringLiteral("Write one picture per class into <directory>."),
                                          QStringLiteral("directory"));
    const QCommandLineOption darkOption(QStringLiteral("dark"), QStringLiteral("White on nearly black."));
    const QCommandLineOption highContrastOption(QStringLiteral("high-contrast"),
                                                QStringLiteral("White and yellow on black."));
    const QCommandLineOption fontSizeOption(QStringLiteral("font-size"),
                                            QStringLiteral("The size of the application's font."),
                                            QStringLiteral("points"));
    const QCommandLineOption pseudoOption(
        QStringLiteral("pseudo"), QStringLiteral("Longer texts with accents, as translations may be."));
    parser.addOptions({renderOption, darkOption, highContrastOption, fontSizeOption, pseudoOption});
    parser.process(application);

    // The colours of this desktop are not those of the manual.
    if (rendering)
        QApplication::setPalette(QApplication::style()->standardPalette());
    if (parser.isSet(darkOption))
        Looks::apply(Looks::darkPalette());
    if (parser.isSet(highContrastOption))
        Looks::apply(Looks::highContrastPalette());
    if (const double points = parser.value(fontSizeOption).toDouble(); points > 0)
        Looks::setFontSize(points);
    PseudoTranslator translator{QLatin1String(galleryContext)};
    if (parser.isSet(pseudoOption))
        QApplication::installTranslator(&translator);
    return parser.isSet(renderOption) ? renderAll(parser.value(renderOption)) : show();
}
