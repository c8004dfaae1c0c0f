#pragma once

#include "ResourceFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

class ZEFUIDialog;

//! What to show and how.
struct PreviewOptions {
    QString form;
    QString locale;
    QString styleSheets;
    QString translations;
    QString values;
    //! Invalid for the size that the form asks for.
    QSize size;
    //! Against the direction of the locale.
    bool isReversed = false;
    //! Longer texts with accents, instead of translations.
    bool isPseudoTranslated = false;
};

/*!
 * Shows a form file through the library, as a service would: the files become resources of the running
 * program, and a dialog of the library loads them by name.
 */
class FormPreview : public QObject {
    Q_OBJECT

public:
    explicit FormPreview(const PreviewOptions& options);
    ~FormPreview() override;

    /*!
     * Reads all files and shows the form, in place of the one shown before. When something is wrong, the
     * form shown before stays and \a error says in one line what, with file and line.
     */
    bool load(QString* error);
    //! From now on a changed file loads everything again.
    void watch();
    //! The dialog; null before a form was loaded and after the user closed it.
    ZEFUIDialog* dialog() const;

Q_SIGNALS:
    //! The user closed the form.
    void closed();
    //! Something that does not keep the form from being shown, or why a changed file was not loaded.
    void complaint(const QString& text);

private:
    Q_DISABLE_COPY_MOVE(FormPreview)
    bool readFiles(ResourceContents* contents, QString* error);
    bool show(QString* error);
    void chooseSize();
    void dropForm();
    void reload();
    void watchFiles();

    const PreviewOptions m_options;
    QPointer<ZEFUIDialog> m_dialog;
    //! Registered with Qt while it is not empty.
    QByteArray m_resource;
    QByteArray m_valuesText;
    //! The context of the form's texts.
    QString m_className;
    //! Where the form's top widget stands in its file.
    qint64 m_topLine = 1;
    QFileSystemWatcher m_watcher;
    QTimer m_reloadTimer;
};
