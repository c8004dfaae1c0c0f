#include "FormPreview.h"

#include "tools/common/InputFile.h"
#include "tools/common/Values.h"
#include "tools/lint/Rules.h"
#include "tools/preview/CompiledTranslation.h"
#include "tools/preview/PseudoTranslation.h"

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QResource>
#include <QtWidgets/QLayout>

#include <chrono>
#include <list>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// An editor writes a file in several steps.
constexpr auto reloadDelay = 200ms;

bool isReadableFolder(const QString& path, QString* error)
{
    const QFileInfo info(path);
    if (info.isDir() && info.isReadable())
        return true;
    *error = path + (info.exists() ? u": is not a folder that can be read" : u": there is no such folder");
    return false;
}

bool addStyleSheets(const QString& path, ResourceContents* contents, QString* error)
{
    if (!isReadableFolder(path, error))
        return false;
    const QDir folder(path);
    for (const QString& name : folder.entryList({u"*.css"_s}, QDir::Files)) {
        const auto text = readInputFile(folder.filePath(name), error);
        if (!text)
            return false;
        contents->insert(u"css/" + name, *text);
    }
    return true;
}

bool addTranslations(const QString& path, ResourceContents* contents, QString* error)
{
    if (!isReadableFolder(path, error))
        return false;
    const QDir folder(path);
    QStringList names;
    for (const QString& name : folder.entryList({u"zefmain_*.qm"_s, u"zefmain_*.ts"_s}, QDir::Files)) {
        if (const QString stem = name.chopped(3); !names.contains(stem))
            names.append(stem);
    }
    for (const QString& name : std::as_const(names)) {
        const auto compiled = compiledTranslation(folder.filePath(name), error);
        if (!compiled)
            return false;
        contents->insert(u"i18n/" + name + u".qm", *compiled);
    }
    return true;
}

ZEFDictionary dictionaryFrom(const Values::Dictionary& entries)
{
    ZEFDictionary dictionary;
    for (const Values::Entry& entry : entries)
        dictionary.setString(entry.key, entry.value);
    return dictionary;
}

//! The folder of a file or folder; while that does not exist either, the one where it would appear.
QString folderAbove(const QString& path)
{
    QString folder = QFileInfo(path).absolutePath();
    for (QString above = QFileInfo(folder).absolutePath(); !QFileInfo::exists(folder) && above != folder;
         above = QFileInfo(folder).absolutePath())
        folder = above;
    return folder;
}

//! The direction in which the locale is written, or the other one.
Qt::LayoutDirection direction(const PreviewOptions& options)
{
    const bool isRightToLeft = QLocale(options.locale).textDirection() == Qt::RightToLeft;
    return isRightToLeft != options.isReversed ? Qt::RightToLeft : Qt::LeftToRight;
}

//! Placeholders first, so that a value never brings in one, as it stands with a service's client.
void fillForm(ZEFUIElement* element, const Values& values)
{
    std::list<ZEFDictionary> dictionaries;
    ZEFDictionaryList list;
    for (const Values::Dictionary& entries : values.dictionaries)
        list.append(&dictionaries.emplace_back(dictionaryFrom(entries)));
    element->interpolate(list);
    element->updateProperties(dictionaryFrom(values.properties));
}

} // namespace

FormPreview::FormPreview(const PreviewOptions& options)
    : m_options(options)
{
    m_reloadTimer.setSingleShot(true);
    m_reloadTimer.setInterval(reloadDelay);
    connect(&m_reloadTimer, &QTimer::timeout, this, &FormPreview::reload);
}

FormPreview::~FormPreview()
{
    dropForm();
}

ZEFUIDialog* FormPreview::dialog() const
{
    return m_dialog;
}

bool FormPreview::load(QString* error)
{
    ResourceContents contents;
    if (!readFiles(&contents, error))
        return false;
    QByteArray valuesText;
    Values values;
    if (!m_options.values.isEmpty()) {
        const auto text = readInputFile(m_options.values, error);
        if (!text)
            return false;
        auto read = parseValues(m_options.values, *text, error);
        if (!read)
            return false;
        valuesText = *text;
        values = std::move(*read);
    }
    QByteArray resource = resourceFile(contents);
    // Something else in one of the folders has changed: what the user typed into the form stays.
    if (m_dialog && resource == m_resource && valuesText == m_valuesText)
        return true;

    const QPoint position = m_dialog ? m_dialog->pos() : QPoint();
    const bool wasShown = m_dialog;
    dropForm();
    m_resource = std::move(resource);
    m_valuesText = std::move(valuesText);
    QResource::registerResource(reinterpret_cast<const uchar*>(m_resource.constData()));
    if (!show(error))
        return false;
    fillForm(m_dialog->element(), values);
    chooseSize();
    if (wasShown)
        m_dialog->move(position);
    m_dialog->show();
    return true;
}

//! Everything that can be wrong with the files is found here, before the form shown now is given up.
bool FormPreview::readFiles(ResourceContents* contents, QString* error)
{
    const auto text = readInputFile(m_options.form, error);
    if (!text)
        return false;
    auto form = parseForm(m_options.form, *text, error);
    if (!form)
        return false;
    contents->insert(u"forms/" + QFileInfo(m_options.form).completeBaseName() + u".ui", *text);
    if (!m_options.styleSheets.isEmpty() && !addStyleSheets(m_options.styleSheets, contents, error))
        return false;
    if (!m_options.translations.isEmpty() && !m_options.isPseudoTranslated
        && !addTranslations(m_options.translations, contents, error))
        return false;

    m_topLine = form->widgets.constFirst().line;
    const auto lineOfForm = [this](qint64 line) -> QString {
        return m_options.form + u':' + QString::number(line) + u": ";
    };
    if (!form->faults.isEmpty()) {
        *error = lineOfForm(form->faults.constFirst().line) + form->faults.constFirst().reason;
        return false;
    }
    const bool hasTop = form->widgets.constFirst().created;
    m_className = form->className;
    Project project;
    project.forms.append(std::move(*form));
    for (const Finding& finding : checkProject(project, {})) {
        if (finding.rule != "unknown-class"_L1)
            continue;
        const QString line = lineOfForm(finding.line) + finding.message;
        if (!hasTop && finding.line == m_topLine) {
            *error = line;
            return false;
        }
        if (hasTop)
            Q_EMIT complaint(line);
    }
    return true;
}

bool FormPreview::show(QString* error)
{
    PseudoTranslator translator(m_className);
    if (m_options.isPseudoTranslated)
        QCoreApplication::installTranslator(&translator);
    m_dialog = new ZEFUIDialog(QFileInfo(m_options.form).completeBaseName(), m_options.locale, nullptr,
                               Qt::Dialog, nullptr);
    QCoreApplication::removeTranslator(&translator);
    m_dialog->setLayoutDirection(direction(m_options));
    connect(m_dialog, &ZEFUIDialog::respondClosed, this, &FormPreview::closed);
    if (m_dialog->element()->loaded())
        return true;
    *error = m_options.form + u':' + QString::number(m_topLine)
        + u": the library's form loader cannot build this form";
    dropForm();
    return false;
}

//! The size asked for, or else the one that ZEFUIDialog::create() gives the form.
void FormPreview::chooseSize()
{
    if (m_options.size.isValid()) {
        m_dialog->resize(m_options.size);
        return;
    }
    const QLayout* layout = m_dialog->layout();
    if (!layout->sizeHint().isEmpty()) {
        m_dialog->setFixedSize(true);
        return;
    }
    Q_EMIT complaint(m_options.form + u':' + QString::number(m_topLine)
                     + u": the form asks for no size, so that a dialog of ZEFUIDialog::create() shows "
                       "nothing of it. Give it a layout or a minimum size; here it has the size that it has "
                       "in Designer.");
    m_dialog->resize(layout->itemAt(0)->widget()->size());
}

/*!
 * The form goes before its resource: the library's translators read from it, and they go with the last
 * element.
 */
void FormPreview::dropForm()
{
    delete m_dialog;
    if (!m_resource.isEmpty())
        QResource::unregisterResource(reinterpret_cast<const uchar*>(m_resource.constData()));
    m_resource.clear();
}

void FormPreview::watch()
{
    const auto startReload = [this] { m_reloadTimer.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, startReload);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, startReload);
    watchFiles();
}

void FormPreview::reload()
{
    QString error;
    if (!load(&error))
        Q_EMIT complaint(error);
    // An editor may have put a new file in the place of the watched one.
    watchFiles();
}

void FormPreview::watchFiles()
{
    QStringList paths{m_options.form, folderAbove(m_options.form)};
    if (!m_options.values.isEmpty())
        paths += {m_options.values, folderAbove(m_options.values)};
    for (const QString& path : {m_options.styleSheets, m_options.translations}) {
        if (path.isEmpty())
            continue;
        paths += {path, folderAbove(path)};
        const QDir folder(path);
        for (const QString& name : folder.entryList({u"*.css"_s, u"*.qm"_s, u"*.ts"_s}, QDir::Files))
            paths.append(folder.filePath(name));
    }
    for (const QString& path : std::as_const(paths)) {
        if (QFileInfo::exists(path))
            m_watcher.addPath(path);
    }
}
